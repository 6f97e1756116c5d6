#include "host/web/view_hub.h"

#include <algorithm>
#include <utility>

namespace refhost {

namespace {

/// Events kept after they were sent, in case the stream broke before they arrived.
constexpr std::size_t keptEvents = 32;
/// A page that lets more pile up is not reading them.
constexpr std::size_t mostEvents = 1000;
/// Beyond this many pages, those that are gone are not waited for any longer.
constexpr std::size_t mostViews = 256;

} // namespace

std::shared_ptr<View> ViewHub::visit(const std::string& id)
{
    const std::lock_guard lock(mutex_);
    if (views_.size() > mostViews)
        std::erase_if(views_, [&](const auto& entry) { return isGoneNow(*entry.second); });
    auto& view = views_[id];
    if (!view) {
        view = std::make_shared<View>();
        view->id = id;
    }
    view->lastSeen = Clock::now();
    return view;
}

void ViewHub::leave(const std::string& id)
{
    {
        const std::lock_guard lock(mutex_);
        const auto found = views_.find(id);
        if (found == views_.end()) return;
        found->second->hasLeft = true;
        views_.erase(found);
    }
    changed_.notify_all();
    if (onChange) onChange();
}

bool ViewHub::isGoneNow(const View& view) const
{
    return view.hasLeft || (view.streams == 0 && Clock::now() - view.lastSeen > grace_);
}

bool ViewHub::isGone(const View& view) const
{
    const std::lock_guard lock(mutex_);
    return isGoneNow(view);
}

std::vector<std::string> ViewHub::forgetAbsent(std::chrono::milliseconds absence)
{
    const std::lock_guard lock(mutex_);
    std::vector<std::string> forgotten;
    std::erase_if(views_, [&](const auto& entry) {
        View& view = *entry.second;
        if (view.streams > 0 || Clock::now() - view.lastSeen <= absence) return false;
        view.hasLeft = true;
        forgotten.push_back(entry.first);
        return true;
    });
    return forgotten;
}

void ViewHub::tell(const std::shared_ptr<View>& view, const std::string& name, std::string data)
{
    {
        const std::lock_guard lock(mutex_);
        ViewEvent event{++lastEvent_, name, std::move(data)};
        if (!view) {
            if (unclaimed_.size() < mostEvents) unclaimed_.push_back(std::move(event));
        } else if (!view->hasLeft) {
            view->events.push_back(std::move(event));
            if (view->events.size() > mostEvents) view->events.pop_front();
        }
    }
    changed_.notify_all();
}

std::uint64_t ViewHub::openStream(View& view, std::optional<std::uint64_t> lastEventId)
{
    const std::lock_guard lock(mutex_);
    ++view.streams;
    view.newestStream = ++lastStream_;
    if (lastEventId) view.lastSentId = std::min(view.lastSentId, *lastEventId);
    for (auto& event : unclaimed_) {
        event.id = ++lastEvent_;
        view.events.push_back(std::move(event));
    }
    unclaimed_.clear();
    changed_.notify_all();
    return view.newestStream;
}

void ViewHub::closeStream(View& view)
{
    const std::lock_guard lock(mutex_);
    --view.streams;
    view.lastSeen = Clock::now();
}

std::optional<std::vector<ViewEvent>> ViewHub::next(View& view, std::uint64_t stream,
                                                    std::chrono::milliseconds patience)
{
    std::unique_lock lock(mutex_);
    const auto isOver = [&] { return ended_ || view.hasLeft || view.newestStream != stream; };
    const auto hasNew = [&] {
        return !view.events.empty() && view.events.back().id > view.lastSentId;
    };
    changed_.wait_for(lock, patience, [&] { return isOver() || hasNew(); });
    if (isOver()) return std::nullopt;
    view.lastSeen = Clock::now();
    std::vector<ViewEvent> events;
    for (const auto& event : view.events) {
        if (event.id > view.lastSentId) events.push_back(event);
    }
    if (!events.empty()) view.lastSentId = events.back().id;
    while (view.events.size() > keptEvents && view.events.front().id <= view.lastSentId)
        view.events.pop_front();
    return events;
}

int ViewHub::ask(std::vector<int> buttons)
{
    const std::lock_guard lock(mutex_);
    questions_[++lastQuestion_].buttons = std::move(buttons);
    return lastQuestion_;
}

bool ViewHub::answer(int question, int button)
{
    {
        const std::lock_guard lock(mutex_);
        const auto found = questions_.find(question);
        if (found == questions_.end() || found->second.answer) return false;
        const auto& buttons = found->second.buttons;
        if (std::ranges::find(buttons, button) == buttons.end()) return false;
        found->second.answer = button;
    }
    if (onChange) onChange();
    return true;
}

std::optional<int> ViewHub::answerTo(int question) const
{
    const std::lock_guard lock(mutex_);
    const auto found = questions_.find(question);
    return found == questions_.end() ? std::nullopt : found->second.answer;
}

void ViewHub::withdraw(int question)
{
    const std::lock_guard lock(mutex_);
    questions_.erase(question);
}

void ViewHub::end()
{
    {
        const std::lock_guard lock(mutex_);
        ended_ = true;
    }
    changed_.notify_all();
}

} // namespace refhost
