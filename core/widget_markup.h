#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "automation/currency.h"

namespace qmevents::markup {

// What widgets show, as markup. A text that was stored goes through `words`; all else takes markup.

/// A stored text.
std::string words(const std::string& text);
std::string strong(const std::string& markup);
std::string small(const std::string& markup);
/// A link called `name` that runs a command; `call` as a script writes it: "ViewEvent(12)".
std::string commandLink(const std::string& call, const std::string& name);
/// A link that opens an event on one of its tabs ("events_overview").
std::string eventLink(std::int32_t eventId, const std::string& tab, const std::string& name);
/// How much of `whole`, which is more than 0, `part` is: a bar, which shows more as the whole.
std::string meter(Currency part, Currency whole);
/// "84%", rounded down so that only what is complete says 100.
std::string percent(Currency part, Currency whole);

/// Rows of cells; or, when there is none, `empty` in their place.
class Table {
public:
    void row(const std::vector<std::string>& cells);
    std::string text(const std::string& empty) const;

private:
    std::string rows_;
};

} // namespace qmevents::markup
