#pragma once

#include <functional>
#include <optional>
#include <string>

#include "host/cli/answers.h"
#include "host/cli/json_text.h"
#include "host/shell/dialog_engine.h"
#include "host/shell/front_end.h"

namespace refhost {

/// A user who is a list of answers: writes down what the shell shows and does in dialogs what the
/// answers say. A question or dialog without an answer is answered No or cancelled.
class HeadlessFrontEnd : public FrontEnd {
public:
    HeadlessFrontEnd(JsonLines& lines, Answers answers)
        : lines_(lines), answers_(std::move(answers))
    {
    }

    /// Runs the script of a dialog page; failures are thrown.
    std::function<void(const std::string& text)> runScript;

    /// Why the answers do not fit what came up; empty while they do. The run has failed then, even
    /// where a command went on after the error that this raised.
    const std::string& misfit() const { return misfit_; }
    std::size_t unusedAnswers() const { return answers_.remaining(); }

    void showMessage(const Message& message) override;
    Button ask(const Prompt& prompt) override;
    void navigate(const std::string& url, bool second) override;
    void runDialog(const DialogWindow& window, DialogEngine& engine) override;
    void loadDialogPage(const DialogWindow& window) override;
    void refresh() override;
    void setPageModified() override {} // nothing shows it

private:
    /// A window that is being worked in, the innermost one last.
    struct Open {
        DialogWindow window;
        DialogEngine& engine;
        int pagesLoaded = 0;
        Open* below = nullptr;
    };

    void writePage(const char* kind, const Open& open);
    void answerPage(Open& open, const Answers::Answer& answer);
    [[noreturn]] void refuse(const Answers::Answer& answer, const std::string& reason);

    JsonLines& lines_;
    Answers answers_;
    std::string misfit_;
    Open* open_ = nullptr;
};

} // namespace refhost
