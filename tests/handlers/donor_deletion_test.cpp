#include "tests/handlers/handlers.h"
#include "tests/store/late_store.h"

namespace qmevents::testing {
namespace {

class DonorDeletion : public Handlers {
protected:
    DonorDeletion()
    {
        deletion_->holds("EntityId", 9).holds("EntityType", "donors").holds("DeleteType", 0);
        deletion_->holds("Userdata", "(SELECT d.id AS Id FROM donor_donors d) list");
        deletion_->on("AddConfirmationMessage", [this](std::span<Value> a) {
            host_.log.push_back("Confirm: " + toText(a[0]));
            return Value();
        });
        const Rows reservation =
            rowsOf("Id FKEventId FKDonorId ReservationDate Description AmountPaid EventName "
                   "EventFKStatusId",
                   {{8, 5, 9, null, null, 0, "Gala", 0}});
        host_.answer("eer.Id = <3:8>", reservation);
        host_.answer("WHERE FKDonorId=<2:9>", reservation);
        host_.answer("SELECT Id FROM donor_gifts", {{"Id"}, {{101}}});
    }
    std::string failureOf(const char* key) const
    {
        try {
            raise(key, deletion_);
        } catch (const Error& error) {
            return error.description();
        }
        return "none";
    }
    /// What happened to the gifts of the donor's reservation.
    std::string gifts()
    {
        for (const auto& line : host_.takeLog()) {
            if (line.starts_with("Donation.Delete")) return "deleted";
            if (line.starts_with("UPDATE donor_gifts")) return "unlinked";
        }
        return "untouched";
    }

    Ref<Puppet> deletion_ = puppet("Deletion");
};

TEST_F(DonorDeletion, TellsWhatGoesWithDonorsOnly)
{
    raise("donor-delete-validate-and-confirm", deletion_);
    raise("donor-delete-smartlist-confirm", deletion_);
    deletion_->holds("EntityType", "donations");
    raise("donor-delete-smartlist-confirm", deletion_);
    raise("donor-delete-smartlist", deletion_);
    EXPECT_EQ(host_.log, (Log{"Confirm: All events participation and reservation information will "
                              "no longer be available.",
                              "Confirm: All events participation and reservation information for "
                              "these donors will no longer be available."}));
}

TEST_F(DonorDeletion, DeletesGiftsOnlyWithADonorWhoIsRemovedForGood)
{
    for (const auto& [type, fate] : {std::pair<Value, const char*>{0, "unlinked"},
                                     {1, "deleted"},
                                     {Value(), "unlinked"},
                                     {Null{}, "unlinked"},
                                     {"2", "deleted"},
                                     {"for good", "unlinked"}}) {
        deletion_->holds("DeleteType", type);
        raise("donor-delete", deletion_);
        EXPECT_EQ(gifts(), fate);
    }
}

TEST_F(DonorDeletion, ReadsTheWholeListBeforeTheFirstIsDeleted)
{
    host_.answer("SELECT Id FROM (SELECT d.id", {{"Id"}, {{9}, {4}}});
    raise("donor-delete-smartlist", deletion_);
    EXPECT_EQ(host_.log[0], "SELECT Id FROM (SELECT d.id AS Id FROM donor_donors d) list");
    EXPECT_EQ(host_.log[1], "DELETE FROM events_list_eventcoordinators WHERE FKDonorId = <3:9>");
    EXPECT_EQ(std::ranges::count(host_.log, "DELETE FROM events_list_eventcoordinators WHERE "
                                            "FKDonorId = <3:4>"),
              1);
    EXPECT_EQ(gifts(), "unlinked");
}

TEST_F(DonorDeletion, KeepsTheHostFromGoingOnAfterAFailure)
{
    host_.answer("SELECT Id FROM (SELECT d.id", {{"Id"}, {{4}, {9}}});
    host_.failingStatement = 1;
    EXPECT_EQ(failureOf("donor-delete"), "The donor could not be removed from all events and has "
                                         "therefore not been deleted (donor id 9).");
    EXPECT_EQ(host_.takeLog().back(), "ErrorUnexpected: the disk is full");
    host_.failingStatement = 2;
    EXPECT_EQ(failureOf("donor-delete-smartlist"),
              "The donor could not be removed from all events and has therefore not been deleted "
              "(donor id 4).");
    EXPECT_EQ(host_.log.size(), 4u) << "the next donor is left alone";
}

} // namespace
} // namespace qmevents::testing
