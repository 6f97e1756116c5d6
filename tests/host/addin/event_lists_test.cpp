#include "tests/host/addin/whole_host.h"

#include <map>

namespace refhost {
namespace {

using qmevents::toInt32;
using qmevents::toText;

/// The host's lists with the add-in's files: every field shown and every filter used.
class EventLists : public InBothDialects {
protected:
    EventLists()
    {
        host_.execute("INSERT INTO donor_donors (display) VALUES ('Ann')");
        host_.execute("INSERT INTO donor_donors (display) VALUES ('Ben')");
        host_.execute("INSERT INTO donor_gifts (donorId, pledge, FKEventId) VALUES (1, 1, 1)");
        host_.execute(
            "INSERT INTO events_event_info (Name, StartDateTime) VALUES ('Gala', " +
            std::string(GetParam() == Dialect::jet ? "#2026-05-05#" : "'2026-05-05T00:00:00'") +
            ")");
        host_.execute("INSERT INTO events_event_participants (FKEventId, FKDonorId, Status) "
                      "VALUES (1, 2, 1)");
    }
    Ref<Object> lists() const
    {
        const auto modules = getObject(host_.session->app(), "Modules");
        return getObject(getObject(modules, "Quillmere"), "Smartlists");
    }
    static Value texts(const std::vector<std::string>& values)
    {
        return {qmevents::Array::list({values.begin(), values.end()})};
    }
    static std::vector<std::string> all(const Ref<Object>& items, const char* member)
    {
        std::vector<std::string> result;
        Value item;
        for (const auto walk = items->enumerate(); walk->next(item);) {
            result.push_back(toText(*member ? get(toObject(item), member) : item));
        }
        return result;
    }
    /// How many records it has; what was left out or is wrong fails the test.
    std::int32_t count(const Ref<Object>& list) const
    {
        const auto result = toObject(call(lists(), "Run", list));
        EXPECT_EQ(all(getObject(result, "Warnings"), ""), std::vector<std::string>{});
        EXPECT_EQ(all(getObject(result, "Faults"), "Text"), std::vector<std::string>{});
        return toInt32(get(result, "Count"));
    }

    WholeHost host_{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(, EventLists, ::testing::Values(Dialect::sqlServer, Dialect::jet),
                         testNameOf);

TEST_P(EventLists, ShowEveryColumnInOneStatement)
{
    const struct {
        const char* type;
        std::size_t eventFields;
        std::int32_t records;
    } cases[] = {{"donors", 39, 2}, {"donations", 3, 1}, {"pledges", 3, 1}};
    for (const auto& [type, eventFields, records] : cases) {
        SCOPED_TRACE(type);
        const auto schema = toObject(call(lists(), "GetSchema", type));
        EXPECT_EQ(all(getObject(schema, "Warnings"), ""), std::vector<std::string>{});
        std::vector<std::string> names;
        for (const std::string& name : all(getObject(schema, "Fields"), "Name")) {
            if (name.starts_with("events") || name.starts_with("donation")) names.push_back(name);
        }
        EXPECT_EQ(names.size(), eventFields);
        const auto list = toObject(call(lists(), "GetNewList", type));
        put(list, "Columns", texts(names));
        for (const std::string& name : names) {
            put(list, "Sort", name);
            EXPECT_EQ(count(list), records) << name;
        }
    }
}

TEST_P(EventLists, TakeEveryFilter)
{
    const std::map<std::string, std::pair<const char*, std::vector<std::string>>> tried = {
        {"yesno", {"is", {"No"}}},      {"text", {"blank", {}}},
        {"date", {"blank", {}}},        {"money", {"exactly", {"0"}}},
        {"number", {"atleast", {"0"}}}, {"choice", {"noneof", {"1"}}}};
    for (const char* type : {"donors", "donations", "pledges"}) {
        Value item;
        const auto schema = toObject(call(lists(), "GetSchema", type));
        for (const auto walk = getObject(schema, "Criteria")->enumerate(); walk->next(item);) {
            const std::string key = toText(get(toObject(item), "Key"));
            if (!key.starts_with("events") && !key.starts_with("donation")) continue;
            SCOPED_TRACE(std::string(type) + ": " + key);
            const auto& [operation, values] = tried.at(toText(get(toObject(item), "Kind")));
            const auto list = toObject(call(lists(), "GetNewList", type));
            call(list, "AddFilter", key, operation, texts(values));
            EXPECT_LE(count(list), 2);
        }
    }
    const auto invited = toObject(call(lists(), "GetNewList", "donors"));
    call(invited, "AddFilter", "events_invited", "anyof", texts({"1"}));
    call(invited, "AddFilter", "eventslatestinvitedname", "contains", texts({"gal"}));
    EXPECT_EQ(count(invited), 1);
}

TEST_P(EventLists, LeadToEventsAndShowThemToThoseWhoMayViewThem)
{
    host_.execute("INSERT INTO events_event_reservations (FKEventId, FKDonorId) VALUES (1, 2)");
    host_.execute("INSERT INTO donor_gifts (donorId, FKEventId, FKReservationId) VALUES (2, 0, 1)");
    host_.execute("INSERT INTO donor_gifts (donorId, FKEventId) VALUES (2, 99)"); // gone
    const auto eventsOfRows = [&] {
        const auto list = toObject(call(lists(), "GetNewList", "donations"));
        put(list, "Columns", texts({"giftid"}));
        put(list, "Sort", "giftid");
        const Value rows = call(toObject(call(lists(), "Run", list)), "Rows", 0, 9);
        std::vector<std::int32_t> events;
        for (std::size_t i = 2; i < rows.array()->items.size(); i += 4)
            events.push_back(toInt32(rows.array()->items[i]));
        return events;
    };
    EXPECT_EQ(eventsOfRows(), (std::vector<std::int32_t>{1, 1, 0}));

    host_.session->sql().hostExecute("DELETE FROM host_user_rights WHERE name = 'events/view'");
    EXPECT_EQ(eventsOfRows(), (std::vector<std::int32_t>{0, 0, 0}));
    for (const char* type : {"donors", "donations", "pledges"}) {
        const auto schema = toObject(call(lists(), "GetSchema", type));
        const std::pair<const char*, const char*> offered[] = {{"Fields", "Name"},
                                                               {"Criteria", "Key"}};
        for (const auto& [items, member] : offered) {
            for (const std::string& name : all(getObject(schema, items), member)) {
                const bool isOfEvents = name.starts_with("events") || name.starts_with("donation");
                const bool isMoney = name.find("amount") != std::string::npos ||
                                     name == "events_owing" || name == "events_gave";
                EXPECT_TRUE(!isOfEvents || isMoney) << type << ": " << name;
            }
        }
    }
}

} // namespace
} // namespace refhost
