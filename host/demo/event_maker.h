#pragma once

#include <map>
#include <string>
#include <vector>

#include "automation/object.h"
#include "host/demo/codes.h"
#include "host/demo/event_children.h"
#include "host/demo/event_series.h"

namespace refhost::demo {

/// Fills the events' lookup lists and saves the events of four years, all through the add-in's own
/// objects, as if they had been entered one by one on the days of their planning.
class EventMaker {
public:
    /// `app` is what scripts call App; one of the last events shall have `crowd` participants.
    /// Throws Error when the add-in refuses something.
    EventMaker(const qmevents::Ref<qmevents::Object>& app, const Codes& codes, const Urn& urn,
               Random random, qmevents::Date today, int crowd);

    /// The saved events in the order of their days.
    std::vector<MadeEvent> make();
    /// The invitation groups by name.
    const std::map<std::string, std::int32_t>& groups() const { return groups_; }

private:
    using Keys = std::map<std::string, std::int32_t>;

    Keys keysOf(const char* plural) const;
    void addMissing(const char* key, const char* plural, const char* update,
                    std::span<const std::string_view> names);
    void fillLists();
    void addLocation(const LocationPlan& plan, std::int16_t order);
    void addCoordinators();
    MadeEvent save(const EventSeries& series, qmevents::Date day);
    std::string_view statusFor(qmevents::Date day);

    qmevents::Ref<qmevents::Object> store_, lists_;
    const Codes& codes_;
    const Urn& urn_;
    Random random_;
    qmevents::Date today_;
    int crowd_;
    Keys categories_, statuses_, locations_, groups_;
    std::vector<std::int32_t> coordinators_;
};

} // namespace refhost::demo
