#include "host/xml/xml_document.h"
#include "tests/workflow/commands.h"

namespace qmevents {
namespace {

using testing::activityColumns;
using testing::Commands;
using testing::Log;
using testing::rowsOf;

const std::string reads8 = "SELECT * FROM events_event_activities eea WHERE eea.Id = <3:8>";
const std::string readsLines =
    "SELECT eera.*, eer.FKDonorId, dd.Id As DonorIdCheck, dd.Display As DonorName FROM "
    "((events_event_reservations_activities eera INNER JOIN events_event_reservations eer ON "
    "eera.FKReservationId = eer.id) LEFT JOIN donor_donors dd ON eer.FKDonorId = dd.Id) WHERE "
    "FKActivityId=<2:8>";
const std::string page = "Navigate: obsidian://events/eventactivity-fulledit?action=";
const std::string keeps = "Session eventactivity = cEventActivity";

class ActivityCommands : public Commands {
protected:
    Ref<Object> kept() { return host.session["eventactivity"].object(); }
    Ref<Object> fields(const Ref<Object>& activity)
    {
        return getObject(activity, "ReservationFields");
    }
    Ref<Object> field(const Ref<Object>& activity, const Value& index)
    {
        return toObject(call(fields(activity), "Item", index));
    }
    std::int32_t fieldCount(const Ref<Object>& activity)
    {
        return toInt32(get(fields(activity), "Count"));
    }
};

TEST_F(ActivityCommands, HandTheActivityToItsPageThroughTheSession)
{
    EXPECT_EQ(run("AddEventActivity", 3),
              (Log{keeps, page + "new&persist=eventactivity&tabname="}));
    EXPECT_EQ(toInt32(get(kept(), "FKEventId")), 3);
    EXPECT_TRUE(is(kept(), "IsNew"));
    EXPECT_EQ(run("AddEventActivity", 3, "events_activities").back(),
              page + "new&persist=eventactivity&tabname=events_activities");
    EXPECT_EQ(run("EditEventActivity", 5, 8),
              joined({underLock({reads8}), {keeps, page + "edit&persist=eventactivity"}}));
    EXPECT_EQ(idOf(kept()), 8);
}

TEST_F(ActivityCommands, CopyAnActivityWithItsFields)
{
    refCast<testing::Puppet>(getObject(host.app(), "Utils"))
        ->on("NewXmlDocument",
             [](std::span<Value>) { return Value(makeRef<refhost::XmlDocument>()); });
    host.answer("eea.Id = <3:8>",
                rowsOf(activityColumns,
                       {{8, 5, "Dinner", "Three courses", 40, 25, 120, true,
                         "<fields><field name=\"Meal\" type=\"2\"><defaultvalue>Fish</defaultvalue>"
                         "<list><listitem><value>Fish</value></listitem></list></field></fields>",
                         1, 2, 3, 4}}));
    EXPECT_EQ(run("CopyEventActivity", 5, 8),
              joined({underLock({reads8}), {keeps, page + "new&persist=eventactivity"}}));
    const std::pair<const char*, const char*> expected[] = {{"Id", "0"},
                                                            {"IsNew", "True"},
                                                            {"FKEventId", "5"},
                                                            {"ListPrice", "40"},
                                                            {"Name", "Copy of Dinner"},
                                                            {"Description", "Three courses"},
                                                            {"Cost", "25"},
                                                            {"QuantityAvailable", "120"},
                                                            {"Sponsorship", "True"},
                                                            {"QuantityType", "1"},
                                                            {"FKFundId", "2"},
                                                            {"FKCampaignId", "3"},
                                                            {"FKAppealId", "4"},
                                                            {"ReservationFieldSummary", "Meal"}};
    for (const auto& [name, value] : expected) EXPECT_EQ(toText(get(kept(), name)), value) << name;
    const auto meal = field(kept(), 1);
    EXPECT_EQ(toText(get(meal, "DefaultValue")), "Fish");
    EXPECT_EQ(toInt32(get(getObject(meal, "ListItems"), "Count")), 1);
}

TEST_F(ActivityCommands, DeleteAnActivityThatIsNotReservedAfterAsking)
{
    const Log asks{reads8, readsLines,
                   "MsgPrompt: Are you sure you want to delete this event activity? | 4 | Delete "
                   "Activity"};
    EXPECT_EQ(run("DeleteEventActivity", 5, 8), underLock(asks));
    host.saysYes = true;
    EXPECT_EQ(
        run("DeleteEventActivity", 5, 8),
        joined({underLock(joined(
                    {asks, underLock({"DELETE FROM events_event_reservations_activities WHERE "
                                      "FKActivityId = 8",
                                      "DELETE FROM events_event_activities WHERE Id = 8"})})),
                {"ForceUpdate"}}));
    offer(8, 10, {{31, 2, 1}});
    EXPECT_EQ(run("DeleteEventActivity", 5, 8)[3],
              "MsgBox: The request to Delete the event activity is no longer valid.\r\n\r\nThe "
              "event has reservations that include the activity.\r\nClick OK to continue. | "
              "Request Is Not Valid");
}

TEST_F(ActivityCommands, AddAReservationFieldFromItsDialog)
{
    const auto activity = make("GetNewEventActivity", 5); // not stored: no check
    const Log log =
        dialog("addeventactivityfield",
               {"title = ", "heading = ", "description = ", "eventactivity = cEventActivity"});
    EXPECT_EQ(run("AddEventActivityReservationField", activity), log);
    confirmWith({{"type", "2"}, {"name", "Meal"}, {"description", "?"}, {"defaultvalue", "Fish"}});
    EXPECT_EQ(run("AddEventActivityReservationField", activity), joined({log, {"ForceUpdate"}}));
    ASSERT_EQ(fieldCount(activity), 1);
    const auto added = field(activity, 1);
    EXPECT_EQ(toInt32(get(added, "FieldType")), 2);
    EXPECT_EQ(toText(get(added, "Name")), "Meal");
    EXPECT_EQ(toText(get(added, "Description")), "?");
    EXPECT_EQ(toText(get(added, "DefaultValue")), "Fish");
    EXPECT_EQ(run("AddEventActivityReservationField", make("GetEventActivity", 8)),
              joined({{reads8}, log, {"ForceUpdate"}}));
    confirmWith({{"type", "list"}});
    EXPECT_EQ(run("AddEventActivityReservationField", activity).back(),
              "ErrorUnexpected: Type mismatch (String where a number is needed): FieldType of "
              "AddEventActivityFieldDialog");
    EXPECT_EQ(fieldCount(activity), 1);
}

TEST_F(ActivityCommands, EditReservationFieldsInTheirDialogs)
{
    const auto activity = make("GetEventActivity", 8);
    const auto meal = make("GetNewEventActivityReservationField");
    const std::string sent = "reservationfield = cEventActivityReservationField";
    const Log editing =
        dialog("editeventactivityfield", {"title = ", "heading = ", "description = ", sent});
    const Log choosing =
        joined({{reads8},
                dialog("editreservationfielditems",
                       {"title = Change Reservation Field List",
                        "heading = Change Reservation Field List", "action = ", sent})});
    EXPECT_EQ(run("EditEventActivityReservationField", meal), editing);
    EXPECT_EQ(run("EditEventActivityReservationFieldItems", meal, activity), choosing);
    confirmWith();
    EXPECT_EQ(run("EditEventActivityReservationField", meal), joined({editing, {"ForceUpdate"}}));
    EXPECT_EQ(run("EditEventActivityReservationFieldItems", meal, activity),
              joined({choosing, {"ForceUpdate"}}));
}

TEST_F(ActivityCommands, DeleteAReservationFieldOnlyWhileNobodyAnsweredIt)
{
    const auto activity = make("GetEventActivity", 8);
    call(fields(activity), "Add", make("GetNewEventActivityReservationField"));
    call(fields(activity), "Add", make("GetNewEventActivityReservationField"), "Meal");
    offer(8, 10, {{31, 2, 1}});
    EXPECT_EQ(run("DeleteEventActivityReservationField", 1, activity),
              (Log{reads8, readsLines,
                   "MsgBox: The event has reservations that include the activity.  Click OK to "
                   "continue. | Request Is Not Valid",
                   "ForceUpdate"}));
    EXPECT_EQ(fieldCount(activity), 2);
    offer(8, 10, {});
    for (const Value& id : {Value("Meal"), Value(1)}) {
        EXPECT_EQ(run("DeleteEventActivityReservationField", id, activity),
                  (Log{reads8, readsLines, "ForceUpdate"}));
    }
    EXPECT_EQ(fieldCount(activity), 0);
    EXPECT_EQ(run("DeleteEventActivityReservationField", 1, activity).back(),
              "ErrorUnexpected: Subscript out of range (position 1 of 0)");
}

} // namespace
} // namespace qmevents
