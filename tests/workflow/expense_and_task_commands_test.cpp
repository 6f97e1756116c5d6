#include "tests/workflow/commands.h"

namespace qmevents {
namespace {

using testing::Commands;
using testing::hint;
using testing::Log;

const std::string readsEvent = "SELECT id FROM events_event_info WHERE id=<3:5>";
const std::string lastUpdate =
    "LastUpdateUser = <3:5>, LastUpdateDate = <1:2026-11-21 10:00:00> WHERE Id = <3:8>";

/// How the commands on expenses and those on tasks differ. "Thing" stands for "Expense" or "Task".
struct Kind {
    std::string thing, value;
    std::string reads8, updates, inserts, deletes, question;
    testing::Cells filledIn;
};
const Kind kinds[] = {
    {"Expense",
     "eventexpense = cEventExpense",
     "SELECT * FROM events_event_expenses eee WHERE eee.Id = <3:8>",
     "UPDATE events_event_expenses SET FKEventId = <2:5>, ExpenseDate = <1:2026-11-01 00:00:00>, "
     "Description = <5:Hall>, Amount = <3:300>, " +
         lastUpdate,
     "INSERT INTO events_event_expenses",
     "DELETE FROM events_event_expenses WHERE Id = 8",
     "Are you sure you want to delete this event expense? | 4 | Delete Expense",
     {{"ExpenseDate", Date::of(2026, 11, 1)}, {"Description", "Hall"}, {"Amount", 300}}},
    {"Task",
     "eventtask = cEventTask",
     "SELECT * FROM events_event_tasks eet WHERE eet.Id = <3:8>",
     "UPDATE events_event_tasks SET FKEventId = <2:5>, Name = <5:Book>, Notes = <5:>, DueDateTime "
     "= <1:2026-11-01 00:00:00>, Completed = <7:False>, FKAssignedToId = <2:0>, " +
         lastUpdate,
     "INSERT INTO events_event_tasks",
     "DELETE FROM events_event_tasks WHERE Id = 8",
     "Are you sure you want to delete this event task? | 4 | Delete Task",
     {{"Name", "Book"}, {"DueDateTime", Date::of(2026, 11, 1)}}}};

class ExpenseAndTaskCommands : public Commands {
protected:
    static Log editing(const Kind& kind, const std::string& action)
    {
        return dialog("editevent" + text::lower(kind.thing),
                      {"title = ", "heading = ", "action = " + action, kind.value});
    }
};

TEST_F(ExpenseAndTaskCommands, AddWhatIsFilledIn)
{
    for (const auto& kind : kinds) {
        SCOPED_TRACE(kind.thing);
        const std::string command = "AddEvent" + kind.thing;
        std::vector<Value> arguments{5, Value()};
        EXPECT_EQ(runInPlace(command, arguments), editing(kind, "add"));
        EXPECT_TRUE(arguments[1].isEmpty()) << "cancelled, it leaves ForceUpdate alone";
        host.dialogPage = [&] {
            with(host.dialogValues["event" + text::lower(kind.thing)].object(), kind.filledIn);
            return Value(true);
        };
        const Log log = runInPlace(command, arguments);
        EXPECT_TRUE(toBool(arguments[1]));
        ASSERT_EQ(log.size(), 11U);
        EXPECT_EQ(Log(log.begin() + 6, log.begin() + 8), (Log{"Lock event 5", readsEvent}));
        EXPECT_TRUE(log[8].starts_with(kind.inserts)) << log[8];
        cancel();
    }
}

TEST_F(ExpenseAndTaskCommands, EditUnderTheLockAndRefresh)
{
    for (const auto& kind : kinds) {
        SCOPED_TRACE(kind.thing);
        const std::string command = "EditEvent" + kind.thing;
        const Log shown = joined({{kind.reads8}, editing(kind, "edit")});
        EXPECT_EQ(run(command, 5, 8), underLock(shown));
        confirmWith();
        EXPECT_EQ(run(command, 5, 8),
                  joined({underLock(joined({shown, underLock({readsEvent, kind.updates})})),
                          {"ForceUpdate"}}));
        host.failingStatement = 2; // the page then shows what stands in the database
        const Log failed = run(command, 5, 8);
        EXPECT_EQ(Log(failed.end() - 4, failed.end()),
                  (Log{"Unlock event 5", "ErrorUnexpected: the disk is full", "Unlock event 5",
                       "ForceUpdate"}));
        cancel();
    }
}

TEST_F(ExpenseAndTaskCommands, DeleteAfterAsking)
{
    for (const auto& kind : kinds) {
        SCOPED_TRACE(kind.thing);
        const std::string command = "DeleteEvent" + kind.thing;
        const Log asked{kind.reads8, "MsgPrompt: " + kind.question};
        host.saysYes = false;
        EXPECT_EQ(run(command, 5, 8), underLock(asked));
        host.saysYes = true;
        EXPECT_EQ(run(command, 5, 8),
                  joined({underLock(joined({asked, underLock({kind.deletes})})), {"ForceUpdate"}}));
    }
}

TEST_F(ExpenseAndTaskCommands, SearchTheEventOfANewTask)
{
    const Log search = this->search("Add a Task", "Find an Event For This Task", hint);
    EXPECT_EQ(run("AddEventTask"), search);
    host.dialogPage = [this] { // found, and then cancelled
        host.dialogValues["eventid"] = 5;
        return Value(!host.dialogValues.contains("eventtask"));
    };
    EXPECT_EQ(run("AddEventTask", 0), joined({search, editing(kinds[1], "add")}));
}

TEST_F(ExpenseAndTaskCommands, CompleteATask)
{
    std::string updates = kinds[1].updates;
    updates.replace(updates.find("<7:False>"), 9, "<7:True>");
    EXPECT_EQ(
        run("CompleteEventTask", 5, 8),
        underLock(joined({{kinds[1].reads8}, underLock({readsEvent, updates}), {"ForceUpdate"}})));
}

} // namespace
} // namespace qmevents
