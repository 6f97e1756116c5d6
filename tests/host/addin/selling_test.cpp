// Many users who reserve from one activity at the same time.

#include <thread>

#include "tests/host/addin/whole_host.h"
#include "tests/support/temp_folder.h"

namespace refhost {
namespace {

using qmevents::Date;
using qmevents::toBool;
using qmevents::toInt32;

constexpr int users = 8;
constexpr int tries = 200;
constexpr int units = 500;

/// A database file that is gone after the test.
class Selling : public InBothDialects {
protected:
    Selling()
    {
        const WholeHost host(GetParam(), open());
        for (int donor = 1; donor <= users; ++donor) {
            host.execute("INSERT INTO donor_donors (display) VALUES ('Donor " +
                         std::to_string(donor) + "')");
        }
        const auto gala = toObject(call(host.store(), "GetNewEvent"));
        put(gala, "Name", "Gala");
        put(gala, "StartDateTime", Date::of(2026, 12, 1, 18));
        EXPECT_TRUE(toBool(call(host.store(), "UpdateEvent", gala)));
        const auto seat = toObject(call(host.store(), "GetNewEventActivity", 1));
        put(seat, "Name", "Seat");
        put(seat, "QuantityAvailable", units);
        EXPECT_TRUE(toBool(call(host.store(), "UpdateEventActivity", seat)));
    }
    std::shared_ptr<Database> open() const { return Database::open(folder_ / "selling.db"); }

private:
    const qmevents::testing::TempFolder folder_;
};
INSTANTIATE_TEST_SUITE_P(Both, Selling, ::testing::Values(Dialect::sqlServer, Dialect::jet),
                         testNameOf);

/// What one user got, and what the user was told meanwhile.
struct Outcome {
    int sold = 0, refused = 0;
    std::vector<std::string> otherMessages;
};

/// A user who reserves one seat after the other, and tries again when somebody else has the event.
class Buyer {
public:
    Buyer(Dialect dialect, std::shared_ptr<Database> database, int number)
        : host_(dialect, std::move(database), "user " + std::to_string(number)), donor_(number)
    {
    }
    Outcome buy()
    {
        Outcome outcome;
        for (int i = 0; i < tries; ++i) tryOnce(outcome);
        return outcome;
    }
    /// How many reservations the user finds, each with one line of one seat.
    int readable() const
    {
        const auto found = toObject(call(host_.store(), "GetEventReservations", 0, donor_));
        int count = 0;
        Value one;
        for (const auto walk = found->enumerate(); walk->next(one);) {
            const auto lines = getObject(one.object(), "Activities");
            if (toInt32(get(lines, "Count")) != 1) continue;
            count += toInt32(get(toObject(call(lines, "Item", 1)), "Quantity")) == 1;
        }
        return count;
    }

private:
    Ref<Object> newReservation() const
    {
        const auto reservation = toObject(call(host_.store(), "GetNewEventReservation", 1));
        put(reservation, "FKdonorId", donor_);
        put(reservation, "ReservationDate", Date::of(2026, 11, 21));
        const auto line = toObject(call(host_.store(), "GetNewEventReservationActivity"));
        put(line, "FKActivityId", 1);
        put(line, "Quantity", 1);
        call(getObject(reservation, "Activities"), "Add", line, 0);
        return reservation;
    }
    void tryOnce(Outcome& outcome)
    {
        const auto reservation = newReservation();
        for (;;) {
            host_.frontEnd.seen.clear();
            if (toBool(call(host_.store(), "UpdateEventReservation", reservation))) {
                ++outcome.sold;
                return;
            }
            const auto& seen = host_.frontEnd.seen;
            const std::string told = seen.size() == 1 ? seen[0] : ::testing::PrintToString(seen);
            if (told.starts_with("box This event is in use by user ")) {
                std::this_thread::yield(); // and press OK, and Save once more
            } else if (told == "user error The quantity entered exceeds the maximum remaining "
                               "available for the activity (0).|") {
                ++outcome.refused;
                return;
            } else {
                outcome.otherMessages.push_back(told);
                return;
            }
        }
    }

    WholeHost host_;
    std::int32_t donor_;
};

TEST_P(Selling, NeverSellsMoreThanThereIsAndTellsEverybodyElse)
{
    std::vector<Outcome> outcomes(users);
    std::vector<int> readable(users);
    std::vector<std::thread> threads;
    for (int user = 0; user < users; ++user) {
        threads.emplace_back([&, user] {
            Buyer buyer(GetParam(), open(), user + 1);
            outcomes[static_cast<std::size_t>(user)] = buyer.buy();
            readable[static_cast<std::size_t>(user)] = buyer.readable();
        });
    }
    for (auto& thread : threads) thread.join();

    int sold = 0, refused = 0;
    for (std::size_t user = 0; user < users; ++user) {
        SCOPED_TRACE(user);
        EXPECT_EQ(outcomes[user].otherMessages, std::vector<std::string>{});
        EXPECT_EQ(readable[user], outcomes[user].sold);
        sold += outcomes[user].sold;
        refused += outcomes[user].refused;
    }
    EXPECT_EQ(sold, units);
    EXPECT_EQ(refused, users * tries - units);
    const WholeHost after(GetParam(), open());
    EXPECT_EQ(after.cell("SELECT SUM(Quantity) FROM events_event_reservations_activities"), "500");
    EXPECT_EQ(after.cell("SELECT COUNT(*) FROM events_event_reservations"), "500");
}

} // namespace
} // namespace refhost
