#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "automation/members.h"
#include "host/shell/dialog_level.h"
#include "host/shell/front_end.h"

namespace refhost {

/// The dialog engine (`App.Shell.Dialog`): shows content pages in modal windows, keeps the values
/// exchanged with them and asks a handler when a page closes or goes back. Dialogs nest: a page may
/// open another window over its own, which has values, handler and result of its own until its
/// values are emptied.
class DialogEngine : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "DialogEngine";
    const qmevents::Members& members() const override;

    /// `frontEnd` outlives the engine.
    explicit DialogEngine(FrontEnd& frontEnd);
    ~DialogEngine() override;

    // --- For the modules' ShowDialog and LoadDialog.

    /// Opens a window with `page` of `module` and returns once it has closed.
    void show(const std::string& module, const std::string& page,
              std::optional<std::int32_t> height = {}, std::optional<std::int32_t> width = {});
    /// Replaces the page of the open window. Does not wait.
    void loadPage(const std::string& module, const std::string& page);

    // --- For front ends.

    bool isOpen(int window) const;
    /// Whether the call that shows `window` returns only when it has closed.
    bool waitsFor(int window) const;
    /// The values that `window`'s page was handed and has set. Error 5 when it is not open.
    const DialogValues& valuesOf(int window) const;
    /// Runs `call` for the page in `window` (none: the page of the main view), so that
    /// `App.Shell.Dialog` means that window's dialog. A Close called meanwhile takes effect at the
    /// end. Error 5 when the window is not open.
    void runPageCall(std::optional<int> window, const std::function<void()>& call);
    /// The page in `window` closes with a result. True when the window closed, false when it stays
    /// because the handler wants it so. Error 5 when it is not open, is closing already, or has
    /// another window over it.
    bool closePage(int window, bool returnValue, const std::string& url = {});
    /// The page in `window` goes back to the page at `url` (empty: the one before). Error 5 when it
    /// cannot.
    void goBack(int window, const std::string& url = {});
    /// Closes `window`, if open, with the result False; the handler is told but not asked.
    void cancel(int window);
    /// Forgets all values, handlers and windows, so that nothing is kept alive by them.
    void reset();

    // --- The late-bound face.

    qmevents::Value value(const std::string& name) const;
    void setValue(const std::string& name, const qmevents::Value& value);
    qmevents::Ref<qmevents::Object> handler() const;
    void setHandler(const qmevents::Ref<qmevents::Object>& handler);
    qmevents::Value ReturnValue() const;
    void ClearClipboard();
    void SetRestorePoint(const std::string& cookie);
    void Restore(const std::string& cookie);
    qmevents::Ref<qmevents::Object> GetRestoreTask(const std::string& cookie);
    void Close(const std::optional<std::string>& url);
    void GoNext();
    std::string nextPage() const;
    void setNextPage(const std::string& page);
    bool waitForClose() const;
    void setWaitForClose(bool waits);
    std::string title() const;
    void setTitle(const std::string& title);
    std::string heading() const;
    void setHeading(const std::string& heading);

private:
    // What a call sees: the dialog of the window it came from, and those begun since.
    struct Context {
        DialogLevel* floor = nullptr;
        std::vector<DialogLevel*> begun;
    };
    class ContextScope;

    DialogLevel& current() const;
    DialogLevel& beginLevel();
    DialogLevel* findOpen(int window) const;
    DialogLevel& requireOpen(int window) const;
    DialogLevel& mainLevel();
    bool isBusy() const;
    void dropForgottenLevels();
    bool runsCallOf(const DialogLevel& level) const;
    void dropLevel(const DialogLevel* level);
    void requireClosable(const DialogLevel& level) const;
    bool askToClose(DialogLevel& level, const std::string& url);
    bool tellHandler(DialogLevel& level, std::string_view member, const std::string& url);
    void finishClose(DialogLevel& level, const std::string& url);
    void showChangedPage(DialogLevel& level);
    void undoUnfinishedLoad(DialogLevel& level);

    FrontEnd& frontEnd_;
    std::vector<std::unique_ptr<DialogLevel>> levels_;
    std::vector<Context> contexts_; // the innermost call last; never empty
    int lastWindow_ = 0;
    int showing_ = 0; // calls of show() that have not returned
};

} // namespace refhost
