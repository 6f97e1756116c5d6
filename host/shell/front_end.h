#pragma once

#include <optional>
#include <string>

namespace refhost {

/// Something that the shell tells the user.
struct Message {
    enum class Kind { box, userError, unexpectedError };
    Kind kind = Kind::box;
    std::string text;
    std::string title;
    std::optional<int> code; ///< The number that came with an error, if any.
};

/// A question with buttons.
struct Prompt {
    std::string text;
    int buttons = 4; ///< 0 OK, 1 OK and Cancel, 3 Yes, No and Cancel, 4 Yes and No.
    std::string title;
};

/// The numbers of the buttons of a prompt.
enum class Button : int { ok = 1, cancel = 2, yes = 6, no = 7 };

/// A window in which dialog pages are shown.
struct DialogWindow {
    std::string module; ///< Whose page it is: "events", or a module of the host.
    std::string page;   ///< The content page, for example "addevent".
    int height = 468;
    int width = 550;
    int id = 0; ///< Names the window towards the engine; no two windows of a session share one.
    std::string title;
};

class DialogEngine;

/// What a signed-in session shows its user through, and asks: a browser, or scripted answers. All
/// calls come on the session's thread.
class FrontEnd {
public:
    FrontEnd() = default;
    FrontEnd(const FrontEnd&) = delete;
    FrontEnd& operator=(const FrontEnd&) = delete;
    virtual ~FrontEnd() = default;

    /// Shows a message and returns once the user has seen it.
    virtual void showMessage(const Message& message) = 0;
    /// Asks and returns the button pressed; Cancel (or No where there is none) when nobody answers.
    virtual Button ask(const Prompt& prompt) = 0;
    /// Moves the main view to `url` ("obsidian://events/events-view").
    virtual void navigate(const std::string& url, bool second) = 0;
    /// Shows a modal window and returns when `engine.isOpen(window.id)` no longer holds, or at once
    /// when not `engine.waitsFor(window.id)`. While it waits, calls of the page in the window run
    /// on this thread. A window that should wait but is still open on return counts as cancelled.
    virtual void runDialog(const DialogWindow& window, DialogEngine& engine) = 0;
    /// A window has closed; called before the call that shows it returns.
    virtual void dialogClosed(const DialogWindow&) {}
    /// Replaces the page in the window that is open.
    virtual void loadDialogPage(const DialogWindow& window) = 0;
    /// The document asks what is shown to read its data again.
    virtual void refresh() = 0;
    /// The page shown was changed by the user.
    virtual void setPageModified() = 0;
};

} // namespace refhost
