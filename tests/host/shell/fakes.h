#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "automation/describe.h"
#include "automation/object.h"
#include "host/shell/shell.h"

namespace refhost {

/// Runs what a test wants to happen in each window and writes down what the user would see.
class ScriptedFrontEnd : public FrontEnd {
public:
    std::deque<std::function<void(int window)>> windows; ///< What happens in the next ones.
    std::deque<Button> answers;
    std::vector<std::string> seen;

    void showMessage(const Message& message) override
    {
        const char* const kinds[] = {"box ", "user error ", "unexpected error "};
        seen.push_back(kinds[static_cast<int>(message.kind)] + message.text + "|" + message.title +
                       (message.code ? "|" + std::to_string(*message.code) : ""));
    }
    Button ask(const Prompt& prompt) override
    {
        seen.push_back("ask " + prompt.text);
        if (answers.empty()) return Button::no;
        const Button answer = answers.front();
        answers.pop_front();
        return answer;
    }
    void navigate(const std::string& url, bool second) override
    {
        seen.push_back("go " + url + (second ? " second" : ""));
    }
    void runDialog(const DialogWindow& window, DialogEngine&) override
    {
        seen.push_back("open " + window.page);
        if (windows.empty()) return;
        const auto happens = std::move(windows.front());
        windows.pop_front();
        happens(window.id);
    }
    void dialogClosed(const DialogWindow& window) override
    {
        seen.push_back("close " + window.page);
    }
    void loadDialogPage(const DialogWindow& window) override
    {
        seen.push_back("load " + window.page);
    }
    void refresh() override { seen.emplace_back("refresh"); }
    void setPageModified() override { seen.emplace_back("modified"); }
};

/// A dialog as commands make them: hands its inputs over, shows its page in a window of its own or
/// inside the open one, and takes one output when it was confirmed.
class FakeDialog : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "FakeDialog";
    const qmevents::Members& members() const override
    {
        using qmevents::arg;
        static const qmevents::Members table =
            qmevents::describe<FakeDialog>("A dialog.")
                .method("OnDialogClose", &FakeDialog::OnDialogClose, {arg("Url"), arg("Handled")},
                        "The page closes.")
                .method("OnDialogBack", &FakeDialog::OnDialogBack, {arg("Url"), arg("Handled")},
                        "The page goes back.")
                .method("DialogChildComplete", &FakeDialog::DialogChildComplete,
                        {arg("Child"), arg("Cookie"), arg("AllowClose")}, "An inner page is done.");
        return table;
    }

    FakeDialog(Shell& shell, std::string contentPage)
        : page(std::move(contentPage)), shell_(shell), engine_(&shell.dialogEngine())
    {
    }

    bool create()
    {
        put(engine_, "Handler", qmevents::Ref<FakeDialog>(this));
        put(engine_, "Value", "title", "Title of " + page);
        put(engine_, "Value", "in", input);
        shell_.dialogEngine().show("events", page);
        const bool confirmed = toBool(get(engine_, "ReturnValue"));
        call(engine_, "ClearClipboard");
        return confirmed;
    }
    void load(const std::string& cookieText)
    {
        cookie = cookieText;
        call(engine_, "SetRestorePoint", cookie);
        put(engine_, "Handler", qmevents::Ref<FakeDialog>(this));
        put(engine_, "Value", "in", input);
        shell_.dialogEngine().loadPage("events", page);
    }

    void OnDialogClose(const std::string&, bool* handled)
    {
        if (fails) throw qmevents::Error(qmevents::ErrorNumber::overflow, "Overflow");
        if (toBool(get(engine_, "ReturnValue"))) output = get(engine_, "Value", "out");
        bool allowClose = true;
        if (!cookie.empty()) {
            call(engine_, "Restore", cookie);
            qmevents::Value arguments[] = {qmevents::Ref<FakeDialog>(this), cookie, allowClose};
            invokeNamed(getObject(engine_, "Handler"), "DialogChildComplete",
                        qmevents::CallKind::method, arguments);
            allowClose = toBool(arguments[2]);
        }
        *handled = !allowClose;
    }
    void OnDialogBack(const std::string& url, bool* handled)
    {
        if (cookie.empty()) return;
        const auto task = toObject(call(engine_, "GetRestoreTask", cookie));
        if (toText(get(task, "Url")) == url) OnDialogClose(url, handled);
    }
    void DialogChildComplete(const qmevents::Ref<qmevents::Object>&, const std::string&,
                             bool* allowClose)
    {
        childOutput = get(engine_, "Value", "out");
        if (keepsOpen) *allowClose = false;
        if (nextPage.empty()) return;
        put(engine_, "NextPage", nextPage);
        call(engine_, "GoNext");
    }

    std::string page;
    std::string cookie;
    qmevents::Value input;
    qmevents::Value output;
    qmevents::Value childOutput;
    std::string nextPage;
    bool keepsOpen = false;
    bool fails = false;

private:
    Shell& shell_;
    qmevents::Ref<qmevents::Object> engine_;
};

} // namespace refhost
