// What belongs to an event, saved and read back through the whole: store, documents, statements,
// database.
#include "tests/host/addin/whole_host.h"

namespace refhost {
namespace {

using qmevents::Date;
using Seen = std::vector<std::string>;
using Cells = std::vector<std::pair<const char*, Value>>;

class SavedChildren : public InBothDialects {
protected:
    SavedChildren()
    {
        host.execute("INSERT INTO donor_donors (display) VALUES ('Lee, Kim')");
        donor = std::stoi(host.cell("SELECT @@IDENTITY"));
        const auto gala = make("GetNewEvent");
        put(gala, "Name", "Gala");
        put(gala, "StartDateTime", Date::of(2026, 12, 1, 18));
        save("UpdateEvent", gala);
        event = idOf(gala);
    }
    template <typename... A>
    Ref<Object> make(const std::string& operation, A... arguments)
    {
        return toObject(call(host.store(), operation, arguments...));
    }
    bool save(const std::string& operation, const Ref<Object>& record)
    {
        return qmevents::toBool(call(host.store(), operation, record));
    }
    static Ref<Object> with(const Ref<Object>& record, const Cells& cells)
    {
        for (const auto& [name, value] : cells) put(record, name, value);
        return record;
    }
    static std::int32_t idOf(const Ref<Object>& record)
    {
        return qmevents::toInt32(get(record, "Id"));
    }
    static std::string textOf(const Ref<Object>& object, const char* property)
    {
        return toText(get(object, property));
    }
    static Ref<Object> item(const Ref<Object>& items, const Value& index)
    {
        return toObject(call(items, "Item", index));
    }
    Ref<Object> activity(int available)
    {
        auto made = with(make("GetNewEventActivity", event),
                         {{"Name", "Ticket"}, {"QuantityAvailable", available}});
        EXPECT_TRUE(save("UpdateEventActivity", made));
        return made;
    }
    /// An unsaved reservation of so many units.
    Ref<Object> reservation(const Ref<Object>& ofActivity, int units)
    {
        auto made = with(make("GetNewEventReservation", event),
                         {{"FKdonorId", donor}, {"ReservationDate", Date::of(2026, 11, 20)}});
        call(getObject(made, "Activities"), "Add",
             with(make("GetNewEventReservationActivity"),
                  {{"FKActivityId", idOf(ofActivity)}, {"Quantity", units}}),
             0);
        return made;
    }

