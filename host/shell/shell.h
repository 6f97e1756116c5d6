#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "automation/members.h"
#include "host/shell/dialog_engine.h"
#include "host/shell/front_end.h"
#include "host/shell/page.h"

namespace refhost {

/// The user interface shell (`App.Shell`): messages, questions, navigation, dialogs, the page shown
/// and its toolbar. All of it reaches the user through the front end.
class Shell : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Shell";
    const qmevents::Members& members() const override;

    /// `frontEnd` outlives the shell.
    explicit Shell(FrontEnd& frontEnd);

    /// The engine behind `App.Shell.Dialog`, for the modules' ShowDialog and LoadDialog.
    DialogEngine& dialogEngine() const { return *dialog_; }

    void MsgBox(const std::string& text, const std::string& title);
    std::int32_t MsgPrompt(const std::string& text, std::int32_t buttons, const std::string& title);
    void ErrorUnexpected(const std::string& text, const std::optional<qmevents::Value>& number);
    void ErrorUser(const std::string& text, const std::optional<qmevents::Value>& code,
                   const std::optional<bool>& flag);
    /// How many errors the user was shown so far: a caller of a module that swallows its failures
    /// sees whether there was one.
    std::int32_t failuresShown() const { return failuresShown_; }
    void Navigate(const std::string& url, const std::optional<bool>& second);
    qmevents::Value dialog(const std::optional<std::string>& name) const;
    void setDialog(const std::optional<std::string>& name, const qmevents::Value& value);

    const qmevents::Ref<Page>& page() const { return page_; }
    const qmevents::Ref<Toolbar>& toolbar() const { return toolbar_; }

private:
    FrontEnd& frontEnd_;
    std::int32_t failuresShown_ = 0;
    qmevents::Ref<DialogEngine> dialog_;
    qmevents::Ref<Page> page_;
    qmevents::Ref<Toolbar> toolbar_;
};

/// The shell of a session whose user `frontEnd` reaches. Call `dialogEngine().reset()` when the
/// session ends, before the add-in is released.
qmevents::Ref<Shell> makeShell(FrontEnd& frontEnd);

} // namespace refhost
