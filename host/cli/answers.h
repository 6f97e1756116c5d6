#pragma once

#include <deque>
#include <optional>
#include <string>

#include "host/cli/json_text.h"
#include "host/shell/front_end.h"

namespace refhost {

/// What the user does in one dialog page.
struct DialogAnswer {
    std::string page;
    std::string script;                ///< Run while the page is shown; may be empty.
    Json values = Json::object();      ///< What the page sets before it closes.
    std::optional<bool> returnValue;   ///< Not given: false, unless the script has moved on.
    std::string url;                   ///< Where the main view goes to when the page closes.
    std::optional<std::string> backTo; ///< Goes back instead of closing; empty: to the page before.
};

/// What a user would press and fill in, in order. A question or dialog comes up; it is given the
/// next answer when that is one of its kind.
class Answers {
public:
    struct Answer {
        int position = 0; ///< In the file, counted from 1.
        std::optional<Button> button;
        std::optional<DialogAnswer> dialog;
    };

    Answers() = default;
    /// Reads the text of an answers file. Error 5 names the entry that is wrong.
    static Answers parse(const std::string& text);

    /// The answer to a question; nothing when the next one is for a dialog or there is none.
    std::optional<Answer> takePrompt();
    /// The answer to a dialog page; nothing when the next one is for a question or there is none.
    std::optional<Answer> takeDialog();
    /// What takeDialog would give, or null.
    const DialogAnswer* nextDialog() const;
    std::size_t remaining() const { return answers_.size(); }

private:
    std::optional<Answer> take();
    std::deque<Answer> answers_;
};

} // namespace refhost
