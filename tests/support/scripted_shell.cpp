// The windows of the recording host: messages, questions and dialogs.

#include <gtest/gtest.h>

#include "tests/support/scripted_host.h"
#include "tests/support/shown_value.h"

namespace qmevents::testing {

Ref<Object> ScriptedHost::makeShell()
{
    auto shell = puppet("Shell");
    shell->on("MsgBox", [this](std::span<Value> a) {
        log.push_back("MsgBox: " + toText(a[0]) + " | " + toText(a[1]));
        return Value();
    });
    shell->on("MsgPrompt", [this](std::span<Value> a) {
        log.push_back("MsgPrompt: " + toText(a[0]) + " | " + toText(a[1]) + " | " + toText(a[2]));
        return Value(saysYes ? 6 : 7);
    });
    auto page = puppet("Page");
    page->on("SetModified", [this](std::span<Value>) {
        log.emplace_back("Page.SetModified");
        return Value();
    });
    shell->holds("Page", page);
    for (const char* name : {"ErrorUser", "ErrorUnexpected"}) {
        shell->on(name, [this, name](std::span<Value> a) {
            std::string line = name + std::string(": ") + toText(a[0]);
            for (const auto& more : a.subspan(1)) line += " | " + shown(more);
            log.push_back(line);
            return Value();
        });
    }
    shell->on("Navigate", [this](std::span<Value> a) {
        log.push_back("Navigate: " + toText(a[0]) + (a.size() > 1 ? " | " + shown(a[1]) : ""));
        return Value();
    });
    const auto engine = makeDialogEngine();
    shell->on("Dialog", [this, engine](std::span<Value> a) {
        return a.empty() ? Value(engine) : dialogValues[toText(a[0])];
    });
    shell->onPut("Dialog", [this](std::span<Value> a) {
        dialogValues[toText(a[0])] = a[1];
        log.push_back("Dialog " + toText(a[0]) + " = " + shown(a[1]));
        return Value();
    });
    return shell;
}

void ScriptedHost::closeDialog(const Value& returnValue)
{
    dialogReturnValue_ = returnValue;
    Value closing[] = {Value("events/page"), Value(false)};
    invokeNamed(dialogHandler_.object(), "OnDialogClose", CallKind::method, closing);
    EXPECT_FALSE(toBool(closing[1])) << "a top-level dialog lets its window close";
}

Ref<Object> ScriptedHost::makeDialogEngine()
{
    auto engine = puppet("Dialog");
    engine->on("Handler", [this](std::span<Value>) { return dialogHandler_; });
    engine->onPut("Handler", [this](std::span<Value> a) {
        dialogHandler_ = a[0];
        return Value();
    });
    engine->on("ReturnValue", [this](std::span<Value>) { return dialogReturnValue_; });
    engine->onPut("ReturnValue", [this](std::span<Value> a) {
        dialogReturnValue_ = a[0];
        return Value();
    });
    engine->on("GetRestoreTask", [](std::span<Value>) -> Value {
        auto task = puppet("Task");
        task->holds("Url", "events\\findevent.html");
        return task;
    });
    engine->on("Close", [this](std::span<Value> a) {
        log.push_back("Dialog.Close " + shown(a[0]));
        if (std::exchange(dialogIsLeftOpen_, false)) closeDialog(false);
        return Value();
    });
    for (const char* name : {"ClearClipboard", "SetRestorePoint", "Restore", "GoNext"}) {
        engine->on(name, [this, name](std::span<Value> a) {
            log.push_back("Dialog." + std::string(name) + (a.empty() ? "" : " " + shown(a[0])));
            if (name == std::string("ClearClipboard")) dialogValues.clear();
            return Value();
        });
    }
    engine->onPut("WaitForClose", [this](std::span<Value> a) {
        dialogIsWaitedFor_ = toBool(a[0]);
        return Value();
    });
    engine->onPut("NextPage", [this](std::span<Value> a) {
        log.push_back("Dialog.NextPage = " + shown(a[0]));
        return Value();
    });
    return engine;
}

} // namespace qmevents::testing
