// Scriptlets in the system's script engine.

#include "automation/conversions.h"
#include "com/active_script.h"
#include "tests/com/client.h"
#include "tests/support/puppet.h"

namespace qmevents::com::testing {
namespace {

using qmevents::testing::puppet;

class Scriptlets : public ::testing::Test {
protected:
    Scriptlets()
    {
        app->on("Note", [this](std::span<Value> arguments) {
            notes += toText(arguments[0]) + ";";
            return Value(static_cast<std::int32_t>(notes.size()));
        });
        put(engine, "Language", "vbscript");
        call(engine, "AddObject", "App", app);
    }
    Value failure(const char* member) { return get(getObject(engine, "Error"), member); }
    int run(const char* code)
    {
        try {
            call(engine, "AddCode", code);
            return 0;
        } catch (const Error& error) {
            return error.number();
        }
    }

    std::string notes;
    Ref<qmevents::testing::Puppet> app = puppet("App");
    Ref<Object> engine = newActiveScript();
};

TEST_F(Scriptlets, CallAppAndRememberTheirProcedures)
{
    EXPECT_EQ(run("Dim n\r\nn = App.Note(\"one\")\r\nSub Twice(text)\r\nApp.Note text & text\r\n"
                  "End Sub"),
              0);
    EXPECT_EQ(run("Twice \"a\"\r\nApp.Note n"), 0);
    EXPECT_EQ(notes, "one;aa;4;");
    EXPECT_EQ(toInt32(failure("Number")), 0);
}

TEST_F(Scriptlets, TellWhatFailedAndWhere)
{
    EXPECT_EQ(run("App.Note 1\r\nApp.Note 2\r\nApp.Nowhere\r\n"), 438);
    EXPECT_EQ(notes, "1;2;");
    EXPECT_EQ(toInt32(failure("Number")), 438);
    EXPECT_EQ(toInt32(failure("Line")), 3);
    EXPECT_EQ(toText(failure("Description")), "Object doesn't support this property or method");
    EXPECT_NE(run("App.Note (("), 0) << "a syntax error";
    EXPECT_NE(toInt32(failure("Number")), 0);
    EXPECT_EQ(run("App.Note 3"), 0) << "a failure is over with the next scriptlet";
    EXPECT_EQ(toInt32(failure("Number")), 0);
    EXPECT_EQ(notes, "1;2;3;");
}

TEST_F(Scriptlets, NeedALanguageThatIsThere)
{
    try {
        put(newActiveScript(), "Language", "cobolscript");
        ADD_FAILURE();
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), 429);
        EXPECT_EQ(error.description(), "The script language \"cobolscript\" is not there");
    }
    EXPECT_THROW(call(newActiveScript(), "AddCode", "x = 1"), Error);
    call(engine, "Reset");
    EXPECT_NE(run("App.Note 1"), 0) << "the objects are forgotten";
}

} // namespace
} // namespace qmevents::com::testing
