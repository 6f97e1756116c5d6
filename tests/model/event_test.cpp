#include <gtest/gtest.h>

#include "automation/clock.h"
#include "tests/support/scripted_host.h"

namespace qmevents {
namespace {

using testing::Log;
using testing::ScriptedHost;

int numberOf(const std::function<void()>& act)
{
    try {
        act();
    } catch (const Error& error) {
        return error.number();
    }
    return 0;
}

class Event : public ::testing::Test {
protected:
    Ref<Object> fresh() { return toObject(call(host.store(), "GetNewEvent")); }
    /// An event as the store has read it; the log is empty then.
    Ref<Object> stored(std::int32_t id = 12)
    {
        host.answer("FROM events_event_info WHERE Id =", testing::eventRow(id));
        auto event = toObject(call(host.store(), "GetEvent", id));
        host.log.clear();
        return event;
    }
    static bool is(const Ref<Object>& event, const char* flag) { return toBool(get(event, flag)); }

    ScriptedHost host;
};

TEST_F(Event, SplitsItsDateTimesIntoWhatPagesShow)
{
    struct {
        Date moment;
        const char *date, *time, *hour, *minute, *half;
    } const cases[] = {
        {Date::of(2026, 3, 7, 14, 5), "3/7/2026", "2:05:00 PM", "02", "05", "PM"},
        {Date::of(2026, 3, 7, 0, 30), "3/7/2026", "12:30:00 AM", "12", "30", "AM"},
        {Date::of(2026, 3, 7, 12), "3/7/2026", "12:00:00 PM", "12", "00", "PM"},
        {Date::of(2026, 3, 7, 11, 59), "3/7/2026", "11:59:00 AM", "11", "59", "AM"},
        {Date::of(2026, 3, 7), "3/7/2026", "", "", "", ""}, // midnight: no time was entered
        {Date::of(1899, 12, 30, 10), "", "10:00:00 AM", "10", "00", "AM"},
        {Date::fromSerial(46088.0 + 0.4 / 86400), "3/7/2026", "", "", "", ""}, // within a second
        {Date(), "", "", "", "", ""},
    };
    for (const std::string prefix : {"Start", "End", "RSVP"}) {
        for (const auto& [moment, date, time, hour, minute, half] : cases) {
            SCOPED_TRACE(prefix + " " + moment.iso());
            const auto event = stored();
            put(event, prefix + "DateTime", moment);
            const auto part = [&](const char* name) { return toText(get(event, prefix + name)); };
            EXPECT_EQ(part("Date"), date);
            EXPECT_EQ(part("Time"), time);
            EXPECT_EQ(part("Hour"), hour);
            EXPECT_EQ(part("Minute"), minute);
            EXPECT_EQ(part("AMPM"), half);
            EXPECT_EQ(get(event, prefix + "Date").isEmpty(), *date == '\0');
        }
    }
}

TEST_F(Event, IsOpenWhileNewWhateverItsStateIs)
{
    const auto event = stored();
    EXPECT_EQ(toText(get(event, "StateString")), "");
    put(event, "State", "8");
    EXPECT_EQ(toText(get(event, "StateString")), "Closed");
    EXPECT_FALSE(is(event, "IsDirty"));
    put(event, "State", 5);
    EXPECT_EQ(toText(get(event, "StateString")), "");
    const auto draft = fresh();
    put(draft, "State", 8);
    EXPECT_EQ(toInt32(get(draft, "State")), 1);
    EXPECT_EQ(toText(get(draft, "StateString")), "Open");
}

TEST_F(Event, RefusesWhatCannotBeConvertedAndStaysClean)
{
    const auto event = stored();
    EXPECT_EQ(numberOf([&] { put(event, "MaxCapacity", "ten"); }), 13);
    EXPECT_EQ(numberOf([&] { put(event, "MaxCapacity", "99999999999"); }), 6);
    EXPECT_EQ(numberOf([&] { put(event, "StartDateTime", "2/31/2026"); }), 13);
    EXPECT_EQ(numberOf([&] { put(event, "StartDateTime", 1e8); }), 6);
    EXPECT_EQ(numberOf([&] { put(event, "RevenueGoal", "1e300"); }), 6);
    EXPECT_EQ(numberOf([&] { put(event, "Name", Null{}); }), 94);
    EXPECT_EQ(numberOf([&] { put(event, "Name", fresh()); }), 438);
    EXPECT_FALSE(is(event, "IsDirty"));
    EXPECT_EQ(toInt32(get(event, "MaxCapacity")), 0);
    put(event, "MaxCapacity", 0); // the same value again still counts as a change
    EXPECT_TRUE(is(event, "IsDirty"));
}

TEST_F(Event, ShowsItsStoreOnlyMembersButTakesThemFromNobody)
{
    const auto event = fresh();
    for (const char* member : {"IsNew", "IsDirty", "Id"}) {
        EXPECT_EQ(numberOf([&] { put(event, member, 1); }), 70) << member;
        EXPECT_NO_THROW(get(event, member));
    }
    EXPECT_EQ(toInt32(get(event, "Id")), 0);
}

TEST_F(Event, ReadsItsTotalsOnceUntilTheyAreAskedForAgain)
{
    host.answer(
        "FROM vw_events_events",
        {{"PotentialRevenue", "ExpectedRevenue", "ActualRevenue", "OutstandingRevenue",
          "ExpenseTotal", "NetAmount", "SponsorshipsOrdered", "SponsorshipsRevenue",
          "NumberReservations", "NumberActivities", "NumberSponsorshipActivities",
          "NumberParticipants", "NumberInvited", "NumberAccepted", "NumberDeclined",
          "NumberAttended", "DonationsTotal", "PledgesExpectedTotal", "PledgesReceivedTotal"},
         {{1000.0, 800.0, 500.0, 300.0, 200.0, 420.0, 3, 250.0, 7, 4, 2, 50, 40, 30, 5, 25, 120.0,
           90.0, 60.0}}});
    host.answer("COUNT(*)", {{"ActivitiesCount"}, {{6}}});
    const auto event = stored(12);
    const std::pair<const char*, double> figures[] = {{"PotentialRevenue", 1000},
                                                      {"ExpectedRevenue", 800},
                                                      {"PledgesExpected", 90},
                                                      {"PledgesReceived", 60},
                                                      {"PledgesOutstanding", 30},
                                                      {"TotalExpected", 890},
                                                      {"ReservationsRevenue", 500},
                                                      {"CurrentRevenue", 620},
                                                      {"DonationsRevenue", 120},
                                                      {"OutstandingRevenue", 300},
                                                      {"TotalExpenses", 200},
                                                      {"NetRevenue", 420},
                                                      {"NumberSponsorshipsReserved", 3},
                                                      {"SponsorshipsRevenue", 250},
                                                      {"NumberReservations", 7},
                                                      {"NumberActivities", 4},
                                                      {"NumberSponsorships", 2},
                                                      {"NumberParticipants", 50},
                                                      {"NumberInvited", 40},
                                                      {"NumberAccepted", 30},
                                                      {"NumberDeclined", 5},
                                                      {"NumberAttended", 25},
                                                      {"NumberReservationActivities", 6}};
    for (const auto& [name, amount] : figures)
        EXPECT_EQ(toDouble(get(event, name)), amount) << name;
    EXPECT_EQ(host.log,
              (Log{"SELECT PotentialRevenue, ExpectedRevenue, ActualRevenue, OutstandingRevenue, "
                   "ExpenseTotal, NetAmount, SponsorshipsOrdered, SponsorshipsRevenue, "
                   "NumberReservations, NumberActivities, NumberSponsorshipActivities, "
                   "NumberParticipants, NumberInvited, NumberAccepted, NumberDeclined, "
                   "NumberAttended, DonationsTotal, PledgesExpectedTotal, PledgesReceivedTotal "
                   "FROM vw_events_events WHERE Id=<2:12>",
                   "SELECT COUNT(*) As ActivitiesCount FROM (SELECT eera.FKActivityId FROM "
                   "events_event_reservations_activities eera INNER JOIN events_event_reservations "
                   "eer ON eera.FKReservationId = eer.id WHERE eer.FKEventId=<2:12> GROUP BY "
                   "eera.FKActivityId) sq "}));
    put(event, "AggregatesLoaded", false);
    EXPECT_FALSE(is(event, "IsDirty"));
    get(event, "NetRevenue");
    EXPECT_EQ(host.log.size(), 4U);
}

TEST_F(Event, AsksForFailedTotalsOnlyOnce)
{
    const auto event = stored();
    host.failingStatement = 0;
    EXPECT_EQ(numberOf([&] { get(event, "NetRevenue"); }), 3000);
    EXPECT_EQ(toDouble(get(event, "NetRevenue")), 0);
    EXPECT_EQ(host.log.size(), 1U);
}

TEST_F(Event, CountsAPledgeOnceWhateverItsPayments)
{
    const Null none;
    const Value yes(true), no(false);
    host.answer("FROM (((((((((((donor_gifts ",
                {{"giftId", "PaymentReceived", "pledge", "creditamount", "expectedAmount"},
                 {{1, yes, no, 50.0, none},
                  {2, yes, yes, 20.0, 100.0}, // a pledge of 300 in three payments, one received
                  {2, no, yes, none, 100.0},
                  {2, no, yes, none, 100.0},
                  {3, no, yes, none, 40.0},
                  {4, yes, no, 5.5, none}}});
    const auto event = stored(9);
    const std::pair<const char*, const char*> statistics[] = {
        {"hasDonations", "True"},       {"receivedAmount", "75.5"}, {"numberDonations", "3"},
        {"averageDonation", "25.1667"}, {"largestDonation", "50"},  {"totalPledged", "340"},
        {"numberPledges", "2"},         {"averagePledge", "170"},   {"largestPledge", "300"}};
    for (const auto& [name, text] : statistics) EXPECT_EQ(toText(get(event, name)), text) << name;
    EXPECT_FALSE(toBool(get(getObject(event, "donationRecordSet"), "EOF"))) << "back at its start";
    ASSERT_EQ(host.log.size(), 1U);
    EXPECT_TRUE(host.log[0].starts_with(
        "SELECT donor_gifts.*, donor_gifts_payments.*, dd.Display As DonorName, CASE WHEN NOT "
        "IsDate(donor_gifts_payments.actualDate)=0 THEN <7:True> ELSE 0 END As PaymentReceived, "
        "donor_gifts.id as Id, donor_gifts_payments.id as paymentId, dfp.value AS PaymentFund, "))
        << host.log[0];
    EXPECT_NE(host.log[0].find("LEFT JOIN donor_donors AS MatchedDonor ON MatchedGift.DonorId = "
                               "MatchedDonor.Id) WHERE (donor_gifts.FKEventId = 9) And "
                               "(donor_gifts.Deleted = 0) ORDER BY donor_gifts.created DESC, "
                               "donor_gifts.id DESC, donor_gifts_payments.expectedDate DESC"),
              std::string::npos);
    EXPECT_EQ(host.log[0].find("  "), std::string::npos);
}

TEST_F(Event, HasNoDonationsWithoutGiftsAndSpeaksJet)
{
    host.documentType = 0;
    const auto draft = fresh();
    EXPECT_FALSE(toBool(get(draft, "hasDonations")));
    EXPECT_EQ(host.log, Log{}) << "gifts without an event are not those of an unsaved one";
    host.answer("@@IDENTITY", {{"Expr1000"}, {{34}}});
    host.answer("FKEventId = 34",
                {{"giftId", "PaymentReceived", "pledge", "creditamount", "expectedAmount"},
                 {{1, true, false, 50.0, Null{}}}});
    call(host.store(), "UpdateEvent", draft, false);
    EXPECT_TRUE(toBool(get(draft, "hasDonations"))) << "asked once it has a key";

    const auto event = stored();
    EXPECT_FALSE(toBool(get(event, "hasDonations")));
    EXPECT_EQ(toText(get(event, "averagePledge")), "0");
    ASSERT_EQ(host.log.size(), 1U);
    EXPECT_NE(host.log[0].find(" IIf(IsDate(donor_gifts_payments.actualDate),<7:True>,0) As "
                               "PaymentReceived, donor_gifts.id as Id"),
              std::string::npos);
}

} // namespace
} // namespace qmevents
