// What a mailing to an event's people merges, from the start of the mailing to the values.
#include <map>
#include <set>

#include "tests/host/addin/full_event.h"
#include "tests/support/puppet.h"

namespace refhost {
namespace {

using qmevents::Date;
using qmevents::toBool;
using qmevents::toText;
using qmevents::testing::puppet;

class MailingValues : public InBothDialects {
protected:
    /// The first donor reserved two seats and a banner and paid 70 of 150; both are participants.
    MailingValues()
    {
        const EventFiller filler(host);
        filler.prepare();
        made = filler.fill();
        const std::string event = std::to_string(made.event);
        host.execute("INSERT INTO events_list_eventlocations (Name, Address, Phone, Visible, "
                     "[Order]) VALUES ('Old Hall', 'Quay 1', '555 0100', 1, 1)");
        host.execute("UPDATE events_event_info SET FKLocationId = 1, FKCoordinatorId = 2, "
                     "Description = 'Dinner & <b>music</b>' WHERE Id = " +
                     event);
        host.execute("UPDATE events_event_reservations SET AmountPaid = 30");
        host.execute("UPDATE events_event_reservations_activities SET Quantity = 2, Price = 25, "
                     "ReservationInfo = '<fields><field name=\"Meal\" type=\"1\"><value>Fish"
                     "</value></field></fields>'");
        host.execute("INSERT INTO events_event_activities (FKEventId, Name, Sponsorship) VALUES (" +
                     event + ", 'Banner', 1)");
        host.execute("INSERT INTO events_event_reservations_activities (FKReservationId, "
                     "FKActivityId, Quantity, Price) VALUES (" +
                     std::to_string(made.reservation) + ", 2, 1, 100)");
        host.execute("INSERT INTO donor_gifts_payments (giftId, actualDate, actualAmount) VALUES "
                     "(2, " +
                     toText(call(getObject(host.session->app(), "Provider"), "VToSQL",
                                 Date::of(2026, 11, 20), 1)) +
                     ", 40)");
        host.execute("INSERT INTO events_event_participants_groups (FKEventId, FKDonorId, "
                     "FKInvitationGroupId) VALUES (" +
                     event + ", 1, 2)");
        host.execute("UPDATE events_event_participants SET Status = 2, Attended = 1 WHERE "
                     "FKDonorId = 2");
    }
    Ref<Object> mailings() const
    {
        return getObject(getObject(getObject(host.session->app(), "Modules"), "donor"),
                         "MailingManage");
    }
    /// Starts a mailing and gives the reference that the add-in answers with for its list.
    std::string start(const char* type, bool sponsorships, bool others,
                      const std::string& activities)
    {
        const auto groups = toObject(call(host.lists(), "GetEventInvitationGroups", true));
        EXPECT_TRUE(toBool(call(host.store(), "StartEventMailingProcess", made.event, type, "~2~",
                                groups, sponsorships, others, activities)));
        const auto newest = toObject(call(getObject(mailings(), "Lists"), "Item", 1));
        return referenceOf(toText(get(newest, "Key")));
    }
    std::string referenceOf(const std::string& listKey)
    {
        auto data = puppet("MailingFields");
        data->holds("ListKey", listKey).holds("Reference", "").holds("MailingType", "");
        host.session->raise("mailing-fields", data);
        mailingType = toText(get(Ref<Object>(data), "MailingType"));
        return toText(get(Ref<Object>(data), "Reference"));
    }
    /// The values of the donors as "donor field=value" by donor and field.
    std::string values(const std::string& reference, const std::vector<Value>& donors)
    {
        std::map<std::string, std::string> set;
        auto data = puppet("MailingData");
        data->holds("ListKey", "{1}").holds("Source", "Event").holds("Reference", reference);
        data->holds("DonorIds", qmevents::Array::list(donors));
        data->on("SetValue", [&](std::span<Value> a) {
            fields.insert(toText(a[1]));
            const bool isShared = toText(a[1]).starts_with("Event");
            if (!isShared) set[toText(a[0]) + " " + toText(a[1])] = toText(a[2]);
            if (isShared && toText(a[0]) == "1") ofEvent[toText(a[1])] = toText(a[2]);
            return Value();
        });
        host.statements.clear();
        host.session->raise("mailing-data", data);
        std::string text;
        for (const auto& [name, value] : set) text += name + "=" + value + "\n";
        return text;
    }

