#include "host/reports/notes.h"

#include <set>

namespace refhost::reporting {
namespace {

// A span of days; empty when both ends are open.
std::string spanOf(const FilterPlan& filter, const Answer& from, const Answer& to)
{
    const std::string name = (filter.range.empty() ? filter.caption : filter.range) + ": ";
    if (from.given && to.given) return name + from.words + " to " + to.words;
    if (from.given) return name + "from " + from.words;
    return to.given ? name + "to " + to.words : std::string();
}

} // namespace

std::vector<std::string> notesOf(const Layout& layout, const Answers& answers)
{
    std::set<std::string> firstDays; // told with the second ones
    for (const FilterPlan& filter : layout.filters) firstDays.insert(filter.notBefore);
    std::vector<std::string> notes;
    for (const FilterPlan& filter : layout.filters) {
        const Answer& answer = answers.at(filter.key);
        std::string note;
        if (!filter.notBefore.empty()) {
            note = spanOf(filter, answers.at(filter.notBefore), answer);
        } else if (answer.given && !firstDays.contains(filter.key)) {
            note = filter.caption + ": " + answer.words;
        }
        if (!note.empty()) notes.push_back(std::move(note));
    }
    return notes;
}

} // namespace refhost::reporting
