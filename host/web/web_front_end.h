#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/shell/front_end.h"
#include "host/web/apartment.h"
#include "host/web/sign_in_progress.h"
#include "host/web/view_hub.h"

namespace refhost {

/// Shows a session to its user in browser pages. What a command tells or asks goes to the page
/// whose call it runs for; when that page is gone, questions count as cancelled.
class WebFrontEnd : public FrontEnd {
public:
    WebFrontEnd(Apartment& apartment, ViewHub& views) : apartment_(apartment), views_(views) {}

    /// Marks the scope in which a call of `view` runs.
    class Call {
    public:
        Call(WebFrontEnd& frontEnd, std::shared_ptr<View> view);
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;
        ~Call();

    private:
        WebFrontEnd& frontEnd_;
    };

    /// Until endSignIn there is no page yet: navigation is kept, and dialogs that are left open are
    /// told to `progress`, which may be nothing.
    void beginSignIn(std::shared_ptr<SignInProgress> progress);
    /// Tells anew how the dialog that was left open during signing in stands.
    void tellProgress();
    /// The page that was navigated to; empty without one.
    std::string endSignIn();

    void showMessage(const Message& message) override;
    Button ask(const Prompt& prompt) override;
    void navigate(const std::string& url, bool second) override;
    void runDialog(const DialogWindow& window, DialogEngine& engine) override;
    void dialogClosed(const DialogWindow& window) override;
    void loadDialogPage(const DialogWindow& window) override;
    void refresh() override;
    void setPageModified() override;

    std::function<void(int window)> onDialogClosed;

private:
    std::shared_ptr<View> view() const;
    bool cannotWaitFor(const std::shared_ptr<View>& view) const;
    std::optional<int> waitForAnswer(const std::shared_ptr<View>& view, int question);

    Apartment& apartment_;
    ViewHub& views_;
    std::vector<std::shared_ptr<View>> callers_;      // the innermost call's last
    std::map<const View*, std::string> destinations_; // where pages go once their calls ended
    std::map<int, std::shared_ptr<View>> viewsOfWindows_;

    bool isSigningIn_ = false;
    std::shared_ptr<SignInProgress> progress_;
    DialogEngine* progressEngine_ = nullptr;
    int progressWindow_ = 0;
    std::string firstPage_;
};

} // namespace refhost
