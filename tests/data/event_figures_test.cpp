#include "tests/data/events_database.h"

namespace refhost::test {
namespace {

const Row nothing = {{"PotentialRevenue", "0"},
                     {"ExpectedRevenue", "0"},
                     {"ActualRevenue", "0"},
                     {"OutstandingRevenue", "0"},
                     {"ExpenseTotal", "0"},
                     {"NetAmount", "0"},
                     {"SponsorshipsOrdered", "0"},
                     {"SponsorshipsRevenue", "0"},
                     {"NumberReservations", "0"},
                     {"NumberActivities", "0"},
                     {"NumberSponsorshipActivities", "0"},
                     {"NumberParticipants", "0"},
                     {"NumberInvited", "0"},
                     {"NumberAccepted", "0"},
                     {"NumberDeclined", "0"},
                     {"NumberAttended", "0"},
                     {"DonationsTotal", "0"},
                     {"PledgesExpectedTotal", "0"},
                     {"PledgesReceivedTotal", "0"}};

class EventFigures : public InBothDialects {
protected:
    EventFigures()
    {
        db_.install();
        gala_ = db_.event("Gala");
        run_ = db_.event("Run");
        ida_ = db_.donor("Ida");
        otto_ = db_.donor("Otto");
    }

    // The event's figures, nothing but those that are expected to differ from zero.
    void expectFigures(int event, Row expected)
    {
        expected.insert(nothing.begin(), nothing.end());
        const Row actual =
            db_.row("SELECT * FROM vw_events_events WHERE Id=" + std::to_string(event));
        EXPECT_EQ(actual.size(), nothing.size() + 1);
        expectColumns(actual, expected);
    }

