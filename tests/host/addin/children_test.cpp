// An event's children through the whole: statements, columns, documents, database.
#include "tests/host/addin/whole_host.h"

namespace refhost {
namespace {

using qmevents::Currency;
using qmevents::Date;
using Seen = std::vector<std::string>;

/// A column, its value and how the value is written.
struct Cell {
    std::string column;
    Value value;
    std::int32_t kind;
};
Cell key(const char* column, std::int32_t id) { return {column, id, 2}; }
Cell number(const char* column, Value value) { return {column, std::move(value), 3}; }
Cell text(const char* column, const char* value) { return {column, value, 5}; }
Cell day(const char* column, int ofMarch) { return {column, Date::of(2026, 3, ofMarch), 1}; }
Cell yes(const char* column) { return {column, true, 7}; }

class ChildrenInSession : public InBothDialects {
protected:
    std::int32_t insert(const std::string& into, const std::vector<Cell>& cells)
    {
        std::string columns;
        std::string values;
        for (const auto& [column, value, kind] : cells) {
            columns += (columns.empty() ? "" : ", ") + column;
            values +=
                (values.empty() ? "" : ", ") +
                toText(call(getObject(host.session->app(), "Provider"), "VToSQL", value, kind));
        }
        host.execute("INSERT INTO " + into + " (" + columns + ") VALUES (" + values + ")");
        return std::stoi(host.cell("SELECT @@IDENTITY"));
    }
    template <typename... A>
    Ref<Object> read(const char* operation, A... arguments)
    {
        return toObject(call(host.store(), operation, arguments...));
    }
    static Ref<Object> item(const Ref<Object>& collection, std::int32_t position)
    {
        return toObject(call(collection, "Item", position));
    }
    static std::string textOf(const Ref<Object>& object, const char* property)
    {
        return toText(get(object, property));
    }

    // An event with one or two of everything.
    void fillEvent()
    {
        kim = insert("donor_donors", {text("display", "Lee, Kim")});
        ann = insert("donor_donors", {text("display", "Ode, Ann")});
        event = insert("events_event_info", {text("Name", "Gala"), number("FKStatusId", 4)});
        ticket = insert("events_event_activities",
                        {key("FKEventId", event), text("Name", "Ticket"), number("ListPrice", 25),
                         number("QuantityAvailable", 10)});
        table = insert("events_event_activities",
                       {key("FKEventId", event), text("Name", "Table"), number("ListPrice", 1000),
                        number("QuantityAvailable", 3), yes("Sponsorship")});
        for (const std::int32_t donor : {kim, ann}) {
            insert("events_event_participants",
                   {key("FKEventId", event), key("FKDonorId", donor), number("Status", 2)});
        }
        for (const auto& [name, order] : {std::pair("Board", 1), std::pair("Press", 2)}) {
            const auto group =
                insert("events_list_eventinvitationgroups",
                       {text("Name", name), yes("Visible"), number("[Order]", order)});
            host.execute("INSERT INTO events_event_participants_groups (FKEventId, FKDonorId, "
                         "FKInvitationGroupId) VALUES (" +
                         std::to_string(event) + ", " + std::to_string(kim) + ", " +
                         std::to_string(group) + ")");
        }
        reservation =
            insert("events_event_reservations",
                   {key("FKEventId", event), key("FKDonorId", kim), day("ReservationDate", 7),
                    number("AmountPaid", Currency::fromDouble(40.5))});
        insert("events_event_reservations", {key("FKEventId", event), key("FKDonorId", 999)});
        for (const auto& [activity, price] : {std::pair(ticket, 25), std::pair(table, 900)}) {
            insert("events_event_reservations_activities",
                   {key("FKReservationId", reservation), key("FKActivityId", activity),
                    number("Quantity", 2), number("Price", price)});
        }
        for (const int cost : {10, 20}) {
            insert("events_event_expenses",
                   {key("FKEventId", event), day("ExpenseDate", cost), number("Amount", cost),
                    text("Description", cost == 10 ? "Flowers" : "Music")});
        }
        const auto user = toInt32(
            get(getObject(getObject(host.session->app(), "Security"), "CurrentUser"), "Id"));
        const auto assignee =
            insert("donor_list_assignedto", {text("value", "Me"), number("FKuserId", user)});
        insert("events_event_tasks", {key("FKEventId", event), text("Name", "Call"),
                                      day("DueDateTime", 9), key("FKAssignedToId", assignee)});
    }

