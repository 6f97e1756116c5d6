// What all commands have in common: how they are refused.
#include "tests/workflow/commands.h"

namespace qmevents {
namespace {

using testing::Commands;
using testing::Log;

class Refusals : public Commands {
protected:
    static std::string message(const std::string& verb, const std::string& thing,
                               const std::string& ending)
    {
        return "MsgBox: The request to " + verb + " the " + thing +
               " is no longer valid.\r\n\r\nThe " + thing + " no longer exists." + ending +
               " | Request Is Not Valid";
    }
};

const std::string participants = "SELECT * FROM events_event_participants eep WHERE eep.Id = ";
const std::string reservations = "SELECT * FROM events_event_reservations eer WHERE eer.Id = ";
const std::string activities = "SELECT * FROM events_event_activities eea WHERE eea.Id = ";
const std::string expenses = "SELECT * FROM events_event_expenses eee WHERE eee.Id = ";
const std::string tasks = "SELECT * FROM events_event_tasks eet WHERE eet.Id = ";

TEST_F(Refusals, TellTheReasonAndRefreshOnce)
{
    // Those that change something hold the event's lock; some tell their caller to reload.
    const struct {
        const char* command;
        std::vector<Value> arguments;
        std::string reads;
        const char *verb, *thing;
        bool locks = true;
    } cases[] = {
        {"EditEventParticipant", {5, 99, false}, participants, "Edit", "event participant"},
        {"DeleteEventParticipant", {5, 99, false}, participants, "Delete", "event participant"},
        {"AddEventParticipantReservation",
         {99},
         participants,
         "add a reservation for",
         "event participant",
         false},
        {"ViewEventParticipantDonor",
         {99},
         participants,
         "view the donor information for",
         "event participant",
         false},
        {"EditEventReservation", {5, 99}, reservations, "Edit", "event reservation"},
        {"DeleteEventReservation", {5, 99}, reservations, "Delete", "event reservation"},
        {"EditEventReservationPayments", {5, 99}, reservations, "Edit", "event reservation", false},
        {"ViewEventReservationPayments", {5, 99}, reservations, "View", "event reservation", false},
        {"EditEventActivity", {5, 99}, activities, "Edit", "event activity"},
        {"DeleteEventActivity", {5, 99}, activities, "Delete", "event activity"},
        {"CopyEventActivity", {5, 99}, activities, "Copy", "event activity"},
        {"EditEventExpense", {5, 99}, expenses, "Edit", "event expense"},
        {"DeleteEventExpense", {5, 99}, expenses, "Delete", "event expense"},
        {"EditEventTask", {5, 99}, tasks, "Edit", "event task"},
        {"DeleteEventTask", {5, 99}, tasks, "Delete", "event task"},
        {"CompleteEventTask", {5, 99}, tasks, "Complete", "event task"}};
    for (auto [command, arguments, reads, verb, thing, locks] : cases) {
        SCOPED_TRACE(command);
        const Log told{reads + "<3:99>", message(verb, thing, "\r\nClick OK to continue."),
                       "ForceUpdate"};
        EXPECT_EQ(runInPlace(command, arguments), locks ? underLock(told) : told);
        if (arguments.size() == 3) { EXPECT_TRUE(toBool(arguments[2])); }
    }
}

// The message on lines and fields has another ending, and a blank after one of the verbs.
TEST_F(Refusals, OfLinesAndFieldsGoOnOnTheSameLine)
{
    const auto line = make("GetNewEventReservationActivity");
    const auto field = make("GetNewEventActivityReservationField");
    const auto reservation = make("GetEventReservation", 8);
    const auto activity = make("GetEventActivity", 8);
    host.answer("er.Id = <3:8>", {});  // the reservation has been deleted meanwhile,
    host.answer("eea.Id = <3:8>", {}); // and so has the activity
    const struct {
        const char* command;
        std::vector<Value> arguments;
    } cases[] = {{"AddEventReservationActivity", {reservation}},
                 {"EditEventReservationActivity", {line, reservation}},
                 {"DeleteEventReservationActivity", {1, reservation}},
                 {"AddEventActivityReservationField", {activity}},
                 {"DeleteEventActivityReservationField", {1, activity}},
                 {"EditEventActivityReservationFieldItems", {field, activity}}};
    for (auto [command, arguments] : cases) {
        SCOPED_TRACE(command);
        const bool ofLine = arguments.back().object() == reservation;
        EXPECT_EQ(runInPlace(command, arguments),
                  (Log{(ofLine ? reservations : activities) + "<3:8>",
                       ofLine ? message("change the activities for ", "event reservation",
                                        "  Click OK to continue.")
                              : message("change the reservation information for", "event activity",
                                        "  Click OK to continue."),
                       "ForceUpdate"}));
    }
}

TEST_F(Refusals, ComeFromTheHostWhenAnotherUserHoldsTheEvent)
{
    const auto selection = make("GetNewEventParticipants");
    host.lockHeldByAnother = true; // the host has told the user
    const std::pair<std::vector<Value>, std::vector<const char*>> cases[] = {
        {{5},
         {"EditEvent", "CopyEvent", "DeleteEvent", "AddEventParticipant", "AddEventReservation",
          "CreateEventReservation"}},
        {{5, 8},
         {"EditEventReservation", "DeleteEventReservation", "EditEventActivity",
          "DeleteEventActivity", "CopyEventActivity", "EditEventExpense", "DeleteEventExpense",
          "EditEventTask", "DeleteEventTask", "CompleteEventTask"}},
        {{5, false}, {"AddEventParticipants"}},
        {{5, 8, false}, {"EditEventParticipant", "DeleteEventParticipant"}},
        {{5, selection}, {"EditEventParticipants"}},
        {{5, selection, false}, {"DeleteEventParticipants"}}};
    for (auto [arguments, commands] : cases) {
        for (const char* command : commands) {
            SCOPED_TRACE(command);
            EXPECT_EQ(runInPlace(command, arguments), (Log{"Lock refused event 5"}));
            const Value& last = arguments.back();
            EXPECT_FALSE(last.is(ValueKind::boolean) && toBool(last)) << "nothing to reload";
        }
    }
}

TEST_F(Refusals, OfBadArgumentsNameThem)
{
    for (const char* command : {"EditEvent", "ViewEvent", "DeleteEvent", "CopyEvent",
                                "ShowSummaryReport", "SendEventMailing", "AddEventActivity"}) {
        EXPECT_THROW(run(command, "twelve"), Error) << command;
        EXPECT_THROW(run(command, 3e9), Error) << command;
    }
    EXPECT_THROW(run("EditEvent"), Error);
    EXPECT_THROW(run("EditEventTask", 5), Error);
    EXPECT_THROW(run("CreateEvent", host.app()), Error);
    EXPECT_THROW(run("EditEventParticipants", 5, make("GetNewEventTask")), Error);
    EXPECT_TRUE(host.log.empty());
    const std::string unset = "ErrorUnexpected: Object variable not set (";
    EXPECT_EQ(run("EditEventParticipants", 5, Value::nothing()),
              (Log{unset + "Participants is needed)"}));
    EXPECT_EQ(run("DeleteEventReservationActivity", 1, Value::nothing()),
              (Log{unset + "EventReservation is needed)"}));
    EXPECT_EQ(run("AddEventActivityReservationField", Value::nothing()),
              (Log{unset + "EventActivity is needed)"}));
}

} // namespace
} // namespace qmevents