    int gala_ = 0, run_ = 0, ida_ = 0, otto_ = 0;
};
QM_IN_BOTH_DIALECTS(EventFigures);

TEST_P(EventFigures, AreZeroForAnEventWithoutChildrenAndNothingForNoEvent)
{
    // Rows of another event must not show.
    db_.line(db_.reservation(run_, ida_, "2026-05-01", 5), db_.activity(run_, 20, 3), 1, 20);
    expectFigures(gala_, {});
    EXPECT_TRUE(db_.row("SELECT * FROM vw_events_events WHERE Id=4711").empty());
}

TEST_P(EventFigures, CountActivitiesAndParticipantsByWhatTheyAre)
{
    db_.activity(gala_, 25, 10);
    db_.activity(gala_, 100, 4, true);
    db_.activity(gala_, 30, 0);
    db_.activity(run_, 9, 9, true);
    const struct {
        int status;
        bool attended;
    } participants[] = {{0, false}, {0, true},  {1, false}, {1, true}, {2, true},
                        {2, true},  {2, false}, {3, false}, {7, true}};
    for (const auto& row : participants) {
        db_.participant(gala_, db_.donor("Guest"), row.status, row.attended);
    }
    expectFigures(gala_, {{"PotentialRevenue", "650"},
                          {"NumberActivities", "3"},
                          {"NumberSponsorshipActivities", "1"},
                          {"NumberParticipants", "9"},
                          {"NumberInvited", "6"},
                          {"NumberAccepted", "3"},
                          {"NumberDeclined", "1"},
                          {"NumberAttended", "5"}});
}

TEST_P(EventFigures, OutstandingIsNeverBelowZeroForAnySingleReservation)
{
    const int seat = db_.activity(gala_, 50, 100);
    const int sponsor = db_.activity(gala_, 400, 5, true);
    const int partlyPaid = db_.reservation(gala_, ida_, "2026-01-10", 30);
    db_.line(partlyPaid, seat, 2, 50);
    db_.line(partlyPaid, sponsor, 1, 300); // a price of its own
    const int overpaid = db_.reservation(gala_, otto_, "2026-01-11", 120);
    db_.line(overpaid, seat, 2, 50);
    db_.reservation(gala_, otto_, "2026-01-12", 7); // no lines, yet money was taken
    const int paidByGift = db_.reservation(gala_, ida_, "2026-01-13", 10);
    db_.line(paidByGift, sponsor, 2, 400);
    const int gift = db_.gift({.donor = otto_, .reservation = paidByGift});
    db_.payment(gift, 300, "2026-02-01", 300);
    db_.payment(gift, 300, "2026-03-01", 250);
    db_.payment(gift, 300, "", 300); // not received
    const int other = db_.reservation(run_, ida_, "2026-01-13", 1);
    db_.line(other, db_.activity(run_, 9, 9), 1, 9);

    expectFigures(gala_, {{"PotentialRevenue", "7000"},
                          {"ExpectedRevenue", "1300"},   // 100 + 300, 100, 0, 800
                          {"ActualRevenue", "717"},      // 30, 120, 7, 10 + 550
                          {"OutstandingRevenue", "610"}, // 370, 0, 0, 240
                          {"NetAmount", "717"},
                          {"SponsorshipsOrdered", "3"},
                          {"SponsorshipsRevenue", "1100"},
                          {"NumberReservations", "4"},
                          {"NumberActivities", "2"},
                          {"NumberSponsorshipActivities", "1"}});
    expectFigures(run_, {{"PotentialRevenue", "81"},
                         {"ExpectedRevenue", "9"},
                         {"ActualRevenue", "1"},
                         {"OutstandingRevenue", "8"},
                         {"NetAmount", "1"},
                         {"NumberReservations", "1"},
                         {"NumberActivities", "1"}});
}

TEST_P(EventFigures, CountAGiftOnceWhereverItIsLinked)
{
    const int order = db_.reservation(gala_, ida_, "2026-01-10", 0);
    db_.line(order, db_.activity(gala_, 100, 5), 1, 100);
    db_.line(order, db_.activity(gala_, 10, 5), 1, 10); // joins must not double the gifts
    db_.expense(gala_, "80.25");
    db_.expense(gala_, "-5.25");
    const int elsewhere = db_.reservation(run_, ida_, "2026-01-10", 0);

    const auto give = [&](const GiftRow& row, int expected, const std::string& on, int received) {
        const int gift = db_.gift(row);
        db_.payment(gift, expected, on, received);
        return gift;
    };
    // To the event and to its reservation: a payment of the reservation only.
    give({.donor = ida_, .event = gala_, .reservation = order}, 60, "2026-01-12", 60);
    give({.donor = otto_, .reservation = order}, 20, "2026-01-12", 20);
    // A plain gift in two payments, one of them outstanding.
    const int plain = give({.donor = otto_, .event = gala_}, 500, "2026-02-01", 500);
    db_.payment(plain, 40, "", 40);
    // To the event and to a reservation of another one: a donation here, a payment there.
    give({.donor = ida_, .event = gala_, .reservation = elsewhere}, 7, "2026-02-02", 7);
    // To the event and to a reservation that is gone.
    give({.donor = ida_, .event = gala_, .reservation = 999}, 3, "2026-02-02", 3);
    // A pledge of three payments, two of them received, one in part.
    const int pledge =
        give({.donor = ida_, .event = gala_, .pledge = true}, 100, "2026-02-03", 100);
    db_.payment(pledge, 100, "2026-03-03", 60);
    db_.payment(pledge, 100, "", 0);
    // A pledge for a reservation is none of the event's.
    give({.donor = ida_, .event = gala_, .reservation = order, .pledge = true}, 90, "2026-04-01",
         5);
    // Deleted gifts count nowhere.
    give({.donor = ida_, .event = gala_, .pledge = true, .deleted = true}, 900, "2026-02-01", 900);
    give({.donor = ida_, .reservation = order, .deleted = true}, 900, "2026-02-01", 900);

    expectFigures(gala_, {{"PotentialRevenue", "550"},
                          {"ExpectedRevenue", "110"},
                          {"ActualRevenue", "85"},
                          {"OutstandingRevenue", "25"},
                          {"ExpenseTotal", "75"},
                          {"NetAmount", "680"}, // 85 + 670 - 75
                          {"DonationsTotal", "670"},
                          {"PledgesExpectedTotal", "300"},
                          {"PledgesReceivedTotal", "160"},
                          {"NumberReservations", "1"},
                          {"NumberActivities", "2"}});
    expectFigures(run_, {{"ActualRevenue", "7"}, {"NetAmount", "7"}, {"NumberReservations", "1"}});
}

TEST_P(EventFigures, StayZeroWhereAmountsAreMissing)
{
    const int order = db_.reservation(gala_, ida_, "", 0);
    db_.payment(db_.gift({.donor = ida_, .reservation = order}), 5, "2026-01-01", 0);
    const int gift = db_.gift({.donor = ida_, .event = gala_, .pledge = true});
    db_.insert("donor_gifts_payments",
               {{"giftId", std::to_string(gift)}, {"actualDate", db_.day("2026-01-01")}});
    expectFigures(gala_, {{"NumberReservations", "1"}});
}

TEST_P(EventFigures, KeepFourDecimalsExactly)
{
    const int ticket = db_.insert("events_event_activities", {{"FKEventId", std::to_string(gala_)},
                                                              {"Name", db_.text("Ticket")},
                                                              {"ListPrice", "0.0001"},
                                                              {"QuantityAvailable", "3"}});
    db_.line(db_.reservation(gala_, ida_, "2026-01-01", 0), ticket, 3, 0);
    db_.expense(gala_, "0.1");
    db_.expense(gala_, "0.2");
    expectFigures(gala_, {{"PotentialRevenue", "0.0003"},
                          {"ExpenseTotal", "0.3"},
                          {"NetAmount", "-0.3"},
                          {"NumberActivities", "1"},
                          {"NumberReservations", "1"}});
}

} // namespace
} // namespace refhost::test