    WholeHost host{GetParam()};
    const Seen& seen = host.frontEnd.seen;
    std::int32_t kim = 0, ann = 0, event = 0, ticket = 0, table = 0, reservation = 0;
};

INSTANTIATE_TEST_SUITE_P(Both, ChildrenInSession,
                         ::testing::Values(Dialect::sqlServer, Dialect::jet), testNameOf);

TEST_P(ChildrenInSession, AnEventShowsAllThatBelongsToIt)
{
    fillEvent();
    const auto gala = read("GetEvent", event);
    const auto activities = getObject(gala, "Activities");
    EXPECT_EQ(toText(call(activities, "ToString")), "Table, Ticket");
    EXPECT_EQ(textOf(activities, "PotentialRevenue"), "3250");
    EXPECT_EQ(textOf(item(activities, 1), "QuantityInUse"), "2");

    const auto participants = getObject(gala, "Participants");
    EXPECT_EQ(toText(call(participants, "ToString", "; ")), "Lee, Kim; Ode, Ann");
    EXPECT_EQ(textOf(item(participants, 1), "InvitationGroupsString"), "Board, Press");
    EXPECT_EQ(toText(call(getObject(item(participants, 1), "InvitationGroups"), "ToString")),
              "Board, Press");
    EXPECT_EQ(textOf(getObject(gala, "ParticipantInvitationGroups"), "Count"), "2");

    EXPECT_EQ(toText(call(getObject(gala, "Expenses"), "ToString")), "Music, Flowers");
    EXPECT_EQ(textOf(getObject(gala, "Expenses"), "Total"), "30");
    EXPECT_EQ(toText(call(getObject(gala, "Tasks"), "ToString")), "Call");

    const auto reservations = getObject(gala, "Reservations");
    EXPECT_EQ(textOf(reservations, "TotalPaid"), "40.5");
    EXPECT_EQ(textOf(reservations, "TotalExpected"), "1850");
    EXPECT_EQ(textOf(reservations, "TotalSponsorship"), "1800");
    EXPECT_EQ(textOf(reservations, "TotalActivities"), "2");
    EXPECT_EQ(textOf(item(reservations, 1), "EventName"), "Gala");
    EXPECT_EQ(textOf(item(reservations, 1), "EventFKStatusId"), "4");
    EXPECT_EQ(textOf(getObject(gala, "ReservationActivities"), "TotalSponsorship"), "1800");
    const auto sponsorships = getObject(gala, "Sponsorships");
    EXPECT_EQ(toText(call(sponsorships, "ToString")), "Table");
    EXPECT_EQ(textOf(item(sponsorships, 1), "DonorName"), "Lee, Kim");
    EXPECT_EQ(textOf(item(sponsorships, 1), "DonorExists"), "True");
    EXPECT_EQ(seen, Seen{});
}

TEST_P(ChildrenInSession, ReadsByOtherKeysFindTheSame)
{
    fillEvent();
    EXPECT_EQ(textOf(read("GetEventParticipants", 0, kim), "Count"), "1");
    EXPECT_EQ(textOf(read("GetEventReservations", 0, kim, ""), "Count"), "1");
    EXPECT_EQ(textOf(read("GetEventParticipant", 0, event, ann), "ParticipantName"), "Ode, Ann");
    EXPECT_EQ(textOf(read("GetEventsTasksByDate", ""), "Count"), "1");
    for (const char* single :
         {"GetEventActivity", "GetEventExpense", "GetEventParticipant", "GetEventReservation",
          "GetEventReservationActivity", "GetEventTask"}) {
        EXPECT_FALSE(read(single, 12345)) << single;
    }
    EXPECT_EQ(seen, Seen{});
}

TEST_P(ChildrenInSession, TheRecordSetHoldsReservationsWithoutLinesOnce)
{
    fillEvent();
    for (const int amount : {30, 12}) {
        const auto gift = insert("donor_gifts", {key("donorId", kim), key("FKEventId", event),
                                                 key("FKReservationId", reservation),
                                                 number("deleted", amount == 12 ? 1 : 0)});
        insert("donor_gifts_payments", {key("giftId", gift), number("actualAmount", amount)});
    }
    const auto rows = read("GetEventReservationAndActivitiesRecordSet", event, "eer.Id, eera.Id");
    ASSERT_TRUE(rows) << ::testing::PrintToString(seen);
    std::vector<std::string> found;
    for (; !toBool(get(rows, "EOF")); call(rows, "MoveNext")) {
        std::string row;
        for (const char* column :
             {"ReservationPayments", "ActivityName", "ReservationActivityQuantity", "DonorName"}) {
            const Value cell = get(toObject(get(rows, "Fields", column)), "Value");
            row += (cell.isNull() ? "-" : toText(cell)) + "|";
        }
        found.push_back(row);
    }
    EXPECT_EQ(found, (Seen{"30|Ticket|2|Lee, Kim|", "30|Table|2|Lee, Kim|", "0|-|-|-|"}));
}

TEST_P(ChildrenInSession, ReservationFieldsAreReadFromTheirDocument)
{
    const auto activity = [&](const char* document) {
        return read("GetEventActivity",
                    insert("events_event_activities", {key("FKEventId", 1), text("Name", "A"),
                                                       text("ReservationInfo", document)}));
    };
    const auto field = item(
        getObject(activity("<fields><field name=\"Meal\" type=\"2\" visible=\"1\" colour=\"red\">"
                           "<list><listitem visible=\"1\"><value><![CDATA[ Fish & <Chips> ]]>"
                           "</value></listitem><listitem visible=\"0\"><value>Meat</value>"
                           "</listitem></list><defaultvalue><![CDATA[a]]]]><![CDATA[>b]]>"
                           "</defaultvalue><unknown/><description>What to eat</description>"
                           "</field></fields>"),
                  "ReservationFields"),
        1);
    EXPECT_EQ(textOf(field, "Name"), "Meal");
    EXPECT_EQ(textOf(field, "FieldTypeString"), "Dropdown List");
    EXPECT_EQ(textOf(field, "Description"), "What to eat");
    EXPECT_EQ(textOf(field, "DefaultValue"), "a]]>b");
    const auto choices = getObject(field, "ListItems");
    EXPECT_EQ(textOf(item(choices, 1), "Name"), " Fish & <Chips> ") << "blanks are kept";
    EXPECT_EQ(textOf(item(choices, 1), "Visible"), "True");
    EXPECT_EQ(textOf(item(choices, 2), "Visible"), "False");
    EXPECT_EQ(textOf(activity("<fields><field type='1' name='A'/><field><name>B</name></field>"
                              "</fields>"),
                     "ReservationFieldSummary"),
              "A, B");
    EXPECT_EQ(textOf(activity("<fields/>"), "ReservationFieldSummary"), "");
    EXPECT_EQ(seen, Seen{});
}

TEST_P(ChildrenInSession, AnUnreadableDocumentIsToldAndLeavesTheRecord)
{
    for (const char* broken :
         {"<fields><field", "no document", "<fields><field type='x'/></fields>"}) {
        SCOPED_TRACE(broken);
        host.frontEnd.seen.clear();
        const auto activity =
            read("GetEventActivity",
                 insert("events_event_activities",
                        {key("FKEventId", 1), text("Name", "A"), text("ReservationInfo", broken)}));
        const auto line = read("GetEventReservationActivity",
                               insert("events_event_reservations_activities",
                                      {key("FKReservationId", 1), number("Quantity", 3),
                                       text("ReservationInfo", broken)}));
        EXPECT_EQ(textOf(getObject(activity, "ReservationFields"), "Count"), "0");
        EXPECT_EQ(textOf(getObject(line, "ReservationFieldValues"), "Count"), "0");
        EXPECT_EQ(textOf(line, "Quantity"), "3");
        ASSERT_EQ(seen.size(), 2U);
        EXPECT_EQ(seen[0].rfind("unexpected error There was an error reading the "
                                "reservation fields: ",
                                0),
                  0U);
        EXPECT_EQ(seen[1].rfind("unexpected error There was an error reading the "
                                "reservation field values: ",
                                0),
                  0U);
    }
}

TEST_P(ChildrenInSession, FieldValuesAreFoundByTheirField)
{
    const auto line =
        read("GetEventReservationActivity",
             insert("events_event_reservations_activities",
                    {key("FKReservationId", 1), number("Quantity", 3),
                     text("ReservationInfo",
                          "<fields><field name=\"Meal\" type=\"3\"><value><![CDATA[Fish]]></value>"
                          "</field><field type=\"1\" name=\"Meal\"><value>Soup</value></field>"
                          "</fields>")}));
    const auto values = getObject(line, "ReservationFieldValues");
    EXPECT_EQ(textOf(values, "Count"), "2");
    EXPECT_EQ(textOf(toObject(call(values, "Item", "Meal")), "Value"), "Fish");
    EXPECT_EQ(textOf(item(values, 2), "Value"), "Soup");
    EXPECT_EQ(textOf(line, "IsDirty"), "False");
}

} // namespace
} // namespace refhost