    WholeHost host{GetParam()};
    FullEvent made;
    std::map<std::string, std::string> ofEvent; // as the first donor reads it
    std::set<std::string> fields;
    std::string mailingType;
};
INSTANTIATE_TEST_SUITE_P(Both, MailingValues, ::testing::Values(Dialect::sqlServer, Dialect::jet),
                         testNameOf);

TEST_P(MailingValues, AreThoseOfTheChoiceForEachKindOfMailing)
{
    const std::string participants =
        "1 ParticipantAttended=No\n1 ParticipantGroups=Board, Major Donors\n"
        "1 ParticipantStatus=Not Invited\n2 ParticipantAttended=Yes\n"
        "2 ParticipantGroups=Board\n2 ParticipantStatus=Accepted\n";
    const auto reserved = [](const std::string& activities, const std::string& amount,
                             const std::string& details, const std::string& units) {
        return "1 ReservationActivities=" + activities + "\n1 ReservationAmount=" + amount +
               "\n1 ReservationDate=11/21/2026\n" +
               (details.empty() ? "" : "1 ReservationDetails=" + details + "\n") +
               "1 ReservationOutstanding=80\n1 ReservationPaid=70\n1 ReservationQuantity=" + units +
               "\n1 ReservationTotal=150\n";
    };
    const std::string seats = reserved("2 Seat", "50", "Meal: Fish", "2");
    const std::string banner = reserved("1 Banner", "100", "", "1");
    const std::string all = reserved("2 Seat, 1 Banner", "150", "Meal: Fish", "3");
    const struct {
        const char* type;
        bool sponsorships, others;
        const char* activities;
        std::string values;
        std::size_t statements;
    } cases[] = {
        {"1", false, false, "", participants, 2},
        {"4", false, false, "", participants, 2},
        {"2", false, false, "~1~", seats, 3},
        {"2", false, false, "~1~~2~", all, 3},
        {"3", true, false, "", banner, 3},
        {"3", false, true, "", seats, 3},
        {"3", true, true, "", all, 3},
        {"2", false, false, "~7~", "", 2},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(std::string(one.type) + one.activities);
        const std::string reference = start(one.type, one.sponsorships, one.others, one.activities);
        EXPECT_EQ(mailingType, one.type);
        EXPECT_EQ(values(reference, {1, 2}), one.values);
        EXPECT_EQ(host.statements.size(), one.statements);
        EXPECT_EQ(ofEvent, (std::map<std::string, std::string>{
                               {"EventName", "Gala"},
                               {"EventDate", "12/1/2026"},
                               {"EventTime", "6:00 PM"},
                               {"EventPlace", "Old Hall"},
                               {"EventAddress", "Quay 1"},
                               {"EventPhone", "555 0100"},
                               {"EventCoordinator", "Ode, Ann"},
                               {"EventDescription", "Dinner & <b>music</b>"}}));
        std::vector<Value> many;
        for (int donor = 2; donor <= 300; ++donor) many.emplace_back(donor);
        const std::string ofOthers = values(reference, many);
        EXPECT_EQ(ofOthers.find("1 "), std::string::npos) << "nothing for who was not asked for";
        EXPECT_EQ(ofOthers.empty(), one.values.find("\n2 ") == std::string::npos);
    }
    host.session->sql().hostExecute("DELETE FROM host_user_rights WHERE name = 'donations/view'");
    EXPECT_EQ(values(start("2", false, false, "~1~"), {1}),
              "1 ReservationActivities=2 Seat\n1 ReservationDate=11/21/2026\n"
              "1 ReservationDetails=Meal: Fish\n1 ReservationQuantity=2\n");
}

TEST_P(MailingValues, AreNoneForWhatTheEventsDidNotStart)
{
    const std::string reference = start("1", false, false, "");
    EXPECT_EQ(referenceOf(""), "");
    EXPECT_EQ(referenceOf("{another}"), "");
    for (const char* foreign : {"", "x", "0|1|0|0|", "1|1|0", "99999999999|1|0|0|"}) {
        EXPECT_EQ(values(foreign, {1, 2}), "") << foreign;
        EXPECT_TRUE(host.statements.empty());
    }
    EXPECT_TRUE(toBool(call(host.store(), "DeleteEvent", made.event, false)));
    EXPECT_EQ(values(reference, {1, 2}), "");
    EXPECT_TRUE(fields.empty());
}

TEST_P(MailingValues, FillNoFieldThatTheFileDoesNotName)
{
    host.execute("UPDATE events_event_info SET FKCategoryId = 1, EndDateTime = StartDateTime, "
                 "RSVPDateTime = StartDateTime");
    values(start("1", false, false, ""), {1});
    values(start("2", false, false, "~1~"), {1});
    const auto schema = getObject(
        getObject(getObject(getObject(host.session->app(), "Modules"), "Quillmere"), "Mailings"),
        "FieldSchema");
    const auto appended = toObject(call(getObject(schema, "Schemas"), "Item", "events"));
    const auto names =
        toObject(call(getObject(appended, "Document"), "selectNodes", "/fields/field/@name"));
    std::set<std::string> named;
    for (int i = 0; i < qmevents::toInt32(get(names, "length")); ++i) {
        named.insert(toText(get(toObject(call(names, "item", i)), "text")));
    }
    EXPECT_EQ(fields, named);
}

} // namespace
} // namespace refhost
