#include <gtest/gtest.h>

#include "automation/error.h"
#include "tests/host/shell/fakes.h"

namespace refhost {
namespace {

TEST(Shell, ShowsWhatCommandsTell)
{
    ScriptedFrontEnd frontEnd;
    frontEnd.answers = {Button::yes, Button::cancel};
    const qmevents::Ref<qmevents::Object> shell = makeShell(frontEnd);
    call(shell, "MsgBox", "Hello", "Title");
    EXPECT_EQ(toInt32(call(shell, "MsgPrompt", "Sure?", 4, "Delete")), 6);
    EXPECT_EQ(toInt32(call(shell, "MsgPrompt", "Sure?", 1)), 2);
    call(shell, "ErrorUnexpected", "Broken");
    call(shell, "ErrorUnexpected", "Broken", 1717);
    call(shell, "ErrorUser", "Mend it", 1002, false);
    call(shell, "ErrorUser", "Mend it", "a further value");
    call(shell, "Navigate", "obsidian://events/events-view", true);
    call(getObject(shell, "Page"), "SetModified");
    EXPECT_EQ(frontEnd.seen,
              (std::vector<std::string>{"box Hello|Title", "ask Sure?", "ask Sure?",
                                        "unexpected error Broken|", "unexpected error Broken||1717",
                                        "user error Mend it||1002", "user error Mend it|",
                                        "go obsidian://events/events-view second", "modified"}));
}

TEST(Shell, RefusesBadArgumentsNamingThem)
{
    ScriptedFrontEnd frontEnd;
    const qmevents::Ref<qmevents::Object> shell = makeShell(frontEnd);
    const auto document = getObject(getObject(shell, "Page"), "Document");
    const struct {
        std::function<void()> act;
        const char* part;
    } cases[] = {
        {[&] { call(shell, "MsgPrompt", "Sure?", 17); }, "not 17"},
        {[&] { call(shell, "MsgPrompt", "Sure?", "many"); }, "Buttons of Shell.MsgPrompt"},
        {[&] { call(shell, "Navigate", "https://elsewhere.example/x"); }, "https://elsewhere"},
        {[&] { call(shell, "Navigate", "obsidian://events"); }, "obsidian://events"},
        {[&] { call(shell, "Navigate", ""); }, "is no address"},
        {[&] { call(shell, "Navigate", "obsidian://events/a\nb"); }, "is no address"},
        {[&] { call(document, "getElementById", ""); }, "needs an id"},
        {[&] { put(shell, "Dialog", 1); }, "Shell.Dialog"},
    };
    for (const auto& [act, part] : cases) {
        try {
            act();
            ADD_FAILURE() << "accepted: " << part;
        } catch (const qmevents::Error& error) {
            EXPECT_NE(error.description().find(part), std::string::npos) << error.description();
        }
    }
    EXPECT_TRUE(frontEnd.seen.empty());
}

TEST(Shell, KeepsPageElementsUntilTheNextNavigation)
{
    ScriptedFrontEnd frontEnd;
    const qmevents::Ref<qmevents::Object> shell = makeShell(frontEnd);
    const auto element = [&] {
        return toObject(
            call(getObject(getObject(shell, "Page"), "Document"), "getElementById", "total"));
    };
    put(element(), "innerText", "12");
    EXPECT_EQ(toText(get(element(), "innerText")), "12");
    call(shell, "Navigate", "obsidian://events/events-view");
    EXPECT_EQ(toText(get(element(), "innerText")), "");
}

} // namespace
} // namespace refhost
