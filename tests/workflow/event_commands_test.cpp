#include "tests/workflow/commands.h"

namespace qmevents {
namespace {

using testing::Commands;
using testing::eventRow;
using testing::Log;

const std::string reads12 = "SELECT * FROM events_event_info WHERE Id = <2:12>";

class EventCommands : public Commands {
protected:
    EventCommands()
    {
        host.answer("WHERE Id = <2:12>", eventRow(12));
        host.answer("WHERE Id = <2:40>", eventRow(40));
    }
};

TEST_F(EventCommands, OpenTheFullEditPageOfAnEvent)
{
    EXPECT_EQ(run("EditEvent", 12),
              (Log{"Lock event 12", reads12, "Unlock event 12",
                   "Navigate: obsidian://events/event-fulledit?id=12&action=edit"}));
    EXPECT_EQ(run("EditEvent", 12, "copy").back(),
              "Navigate: obsidian://events/event-fulledit?id=12&action=edit&actiontype=copy");
}

TEST_F(EventCommands, OpenTheFullEditPageForANewEvent)
{
    EXPECT_EQ(run("CreateEvent"), (Log{"Navigate: obsidian://events/event-fulledit?action=new"}));
    const auto event = make("GetNewEvent");
    EXPECT_EQ(run("CreateEvent", event),
              (Log{"Session event = cEvent",
                   "Navigate: obsidian://events/event-fulledit?action=new&persist=event"}));
    EXPECT_EQ(host.session["event"].object(), event);
    EXPECT_EQ(run("CreateEvent", event, true).back(),
              "Dialog.Close obsidian://events/event-fulledit?action=new&persist=event");
    EXPECT_EQ(run("CreateEvent", Missing{}, true),
              (Log{"Dialog.Close obsidian://events/event-fulledit?action=new"}));
    EXPECT_EQ(run("CreateEvent", Value::nothing()),
              (Log{"Navigate: obsidian://events/event-fulledit?action=new"}));
}

TEST_F(EventCommands, ViewAnEventFromTheTopOfItsLists)
{
    const Log cleared{"Session eventdetailsparticipants-lastselectedrow-12 = ",
                      "Session eventdetailsparticipants-lastselectedid-12 = ",
                      "Session eventdetailsparticipants-lastliststate-12 = "};
    const auto view = [&](const Log& between) {
        Log log{reads12};
        log.insert(log.end(), cleared.begin(), cleared.end());
        log.insert(log.end(), between.begin(), between.end());
        log.emplace_back("Navigate: obsidian://events/event-details?id=12 | True");
        return log;
    };
    host.donors[3] = " Ada Brook ";
    EXPECT_EQ(run("ViewEvent", 12), view({}));
    EXPECT_EQ(run("ViewEvent", 12, " "), view({}));
    EXPECT_EQ(run("ViewEvent", 12, " events_tasks ", 3), view({"Session tabname = events_tasks"}));
    EXPECT_EQ(run("ViewEvent", 12, "events_reservations", 0),
              view({"Session tabname = events_reservations"}));
    EXPECT_EQ(run("ViewEvent", 12, "events_reservations", 99),
              view({"Session tabname = events_reservations"}));
    EXPECT_TRUE(host.preferences.empty());
    run("ViewEvent", 12, "events_reservations", 3);
    EXPECT_EQ(toText(host.preferences["events/reservation-list-filter-12"]), "name~Ada Brook");
    EXPECT_EQ(toText(host.preferences["events/reservation-list-sortby-12"]), "date");
}

TEST_F(EventCommands, TellWhyAnActionIsRefusedAndRefresh)
{
    const auto refusal = [](const std::string& verb) {
        return "MsgBox: The request to " + verb +
               " the event is no longer valid.\r\n\r\nThe event "
               "no longer exists.\r\nClick OK to continue. | Request Is Not Valid";
    };
    const std::string reads99 = "SELECT * FROM events_event_info WHERE Id = <2:99>";
    EXPECT_EQ(run("ViewEvent", 99), (Log{reads99, refusal("View"), "ForceUpdate"}));
    const std::pair<const char*, const char*> locking[] = {
        {"EditEvent", "Edit"}, {"CopyEvent", "Copy"}, {"DeleteEvent", "Delete"}};
    for (const auto& [command, verb] : locking) {
        EXPECT_EQ(run(command, 99),
                  (Log{"Lock event 99", reads99, refusal(verb), "ForceUpdate", "Unlock event 99"}));
    }
}

TEST_F(EventCommands, AddAnEventInADialog)
{
    const Log shown{"Dialog title = Add an Event",
                    "Dialog heading = Add an Event",
                    "Dialog description = Add an event by providing some information.",
                    "Dialog EventInfo = cEvent",
                    "ShowDialog addevent missing missing 468 550",
                    "Dialog.ClearClipboard"};
    EXPECT_EQ(run("AddEvent"), shown); // cancelled: no refresh
    confirmWith();
    Log confirmed = shown;
    confirmed.emplace_back("ForceUpdate");
    EXPECT_EQ(run("AddEvent"), confirmed);
}

TEST_F(EventCommands, DeleteAnEventThroughItsDialogUnderTheLock)
{
    Log log{"Lock event 12",
            reads12,
            "Dialog title = ",
            "Dialog heading = ",
            "Dialog description = ",
            "Dialog eventid = 12",
            "ShowDialog deleteevent missing missing 468 550",
            "Dialog.ClearClipboard",
            "Unlock event 12"};
    EXPECT_EQ(run("DeleteEvent", 12), log);
    confirmWith();
    log.insert(log.end() - 1, "ForceUpdate");
    EXPECT_EQ(run("DeleteEvent", 12), log);
}

TEST_F(EventCommands, OpenTheCopyOnceItExists)
{
    confirmWith({{"event-copy-newid", "40"}});
    const Log log = run("CopyEvent", 12);
    const Log ending{
        "Dialog.ClearClipboard",
        "Unlock event 12",
        "Lock event 40",
        "SELECT * FROM events_event_info WHERE Id = <2:40>",
        "Unlock event 40",
        "Navigate: obsidian://events/event-fulledit?id=40&action=edit&actiontype=copy"};
    ASSERT_GE(log.size(), ending.size());
    EXPECT_EQ(Log(log.end() - 6, log.end()), ending);
    for (const Value& nothing : {Value(0), Value()}) {
        confirmWith({{"event-copy-newid", nothing}});
        EXPECT_EQ(run("CopyEvent", 12).back(), "Unlock event 12");
    }
    host.dialogPage = [this] { // a cancelled page's values do not count
        host.dialogValues["event-copy-newid"] = 40;
        return Value(false);
    };
    EXPECT_EQ(run("CopyEvent", 12).back(), "Unlock event 12");
}

TEST_F(EventCommands, FindAnEventAndOpenIt)
{
    EXPECT_EQ(run("FindEvent").back(), "Dialog.ClearClipboard");
    confirmWith({{"eventid", 12}});
    EXPECT_EQ(run("FindEvent").back(), "Navigate: obsidian://events/event-details?id=12 | True");
}

} // namespace
} // namespace qmevents
