#include "tests/data/events_database.h"

namespace refhost::test {
namespace {

// Every object of the database as the engine keeps it, by kind and name.
std::map<std::string, std::string> objectsOf(SqlSession& sql)
{
    std::map<std::string, std::string> objects;
    for (const HostRow& row : sql.hostQuery("SELECT type || ' ' || name, name FROM sqlite_master "
                                            "WHERE type <> 'table'")) {
        objects[std::get<std::string>(row[0])];
    }
    for (const HostRow& row :
         sql.hostQuery("SELECT m.name || '.' || p.name, p.type || ' ' || p.\"notnull\" || ' ' || "
                       "p.pk || ' ' || coalesce(p.dflt_value, '') FROM sqlite_master m "
                       "JOIN pragma_table_info(m.name) p WHERE m.type = 'table'")) {
        objects[std::get<std::string>(row[0])] = std::get<std::string>(row[1]);
    }
    return objects;
}

class Upgrade : public InBothDialects {};
QM_IN_BOTH_DIALECTS(Upgrade);

TEST_P(Upgrade, LeavesTheSameDatabaseAsAnInstallation)
{
    db_.run(1, "install");
    db_.run(2, "upgrade");
    EventsDatabase fresh(GetParam());
    fresh.install();
    EXPECT_EQ(objectsOf(db_.sql()), objectsOf(fresh.sql()));
}

TEST_P(Upgrade, KeepsRowsAndShowsTheirFigures)
{
    db_.run(1, "install");
    const int donor = db_.donor("Ida");
    const int gala = db_.event("Gala");
    const int seat = db_.activity(gala, 50, 10, true);
    const int order = db_.reservation(gala, donor, "2026-02-01", 30);
    db_.line(order, seat, 2, 50);
    db_.expense(gala, "12.5");
    db_.payment(db_.gift({.donor = donor, .reservation = order}), 60, "2026-02-02", 60);
    expectColumns(db_.row("SELECT * FROM vw_events_events"),
                  {{"PotentialRevenue", "500"}, {"ActualRevenue", "30"}, {"ExpenseTotal", "12.5"}});

    db_.run(2, "upgrade");
    expectColumns(db_.row("SELECT * FROM events_event_activities"), {{"ListPrice", "50"},
                                                                     {"Sponsorship", "True"},
                                                                     {"QuantityType", "0"},
                                                                     {"FKFundId", "0"},
                                                                     {"FKCampaignId", "0"},
                                                                     {"FKAppealId", "0"}});
    expectColumns(db_.row("SELECT * FROM vw_events_events"), {{"PotentialRevenue", "500"},
                                                              {"ExpectedRevenue", "100"},
                                                              {"ActualRevenue", "90"},
                                                              {"OutstandingRevenue", "10"},
                                                              {"NetAmount", "77.5"},
                                                              {"SponsorshipsOrdered", "2"}});
    expectColumns(db_.row("SELECT * FROM vw_events_donor_summary"),
                  {{"totalreservationpaid", "90"}, {"totalsponsorshipamount", "100"}});
    EXPECT_NE(failureOf(db_.sql(), "UPDATE events_event_activities SET FKFundId = NULL"), 0);
}

} // namespace
} // namespace refhost::test
