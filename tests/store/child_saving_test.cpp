#include "tests/store/late_store.h"

namespace qmevents {
namespace {

using testing::Cells;
using testing::LateStore;
using testing::Log;

const std::string exists = "SELECT id FROM events_event_info WHERE id=<3:5>";
const std::string identity = "SELECT @@IDENTITY";
const std::string full = "ErrorUnexpected: the disk is full";
const std::string gone = "\r\nIt may have been deleted by another user.";

class ChildSaving : public LateStore {
protected:
    Ref<Object> participant(std::int32_t donor = 9)
    {
        return make("GetNewEventParticipant", 5, donor);
    }
};

/// What differs between the kinds of records: those whose own row is all that a save writes.
struct Kind {
    std::string thing; ///< As in the operations' names.
    Cells cells;       ///< A valid record of event 5.
    const char *insert, *update;
};
const Kind kinds[] = {
    {"EventActivity",
     {{"Name", "Ticket"}, {"ListPrice", 25}, {"QuantityAvailable", 10}, {"Sponsorship", true}},
     "INSERT INTO events_event_activities (FKEventId, Name, Description, ListPrice, Cost, "
     "QuantityAvailable, Sponsorship, ReservationInfo, QuantityType, FKFundId, FKCampaignId, "
     "FKAppealId, CreateUser, CreateDate) VALUES (<2:5>, <5:Ticket>, <5:>, <3:25>, <3:0>, <3:10>, "
     "<7:True>, <5:>, <3:0>, <2:0>, <2:0>, <2:0>, <3:5>, <1:2026-11-21 10:00:00>)",
     "UPDATE events_event_activities SET FKEventId = <2:5>, [Name] = <5:Ticket>, Description = "
     "<5:>, ListPrice = <3:25>, Cost = <3:0>, QuantityAvailable = <3:10>, Sponsorship = <7:True>, "
     "ReservationInfo = <5:>, QuantityType = <3:0>, FKFundId = <2:0>, FKCampaignId = <2:0>, "
     "FKAppealId = <2:0>, LastUpdateUser = <3:5>, LastUpdateDate = <1:2026-11-21 10:00:00> WHERE "
     "Id = <3:34>"},
    {"EventExpense",
     {{"Description", "Flowers"}, {"ExpenseDate", Date::of(2026, 11, 3)}, {"Amount", -12.5}},
     "INSERT INTO events_event_expenses (FKEventId, ExpenseDate, Description, Amount, CreateUser, "
     "CreateDate) VALUES (<2:5>, <1:2026-11-03 00:00:00>, <5:Flowers>, <3:-12.5>, <3:5>, "
     "<1:2026-11-21 10:00:00>)",
     "UPDATE events_event_expenses SET FKEventId = <2:5>, ExpenseDate = <1:2026-11-03 00:00:00>, "
     "Description = <5:Flowers>, Amount = <3:-12.5>, LastUpdateUser = <3:5>, LastUpdateDate = "
     "<1:2026-11-21 10:00:00> WHERE Id = <3:34>"},
    {"EventTask",
     {{"Name", "Call"}, {"DueDateTime", Date::of(2026, 11, 30, 9)}, {"Completed", true}},
     "INSERT INTO events_event_tasks (FKEventId, Name, Notes, DueDateTime, Completed, "
     "FKAssignedToId, CreateUser, CreateDate) VALUES (<2:5>, <5:Call>, <5:>, <1:2026-11-30 "
     "09:00:00>, <7:True>, <2:0>, <3:5>, <1:2026-11-21 10:00:00>)",
     "UPDATE events_event_tasks SET FKEventId = <2:5>, Name = <5:Call>, Notes = <5:>, DueDateTime "
     "= <1:2026-11-30 09:00:00>, Completed = <7:True>, FKAssignedToId = <2:0>, LastUpdateUser = "
     "<3:5>, LastUpdateDate = <1:2026-11-21 10:00:00> WHERE Id = <3:34>"},
};

TEST_F(ChildSaving, InsertsANewRecordAndRewritesAStoredOneUnderTheEventsLock)
{
    for (const auto& [thing, cells, insert, update] : kinds) {
        SCOPED_TRACE(thing);
        const auto record = with(make("GetNew" + thing, 5), cells);
        EXPECT_TRUE(succeeds("Update" + thing, record));
        EXPECT_EQ(host.takeLog(),
                  (Log{"Lock event 5", exists, insert, identity, "Unlock event 5"}));
        EXPECT_EQ(idOf(record), 34);
        EXPECT_FALSE(is(record, "IsNew") || is(record, "IsDirty"));
        EXPECT_TRUE(succeeds("Update" + thing, record, false));
        EXPECT_EQ(host.takeLog(), (Log{"Lock event 5", exists, update, "Unlock event 5"}));
    }
}

struct Refusal {
    std::string thing;
    const char *method, *name;
};
const Refusal refusals[] = {
    {"EventActivity", "UpdateEventActivity", "event activity"},
    {"EventExpense", "UpdateEventExpense", "event expense"},
    {"EventTask", "UpdateEventTask", "event task"},
    {"EventParticipant", "EditEventParticipant", "event participant"},
    {"EventReservation", "UpdateEventReservation", "event reservation"},
};

TEST_F(ChildSaving, IsRefusedWithoutRightRecordEventOrLock)
{
    for (const auto& refusal : refusals) {
        const std::string thing = refusal.thing;
        const std::string name = refusal.name;
        SCOPED_TRACE(thing);
        const std::string heading =
            std::string("ErrorUnexpected: The ") + refusal.method + " method requires a valid ";
        const auto save = [&](const Value& record) {
            EXPECT_FALSE(succeeds("Update" + thing, record));
            return host.takeLog();
        };
        const auto record = [&](std::int32_t event) {
            const auto made = make("GetNew" + thing, event);
            if (made->memberId("FKdonorId") != unknownMember) put(made, "FKdonorId", 9);
            return made;
        };
        EXPECT_EQ(save(Value::nothing()), Log{heading + name + " class"});
        EXPECT_EQ(save(record(0)), Log{heading + "event id"});
        host.lockHeldByAnother = true;
        EXPECT_EQ(save(record(5)), Log{"Lock refused event 5"});
        host.lockHeldByAnother = false;
        if (thing != "EventParticipant") { // which is always validated
            EXPECT_FALSE(succeeds("Update" + thing, record(6), false));
            EXPECT_EQ(host.takeLog(),
                      (Log{"Lock event 6", "SELECT id FROM events_event_info WHERE id=<3:6>",
                           "ErrorUser: The event does not exist.  It may have been deleted by "
                           "another user.",
                           "Unlock event 6"}));
        }
        host.deniedRights = {"events/edit"};
        EXPECT_EQ(save(record(5)),
                  Log{"MsgBox: Based on your current security settings, you are not authorized to "
                      "update an event.  Contact your database administrator | Not Authorized To "
                      "Update Event"});
        host.deniedRights.clear();
        EXPECT_FALSE(succeeds("Validate" + thing, Value::nothing()));
        EXPECT_EQ(host.takeLog(), Log{"ErrorUser: The Validate method requires a valid " +
                                      std::string(name) + " object"});
    }
    EXPECT_FALSE(succeeds("UpdateEventParticipant", participant(0)));
    EXPECT_EQ(host.takeLog(),
              Log{"ErrorUnexpected: The EditEventParticipant method requires a valid donor id"});
}

TEST_F(ChildSaving, ShowsTheFirstBrokenRuleOnly)
{
    const Date day = Date::of(2026, 12, 1);
    const Value none = Date();
    const struct {
        std::string thing;
        Cells cells;
        std::string message; // empty when all rules hold
    } cases[] = {
        {"EventActivity", {{"FKEventId", 0}}, "A valid event id is required."},
        {"EventActivity", {{"Name", "  "}}, "A valid activity name is required."},
        {"EventActivity", {{"Name", "A"}}, ""},
        {"EventActivity",
         {{"Name", "A"}, {"FKFundId", 8}},
         "The selected fund no longer exists." + gone},
        {"EventActivity",
         {{"Name", "A"}, {"FKFundId", 1}, {"FKCampaignId", 8}, {"FKAppealId", 8}},
         "The selected campaign no longer exists." + gone},
        {"EventActivity",
         {{"Name", "A"}, {"FKAppealId", 8}},
         "The selected appeal no longer exists." + gone},
        {"EventExpense", {{"FKEventId", 0}}, "A valid event id is required."},
        {"EventExpense", {{"Amount", 5}}, "A valid expense date is required."},
        {"EventExpense",
         {{"ExpenseDate", Date::fromSerial(0.5)}},
         "A valid expense date is required."},
        {"EventExpense",
         {{"ExpenseDate", day}, {"Amount", 0}},
         "A valid expense amount is required."},
        {"EventExpense",
         {{"ExpenseDate", day}, {"Amount", -1}},
         "A valid expense description is required."},
        {"EventTask", {{"FKEventId", 0}}, "A valid event id is required."},
        {"EventTask", {{"DueDateTime", none}}, "A valid task name is required."},
        {"EventTask", {{"Name", "Call"}}, "A valid due date/time is required."},
        {"EventParticipant", {{"FKdonorId", 8}}, "A valid donor id is required."},
        {"EventParticipant", {{"FKdonorId", 9}, {"FKEventId", 0}}, "A valid event id is required."},
        {"EventReservation", {{"FKEventId", 0}}, "A valid event id is required."},
        {"EventReservation", {{"ReservationDate", none}}, "The reservation donor is required."},
        {"EventReservation", {{"FKdonorId", 8}}, "The reservation donor no longer exists." + gone},
        {"EventReservation", {{"FKdonorId", 9}}, "The reservation date is required."},
        {"EventReservation",
         {{"FKdonorId", 9}, {"ReservationDate", day}},
         "Reservation must include at least one activity."},
    };
    host.codes = {{"fund", {1}}, {"campaign", {1}}, {"giftsource", {1}}};
    for (const auto& [thing, cells, message] : cases) {
        SCOPED_TRACE(thing + ": " + message);
        const auto record = with(make("GetNew" + thing, 5), cells);
        EXPECT_EQ(succeeds("Validate" + thing, record), message.empty());
        const Log log = host.takeLog();
        EXPECT_EQ(log.empty() ? "" : log.back(), message.empty() ? "" : "ErrorUser: " + message);
    }
}

TEST_F(ChildSaving, AnActivityOffersNoLessThanIsReserved)
{
    for (const auto& [available, type, message] :
         {std::tuple(6, 0,
                     "The # available cannot be changed to less than the quantity already "
                     "reserved (7)."),
          std::tuple(7, 0, ""), std::tuple(0, 1, "")}) {
        offer(3, 10, {{1, 7, 2}, {2, 8, 5}});
        const auto activity = with(make("GetEventActivity", 3),
                                   {{"QuantityAvailable", available}, {"QuantityType", type}});
        host.log.clear();
        EXPECT_EQ(succeeds("ValidateEventActivity", activity), *message == 0);
        const Log shown = host.takeLog();
        EXPECT_EQ(shown.empty() || shown.back().starts_with("SELECT") ? "" : shown.back(),
                  *message == 0 ? "" : std::string("ErrorUser: ") + message);
    }
}

TEST_F(ChildSaving, AParticipantIsWrittenWithItsGroupsAndToldInTheHistory)
{
    const auto one = with(participant(), {{"Status", 2}, {"Notes", "vegan"}});
    for (const int group : {70, 71, 70, 99}) call(one, "AddInvitationGroup", group, "");
    host.log.clear();
    EXPECT_TRUE(succeeds("UpdateEventParticipant", one));
    const Log groups{
        "SELECT * FROM events_list_eventinvitationgroups WHERE Id = <3:70>",
        "SELECT * FROM events_list_eventinvitationgroups WHERE Id = <3:71>",
        "SELECT * FROM events_list_eventinvitationgroups WHERE Id = <3:99>",
        "DELETE FROM events_event_participants_groups WHERE FKEventId = 5 AND FKDonorId = 9",
        "INSERT INTO events_event_participants_groups (FKEventId, FKDonorId, FKInvitationGroupId) "
        "VALUES (<2:5>, <2:9>, <2:70>)",
        "INSERT INTO events_event_participants_groups (FKEventId, FKDonorId, FKInvitationGroupId) "
        "VALUES (<2:5>, <2:9>, <2:71>)"};
    Log added{
        "Lock event 5", exists,
        "INSERT INTO events_event_participants (FKEventId, FKDonorId, Status, Notes, "
        "Attended, CreateUser, CreateDate) VALUES (<2:5>, <2:9>, <3:2>, <5:vegan>, <7:False>, "
        "<3:5>, <1:2026-11-21 10:00:00>)",
        identity};
    added.insert(added.end(), groups.begin(), groups.end());
    added.insert(added.end(),
                 {"SELECT * FROM events_event_info WHERE Id = <2:5>",
                  "Note 9 Event 5: Added To Participant List: Gala &lt;&amp;&gt; &quot;Ball&quot;"
                  "<br>Added By: Anna<br>Event Date: 12/1/2026",
                  "Unlock event 5"});
    EXPECT_EQ(host.takeLog(), added);
    EXPECT_TRUE(succeeds("UpdateEventParticipant", one));
    Log changed{"Lock event 5", exists,
                "UPDATE events_event_participants SET FKEventId = <2:5>, FKDonorId = <2:9>, Status "
                "= <3:2>, Notes = <5:vegan>, Attended = <7:False>, LastUpdateUser = <3:5>, "
                "LastUpdateDate = <1:2026-11-21 10:00:00> WHERE Id = <3:34>"};
    changed.insert(changed.end(), groups.begin(), groups.end());
    changed.emplace_back("Unlock event 5");
    EXPECT_EQ(host.takeLog(), changed) << "one already there is not told again";
}

TEST_F(ChildSaving, ManyParticipantsCostTheSameEachAndLetTheHostBreathe)
{
    constexpr int many = 40;
    const auto participants = make("GetNewEventParticipants");
    for (int i = 0; i < many; ++i) {
        const auto one = make("GetNewEventParticipant", 0, i % 2 ? 9 : 4);
        call(one, "AddInvitationGroup", 70, "Board");
        call(participants, "Add", one, 0);
    }
    host.log.clear();
    EXPECT_TRUE(succeeds("AddEventParticipants", 5, participants));
    const auto count = [&](const std::string& start) {
        return std::count_if(host.log.begin(), host.log.end(),
                             [&](const auto& line) { return line.starts_with(start); });
    };
    EXPECT_EQ(count("DoEvents"), many - 1);
    EXPECT_EQ(count("INSERT INTO events_event_participants ("), many);
    EXPECT_EQ(count("Note "), many);
    EXPECT_EQ(count("Lock "), 1);
    // Lock and unlock, the event twice, the group once; row, key, groups twice and note for each.
    EXPECT_EQ(host.log.size(), 5U + many * 5 + (many - 1));
    host.log.clear();
    EXPECT_TRUE(succeeds("AddEventParticipants", 5, participants));
    EXPECT_EQ(host.log.size(), 3U) << "what is stored is not stored again";
    EXPECT_FALSE(succeeds("AddEventParticipants", 5, Value::nothing()));
    EXPECT_EQ(host.log.back(), "ErrorUnexpected: The AddEventParticipants method requires a valid "
                               "event participants class");
}

TEST_F(ChildSaving, AReservationIsWrittenWithItsLinesByTheirState)
{
    const auto order = reservation({{3, 2}, {4, 1}});
    EXPECT_TRUE(succeeds("UpdateEventReservation", order, false));
    const std::string insert = "INSERT INTO events_event_reservations_activities (FKReservationId, "
                               "FKActivityId, Quantity, Price, Notes, ReservationInfo, CreateUser, "
                               "CreateDate) VALUES (<2:34>, ";
    const std::string rest = ", <3:25>, <5:>, <5:>, <3:5>, <1:2026-11-21 10:00:00>)";
    EXPECT_EQ(
        host.takeLog(),
        (Log{"Lock event 5", exists,
             "INSERT INTO events_event_reservations (FKEventId, FKDonorId, ReservationDate, "
             "Description, AmountPaid, CreateUser, CreateDate) VALUES (<2:5>, <2:9>, "
             "<1:2026-11-20 00:00:00>, <5:>, <3:0>, <3:5>, <1:2026-11-21 10:00:00>)",
             identity, insert + "<2:3>, <3:2>" + rest, identity, insert + "<2:4>, <3:1>" + rest,
             identity, "SELECT * FROM events_event_info WHERE Id = <2:5>",
             "Note 9 Event 5: Reservation Added For Event: Gala &lt;&amp;&gt; "
             "&quot;Ball&quot;<br>Added By: Anna<br>Reservation Date: 11/20/2026",
             "Unlock event 5"}));

    // One line changed, one deleted, one deleted before it was ever stored.
    const auto lines = getObject(order, "Activities");
    put(toObject(get(lines, "Item", 1)), "Notes", "window");
    call(lines, "Remove", 2, true);
    call(lines, "Add", make("GetNewEventReservationActivity"), 0);
    call(lines, "Remove", 2, true);
    EXPECT_TRUE(succeeds("UpdateEventReservation", order, false));
    const Log changed = host.takeLog();
    ASSERT_EQ(changed.size(), 6U);
    EXPECT_EQ(changed[3], "UPDATE events_event_reservations_activities SET FKReservationId = "
                          "<2:34>, FKActivityId = <2:3>, Quantity = <3:2>, Price = <3:25>, Notes = "
                          "<5:window>, ReservationInfo = <5:>, LastUpdateUser = <3:5>, "
                          "LastUpdateDate = <1:2026-11-21 10:00:00> WHERE Id = <3:34>");
    EXPECT_EQ(changed[4], "DELETE FROM events_event_reservations_activities WHERE Id = 34");

    call(lines, "Add", with(make("GetNewEventReservationActivity"), {{"Quantity", 1}}), 0);
    EXPECT_FALSE(succeeds("UpdateEventReservation", order, false));
    EXPECT_EQ(host.log.at(3), "ErrorUnexpected: The UpdateEventReservationActivity method requires "
                              "a valid activity id");
}

TEST_F(ChildSaving, NoMoreIsReservedThanThereIs)
{
    const std::string exceeds =
        "The quantity entered exceeds the maximum remaining available for the activity (";
    const struct {
        std::vector<std::pair<int, int>> lines; // activity and quantity
        std::string message;
    } cases[] = {
        {{{3, 3}}, ""},
        {{{3, 4}}, exceeds + "3)."},
        {{{3, 2}, {3, 2}}, exceeds + "1)."}, // the reservation's other line counts
        {{{3, 0}}, "The event reservation activity quantity is required."},
        {{{3, -1}}, "The event reservation activity quantity is required."},
        {{{4, 1}}, exceeds + "0)."},
        {{{6, 5000}}, ""},
        {{{8, 1}}, "The event activity no longer exists." + gone},
    };
    offer(3, 10, {{1, 7, 2}, {2, 8, 5}});
    offer(4, 0, {});
    offer(6, 0, {{3, 7, 100}}, 1);
    for (const auto& [lines, message] : cases) {
        SCOPED_TRACE(message);
        const auto order = reservation(lines);
        EXPECT_EQ(succeeds("ValidateEventReservation", order), message.empty());
        const Log log = host.takeLog();
        const auto reads = std::count_if(
            log.begin(), log.end(), [](const auto& line) { return line.starts_with("SELECT"); });
        EXPECT_LE(reads, 2) << "the activity, and the lines that use it, are read once";
        if (!message.empty()) { EXPECT_EQ(log.back(), "ErrorUser: " + message); }
    }
}

TEST_F(ChildSaving, OwnLinesCountAsTheyWillStandAfterTheSave)
{
    const struct {
        const char* what;
        std::function<void(const Ref<Object>&, const Ref<Object>&)> change; // line 1 and all lines
        bool valid;
    } cases[] = {
        {"nothing changed", [](const auto&, const auto&) {}, true},
        {"a smaller quantity that is not saved frees nothing",
         [](const auto& line, const auto&) { put(line, "Quantity", 1); }, false},
        {"one that is saved does",
         [](const auto& line, const auto&) {
             with(line, {{"Quantity", 1}, {"Notes", "n"}});
         },
         true},
        {"so does a line taken out",
         [](const auto&, const auto& lines) { call(lines, "Remove", 1, true); }, true},
        {"the old quantity is not counted beside the new one",
         [](const auto& line, const auto&) {
             with(line, {{"Quantity", 5}, {"Notes", "n"}});
         },
         false},
    };
    offer(3, 10, {{1, 7, 4}, {2, 8, 5}});
    host.answer("FKReservationId=<2:7>", lineRows(3, {{1, 7, 4}}));
    host.answer("eer.Id = <3:7>",
                testing::rowsOf("Id FKEventId FKDonorId ReservationDate Description AmountPaid",
                                {{7, 5, 9, Date::of(2026, 11, 20), testing::null, 0}}));
    for (const auto& [what, change, valid] : cases) {
        SCOPED_TRACE(what);
        const auto order = make("GetEventReservation", 7);
        const auto lines = getObject(order, "Activities");
        change(toObject(get(lines, "Item", 1)), lines);
        // Two more where one unit is left.
        const bool more = &what != &cases[0].what;
        if (more) {
            call(lines, "Add",
                 with(make("GetNewEventReservationActivity"),
                      {{"FKActivityId", 3}, {"Quantity", 2}}),
                 0);
        }
        EXPECT_EQ(succeeds("ValidateEventReservation", order), valid);
    }
}

TEST_F(ChildSaving, ALineOnItsOwnNeedsAStoredReservation)
{
    const auto line = with(make("GetNewEventReservationActivity"), {{"FKActivityId", 3}});
    EXPECT_FALSE(succeeds("UpdateEventReservationActivity", line));
    EXPECT_EQ(host.takeLog(), Log{"ErrorUser: A valid reservation id is required."});
}

TEST_F(ChildSaving, ATextWithANulCharacterIsRefusedByTheNameOfItsColumn)
{
    const auto task = with(make("GetNewEventTask", 5), {{"Name", std::string("Call\0me", 7)},
                                                        {"DueDateTime", Date::of(2026, 12, 1)}});
    EXPECT_FALSE(succeeds("UpdateEventTask", task));
    EXPECT_EQ(host.log, (Log{"Lock event 5", exists, "Unlock event 5",
                             "ErrorUnexpected: The text of Name holds a NUL character, which "
                             "cannot be stored."}));
    EXPECT_EQ(toText(get(task, "Name")).size(), 7U);
    EXPECT_TRUE(is(task, "IsNew"));

    offer(3, 10, {});
    const auto order = reservation({{3, 1}});
    put(toObject(get(getObject(order, "Activities"), "Item", 1)), "Notes", std::string("a\0b", 3));
    EXPECT_FALSE(succeeds("UpdateEventReservation", order));
    EXPECT_EQ(host.log.back(), "ErrorUnexpected: The text of Notes holds a NUL character, which "
                               "cannot be stored.");
    EXPECT_TRUE(is(order, "IsNew")) << "a line that cannot be stored keeps its reservation out";
}

} // namespace
} // namespace qmevents
