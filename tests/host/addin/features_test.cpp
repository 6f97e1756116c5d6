// What the add-in gives to the rest of the host, with a database behind it.
#include "tests/host/addin/full_event.h"
#include "tests/support/puppet.h"

namespace refhost {
namespace {

using qmevents::toText;
using qmevents::testing::puppet;

class Features : public InBothDialects {
protected:
    Features() { EventFiller(host).prepare(); }
    Ref<Object> module(const char* name) const
    {
        return getObject(getObject(host.session->app(), "Modules"), name);
    }
    /// Has the nth statement that begins with `start` fail.
    void fail(const std::string& start, int nth) const
    {
        host.session->sql().beforeStatement = [start, nth](std::string_view text) mutable {
            if (text.starts_with(start) && nth-- == 0) {
                throw qmevents::Error(3000, "Document", "the disk is full");
            }
        };
    }
    std::string failureOf(const std::function<void()>& deed) const
    {
        std::string failure = "none";
        try {
            deed();
        } catch (const qmevents::Error& error) {
            failure = error.description();
        }
        host.session->sql().beforeStatement = nullptr;
        return failure;
    }
    std::string count(const std::string& fromWhere) const
    {
        return host.cell("SELECT COUNT(*) FROM " + fromWhere);
    }
    /// How much of donor 1 is left in events, and how many gifts refer to a reservation.
    std::string traces() const
    {
        return count("events_event_participants WHERE FKDonorId = 1") + " " +
               count("events_event_reservations WHERE FKDonorId = 1") + " " +
               count("donor_gifts WHERE FKReservationId <> 0");
    }
    void deleteListed(const std::string& source) const
    {
        auto data = puppet("Deletion");
        data->holds("EntityType", "donors").holds("Userdata", source);
        host.session->raise("donor-delete-smartlist", Value(data));
    }

    WholeHost host{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Both, Features, ::testing::Values(Dialect::sqlServer, Dialect::jet),
                         testNameOf);

TEST_P(Features, ADonorsPageShowsNamesWithMarkupAsTheyWereTyped)
{
    const auto made = EventFiller(host).fill();
    host.execute("UPDATE events_event_info SET Name = 'Gala <script>&\"x\"'");
    host.execute("UPDATE events_event_participants SET Attended = 1, Status = 2");
    host.execute("UPDATE events_event_reservations SET AmountPaid = 1250.5");
    const auto page = toObject(call(getObject(module("donor"), "Donors"), "OpenDetailsPage", 1));
    const auto section = toObject(
        get(getObject(toObject(get(page, "Tabs", "detail")), "Sections"), "Item", "EventsInfo"));
    const auto value = [&](int row) {
        return toText(get(toObject(get(section, "Rows", row)), "Value"));
    };
    EXPECT_NE(value(1).find("<td width=100px>$1,250.50</td>"), std::string::npos) << value(1);
    EXPECT_NE(value(2).find("<td width=100px>1</td>"), std::string::npos) << value(2);
    for (const int row : {3, 4}) {
        EXPECT_NE(value(row).find("Gala &lt;script&gt;&amp;&quot;x&quot;"), std::string::npos);
        EXPECT_EQ(value(row).find("<script"), std::string::npos) << value(row);
    }
    EXPECT_NE(value(4).find("EditEventReservation(" + std::to_string(made.event) + ", " +
                            std::to_string(made.reservation) + ");"),
              std::string::npos);
}

TEST_P(Features, ADonorGoesWithAllEventsOrNotAtAll)
{
    EventFiller(host).fill();
    host.execute("UPDATE donor_gifts SET FKReservationId = 0 WHERE FKReservationId IS NULL");
    const auto remove = [&] {
        host.frontEnd.answers = {Button::yes};
        call(getObject(module("donor"), "DonorManage"), "DeleteDonor", 1);
    };
    fail("DELETE FROM events_event_reservations ", 0);
    EXPECT_EQ(failureOf(remove), "The donor could not be removed from all events and has therefore "
                                 "not been deleted (donor id 1).");
    EXPECT_EQ(traces() + count("donor_donors WHERE deleted = 0"), "1 1 12");
    host.frontEnd.seen.clear();
    remove();
    EXPECT_EQ(host.frontEnd.seen.front(),
              "ask Are you sure you want to delete Lee, Kim?\r\nAll events participation and "
              "reservation information will no longer be available.");
    EXPECT_EQ(traces() + count("donor_donors WHERE deleted = 0"), "0 0 01");
    EXPECT_EQ(count("donor_gifts WHERE deleted = 0"), "2") << "gifts stay with a marked donor";
}

TEST_P(Features, AListMayBeAQueryOverWhatItsDeletionTakesAway)
{
    EventFiller(host).fill();
    deleteListed("(SELECT DISTINCT ep.FKDonorId AS Id FROM events_event_participants ep) list");
    EXPECT_EQ(count("events_event_participants"), "0");
    EXPECT_EQ(count("events_event_reservations"), "0");
}

TEST_P(Features, AnAttributeLeavesNoReferenceOrAllOfThem)
{
    EventFiller(host).fill();
    const char* tables[] = {"events_event_info", "events_event_activities"};
    for (const std::string table : tables) host.execute("UPDATE " + table + " SET FKFundId = 3");
    auto data = puppet("Deletion");
    data->holds("EntityType", "donor_funds").holds("EntityId", 3);
    const auto remove = [&] { host.session->raise("attribute-delete", Value(data)); };
    const auto referring = [&] {
        return count("events_event_info WHERE FKFundId = 3") + " " +
               count("events_event_activities WHERE FKFundId = 3");
    };
    fail("UPDATE events_event_activities", 0);
    EXPECT_EQ(failureOf(remove), "the disk is full");
    EXPECT_EQ(referring(), "1 1");
    remove();
    EXPECT_EQ(referring(), "0 0");
}

} // namespace
} // namespace refhost
