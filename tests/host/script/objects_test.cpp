#include <gtest/gtest.h>

#include <map>

#include "automation/collection.h"
#include "automation/describe.h"
#include "host/script/script_control.h"
#include "tests/host/script/runner.h"

namespace refhost {
namespace {

using qmevents::arg;
using qmevents::makeRef;
using qmevents::Ref;
using qmevents::Value;

/// A host object with one member of each kind that scripts use.
class Desk : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Desk";
    const qmevents::Members& members() const override
    {
        static const qmevents::Members table =
            qmevents::describe<Desk>("A desk.")
                .property("Slot", &Desk::slot, &Desk::setSlot, {arg("Section"), arg("Name")},
                          "Indexed.")
                .asDefault()
                .property("Amount", &Desk::Amount, "Money.")
                .property("Other", &Desk::Other, "Another object.")
                .readOnly("Items", &Desk::items, "A collection.")
                .method("Ask", &Desk::ask, {arg("Id"), qmevents::optional("Message")},
                        "Answers by reference.")
                .method("Log", &Desk::log,
                        {arg("A"), qmevents::optional("B", "-"), qmevents::optional("C", "-")},
                        "Remembers.")
                .method("Next", &Desk::next, "A member named like a word of the language.");
        return table;
    }
    Value slot(const std::string& section, const std::string& name) const
    {
        const auto found = slots.find(section + "/" + name);
        return found == slots.end() ? Value() : found->second;
    }
    void setSlot(const std::string& section, const std::string& name, const Value& value)
    {
        slots[section + "/" + name] = value;
    }
    Ref<qmevents::Collection> items() const { return collection; }
    bool ask(std::int32_t id, std::string* message)
    {
        if (message) *message = "no " + std::to_string(id);
        return id > 5;
    }
    void log(const std::string& a, const std::string& b, const std::string& c)
    {
        logged += a + b + c + ";";
    }
    std::int32_t next() { return ++count; }

