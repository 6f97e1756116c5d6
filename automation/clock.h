#pragma once

#include <optional>

#include "automation/date.h"

namespace qmevents {

/// The one source of "now". Each thread may pin it, so that a test or a demonstration always sees
/// the same moment.
class Clock {
public:
    /// The present local date and time, whole seconds.
    static Date now();
    static Date today() { return now().datePart(); }
    /// Stops this thread's clock at `moment`; nothing lets it run again.
    static void pin(std::optional<Date> moment);
};

/// Pins the clock for a scope.
class PinnedClock {
public:
    explicit PinnedClock(Date moment) { Clock::pin(moment); }
    PinnedClock(const PinnedClock&) = delete;
    PinnedClock& operator=(const PinnedClock&) = delete;
    ~PinnedClock() { Clock::pin(std::nullopt); }
};

} // namespace qmevents
