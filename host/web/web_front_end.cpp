#include "host/web/web_front_end.h"

#include <algorithm>
#include <array>
#include <utility>

#include <nlohmann/json.hpp>

#include "automation/error.h"
#include "host/shell/dialog_engine.h"
#include "host/web/addresses.h"

namespace refhost {

using nlohmann::json;

namespace {

/// Each waiting dialog or question keeps a thread of the server and a part of this one's stack.
constexpr int mostWaiting = 16;

std::string text(const json& data)
{
    return data.dump(-1, ' ', false, json::error_handler_t::replace);
}

std::string buttonsName(int buttons) { return "prompt with buttons " + std::to_string(buttons); }

/// The buttons of a prompt, the one that stands for "nobody answered" first.
std::vector<int> buttonsOf(int buttons)
{
    constexpr int ok = 1;
    constexpr int cancel = 2;
    constexpr int yes = 6;
    constexpr int no = 7;
    switch (buttons) {
    case 0:
        return {ok};
    case 1:
        return {cancel, ok};
    case 3:
        return {cancel, yes, no};
    case 4:
        return {no, yes};
    default:
        throw qmevents::Error::with(qmevents::ErrorNumber::invalidCall, buttonsName(buttons));
    }
}

} // namespace

WebFrontEnd::Call::Call(WebFrontEnd& frontEnd, std::shared_ptr<View> view) : frontEnd_(frontEnd)
{
    frontEnd_.callers_.push_back(std::move(view));
}

WebFrontEnd::Call::~Call()
{
    const auto view = std::move(frontEnd_.callers_.back());
    auto& callers = frontEnd_.callers_;
    callers.pop_back();
    // A page that went away at once would end its own commands that still wait.
    if (std::ranges::find(callers, view) != callers.end()) return;
    const auto destination = frontEnd_.destinations_.extract(view.get());
    if (!destination.empty())
        frontEnd_.views_.tell(view, "navigate", text({{"url", destination.mapped()}}));
}

std::shared_ptr<View> WebFrontEnd::view() const
{
    return callers_.empty() ? nullptr : callers_.back();
}

bool WebFrontEnd::cannotWaitFor(const std::shared_ptr<View>& view) const
{
    return !view || views_.isGone(*view) || apartment_.depth() > mostWaiting;
}

std::optional<int> WebFrontEnd::waitForAnswer(const std::shared_ptr<View>& view, int question)
{
    apartment_.waitUntil([&] { return views_.answerTo(question) || views_.isGone(*view); });
    const auto answer = views_.answerTo(question);
    views_.withdraw(question);
    return answer;
}

void WebFrontEnd::showMessage(const Message& message)
{
    constexpr std::array kinds{"box", "userError", "unexpectedError"};
    const auto shownTo = view();
    const int question = views_.ask({static_cast<int>(Button::ok)});
    json data{{"id", question},
              {"kind", kinds[static_cast<std::size_t>(message.kind)]},
              {"text", message.text},
              {"title", message.title}};
    if (message.code) data["code"] = *message.code;
    views_.tell(shownTo, "message", text(data));
    if (cannotWaitFor(shownTo)) {
        views_.withdraw(question);
        return;
    }
    waitForAnswer(shownTo, question);
}

Button WebFrontEnd::ask(const Prompt& prompt)
{
    const auto buttons = buttonsOf(prompt.buttons);
    const auto unanswered = static_cast<Button>(buttons.front());
    const auto asked = view();
    if (cannotWaitFor(asked)) return unanswered;
    const int question = views_.ask(buttons);
    views_.tell(asked, "prompt",
                text({{"id", question},
                      {"text", prompt.text},
                      {"buttons", prompt.buttons},
                      {"title", prompt.title}}));
    const auto answer = waitForAnswer(asked, question);
    return answer ? static_cast<Button>(*answer) : unanswered;
}

void WebFrontEnd::navigate(const std::string& url, bool)
{
    if (const auto moved = view()) destinations_[moved.get()] = browserPath(url);
    if (isSigningIn_) firstPage_ = browserPath(url);
}

void WebFrontEnd::beginSignIn(std::shared_ptr<SignInProgress> progress)
{
    isSigningIn_ = true;
    progress_ = std::move(progress);
}

void WebFrontEnd::tellProgress()
{
    if (!progress_ || !progressEngine_ || !progressEngine_->isOpen(progressWindow_)) return;
    const DialogValues& values = progressEngine_->valuesOf(progressWindow_);
    const auto textOf = [&](const char* name) {
        const auto found = values.find(name);
        if (found == values.end()) return std::string();
        try {
            return toText(found->second);
        } catch (const qmevents::Error&) {
            return std::string(); // an object or the like, which says nothing to a user
        }
    };
    progress_->tell({textOf("heading"), textOf("description"), textOf("done"), textOf("total")});
}

std::string WebFrontEnd::endSignIn()
{
    isSigningIn_ = false;
    progress_.reset();
    // A dialog that was never closed would have no page to close it from.
    if (progressEngine_) progressEngine_->cancel(progressWindow_);
    progressEngine_ = nullptr;
    return std::move(firstPage_);
}

void WebFrontEnd::runDialog(const DialogWindow& window, DialogEngine& engine)
{
    const auto shownIn = view();
    if (isSigningIn_) {
        progressEngine_ = &engine;
        progressWindow_ = window.id;
        tellProgress();
        return;
    }
    if (cannotWaitFor(shownIn)) return;
    viewsOfWindows_[window.id] = shownIn;
    views_.tell(shownIn, "dialog-open",
                text({{"window", window.id},
                      {"url", dialogPath(window)},
                      {"height", window.height},
                      {"width", window.width},
                      {"title", window.title}}));
    if (!engine.waitsFor(window.id)) return;
    apartment_.waitUntil([&] { return !engine.isOpen(window.id) || views_.isGone(*shownIn); });
}

void WebFrontEnd::dialogClosed(const DialogWindow& window)
{
    const auto shownIn = viewsOfWindows_.extract(window.id);
    if (!shownIn.empty())
        views_.tell(shownIn.mapped(), "dialog-close", text({{"window", window.id}}));
    if (onDialogClosed) onDialogClosed(window.id);
}

void WebFrontEnd::loadDialogPage(const DialogWindow& window)
{
    const auto shownIn = viewsOfWindows_.find(window.id);
    if (shownIn == viewsOfWindows_.end()) return;
    views_.tell(shownIn->second, "dialog-load",
                text({{"window", window.id}, {"url", dialogPath(window)}}));
}

void WebFrontEnd::refresh()
{
    if (const auto told = view()) views_.tell(told, "refresh", "{}");
}

void WebFrontEnd::setPageModified()
{
    if (const auto told = view()) views_.tell(told, "modified", "{}");
}

} // namespace refhost
