#include "host/shell/dialog_engine.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "automation/conversions.h"
#include "automation/error.h"
#include "automation/object.h"

namespace refhost {

using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::Value;

namespace {

[[noreturn]] void refuse(const std::string& reason)
{
    throw Error::with(ErrorNumber::invalidCall, reason);
}

std::string windowName(int window) { return "dialog window " + std::to_string(window); }

int checkedSize(std::optional<std::int32_t> given, int usual, const char* what)
{
    constexpr std::int32_t largest = 10'000;
    const std::int32_t size = given.value_or(usual);
    if (size < 1 || size > largest) {
        refuse(std::string("the ") + what + " of a dialog must lie between 1 and " +
               std::to_string(largest) + ", not " + std::to_string(size));
    }
    return size;
}

} // namespace

/// Makes `level` what calls see, for a scope; dialogs that were begun in it and are not shown end
/// with it.
class DialogEngine::ContextScope {
public:
    ContextScope(DialogEngine& engine, DialogLevel& level) : engine_(engine)
    {
        engine_.contexts_.push_back({&level, {}});
    }
    ContextScope(const ContextScope&) = delete;
    ContextScope& operator=(const ContextScope&) = delete;
    ~ContextScope()
    {
        const Context ended = std::move(engine_.contexts_.back());
        engine_.contexts_.pop_back();
        for (const DialogLevel* level : ended.begun) {
            if (!level->isOpen) engine_.dropLevel(level);
        }
    }

private:
    DialogEngine& engine_;
};

DialogEngine::DialogEngine(FrontEnd& frontEnd) : frontEnd_(frontEnd)
{
    contexts_.push_back({&beginLevel(), {}});
}

DialogEngine::~DialogEngine() = default;

// --- Levels

DialogLevel& DialogEngine::current() const
{
    const Context& context = contexts_.back();
    return context.begun.empty() ? *context.floor : *context.begun.back();
}

DialogLevel& DialogEngine::beginLevel()
{
    return *levels_.emplace_back(std::make_unique<DialogLevel>());
}

void DialogEngine::dropLevel(const DialogLevel* level)
{
    std::erase_if(levels_, [&](const auto& held) { return held.get() == level; });
}

DialogLevel* DialogEngine::findOpen(int window) const
{
    const auto found = std::ranges::find_if(
        levels_, [&](const auto& level) { return level->isOpen && level->window.id == window; });
    return found == levels_.end() ? nullptr : found->get();
}

DialogLevel& DialogEngine::requireOpen(int window) const
{
    DialogLevel* level = findOpen(window);
    if (!level) refuse(windowName(window) + " is not open");
    return *level;
}

bool DialogEngine::isOpen(int window) const { return findOpen(window) != nullptr; }

bool DialogEngine::waitsFor(int window) const
{
    const DialogLevel* level = findOpen(window);
    return level && level->waits;
}

const DialogValues& DialogEngine::valuesOf(int window) const { return requireOpen(window).values; }

// --- Showing

void DialogEngine::show(const std::string& module, const std::string& page,
                        std::optional<std::int32_t> height, std::optional<std::int32_t> width)
{
    const DialogWindow usual;
    const DialogPage first = DialogPage::parse(page, module);
    const int checkedHeight = checkedSize(height, usual.height, "height");
    const int checkedWidth = checkedSize(width, usual.width, "width");

    const int opener = contexts_.back().floor->isOpen ? contexts_.back().floor->window.id : 0;
    if (current().isOpen)
        contexts_.back().begun.push_back(&beginLevel()); // shown without a handler
    DialogLevel& level = current();
    std::string title = level.title;
    if (const Value given = value("title"); title.empty() && given.isText()) title = given.text();
    level.window = {first.module, first.name,    checkedHeight,
                    checkedWidth, ++lastWindow_, std::move(title)};
    level.page = first;
    level.pageChanged = false;
    level.history.clear();
    level.restorePoints.clear();
    level.returnValue = {};
    level.closeTo.reset();
    level.opener = opener;
    level.waits = std::exchange(level.waitsNextTime, true);
    level.isOpen = true;

    const DialogWindow window = level.window;
    ++showing_;
    try {
        frontEnd_.runDialog(window, *this);
    } catch (...) {
        --showing_;
        if (isOpen(window.id)) finishClose(level, {});
        throw;
    }
    --showing_;
    if (!waitsFor(window.id)) return; // closed, or meant to stay open
    if (level.closeTo && !level.isClosing)
        closePage(window.id, false, *std::exchange(level.closeTo, std::nullopt));
    cancel(window.id);
}

void DialogEngine::loadPage(const std::string& module, const std::string& page)
{
    DialogLevel& level = current();
    if (!level.isOpen) refuse("no dialog is open to show the page \"" + page + "\"");
    level.turnTo(DialogPage::parse(page, module));
    level.isPreparingInnerPage = false;
    level.awaitsInnerHandler = false;
    if (!level.isClosing) showChangedPage(level);
}

void DialogEngine::showChangedPage(DialogLevel& level)
{
    if (!level.pageChanged) return;
    level.pageChanged = false;
    level.window.module = level.page.module;
    level.window.page = level.page.name;
    frontEnd_.loadDialogPage(level.window);
}

// --- Calls of pages

void DialogEngine::runPageCall(std::optional<int> window, const std::function<void()>& call)
{
    DialogLevel& level = window ? requireOpen(*window) : mainLevel();
    std::exception_ptr failure;
    {
        const ContextScope scope(*this, level);
        try {
            call();
        } catch (...) {
            failure = std::current_exception();
        }
    }
    undoUnfinishedLoad(level);
    if (level.closeTo && level.isOpen && !level.isClosing && !runsCallOf(level))
        closePage(level.window.id, false, *std::exchange(level.closeTo, std::nullopt));
    if (!isBusy()) dropForgottenLevels();
    if (failure) std::rethrow_exception(failure);
}

bool DialogEngine::isBusy() const { return showing_ > 0 || contexts_.size() > 1; }

// While a command waits, the main view's calls must not touch what that command left here.
DialogLevel& DialogEngine::mainLevel()
{
    return isBusy() ? beginLevel() : *contexts_.front().floor;
}

void DialogEngine::dropForgottenLevels()
{
    const Context& root = contexts_.front();
    std::erase_if(levels_, [&](const auto& level) {
        return !level->isOpen && level.get() != root.floor &&
               std::ranges::find(root.begun, level.get()) == root.begun.end();
    });
}

bool DialogEngine::runsCallOf(const DialogLevel& level) const
{
    return std::any_of(contexts_.begin() + 1, contexts_.end(),
                       [&](const Context& context) { return context.floor == &level; });
}

// A command that failed before it loaded its page must not leave its handler and values behind.
void DialogEngine::undoUnfinishedLoad(DialogLevel& level)
{
    if (!level.isPreparingInnerPage || level.restorePoints.empty()) return;
    const bool changedBefore = level.pageChanged;
    DialogValues valuesBefore = level.restorePoints.back().values;
    level.restore(level.restorePoints.back().cookie);
    std::swap(level.values, valuesBefore);
    level.pageChanged = changedBefore;
}

// --- Closing and going back

void DialogEngine::requireClosable(const DialogLevel& level) const
{
    if (level.isClosing) refuse(windowName(level.window.id) + " is closing already");
    const bool covered = std::ranges::any_of(levels_, [&](const auto& other) {
        return other->isOpen && other->waits && other->opener == level.window.id;
    });
    if (covered) refuse("another dialog is open over " + windowName(level.window.id));
}

bool DialogEngine::closePage(int window, bool returnValue, const std::string& url)
{
    DialogLevel& level = requireOpen(window);
    requireClosable(level);
    level.returnValue = Value(returnValue);
    if (!askToClose(level, url)) {
        level.returnValue = {}; // an open window has no result
        showChangedPage(level);
        return false;
    }
    finishClose(level, url);
    return true;
}

bool DialogEngine::askToClose(DialogLevel& level, const std::string& url)
{
    return !tellHandler(level, "OnDialogClose", url) || !level.isOpen;
}

// Whether the handler has handled it; a handler that fails is reported and closes its window.
bool DialogEngine::tellHandler(DialogLevel& level, std::string_view member, const std::string& url)
{
    const auto handler = level.handler;
    if (!handler || handler->memberId(member) == qmevents::unknownMember) return false;
    level.isClosing = true;
    bool handled = false;
    try {
        const ContextScope scope(*this, level);
        Value arguments[] = {Value(url), Value(false)};
        qmevents::invokeNamed(handler, member, qmevents::CallKind::method, arguments);
        handled = qmevents::toBool(arguments[1]);
    } catch (const Error& error) {
        level.returnValue = Value(false);
        level.isClosing = false;
        finishClose(level, {});
        frontEnd_.showMessage(
            {Message::Kind::unexpectedError, error.description(), {}, error.number()});
        return false;
    }
    level.isClosing = false;
    return handled;
}

void DialogEngine::finishClose(DialogLevel& level, const std::string& url)
{
    if (!level.isOpen) return;
    level.isOpen = false;
    level.restorePoints.clear();
    level.history.clear();
    level.closeTo.reset();
    frontEnd_.dialogClosed(level.window);
    if (!url.empty()) frontEnd_.navigate(url, false);
}

void DialogEngine::goBack(int window, const std::string& url)
{
    DialogLevel& level = requireOpen(window);
    requireClosable(level);
    const std::size_t first =
        level.restorePoints.empty() ? 0 : level.restorePoints.back().pagesBefore;
    if (level.history.size() <= first)
        refuse(windowName(window) + " shows its first page: there is none to go back to");
    std::size_t target = level.history.size() - 1;
    if (!url.empty()) {
        const std::string wanted = DialogPage::parse(url, level.page.module).address();
        while (!qmevents::text::sameName(level.history[target].address(), wanted)) {
            if (target == first) refuse(windowName(window) + " cannot go back to " + wanted);
            --target;
        }
    }
    const bool leavesInnerPage = !level.restorePoints.empty() && target == first;
    const std::string cookie = leavesInnerPage ? level.restorePoints.back().cookie : "";

    level.returnValue = Value(false); // whatever the step ends, it confirms nothing
    const bool handled = tellHandler(level, "OnDialogBack", level.history[target].address());
    if (!level.isOpen) return;
    level.returnValue = {};
    if (!handled && !level.pageChanged) {
        if (leavesInnerPage) {
            level.restore(cookie);
        } else {
            level.page = level.history[target];
            level.history.resize(target);
            level.pageChanged = true;
        }
    }
    showChangedPage(level);
}

void DialogEngine::cancel(int window)
{
    // What this window's page opened goes first, the innermost before the others.
    while (true) {
        const auto child = std::find_if(levels_.rbegin(), levels_.rend(), [&](const auto& level) {
            return level->isOpen && level->opener == window;
        });
        if (child == levels_.rend()) break;
        cancel((*child)->window.id);
    }
    DialogLevel* level = findOpen(window);
    if (!level) return;
    level->returnValue = Value(false);
    if (!level->isClosing) tellHandler(*level, "OnDialogClose", {});
    finishClose(*level, {});
}

void DialogEngine::reset()
{
    for (const auto& level : levels_) {
        level->isOpen = false;
        const auto values = std::exchange(level->values, {});
        const auto handler = std::exchange(level->handler, nullptr);
        const auto restorePoints = std::exchange(level->restorePoints, {});
    }
}

} // namespace refhost
