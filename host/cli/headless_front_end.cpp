#include "host/cli/headless_front_end.h"

#include <algorithm>
#include <map>
#include <utility>

#include "automation/error.h"

namespace refhost {
namespace {

constexpr const char* messageNames[] = {"MsgBox", "ErrorUser", "ErrorUnexpected"};

bool offers(int buttons, Button button)
{
    switch (button) {
    case Button::ok:
        return buttons == 0 || buttons == 1;
    case Button::cancel:
        return buttons == 1 || buttons == 3;
    case Button::yes:
    case Button::no:
        break;
    }
    return buttons == 3 || buttons == 4;
}

Button refusingButton(int buttons)
{
    for (const Button button : {Button::no, Button::cancel}) {
        if (offers(buttons, button)) return button;
    }
    return Button::ok;
}

} // namespace

void HeadlessFrontEnd::showMessage(const Message& message)
{
    Json line{{"kind", "message"},
              {"box", messageNames[static_cast<int>(message.kind)]},
              {"text", message.text}};
    if (!message.title.empty()) line["title"] = message.title;
    if (message.code) line["code"] = *message.code;
    lines_.write(line);
}

Button HeadlessFrontEnd::ask(const Prompt& prompt)
{
    Json line{{"kind", "prompt"},
              {"text", prompt.text},
              {"buttons", prompt.buttons},
              {"title", prompt.title}};
    const auto answer = answers_.takePrompt();
    const Button button = answer ? *answer->button : refusingButton(prompt.buttons);
    line["answer"] = static_cast<int>(button);
    if (!answer) line["unanswered"] = true;
    lines_.write(line);
    if (answer && !offers(prompt.buttons, button)) {
        refuse(*answer, "the prompt \"" + prompt.text + "\" has no button " +
                            std::to_string(static_cast<int>(button)));
    }
    return button;
}

void HeadlessFrontEnd::navigate(const std::string& url, bool second)
{
    Json line{{"kind", "navigate"}, {"url", url}};
    if (second) line["second"] = true;
    lines_.write(line);
}

void HeadlessFrontEnd::refresh() { lines_.write({{"kind", "refresh"}}); }

void HeadlessFrontEnd::writePage(const char* kind, const Open& open)
{
    Json line{{"kind", kind}, {"page", open.window.page}, {"module", open.window.module}};
    if (open.pagesLoaded == 0) {
        line["height"] = open.window.height;
        line["width"] = open.window.width;
    }
    Json& values = line["values"] = Json::object();
    const auto& held = open.engine.valuesOf(open.window.id);
    for (const auto& [name, value] : std::map(held.begin(), held.end())) {
        values[name] = toJson(value);
    }
    if (!open.engine.waitsFor(open.window.id)) {
        line["waits"] = false; // whoever opened it closes it, nobody answers
        return lines_.write(line);
    }
    const DialogAnswer* answer = answers_.nextDialog();
    if (answer && answer->backTo) {
        line["answer"] = "back";
    } else {
        line["answer"] = answer && answer->returnValue.value_or(false);
    }
    if (!answer) line["unanswered"] = true;
    lines_.write(line);
}

void HeadlessFrontEnd::loadDialogPage(const DialogWindow& window)
{
    for (Open* open = open_; open; open = open->below) {
        if (open->window.id != window.id) continue;
        open->window = window;
        ++open->pagesLoaded;
        writePage("dialog-load", *open);
    }
}

void HeadlessFrontEnd::runDialog(const DialogWindow& window, DialogEngine& engine)
{
    Open open{window, engine, 0, open_};
    const struct Entered {
        Entered(Open*& top, Open* entered) : top_(top) { top_ = entered; }
        Entered(const Entered&) = delete;
        Entered& operator=(const Entered&) = delete;
        ~Entered() { top_ = top_->below; }
        Open*& top_;
    } entered(open_, &open);
    writePage("dialog", open);
    if (!engine.waitsFor(window.id)) return;
    // Each page that the window comes to show takes an answer of its own.
    while (misfit_.empty() && engine.isOpen(window.id)) {
        const auto answer = answers_.takeDialog();
        if (!answer) return engine.cancel(window.id);
        answerPage(open, *answer);
    }
}

void HeadlessFrontEnd::answerPage(Open& open, const Answers::Answer& answer)
{
    const DialogAnswer& dialog = *answer.dialog;
    const int window = open.window.id;
    if (!qmevents::text::sameName(dialog.page, open.window.page)) {
        refuse(answer, "it is for the dialog \"" + dialog.page + "\", but \"" + open.window.page +
                           "\" is shown");
    }
    const int loadedBefore = open.pagesLoaded;
    try {
        open.engine.runPageCall(window, [&] {
            if (!dialog.script.empty()) runScript(dialog.script);
            for (const auto& [name, value] : dialog.values.items()) {
                open.engine.setValue(name, fromJson(value));
            }
        });
        const bool movedOn = !open.engine.isOpen(window) || open.pagesLoaded != loadedBefore;
        if (dialog.backTo && !movedOn) {
            open.engine.goBack(window, *dialog.backTo);
        } else if (!movedOn) {
            open.engine.closePage(window, dialog.returnValue.value_or(false), dialog.url);
        }
    } catch (const qmevents::Error& error) {
        if (!misfit_.empty()) throw;
        refuse(answer, error.description());
    }
}

void HeadlessFrontEnd::refuse(const Answers::Answer& answer, const std::string& reason)
{
    misfit_ = "answer " + std::to_string(answer.position) + ": " + reason;
    throw qmevents::Error(static_cast<int>(qmevents::ErrorNumber::invalidCall), "quillmere",
                          misfit_);
}

} // namespace refhost
