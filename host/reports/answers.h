#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/app/session_context.h"
#include "host/lists/smart_lists.h"
#include "host/reports/layout.h"

namespace refhost::reporting {

/// What a report works on: its layout and what was entered for its filters.
struct Inquiry {
    SharedContext context;
    Ref<SmartLists> lists; ///< The saved lists, whose records a report may work on.
    Layout layout;
    std::vector<Value> values; ///< One for each filter of the layout.
    /// What follows "SELECT Id FROM " when records were chosen for the report; else empty.
    std::string source;
};

/// A filter's value, read and checked.
struct Answer {
    bool given = false;
    std::string plain;   ///< What conditions of the layout compare.
    std::string literal; ///< As statements of the session's dialect hold it; "NULL" for none.
    std::string next;    ///< Of a day: the day after it.
    std::string words;   ///< As notes tell it.
    std::string problem; ///< Why the value is none; empty when it is.
    qmevents::Date day;
};
using Answers = std::map<std::string, Answer>;

/// Whether the signed-in user holds the right; an empty one is held by all.
bool mayUse(const SharedContext& context, const std::string& operation);

/// The values that a report starts with.
std::vector<Value> defaultValues(const SharedContext& context, const Layout& layout);

/// A saved list as a filter offers it.
struct OfferedList {
    std::int32_t id = 0;
    std::string name;
};
/// The saved lists of the type that a filter for lists asks for, by name.
std::vector<OfferedList> offeredLists(const Inquiry& inquiry, const FilterPlan& filter);

/// Whether the filter is asked: where records were chosen already, no list, event or activity is;
/// nor is a list of a type that the host does not keep, nor what needs a right that the user lacks.
bool isAsked(const Inquiry& inquiry, const FilterPlan& filter);

/// "Winter Gala (2/14/2026)", of a row with Name and StartDateTime.
std::string eventName(const Cursor& row);

/// What answers are read for: to judge them, or to run a report, which needs a list's records.
enum class ReadFor { judging, running };

/// Every filter's answer, by its key. Reads the database where a choice must exist there.
Answers readAnswers(const Inquiry& inquiry, ReadFor purpose = ReadFor::judging);

} // namespace refhost::reporting
