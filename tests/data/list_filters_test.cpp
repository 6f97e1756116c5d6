#include <algorithm>

#include "automation/conversions.h"
#include "automation/text.h"
#include "tests/data/builder_file.h"
#include "tests/data/events_database.h"

namespace refhost::test {
namespace {

class ListFilters : public InBothDialects {
protected:
    // Five donors, three events: a gala (1) and a run (2) of category 7, an auction (3) of 8.
    ListFilters()
    {
        db_.install();
        for (const char* name : {"Ann", "Ben", "Cyd", "Dee", "Eve"}) db_.donor(name);
        db_.event("Gala", "2025-05-05", 7);
        db_.event("Run", "2026-05-05", 7);
        db_.event("Auction", "", 8);
    }

    static std::vector<std::string> linesOf(const BuilderFile& file)
    {
        std::vector<std::string> lines;
        for (const BuilderFilter& filter : file.filters) lines.push_back(filter.line);
        return lines;
    }

    /// The keys that the filter leaves, as "1 2 5".
    std::string found(const BuilderFile& file, const std::string& key, const std::string& values)
    {
        const auto filter = std::find_if(file.filters.begin(), file.filters.end(),
                                         [&](const auto& one) { return one.key == key; });
        const auto rows = db_.sql().query(
            "SELECT d.id FROM " + file.table + " d WHERE d.deleted = 0 AND " +
            qmevents::text::replaceAll(filter->condition, "{values}", values) + " ORDER BY d.id");
        std::string keys;
        for (; !rows->eof(); rows->next()) {
            keys += (keys.empty() ? "" : " ") + qmevents::toText(rows->value(0));
        }
        return keys;
    }