    WholeHost host{GetParam()};
    const Seen& seen = host.frontEnd.seen;
    std::int32_t donor = 0, event = 0;
};

INSTANTIATE_TEST_SUITE_P(Both, SavedChildren, ::testing::Values(Dialect::sqlServer, Dialect::jet),
                         testNameOf);

// What people type, and what might be mistaken for the marks around it.
std::vector<std::string> hostileTexts()
{
    return {"O'Neill's \"Gala\" -- ; DROP TABLE x",
            "100 % [of] _them_ <5:text> #2026-01-01#",
            "]]></value></field><field name=\"x\">]]>]]",
            "<![CDATA[a]]>&amp;&#0;&lt;",
            "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D \xE2\x80\xAE right to left",
            "\xF0\x9F\x8E\x89\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9 \xE2\x9C\x93",
            " blanks around, \ttabs\nand lines ",
            ""};
}

TEST_P(SavedChildren, EveryTextColumnGivesBackWhatWasTyped)
{
    const auto ticket = activity(5);
    auto texts = hostileTexts();
    texts.emplace_back(60000, 'x');
    for (const auto& typed : texts) {
        SCOPED_TRACE(typed.substr(0, 60));
        const auto checks = [&](const std::string& thing, const Ref<Object>& record,
                                const std::vector<const char*>& properties) {
            for (const char* property : properties) put(record, property, typed);
            ASSERT_TRUE(save("Update" + thing, record)) << ::testing::PrintToString(seen);
            const auto stored = make("Get" + thing, idOf(record));
            for (const char* property : properties) {
                EXPECT_EQ(textOf(stored, property), typed) << thing << "." << property;
            }
        };
        const std::string name = typed.size() > 255 || typed.empty() ? "name" : typed;
        checks("EventActivity", with(make("GetNewEventActivity", event), {{"Name", name}}),
               {"Description"});
        checks("EventExpense",
               with(make("GetNewEventExpense", event),
                    {{"Description", name}, {"ExpenseDate", Date::of(2026, 1, 2)}, {"Amount", 1}}),
               {});
        checks("EventTask",
               with(make("GetNewEventTask", event),
                    {{"Name", name}, {"DueDateTime", Date::of(2026, 1, 2)}}),
               {"Notes"});
        checks("EventParticipant", make("GetNewEventParticipant", event, donor), {"Notes"});
        const auto order = reservation(ticket, 1);
        const auto line = item(getObject(order, "Activities"), 1);
        put(line, "Notes", typed);
        checks("EventReservation", order, {"Description"});
        EXPECT_EQ(textOf(make("GetEventReservationActivity", idOf(line)), "Notes"), typed);
        call(host.store(), "DeleteEventReservation", event, idOf(order));
    }
    EXPECT_EQ(seen, Seen(seen.size(), "refresh"));
}

TEST_P(SavedChildren, ALineThatWasNewIsTakenOutByItsKeyAndByItsId)
{
    const auto ticket = activity(6);
    const auto order = reservation(ticket, 1);
    const auto lines = getObject(order, "Activities");
    for (int line = 2; line <= 3; ++line) {
        call(lines, "Add",
             with(make("GetNewEventReservationActivity"),
                  {{"FKActivityId", idOf(ticket)}, {"Quantity", line}}),
             0);
    }
    ASSERT_TRUE(save("UpdateEventReservation", order)) << ::testing::PrintToString(seen);
    const auto second = idOf(item(lines, 2));
    call(host.commands(), "DeleteEventReservationActivity", second, order);
    call(host.commands(), "DeleteEventReservationActivity", -1, order);
    EXPECT_EQ(textOf(lines, "Count"), "1");
    ASSERT_TRUE(save("UpdateEventReservation", order)) << ::testing::PrintToString(seen);
    const std::string stored = " FROM events_event_reservations_activities";
    EXPECT_EQ(host.cell("SELECT COUNT(*)" + stored), "1");
    EXPECT_EQ(host.cell("SELECT Quantity" + stored), "3");
}

TEST_P(SavedChildren, ReservationFieldsOfEveryTypeComeBackEqual)
{
    const auto ticket = activity(5);
    const auto fields = getObject(ticket, "ReservationFields");
    const auto texts = hostileTexts();
    for (const int type : {1, 2, 3, 4, 6}) {
        for (const auto& typed : texts) {
            const auto field =
                with(make("GetNewEventActivityReservationField"), {{"FieldType", type},
                                                                   {"Name", typed},
                                                                   {"Description", typed},
                                                                   {"DefaultValue", typed}});
            call(field, "AddListItem", typed, true);
            call(field, "AddListItem", typed + "2", false);
            call(fields, "Add", field);
        }
    }
    ASSERT_TRUE(save("UpdateEventActivity", ticket)) << ::testing::PrintToString(seen);
    // Twice, so that what was read is written again.
    auto stored = make("GetEventActivity", idOf(ticket));
    EXPECT_EQ(textOf(getObject(stored, "ReservationFields"), "Count"), "40");
    ASSERT_TRUE(save("UpdateEventActivity", stored));
    stored = make("GetEventActivity", idOf(ticket));
    int position = 0;
    for (const int type : {1, 2, 3, 4, 6}) {
        for (const auto& typed : texts) {
            SCOPED_TRACE(typed);
            const auto field = item(getObject(stored, "ReservationFields"), ++position);
            EXPECT_EQ(textOf(field, "FieldType"), std::to_string(type));
            for (const char* property : {"Name", "Description", "DefaultValue"}) {
                EXPECT_EQ(textOf(field, property), typed) << property;
            }
            const auto choices = getObject(field, "ListItems");
            EXPECT_EQ(textOf(item(choices, 1), "Name") + textOf(item(choices, 1), "Visible"),
                      typed + "True");
            EXPECT_EQ(textOf(item(choices, 2), "Name") + textOf(item(choices, 2), "Visible"),
                      typed + "2False");
        }
    }

    const auto order = reservation(ticket, 1);
    const auto line = item(getObject(order, "Activities"), 1);
    for (const auto& typed : texts) {
        call(getObject(line, "ReservationFieldValues"), "Add",
             with(make("GetNewEventReservationActivityField"),
                  {{"FieldType", 6}, {"Name", typed}, {"Value", typed}}));
    }
    ASSERT_TRUE(save("UpdateEventReservation", order)) << ::testing::PrintToString(seen);
    const auto values =
        getObject(make("GetEventReservationActivity", idOf(line)), "ReservationFieldValues");
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const auto value = item(values, static_cast<int>(i) + 1);
        EXPECT_EQ(textOf(value, "Name") + textOf(value, "Value"), texts[i] + texts[i]);
    }
}

TEST_P(SavedChildren, DocumentsHaveOneFormAndLoseOnlyWhatNobodyKnows)
{
    const auto ticket = activity(5);
    const std::string where = " WHERE Id = " + std::to_string(idOf(ticket));
    const auto stored = [&] {
        return host.cell("SELECT ReservationInfo FROM events_event_activities" + where);
    };
    const auto store = [&](const std::string& document) {
        host.execute("UPDATE events_event_activities SET ReservationInfo = '" + document + "'" +
                     where);
        return make("GetEventActivity", idOf(ticket));
    };
    const std::string form = "<fields><field name=\"Meal\" type=\"2\" visible=\"0\"><description>"
                             "<![CDATA[Which?]]></description><defaultvalue/><list><listitem "
                             "visible=\"1\"><value><![CDATA[a]]]]><![CDATA[>b]]></value></listitem>"
                             "</list></field></fields>";
    const std::string loose = "<fields by=\"x\"><field visible=\"0\"><unknown>1</unknown><list>"
                              "<listitem visible=\"1\"><value>a]]&gt;b</value></listitem></list>"
                              "<name>Meal</name><type>2</type><description>Which?</description>"
                              "</field></fields>";
    // As long as nobody looks at the fields their document stays what it is.
    for (const char* document : {loose.c_str(), "<fields><field", "no document"}) {
        ASSERT_TRUE(save("UpdateEventActivity", store(document)));
        EXPECT_EQ(stored(), document);
    }
    EXPECT_TRUE(seen.empty() || seen == Seen(seen.size(), "refresh"));
    auto read = store(loose);
    EXPECT_EQ(textOf(read, "ReservationFieldSummary"), "Meal");
    ASSERT_TRUE(save("UpdateEventActivity", read));
    EXPECT_EQ(stored(), form);
    call(getObject(read, "ReservationFields"), "Remove", 1);
    ASSERT_TRUE(save("UpdateEventActivity", read));
    EXPECT_EQ(stored(), "");
    // What cannot be read stays as well, unless there are new fields to put in its place.
    read = store("<fields><field");
    EXPECT_EQ(textOf(read, "ReservationFieldSummary"), "");
    EXPECT_TRUE(seen.back().starts_with(
        "unexpected error There was an error reading the reservation fields: "));
    ASSERT_TRUE(save("UpdateEventActivity", read));
    EXPECT_EQ(stored(), "<fields><field");
    call(getObject(read, "ReservationFields"), "Add", make("GetNewEventActivityReservationField"));
    ASSERT_TRUE(save("UpdateEventActivity", read));
    EXPECT_TRUE(stored().starts_with("<fields><field name="));
}

TEST_P(SavedChildren, AFieldThatNoDocumentCanHoldIsRefusedByItsName)
{
    const std::pair<std::string, const char*> cases[] = {
        {std::string("a\0b", 3), "the control character 0"},
        {"a\x1B", "the control character 27"},
        {"a\xEF\xBF\xBF", "a code that is no character"}};
    const auto ticket = activity(5);
    for (const auto& [typed, fault] : cases) {
        host.frontEnd.seen.clear();
        const auto order = reservation(ticket, 1);
        const auto line = item(getObject(order, "Activities"), 1);
        call(getObject(line, "ReservationFieldValues"), "Add",
             with(make("GetNewEventReservationActivityField"),
                  {{"Name", "Meal"}, {"Value", typed}}));
        EXPECT_FALSE(save("UpdateEventReservation", order));
        EXPECT_EQ(seen, Seen{"unexpected error The reservation field \"Meal\" holds " +
                             std::string(fault) + ", which cannot be stored.|"});
        EXPECT_EQ(textOf(item(getObject(line, "ReservationFieldValues"), 1), "Value"), typed);
        EXPECT_TRUE(qmevents::toBool(get(order, "IsNew"))) << "not half saved";
        put(item(getObject(line, "ReservationFieldValues"), 1), "Value", "Soup");
        EXPECT_TRUE(save("UpdateEventReservation", order)) << "the same reservation once mended";
        call(host.store(), "DeleteEventReservation", event, idOf(order));
    }
    EXPECT_EQ(host.cell("SELECT COUNT(*) FROM events_event_reservations"), "0");
}

TEST_P(SavedChildren, WhatIsReservedCountsForTheNext)
{
    const auto ticket = activity(5);
    const auto first = reservation(ticket, 3);
    EXPECT_TRUE(save("UpdateEventReservation", first));
    EXPECT_FALSE(save("UpdateEventReservation", reservation(ticket, 3)));
    EXPECT_EQ(seen.back(), "user error The quantity entered exceeds the maximum remaining "
                           "available for the activity (2).|");
    EXPECT_TRUE(save("UpdateEventReservation", reservation(ticket, 2)));
    put(ticket, "QuantityAvailable", 4);
    EXPECT_FALSE(save("UpdateEventActivity", ticket));
    EXPECT_TRUE(qmevents::toBool(call(host.store(), "DeleteEventReservation", event, idOf(first))));
    EXPECT_TRUE(save("UpdateEventActivity", ticket));
    EXPECT_EQ(host.cell("SELECT COUNT(*) FROM actions_interactions WHERE FKDonorId = " +
                        std::to_string(donor)),
              "3");
    EXPECT_TRUE(qmevents::toBool(call(host.store(), "DeleteEventActivity", event, idOf(ticket))));
    EXPECT_EQ(host.cell("SELECT COUNT(*) FROM events_event_reservations_activities"), "0");
}

TEST_P(SavedChildren, ADonorLeavesNoTrace)
{
    const auto ticket = activity(5);
    const auto participants = make("GetNewEventParticipants");
    call(participants, "Add", make("GetNewEventParticipant", event, donor), 0);
    const auto group = toObject(call(host.lists(), "GetNewItem", "eventinvitationgroup"));
    put(group, "Name", "Press");
    call(host.lists(), "UpdateEventInvitationGroup", group);
    call(item(participants, 1), "AddInvitationGroup",
         std::stoi(host.cell("SELECT MAX(Id) FROM events_list_eventinvitationgroups")));
    EXPECT_TRUE(qmevents::toBool(call(host.store(), "AddEventParticipants", event, participants)));
    EXPECT_EQ(host.cell("SELECT COUNT(*) FROM events_event_participants_groups"), "1");
    EXPECT_TRUE(save("UpdateEventReservation", reservation(ticket, 1)));
    EXPECT_TRUE(qmevents::toBool(call(host.store(), "DeleteDonorFromEvents", donor, true)));
    for (const char* table :
         {"events_event_participants", "events_event_participants_groups",
          "events_event_reservations", "events_event_reservations_activities"}) {
        EXPECT_EQ(host.cell("SELECT COUNT(*) FROM " + std::string(table)), "0") << table;
    }
}

} // namespace
} // namespace refhost
