#include "host/web/held_objects.h"

#include <utility>
#include <vector>

#include "automation/error.h"

namespace refhost {

using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::Object;
using qmevents::Ref;

int HeldObjects::hold(const Ref<Object>& object, const Holder& holder)
{
    std::size_t& count = countOf_[holder.view];
    if (count >= mostPerView || held_.size() >= mostInAll) {
        throw Error::with(ErrorNumber::outOfMemory, "the page holds " + std::to_string(count) +
                                                        " objects already, all hold " +
                                                        std::to_string(held_.size()));
    }
    ++count;
    held_.emplace(++last_, Held{object, holder});
    return last_;
}

const Ref<Object>& HeldObjects::at(int number) const
{
    const auto found = held_.find(number);
    if (found == held_.end()) {
        throw Error::with(ErrorNumber::objectRequired,
                          "object " + std::to_string(number) + " is no longer held");
    }
    return found->second.object;
}

// Letting an object go may run code that holds or releases others, so it goes after the table is
// in order again.
template <typename Condition>
void HeldObjects::releaseWhere(Condition condition)
{
    std::vector<Ref<Object>> released;
    for (auto entry = held_.begin(); entry != held_.end();) {
        auto& [object, holder] = entry->second;
        if (!condition(holder)) {
            ++entry;
            continue;
        }
        released.push_back(std::move(object));
        const auto count = countOf_.find(holder.view);
        if (--count->second == 0) countOf_.erase(count);
        entry = held_.erase(entry);
    }
}

void HeldObjects::release(int number)
{
    const auto held = held_.extract(number);
    if (held.empty()) return;
    const auto count = countOf_.find(held.mapped().holder.view);
    if (--count->second == 0) countOf_.erase(count);
}

void HeldObjects::releaseView(const std::string& view)
{
    releaseWhere([&](const Holder& holder) { return holder.view == view; });
}

void HeldObjects::releaseWindow(int window)
{
    releaseWhere([&](const Holder& holder) { return holder.window == window; });
}

void HeldObjects::clear()
{
    releaseWhere([](const Holder&) { return true; });
}

} // namespace refhost
