#include "tests/workflow/commands.h"

namespace qmevents {
namespace {

using testing::Commands;
using testing::hint;
using testing::Log;

const std::string reads8 = "SELECT * FROM events_event_reservations eer WHERE eer.Id = <3:8>";
const std::string newPage = "obsidian://events/eventreservation-fulledit?action=new";
const std::string noActivities =
    "MsgBox: No activities have been added for this event.  You must add at least one activity "
    "for this event before you can add a reservation. | No Event Activities";

class ReservationCommands : public Commands {
protected:
    const Log eventSearch =
        search("Add Event Reservation", "Find an Event For This Reservation", hint);
    const Log countsActivities{
        "SELECT * FROM events_event_activities WHERE FKEventId=<2:5> ORDER BY Name "};
    const Log donorChoice{"getdonor Title = Select Event Reservation Donor",
                          "getdonor Heading = Find Event Reservation Donor",
                          "getdonor Description = Enter part or all of the donor name you would "
                          "like to use as the donor for this event reservation, then click Next "
                          "below",
                          "getdonor AllowNew = True",
                          "getdonor ShowAll = True",
                          "getdonor AllowAdvanced = True",
                          "getdonor shown"};
    static Log payments(const std::string& action)
    {
        return joined({{reads8},
                       dialog("editeventreservationpayments",
                              {"title = ", "heading = ", "action = " + action, "eventid = 5",
                               "eventreservation = cEventReservation"})});
    }
};

TEST_F(ReservationCommands, StartAReservationFromNothing)
{
    offerActivity();
    confirmWith({{"eventid", 5}});
    host.chosenDonor = 9;
    std::vector<Value> arguments{0, Value(), "events_reservations"};
    EXPECT_EQ(
        runInPlace("AddEventReservation", arguments),
        joined({eventSearch,
                underLock(joined(
                    {countsActivities, donorChoice, {"Session tabname = events_reservations"}})),
                underLock({"Session eventreservation = cEventReservation"}),
                {"Navigate: " + newPage +
                 "&persist=eventreservation&eventid=5&tabname=events_reservations"}}));
    EXPECT_EQ(toInt32(arguments[1]), 9);
    const auto reservation = host.session["eventreservation"].object();
    EXPECT_EQ(toInt32(get(reservation, "FKEventId")), 5);
    EXPECT_EQ(toInt32(get(reservation, "FKdonorId")), 9);
    EXPECT_EQ(toText(host.preferences["events/reservation-list-filter-5"]), "name~Lee, Kim");
    EXPECT_EQ(toText(host.preferences["events/reservation-list-sortby-5"]), "date");

    host.preferences.clear();
    EXPECT_EQ(run("AddEventReservation", 5, 9, "events_participants")[2],
              "Session tabname = events_participants");
    EXPECT_TRUE(host.preferences.empty());
}

TEST_F(ReservationCommands, NeedAnActivityAndADonor)
{
    EXPECT_EQ(run("AddEventReservation"), eventSearch);
    EXPECT_EQ(run("AddEventReservation", 5), underLock(joined({countsActivities, {noActivities}})));
    EXPECT_EQ(run("CreateEventReservation", 5, Missing{}, "", true),
              underLock(joined({countsActivities, {noActivities}})));
    host.failingStatement = 0; // unknown is not none
    EXPECT_EQ(run("AddEventReservation", 5),
              underLock(joined({countsActivities, {"ErrorUnexpected: the disk is full"}})));
    offerActivity();
    EXPECT_EQ(run("AddEventReservation", 5), underLock(joined({countsActivities, donorChoice})));
}

TEST_F(ReservationCommands, OpenTheFullEditPage)
{
    EXPECT_EQ(run("EditEventReservation", 5, 8),
              joined({underLock({reads8}),
                      {"Navigate: obsidian://events/eventreservation-fulledit?id=8&action=edit"
                       "&eventid=5"}}));
    EXPECT_EQ(
        run("CreateEventReservation", 4),
        (Log{"Lock event 4", "Unlock event 4", "Navigate: " + newPage + "&eventid=4&tabname="}));
    const auto reservation = make("GetNewEventReservation", 4);
    EXPECT_EQ(run("CreateEventReservation", 4, reservation, "events_reservations"),
              (Log{"Lock event 4", "Session eventreservation = cEventReservation", "Unlock event 4",
                   "Navigate: " + newPage +
                       "&persist=eventreservation&eventid=4&tabname=events_reservations"}));
    EXPECT_EQ(host.session["eventreservation"].object(), reservation);
    EXPECT_EQ(run("CreateEventReservation", 4, Missing{}, "", false, true).back(),
              "Dialog.Close " + newPage + "&eventid=4&tabname=");
}

TEST_F(ReservationCommands, HandADeletionToItsDialog)
{
    const auto deleting = [](const std::string& donor) {
        return joined({{reads8},
                       dialog("deleteeventreservation",
                              {"title = ", "heading = ", "description = ", "eventid = 5",
                               "reservationid = 8", "donorid = " + donor})});
    };
    EXPECT_EQ(run("DeleteEventReservation", 5, 8), underLock(deleting("0")));
    confirmWith();
    EXPECT_EQ(run("DeleteEventReservation", 5, 8, 9),
              underLock(joined({deleting("9"), {"ForceUpdate"}})));
}

TEST_F(ReservationCommands, HandAPaymentToTheDonationWizard)
{
    const Log wizard =
        underLock({reads8, "Dialog.ClearClipboard", "Dialog donorid = 9",
                   "Dialog donor-entitytype = household", "Dialog donation-reservationId = 8",
                   "Dialog donation-return-to-caller = true", "StartDonationWizard"});
    confirmWith({{"returnaction", "addpayment"}});
    EXPECT_EQ(run("EditEventReservationPayments", 5, 8), joined({payments("edit"), wizard}));
    EXPECT_EQ(run("ViewEventReservationPayments", 5, 8), payments("view"));
    host.donors.clear();
    for (const Value& gone : {Value::nothing(), Value(Null{}), Value("There is no such donor")}) {
        host.noDonor = gone;
        EXPECT_EQ(run("EditEventReservationPayments", 5, 8),
                  joined({payments("edit"),
                          underLock({reads8,
                                     "MsgBox: The request to add a payment for the donor is no "
                                     "longer valid.\r\n\r\nThe donor no longer exists.\r\nClick "
                                     "OK to continue. | Request Is Not Valid",
                                     "ForceUpdate"})}));
    }
    host.dialogPage = [this] { // deleted by another user while the payments are shown
        host.answer("eer.Id = <3:8>", {});
        host.dialogValues["returnaction"] = "addpayment";
        return Value(true);
    };
    EXPECT_EQ(run("EditEventReservationPayments", 5, 8),
              joined({payments("edit"),
                      underLock({reads8,
                                 "MsgBox: The request to Edit the event reservation is no longer "
                                 "valid.\r\n\r\nThe event reservation no longer exists.\r\nClick "
                                 "OK to continue. | Request Is Not Valid",
                                 "ForceUpdate"})}));
}

TEST_F(ReservationCommands, StartNoWizardUnlessAskedTo)
{
    EXPECT_EQ(run("EditEventReservationPayments", 5, 8), payments("edit"));
    for (const Value& other : {Value(), Value(""), Value("AddPayment"), Value("close")}) {
        confirmWith({{"returnaction", other}});
        EXPECT_EQ(run("EditEventReservationPayments", 5, 8),
                  joined({payments("edit"), {"ForceUpdate"}}));
    }
    confirmWith({{"returnaction", Null{}}});
    EXPECT_EQ(
        run("EditEventReservationPayments", 5, 8).back(),
        "ErrorUnexpected: Invalid use of Null: ReturnAction of EditReservationPaymentsDialog");
}

class ReservationLineCommands : public ReservationCommands {
protected:
    static Log line(const std::string& title, const std::string& heading, const std::string& action,
                    const std::string& reservation)
    {
        return dialog("editeventreservationactivity",
                      {"title = " + title, "heading = " + heading, "action = " + action,
                       "eventid = 5", "reservationid = " + reservation,
                       "eventreservationactivity = cEventReservationActivity",
                       "eventreservationactivities = cEventReservationActivities"});
    }
    Ref<Object> lines(const Ref<Object>& reservation)
    {
        return getObject(reservation, "Activities");
    }
};

TEST_F(ReservationLineCommands, AddEditAndDeleteInMemory)
{
    const auto reservation = this->reservation({}); // not stored: no check
    EXPECT_EQ(toInt32(get(lines(reservation), "Count")), 0);
    const Log adding =
        line("Add a Reservation Activity", "Add an activity to the reservation", "add", "0");
    EXPECT_EQ(run("AddEventReservationActivity", reservation), adding);
    confirmWith();
    for (const int key : {-1, -2}) { // also says that the cancelled line was not added
        EXPECT_EQ(run("AddEventReservationActivity", reservation),
                  joined({adding, {"Page.SetModified"}}));
        EXPECT_EQ(idOf(toObject(call(lines(reservation), "ItemByKey", key))), key);
    }
    EXPECT_EQ(run("DeleteEventReservationActivity", -1, reservation), (Log{"Page.SetModified"}));
    EXPECT_EQ(toInt32(get(lines(reservation), "Count")), 1);
    EXPECT_EQ(toInt32(get(getObject(lines(reservation), "DeletedItems"), "Count")), 0);
    EXPECT_EQ(
        run("DeleteEventReservationActivity", -1, reservation),
        (Log{"ErrorUnexpected: Invalid procedure call or argument (no item has the key FK=-1)"}));
}

// Neither a new quantity nor a deletion of a stored line may be lost by the save that follows.
TEST_F(ReservationLineCommands, LeaveStoredLinesToBeSaved)
{
    host.answer("WHERE FKReservationId=<2:8>", lineRows(3, {{31, 8, 2}, {32, 8, 1}}));
    const auto reservation = make("GetEventReservation", 8);
    const auto edited = toObject(call(lines(reservation), "ItemByKey", 31));
    const Log editing =
        line("Edit the Reservation Activity", "Edit the reservation activity", "edit", "8");
    EXPECT_EQ(run("EditEventReservationActivity", edited, reservation),
              joined({{reads8}, editing}));
    EXPECT_FALSE(is(edited, "IsDirty"));
    host.dialogPage = [this] {
        put(host.dialogValues["eventreservationactivity"].object(), "Quantity", 4);
        return Value(true);
    };
    EXPECT_EQ(run("EditEventReservationActivity", edited, reservation),
              joined({{reads8}, editing, {"Page.SetModified"}}));
    EXPECT_TRUE(is(edited, "IsDirty"));
    EXPECT_EQ(run("DeleteEventReservationActivity", 32, reservation),
              (Log{reads8, "Page.SetModified"}));
    EXPECT_EQ(toInt32(get(getObject(lines(reservation), "DeletedItems"), "Count")), 1);
}

} // namespace
} // namespace qmevents
