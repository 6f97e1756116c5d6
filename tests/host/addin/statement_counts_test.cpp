// How many statements the work with many records takes.
#include "tests/host/addin/full_event.h"

namespace refhost {
namespace {

using qmevents::toBool;

class StatementCounts : public InBothDialects {
protected:
    StatementCounts()
    {
        EventFiller(host).prepare();
        made = EventFiller(host).fill();
    }
    /// The statements that `act` sends.
    std::size_t sentBy(const std::function<void()>& act)
    {
        host.statements.clear();
        act();
        return host.statements.size();
    }
    void addReservations(int count) const
    {
        const EventFiller filler(host);
        for (int i = 0; i < count; ++i) {
            const auto one = filler.newReservation(made.event, made.activity);
            ASSERT_TRUE(toBool(call(host.store(), "UpdateEventReservation", one)));
        }
    }

    WholeHost host{GetParam()};
    FullEvent made;
};
INSTANTIATE_TEST_SUITE_P(Both, StatementCounts, ::testing::Values(Dialect::sqlServer, Dialect::jet),
                         testNameOf);

TEST_P(StatementCounts, EachNewParticipantTakesAsManyHoweverManyThereAre)
{
    const auto sentFor = [&](int count) {
        const auto participants = toObject(call(host.store(), "GetNewEventParticipants"));
        for (int i = 0; i < count; ++i) {
            call(participants, "Add", EventFiller(host).newParticipant(made.event, 1));
        }
        return sentBy([&] {
            EXPECT_TRUE(
                toBool(call(host.store(), "AddEventParticipants", made.event, participants)));
        });
    };
    // The event and the groups are read once; a participant takes its row, its key, the removal
    // of its groups and one row for its group.
    const std::size_t one = sentFor(1);
    EXPECT_LE(one, 8U);
    EXPECT_EQ(sentFor(21) - one, 20U * 4);
    EXPECT_EQ(sentFor(61) - one, 60U * 4);
}

TEST_P(StatementCounts, CheckingAReservationDoesNotDependOnTheOthers)
{
    const auto checked = [&] {
        const auto one = EventFiller(host).newReservation(made.event, made.activity);
        return sentBy(
            [&] { EXPECT_TRUE(toBool(call(host.store(), "ValidateEventReservation", one))); });
    };
    const std::size_t amongFew = checked();
    EXPECT_LE(amongFew, 2U) << "the activity and what is reserved of it";
    addReservations(30);
    EXPECT_EQ(checked(), amongFew);
}

TEST_P(StatementCounts, TotalsAreMadeOfWhatWasReadAtOnce)
{
    addReservations(30);
    const auto event = toObject(call(host.store(), "GetEvent", made.event));
    Ref<Object> reservations;
    EXPECT_EQ(sentBy([&] { reservations = getObject(event, "Reservations"); }), 1U);
    EXPECT_LE(sentBy([&] { get(reservations, "TotalExpected"); }), 1U) << "all lines at once";
    for (const char* total :
         {"TotalExpected", "TotalSponsorship", "TotalActivities", "TotalPaid"}) {
        EXPECT_EQ(sentBy([&] { get(reservations, total); }), 0U) << total;
    }
    EXPECT_LE(sentBy([&] {
                  const auto lines = getObject(event, "ReservationActivities");
                  get(lines, "TotalExpected");
                  get(lines, "TotalSponsorship");
              }),
              1U);
    EXPECT_LE(sentBy([&] {
                  const auto participants = getObject(event, "Participants");
                  for (const char* total : {"TotalInvited", "TotalAccepted", "TotalAttended"}) {
                      get(participants, total);
                  }
                  call(participants, "ToString");
              }),
              1U);
}

} // namespace
} // namespace refhost
