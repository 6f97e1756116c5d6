#include "tests/data/events_database.h"

namespace refhost::test {
namespace {

const Row nothing = {{"totalreservationexpected", "0"},
                     {"totalreservationpaid", "0"},
                     {"totaldonationamount", "0"},
                     {"totalamount", "0"},
                     {"totalpledgedamount", "0"},
                     {"totalpledgereceived", "0"},
                     {"totalamountlastyear", "0"},
                     {"totalamountcurryear", "0"},
                     {"totalsponsorshipamount", "0"},
                     {"totalsponsorshipamountlastyear", "0"},
                     {"totalsponsorshipamountcurryear", "0"}};

class DonorFigures : public InBothDialects {
protected:
    DonorFigures()
    {
        db_.install();
        ida_ = db_.donor("Ida");
        otto_ = db_.donor("Otto");
        db_.donor("Nobody");
        gala_ = db_.event("Gala");
        run_ = db_.event("Run");
        seat_ = db_.activity(gala_, 50, 100);
        sponsor_ = db_.activity(run_, 400, 5, true);
    }

    void expectFigures(int donor, Row expected)
    {
        expected.insert(nothing.begin(), nothing.end());
        expected["donorid"] = std::to_string(donor);
        const Row actual = db_.row("SELECT * FROM vw_events_donor_summary WHERE DonorId = " +
                                   std::to_string(donor));
        EXPECT_EQ(actual.size(), nothing.size() + 1);
        expectColumns(actual, expected);
    }

    int ida_ = 0, otto_ = 0, gala_ = 0, run_ = 0, seat_ = 0, sponsor_ = 0;
};
QM_IN_BOTH_DIALECTS(DonorFigures);

TEST_P(DonorFigures, AreZeroForADonorWithoutEvents)
{
    db_.payment(db_.gift({.donor = ida_}), 50, "2026-05-05", 50); // a gift to no event
    expectFigures(ida_, {});
}

TEST_P(DonorFigures, GoByCalendarYearOfReservationOrPayment)
{
    const struct {
        const char* day;
        int seats, sponsorships, paid;
    } reservations[] = {{"2024-12-31", 1, 0, 1},     {"2025-01-01", 2, 1, 20},
                        {"2025-12-31", 0, 2, 300},   {"2026-01-01", 1, 1, 4000},
                        {"2026-11-21", 0, 1, 50000}, {"2027-01-01", 0, 0, 600000},
                        {"", 0, 1, 7000000}};
    for (const auto& row : reservations) {
        const int order = db_.reservation(gala_, ida_, row.day, row.paid);
        if (row.seats) db_.line(order, seat_, row.seats, 50);
        if (row.sponsorships) db_.line(order, sponsor_, row.sponsorships, 400);
    }
    expectFigures(ida_, {{"totalreservationexpected", "2600"}, // 4 x 50 + 6 x 400
                         {"totalreservationpaid", "7654321"},
                         {"totalamount", "7654321"},
                         {"totalamountlastyear", "320"},
                         {"totalamountcurryear", "54000"},
                         {"totalsponsorshipamount", "2400"},
                         {"totalsponsorshipamountlastyear", "1200"},
                         {"totalsponsorshipamountcurryear", "800"}});
}

TEST_P(DonorFigures, GiveAGiftToWhoeverReservedAndCountItOnce)
{
    const int order = db_.reservation(gala_, ida_, "2024-06-01", 100);
    db_.line(order, seat_, 4, 50);
    const int second = db_.reservation(run_, ida_, "2024-06-02", 0);

    // Otto pays for Ida's reservation, in two years.
    const int forIda = db_.gift({.donor = otto_, .event = gala_, .reservation = order});
    db_.payment(forIda, 30, "2025-03-01", 30);
    db_.payment(forIda, 30, "2026-03-01", 40);
    db_.payment(forIda, 30, "", 30);
    // Ida gives to the gala and names a reservation of the run.
    db_.payment(db_.gift({.donor = ida_, .event = gala_, .reservation = second}), 9, "2026-04-01",
                9);
    // Otto pledges to the gala.
    const int pledge = db_.gift({.donor = otto_, .event = gala_, .pledge = true});
    db_.payment(pledge, 500, "2025-12-31", 500);
    db_.payment(pledge, 500, "2026-01-01", 200);
    db_.payment(pledge, 500, "", 0);
    db_.payment(db_.gift({.donor = otto_, .event = run_}), 11, "2026-02-02", 11);
    // Deleted, and pledged to no event.
    db_.payment(db_.gift({.donor = otto_, .event = run_, .deleted = true}), 900, "2026-02-02", 900);
    db_.payment(db_.gift({.donor = ida_, .reservation = order, .deleted = true}), 90, "2026-02-02",
                90);
    db_.payment(db_.gift({.donor = otto_, .pledge = true}), 700, "2026-02-02", 700);

    expectFigures(ida_, {{"totalreservationexpected", "200"},
                         {"totalreservationpaid", "179"}, // 100 + 70 + 9
                         {"totaldonationamount", "9"},
                         {"totalamount", "188"},
                         {"totalamountlastyear", "30"},
                         {"totalamountcurryear", "58"}}); // 40 + 9 + 9
    expectFigures(otto_, {{"totaldonationamount", "711"},
                          {"totalamount", "711"},
                          {"totalpledgedamount", "1500"},
                          {"totalpledgereceived", "700"},
                          {"totalamountlastyear", "500"},
                          {"totalamountcurryear", "211"}});
}

TEST_P(DonorFigures, MoveOnWithTheYear)
{
    db_.reservation(gala_, ida_, "2026-11-20", 10);
    expectFigures(
        ida_,
        {{"totalreservationpaid", "10"}, {"totalamount", "10"}, {"totalamountcurryear", "10"}});
    const qmevents::PinnedClock nextYear(qmevents::Date::of(2027, 1, 1));
    expectFigures(
        ida_,
        {{"totalreservationpaid", "10"}, {"totalamount", "10"}, {"totalamountlastyear", "10"}});
}

} // namespace
} // namespace refhost::test
