#include "tests/workflow/commands.h"

namespace qmevents {
namespace {

using testing::Commands;
using testing::hint;
using testing::Log;

const std::string reads8 = "SELECT * FROM events_event_participants eep WHERE eep.Id = <3:8>";

class ParticipantCommands : public Commands {
protected:
    const Log eventSearch =
        search("Add as Event Participant", "Find an Event For This Participant", hint);
    const Log donorChoice{"getdonor Title = Choose a Donor",
                          "getdonor Heading = Find a Donor To Add As a Participant",
                          "getdonor AllowNew = True", "getdonor AllowAdvanced = True",
                          "getdonor shown"};
    static Log participantsDialog(const std::string& key, const std::string& title)
    {
        return dialog(key, {"title = " + title, "heading = ", "description = ", "eventid = 5",
                            "eventparticipants = cEventParticipants"});
    }
    const Log adding = participantsDialog("addeventparticipant", "Add Event Participant");
};

TEST_F(ParticipantCommands, AddSeveralDonorsInANewCollection)
{
    std::vector<Value> arguments{5, false};
    const Log log = underLock(participantsDialog("addeventparticipants", "Add Event Participants"));
    EXPECT_EQ(runInPlace("AddEventParticipants", arguments), log);
    EXPECT_FALSE(toBool(arguments[1]));
    confirmWith();
    EXPECT_EQ(runInPlace("AddEventParticipants", arguments), log);
    EXPECT_TRUE(toBool(arguments[1]));
}

TEST_F(ParticipantCommands, AddOneDonorToAnEventThatIsSearchedFirst)
{
    host.chosenDonor = 9;
    host.dialogPage = [this] {
        if (const auto added = toObject(host.dialogValues["eventparticipants"])) {
            EXPECT_EQ(toInt32(get(added, "Count")), 1);
            const auto one = toObject(call(added, "Item", 1));
            EXPECT_EQ(toInt32(get(one, "FKEventId")), 5);
            EXPECT_EQ(toInt32(get(one, "FKdonorId")), 9);
            EXPECT_TRUE(is(one, "IsNew"));
        }
        host.dialogValues["eventid"] = 5;
        return Value(true);
    };
    EXPECT_EQ(run("AddEventParticipant"),
              joined({eventSearch, underLock(joined({donorChoice, adding}))}));
    EXPECT_EQ(run("AddEventParticipant", 5, Missing{}, 0),
              underLock(joined({donorChoice, adding})));
    std::vector<Value> arguments{5, false, 9, true};
    EXPECT_EQ(runInPlace("AddEventParticipant", arguments),
              underLock(joined({adding,
                                {"SELECT * FROM events_event_info WHERE Id = <2:5>",
                                 "Session eventdetailsparticipants-lastselectedrow-5 = ",
                                 "Session eventdetailsparticipants-lastselectedid-5 = ",
                                 "Session eventdetailsparticipants-lastliststate-5 = ",
                                 "Session tabname = events_participants",
                                 "Navigate: obsidian://events/event-details?id=5 | True"}})));
    EXPECT_TRUE(toBool(arguments[1]));
}

TEST_F(ParticipantCommands, EndWithoutChangeWhereTheUserCancels)
{
    EXPECT_EQ(run("AddEventParticipant"), eventSearch);
    EXPECT_EQ(run("AddEventParticipant", 5), underLock(donorChoice));
    std::vector<Value> arguments{5, false, 9, true};
    EXPECT_EQ(runInPlace("AddEventParticipant", arguments), underLock(adding));
    EXPECT_FALSE(toBool(arguments[1]));
    confirmWith(); // the search page names no event
    EXPECT_EQ(run("AddEventParticipant"), eventSearch);
}

TEST_F(ParticipantCommands, SaveAParticipantThatWasEdited)
{
    std::vector<Value> arguments{5, 8, false};
    Log log = joined({{reads8},
                      dialog("editeventparticipant",
                             {"title = ", "heading = ", "description = ", "action = edit",
                              "eventparticipant = cEventParticipant"})});
    EXPECT_EQ(runInPlace("EditEventParticipant", arguments), underLock(log));
    EXPECT_FALSE(toBool(arguments[2]));
    host.dialogPage = [this] {
        put(host.dialogValues["eventparticipant"].object(), "Status", 2);
        return Value(true);
    };
    const Log saved = runInPlace("EditEventParticipant", arguments);
    EXPECT_EQ(std::count_if(saved.begin(), saved.end(),
                            [](const auto& line) {
                                return line.starts_with("UPDATE events_event_participants SET ") &&
                                       line.find("Status = <3:2>") != std::string::npos;
                            }),
              1);
    EXPECT_TRUE(toBool(arguments[2]));
}

TEST_F(ParticipantCommands, RemoveAParticipantByNameAfterAsking)
{
    const auto asks = [](const std::string& question) {
        return Log{reads8, "MsgPrompt: " + question + " | 4 | Delete Participant"};
    };
    const Log byName = asks("Are you sure you want to remove Lee, Kim from the participant list?");
    std::vector<Value> arguments{5, 8, false};
    EXPECT_EQ(runInPlace("DeleteEventParticipant", arguments), underLock(byName));
    EXPECT_FALSE(toBool(arguments[2]));
    const std::map<std::int32_t, std::string> nameless[] = {{{9, ""}}, {}};
    for (const auto& donors : nameless) {
        host.donors = donors;
        EXPECT_EQ(run("DeleteEventParticipant", 5, 8, false),
                  underLock(asks("Are you sure you want to delete this event participant?")));
    }
    host.saysYes = true;
    const Log log = runInPlace("DeleteEventParticipant", arguments);
    EXPECT_EQ(
        std::count(log.begin(), log.end(), "DELETE FROM events_event_participants WHERE Id = 8"),
        1);
    EXPECT_TRUE(toBool(arguments[2]));
}

TEST_F(ParticipantCommands, HandASelectionToItsDialog)
{
    const auto selection = make("GetNewEventParticipants");
    const Log editing = underLock(participantsDialog("editeventparticipants", ""));
    const Log deleting = underLock(participantsDialog("deleteeventparticipants", ""));
    std::vector<Value> arguments{5, selection, false};
    EXPECT_EQ(run("EditEventParticipants", 5, selection), editing);
    EXPECT_EQ(runInPlace("DeleteEventParticipants", arguments), deleting);
    EXPECT_FALSE(toBool(arguments[2]));
    host.dialogPage = [&] {
        EXPECT_EQ(host.dialogValues["eventparticipants"].object(), selection);
        return Value(true);
    };
    EXPECT_EQ(run("EditEventParticipants", 5, selection), joined({editing, {"ForceUpdate"}}));
    EXPECT_EQ(runInPlace("DeleteEventParticipants", arguments), deleting);
    EXPECT_TRUE(toBool(arguments[2]));
}

TEST_F(ParticipantCommands, LeadToTheDonorAndToAReservation)
{
    EXPECT_EQ(run("ViewEventParticipantDonor", 8),
              (Log{reads8, "Navigate: obsidian://donor/details-donor?id=9"}));
    offerActivity();
    EXPECT_EQ(run("AddEventParticipantReservation", 8),
              (Log{reads8, "Lock event 5",
                   "SELECT * FROM events_event_activities WHERE FKEventId=<2:5> ORDER BY Name ",
                   "Unlock event 5", "Lock event 5", "Session eventreservation = cEventReservation",
                   "Unlock event 5",
                   "Navigate: obsidian://events/eventreservation-fulledit?action=new"
                   "&persist=eventreservation&eventid=5&tabname="}));
    EXPECT_EQ(toInt32(get(host.session["eventreservation"].object(), "FKdonorId")), 9);
}

} // namespace
} // namespace qmevents