    void expectFound(const BuilderFile& file, const auto& cases)
    {
        for (const auto& [key, values, keys] : cases) {
            EXPECT_EQ(found(file, key, values), keys) << key << " " << values;
        }
    }
};
QM_IN_BOTH_DIALECTS(ListFilters);

TEST_P(ListFilters, AreDeclaredAlikeForBothEngines)
{
    for (const char* type : {"donors", "donations"}) {
        EXPECT_EQ(linesOf({Dialect::sqlServer, type}), linesOf({Dialect::jet, type}));
    }
    for (const std::string& line : linesOf({GetParam(), "donors"})) {
        const bool money = line.find("Event Money") != std::string::npos;
        EXPECT_EQ(money, line.ends_with("|donations/view")) << line;
    }
}

TEST_P(ListFilters, OfferEventsByDayAndListsInTheirOrder)
{
    db_.insert("events_list_eventcategories", {{"Name", "'Second'"}, {"[Order]", "2"}});
    db_.insert("events_list_eventcategories", {{"Name", "'First'"}, {"[Order]", "1"}});
    db_.insert("events_list_eventinvitationgroups", {{"Name", "'Board'"}});
    const auto offered = [&](const BuilderFile& file, std::size_t filter) {
        const auto rows = db_.sql().query(file.filters[filter].choices);
        EXPECT_EQ(rows->columnName(0) + rows->columnName(1), "IdName");
        std::string text;
        for (; !rows->eof(); rows->next()) {
            text +=
                qmevents::toText(rows->value(0)) + " " + qmevents::toText(rows->value(1)) + "; ";
        }
        return text;
    };
    const BuilderFile donors(GetParam(), "donors"), gifts(GetParam(), "donations");
    const std::string events = "2 Run (2026-05-05); 1 Gala (2025-05-05); 3 Auction; ";
    EXPECT_EQ(offered(donors, 0), events);
    EXPECT_EQ(offered(donors, 1), "2 First; 1 Second; ");
    EXPECT_EQ(donors.filters[8].choices, ""); // the statuses are fixed
    EXPECT_EQ(offered(donors, 9), "1 Board; ");
    EXPECT_EQ(offered(gifts, 0), events);
    EXPECT_EQ(offered(gifts, 1), "2 First; 1 Second; ");
}

TEST_P(ListFilters, FindDonorsByTheirPartInEvents)
{
    const struct {
        int event, donor, status;
        bool attended;
    } participants[] = {{1, 1, 1, false}, {1, 2, 2, true},  {1, 3, 3, false}, {1, 4, 0, true},
                        {2, 1, 2, false}, {2, 1, 2, false}, {3, 5, 2, false}};
    for (const auto& row : participants) {
        db_.participant(row.event, row.donor, row.status, row.attended);
    }
    for (const auto& [donor, group] : {std::pair{"1", "10"}, {"1", "11"}, {"2", "11"}}) {
        db_.sql().execute("INSERT INTO events_event_participants_groups VALUES (1, " +
                          std::string(donor) + ", " + group + ")");
    }
    const int seat = db_.activity(1, 50, 10), sponsor = db_.activity(3, 500, 10, true);
    const int paid = db_.reservation(1, 2, "2025-01-01", 50);
    db_.line(paid, seat, 1, 50);
    const int owed = db_.reservation(3, 5, "2025-01-01", 499);
    db_.line(owed, sponsor, 1, 500);
    const int byGift = db_.reservation(2, 3, "2025-01-01", 0);
    db_.line(byGift, seat, 1, 50);
    db_.payment(db_.gift({.donor = 4, .reservation = byGift}), 50, "2025-02-02", 50);
    db_.gift({.donor = 1, .event = 1, .pledge = true});
    db_.gift({.donor = 2, .event = 1, .deleted = true});
    db_.gift({.donor = 3, .reservation = owed, .deleted = true});

    const struct {
        const char *key, *values, *donors;
    } cases[] = {{"events_invited", "1", "1 2 3"},
                 {"events_invited", "2,3", "1 5"},
                 {"events_invited_category", "7", "1 2 3"},
                 {"events_invited_category", "8", "5"},
                 {"events_attended", "1,3", "2 4"},
                 {"events_attended_category", "7", "2 4"},
                 {"events_attended_category", "8", ""},
                 {"events_sponsored", "1,2,3", "5"},
                 {"events_sponsored", "1", ""},
                 {"events_sponsored_category", "8", "5"},
                 {"events_sponsored_category", "7", ""},
                 {"events_reserved", "1,3", "2 5"},
                 {"events_reserved_category", "7", "2 3"},
                 {"events_status", "0,3", "3 4"},
                 {"events_status", "1", "1"},
                 {"events_group", "11", "1 2"},
                 {"events_group", "10", "1"},
                 {"events_unanswered", "1,2", "1"},
                 {"events_accepted", "1", "2"},
                 {"events_accepted", "2,3", "1 5"},
                 {"events_declined", "1,2,3", "3"},
                 {"events_absent", "1,2,3", "1 5"},
                 {"events_owing", "1,2,3", "5"},
                 {"events_owing", "1,2", ""},
                 {"events_gave", "1", "1"},
                 {"events_gave", "1,2,3", "1 4"}};
    expectFound(BuilderFile(GetParam(), "donors"), cases);
}

TEST_P(ListFilters, FindGiftsByTheirEvent)
{
    db_.participant(2, 1, 2, true);
    db_.participant(2, 1, 2, true);
    db_.participant(2, 2, 2, false);
    const int gala = db_.reservation(1, 3, "2025-01-01", 0);
    const GiftRow gifts[] = {{.donor = 1},                                  // 1
                             {.donor = 1, .event = 1},                      // 2
                             {.donor = 2, .event = 1, .reservation = gala}, // 3
                             {.donor = 2, .reservation = gala},             // 4
                             {.donor = 3, .event = 3, .reservation = gala}, // 5
                             {.donor = 3, .event = 3, .pledge = true},      // 6
                             {.donor = 1, .event = 1, .deleted = true}};    // 7
    for (const GiftRow& row : gifts) db_.gift(row);
    const struct {
        const char *key, *values, *gifts;
    } cases[] = {{"events_gift", "1", "2 3 4 5"},
                 {"events_gift", "3", "5 6"},
                 {"events_gift", "2", ""},
                 {"events_gift_category", "7", "2 3 4 5"},
                 {"events_gift_category", "8", "5 6"},
                 {"events_reservation_gift", "1", "3 4 5"},
                 {"events_reservation_gift", "2,3", ""},
                 {"events_donation", "1", "2"},
                 {"events_donation", "3", "5 6"},
                 {"events_gift_by_attendee", "2", "1 2"}};
    expectFound(BuilderFile(GetParam(), "donations"), cases);
}

} // namespace
} // namespace refhost::test