    qmevents::Currency Amount;
    Value Other;
    Ref<qmevents::Collection> collection = makeRef<qmevents::Collection>();
    std::map<std::string, Value> slots;
    std::string logged;
    std::int32_t count = 0;
};

struct Office : Runner {
    Office() { engine.addObject("Desk", desk); }
    Office(const Office&) = delete;
    Office& operator=(const Office&) = delete;
    ~Office()
    {
        // A desk may hold itself.
        desk->slots.clear();
        desk->Other = Value();
    }
    Ref<Desk> desk = makeRef<Desk>();
};

TEST(ScriptObjects, AreReadWrittenAndCalledByName)
{
    Office office;
    EXPECT_EQ(
        office.run("Desk.Slot(\"a\", \"b\") = 1\nDesk(\"a\", \"c\") = Desk(\"A\" & \"\", \"b\")\n"
                   "Set Desk.Slot(\"x\", \"y\") = Desk\nSet Desk(\"x\", \"z\") = Desk.Items\n"
                   "desk.amount = \"12.50\"\nPrint Desk.Amount * 2, TypeName(Desk.Amount)\n"
                   "Print Desk(\"a\", \"b\"), IsEmpty(Desk(\"a\", \"c\")), Desk.Next\n"
                   "Print Desk.Slot(\"x\", \"y\") Is Desk, TypeName(Desk(\"x\", \"z\"))\n"
                   "Set d = Desk: Set d.Other = d: Print d.Other.Other.Next\nd.Other = Empty"),
        "25 Currency\n1 True 1\nTrue Collection\n2\n");
    EXPECT_EQ(office.run("Desk.Log 1\nDesk.Log 1, , 3\nDesk.Log(4)\nCall Desk.Log(5, 6)\n"
                         "Desk.Log (1 + 1) * 2, 3\nCall Desk.Next\nDesk.Next()"),
              "");
    EXPECT_EQ(office.desk->logged, "1--;1-3;4--;56-;43-;");
    EXPECT_EQ(office.run("With Desk\n.Log .Next, .Next\n.Amount = 3\nWith .Items\nPrint .Count\n"
                         "End With\nPrint .Amount\nEnd With"),
              "0\n3\n");
}

TEST(ScriptObjects, GiveByReferenceResultsToVariablesOnly)
{
    Office office;
    EXPECT_EQ(office.run("ok = Desk.Ask(3, msg)\nPrint ok, msg\n"
                         "Dim a(1): a(1) = \"old\": Desk.Ask 4, a(1): Print a(1)\n"
                         "msg = \"kept\": Desk.Ask 5, (msg): Print msg\nDesk.Ask 5, msg & \"\"\n"
                         "If Desk.Ask(6) Then Print msg\n"
                         "Sub Inner(m)\nDesk.Ask 7, m\nEnd Sub\nInner msg: Print msg\n"
                         "Const c = \"fixed\": Desk.Ask 8, c: Print c"),
              "False no 3\nno 4\nkept\nkept\nno 7\nfixed\n");
    EXPECT_EQ(office.run("Option Explicit\nDesk.Ask 1, unknown"),
              "2 500: Variable is undefined (unknown)");
}

TEST(ScriptObjects, AreEnumeratedAndStandForTheirDefaultMembers)
{
    Office office;
    const auto item = makeRef<qmevents::Collection>();
    item->append(5, "five");
    office.desk->collection->append("first", "k");
    office.desk->collection->append(item);
    EXPECT_EQ(office.run("For Each x In Desk.Items\nPrint TypeName(x)\nNext\n"
                         "Print Desk.Items(\"K\"), Desk.Items(1), Desk.Items.Item(2)(\"five\")\n"
                         "For Each x In Desk.Items(2): Print x: Next"),
              "String\nCollection\nfirst first 5\n5\n");
    EXPECT_EQ(office.run("x = Desk"), "1 449: Argument not optional (Section of Desk.Slot)");
    EXPECT_EQ(office.run("Set x = Desk.Items\nPrint IsObject(x), IsNull(x), VarType(x)"),
              "True False 9\n");
}

TEST(ScriptObjects, ReportTheFailuresOfWhatTheyCall)
{
    Office office;
    EXPECT_EQ(office.run("\nDesk.Missing 1"),
              "2 438: Object doesn't support this property or method (Desk.Missing)");
    EXPECT_EQ(office.engine.error().source, "QMEvents");
    EXPECT_EQ(office.run("Desk.Amount = \"x\""),
              "1 13: Type mismatch (String where a number is needed): Desk.Amount");
    EXPECT_EQ(office.run("Set Desk = Nothing"), "1 501: Illegal assignment (Desk)");
    EXPECT_EQ(office.run("Desk.Items(9) = 1"), "1 383: Property is read-only (Desk.Items)");
}

TEST(ScriptControlObject, RunsScriptsAndKeepsTheirErrors)
{
    const auto control = makeScriptControl();
    qmevents::put(control, "Language", "VBScript");
    EXPECT_THROW(qmevents::put(control, "Language", "jscript"), qmevents::Error);
    const auto desk = makeRef<Desk>();
    call(control, "AddObject", "App", desk);
    call(control, "AddCode",
         "App.Log \"installed\"\nFunction Add(a, b)\na = a + b: Add = a\nEnd Function");
    EXPECT_EQ(desk->logged, "installed--;");
    EXPECT_EQ(qmevents::toInt32(call(control, "Eval", "1 + 2")), 3);
    Value arguments[] = {"add", 2, 3};
    EXPECT_EQ(qmevents::toInt32(invokeNamed(control, "Run", qmevents::CallKind::method, arguments)),
              5);
    EXPECT_EQ(qmevents::toInt32(arguments[1]), 5);

    const auto error = qmevents::getObject(control, "Error");
    EXPECT_EQ(qmevents::toInt32(get(error, "Number")), 0);
    EXPECT_THROW(call(control, "AddCode", "App.Log 1\n\nApp.Oops"), qmevents::Error);
    EXPECT_EQ(qmevents::toInt32(get(error, "Number")), 438);
    EXPECT_EQ(qmevents::toInt32(get(error, "Line")), 3);
    EXPECT_EQ(qmevents::toText(get(error, "Text")), "App.Oops");
    EXPECT_THROW(call(control, "AddCode", "App.Log \"half\"\nIf"), qmevents::Error);
    EXPECT_EQ(desk->logged, "installed--;1--;");
    EXPECT_EQ(qmevents::toText(get(error, "Description")),
              "Expected expression (found end of line)");
    qmevents::put(control, "Timeout", 20);
    EXPECT_THROW(call(control, "AddCode", "Do\nLoop"), qmevents::Error);

    // A script of a script, and one that lets go of its own engine.
    const auto inner = makeScriptControl();
    call(inner, "AddObject", "App", desk);
    call(control, "Reset");
    call(control, "AddObject", "Inner", inner);
    EXPECT_THROW(call(control, "AddCode", "Inner.AddCode \"App.Oops\""), qmevents::Error);
    EXPECT_EQ(qmevents::toInt32(get(error, "Number")), 438);
    EXPECT_THROW(call(control, "AddCode", "Do: x = Inner.Eval(\"1 / 0\"): Loop"), qmevents::Error);
    call(inner, "AddObject", "Me2", control);
    EXPECT_THROW(call(control, "AddCode", "Inner.AddCode \"Me2.Reset\""), qmevents::Error);
    call(inner, "Reset");
}

} // namespace
} // namespace refhost
