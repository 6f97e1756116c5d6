#include <gtest/gtest.h>

#include "model/event_activity.h"
#include "model/event_expense.h"
#include "model/event_participant.h"
#include "model/event_reservation.h"
#include "model/event_task.h"
#include "model/lookup_items.h"
#include "model/reservation_fields.h"
#include "store/store_access.h"
#include "tests/support/scripted_host.h"

namespace qmevents {
namespace {

using testing::Log;
using testing::Puppet;
using testing::puppet;
using testing::ScriptedHost;

// Assigns to a property of a clean record by name, as scripts do.
template <typename T>
bool marksDirtyWhenSet(const char* property, const Value& value)
{
    const auto record = makeRef<T>();
    put(record, property, value);
    return record->IsDirty();
}

TEST(DirtyMarks, AreIrregularOnPurpose)
{
    const Date day = Date::of(2026, 3, 7);
    EXPECT_TRUE(marksDirtyWhenSet<cEventActivity>("CreateDate", day));
    EXPECT_TRUE(marksDirtyWhenSet<cEventActivity>("LastUpdateUser", 5));
    EXPECT_TRUE(marksDirtyWhenSet<cEventActivity>("ReservationFields", makeRef<Collection>()));

    EXPECT_TRUE(marksDirtyWhenSet<cEventParticipant>("Id", 5));
    EXPECT_TRUE(marksDirtyWhenSet<cEventParticipant>("IsSelected", true));
    EXPECT_FALSE(marksDirtyWhenSet<cEventParticipant>("FKEventId", 5));
    EXPECT_FALSE(marksDirtyWhenSet<cEventParticipant>("Notes", "n"));

    EXPECT_FALSE(marksDirtyWhenSet<cEventReservation>("FKEventId", 5));
    EXPECT_TRUE(marksDirtyWhenSet<cEventReservation>("AmountPaid", 5));

    EXPECT_FALSE(marksDirtyWhenSet<cEventReservationActivity>("Id", 5));
    EXPECT_FALSE(marksDirtyWhenSet<cEventReservationActivity>("Price", 5));
    EXPECT_FALSE(marksDirtyWhenSet<cEventReservationActivity>("Quantity", 5));
    EXPECT_FALSE(marksDirtyWhenSet<cEventReservationActivity>("Sponsorship", true));
    EXPECT_TRUE(marksDirtyWhenSet<cEventReservationActivity>("Notes", "n"));
    EXPECT_TRUE(marksDirtyWhenSet<cEventReservationActivity>("ReservationFieldValues",
                                                             makeRef<Collection>()));

    EXPECT_TRUE(marksDirtyWhenSet<cEventExpense>("FKEventId", 5));
    EXPECT_FALSE(marksDirtyWhenSet<cEventExpense>("CreateDate", day));
    EXPECT_TRUE(marksDirtyWhenSet<cEventTask>("Completed", true));
    EXPECT_FALSE(marksDirtyWhenSet<cEventTask>("LastUpdateDate", day));
}

TEST(DirtyMarks, OfMembershipsAreHiddenFromTheHost)
{
    const Ref<Object> membership = makeRef<cEventParticipantGroup>();
    EXPECT_EQ(membership->memberId("IsNew"), unknownMember);
    EXPECT_EQ(membership->memberId("IsDirty"), unknownMember);
    EXPECT_THROW(put(membership, "Id", 5), Error);
}

TEST(ReservationField, NamesItsTypeExceptTheFifth)
{
    const char* names[] = {"",     "Textbox", "Dropdown List", "Dropdown Edit",
                           "Date", "",        "Checkbox",      ""};
    cEventActivityReservationField field;
    for (std::int16_t type = 0; type < 8; ++type) {
        field.FieldType = type;
        EXPECT_EQ(field.FieldTypeString(), names[type]) << type;
    }
}

TEST(ReservationField, KeepsTheFirstOfTwoChoicesOfOneName)
{
    for (const auto& [name, same] : {std::pair("Red", "red"), std::pair("", "")}) {
        SCOPED_TRACE(name);
        const auto field = makeRef<cEventActivityReservationField>();
        Value first[] = {name, true, false};
        invokeNamed(field, "AddListItem", CallKind::method, first);
        EXPECT_FALSE(toBool(first[2]));
        Value again[] = {same, false, false};
        invokeNamed(field, "AddListItem", CallKind::method, again);
        EXPECT_TRUE(toBool(again[2]));
        ASSERT_EQ(field->ListItems()->Count(), 1);
        EXPECT_TRUE(toBool(get(toObject(field->ListItems()->Item(1)), "Visible")));
    }
}

TEST(ReservationField, CopiesShareNothingWithTheirMaster)
{
    const auto master = makeRef<cEventActivityReservationField>();
    master->FieldType = 2;
    master->Name = "Meal";
    master->Description = "What to eat";
    master->DefaultValue = "Fish";
    master->AddListItem("Fish", true);
    master->AddListItem("Meat", false);
    const auto copy = makeRef<cEventActivityReservationField>();
    copy->AddListItem("Old", true);
    copy->CopyFrom(master);
    master->AddListItem("Soup", true);
    put(toObject(master->ListItems()->Item(1)), "Name", "Changed");

    EXPECT_EQ(copy->FieldTypeString(), "Dropdown List");
    EXPECT_EQ(copy->Name + copy->Description + copy->DefaultValue, "MealWhat to eatFish");
    ASSERT_EQ(copy->ListItems()->Count(), 2);
    EXPECT_EQ(toText(get(toObject(copy->ListItems()->Item(1)), "Name")), "Fish");
    EXPECT_FALSE(toBool(get(toObject(copy->ListItems()->Item("Meat")), "Visible")));
    copy->CopyFrom(copy);
    EXPECT_EQ(copy->ListItems()->Count(), 2);

    cEventActivity activity;
    EXPECT_EQ(activity.ReservationFieldSummary(), "");
    activity.ReservationFields()->append(copy);
    activity.ReservationFields()->append(makeRef<cEventActivityReservationField>(),
                                         "one without a name");
    EXPECT_EQ(activity.ReservationFieldSummary(), "Meal, ");
}

TEST(Participants, CountThoseWhoAnsweredAsInvited)
{
    cEventParticipants participants;
    const char* texts[] = {"Not Invited", "Invited", "Accepted", "Declined", "Not Invited"};
    for (const int status : {0, 1, 2, 3, 7}) {
        auto participant = makeRef<cEventParticipant>();
        participant->Status = static_cast<std::int16_t>(status);
        participant->Attended = status == 2;
        EXPECT_EQ(participant->StatusText(), texts[participants.Count()]);
        participants.Add(participant, nullptr);
    }
    EXPECT_EQ(participants.TotalInvited(), 3);
    EXPECT_EQ(participants.TotalAccepted(), 1);
    EXPECT_EQ(participants.TotalDeclined(), 1);
    EXPECT_EQ(participants.TotalAttended(), 1);
}

TEST(DonorNames, FollowTheDonorUnlessTheyWereGiven)
{
    ScriptedHost host;
    host.donors = {{9, "Lee, Kim"}, {4, "Ode, Ann"}};
    const auto participant = makeRef<cEventParticipant>();
    const auto coordinator = makeRef<cEventCoordinator>();
    const std::pair<Ref<Object>, const char*> records[] = {{participant, "ParticipantName"},
                                                           {coordinator, "Display"}};
    for (const auto& [record, property] : records) {
        SCOPED_TRACE(property);
        // Captured by name, as not every compiler lets a lambda reach for structured bindings.
        const auto nameOf = [&record = record, &property = property](std::int32_t donor) {
            put(record, "FKdonorId", donor);
            return toText(get(record, property));
        };
        EXPECT_EQ(nameOf(0), "");
        EXPECT_EQ(nameOf(9), "Lee, Kim");
        host.donors[9] = "asked once";
        EXPECT_EQ(nameOf(9), "Lee, Kim");
        EXPECT_EQ(nameOf(4), "Ode, Ann");
        EXPECT_EQ(nameOf(404) + nameOf(0), "");
        host.donors[9] = "Lee, Kim";
    }
    StoreAccess::loadName(*participant, "Given");
    participant->FKdonorId = 4;
    EXPECT_EQ(participant->ParticipantName(), "Given");
}

Ref<cEventReservationActivity> line(std::int32_t activity, std::int32_t price,
                                    std::int32_t quantity, bool sponsorship)
{
    auto one = makeRef<cEventReservationActivity>();
    one->FKActivityId = activity;
    one->Price = Currency::fromUnits(price);
    one->Quantity = quantity;
    one->setSponsorship(sponsorship);
    return one;
}

TEST(ReservationLines, AddUpAndTakeTheKeyOfTheirCollection)
{
    cEventReservationActivities lines;
    EXPECT_EQ(lines.TotalExpected(), Currency());
    const auto ticket = line(3, 100, 2, false);
    Value key = 0;
    lines.Add(ticket, &key);
    ticket->setId(toInt32(key));
    lines.Add(line(4, 50, 1, true), nullptr);
    EXPECT_EQ(lines.TotalExpected(), Currency::fromUnits(250));
    EXPECT_EQ(lines.TotalSponsorship(), Currency::fromUnits(50));
    EXPECT_FALSE(ticket->IsDirty());
    lines.RemoveByKey(-1, false);
    EXPECT_EQ(lines.TotalExpected(), Currency::fromUnits(50));
}

TEST(ReservationLines, CopyEverythingAndMarkTheCopyForSaving)
{
    const auto master = line(3, 100, 2, true);
    master->setId(8);
    master->FKReservationId = 7;
    master->setActivityName("Ticket");
    master->Notes = "by the door";
    master->CreateUser = 5;
    const auto meal = makeRef<cEventReservationActivityField>();
    meal->FieldType = 1;
    meal->Name = "Meal";
    meal->Value = "Fish";
    appendValue(*master->ReservationFieldValues(), meal);
    const auto copy = makeRef<cEventReservationActivity>();
    copy->CopyFrom(master);
    meal->Value = "Meat";

    EXPECT_EQ(copy->Id(), 8);
    EXPECT_EQ(copy->FKReservationId, 7);
    EXPECT_EQ(copy->ActivityName(), "Ticket");
    EXPECT_EQ(copy->amount(), Currency::fromUnits(200));
    EXPECT_TRUE(copy->Sponsorship());
    EXPECT_EQ(copy->Notes.get(), "by the door");
    EXPECT_EQ(copy->CreateUser, 5);
    EXPECT_TRUE(copy->IsDirty());
    EXPECT_EQ(toText(get(toObject(copy->ReservationFieldValues()->Item("Meal")), "Value")), "Fish");
    EXPECT_THROW(copy->CopyFrom({}), Error);

    // A document that nobody can read is written back, by the copy as well.
    StoreAccess::fields(*master).load("<fields><field",
                                      [](const std::string&) { return Ref<Collection>(); });
    EXPECT_EQ(master->ReservationFieldValues()->Count(), 0);
    copy->CopyFrom(master);
    EXPECT_EQ(StoreAccess::fields(*copy).document(nullptr), "<fields><field");
}

// A donation module whose donations of a reservation are two payments.
Ref<Puppet> offerDonations(const ScriptedHost& host, Log& searches)
{
    const auto donation = getObject(getObject(host.app(), "Modules"), "Donation");
    const auto donations = refCast<Puppet>(getObject(donation, "Donations"));
    donations->on("GetNewDonationCriteria", [](std::span<Value>) -> Value {
        auto criteria = puppet("Criteria");
        criteria->holds("CustomWhere", "").holds("CustomOrderBy", "");
        return criteria;
    });
    donations->on("GetDonationsBySearch", [&searches](std::span<Value> a) -> Value {
        const auto criteria = toObject(a[0]);
        searches.push_back(toText(get(criteria, "CustomWhere")) + " by " +
                           toText(get(criteria, "CustomOrderBy")));
        auto found = makeRef<Collection>();
        for (const Value& amount : {Value(45), Value(Null{}), Value(15)}) {
            auto payment = puppet("Donation");
            payment->holds("DonationAmount", amount);
            found->append(payment);
        }
        return found;
    });
    return donations;
}

TEST(Reservations, CountGiftsBesideWhatWasPaidOnThem)
{
    ScriptedHost host;
    Log searches;
    const auto donations = offerDonations(host, searches);
    const auto reservation = makeRef<cEventReservation>();
    reservation->AmountPaid = Currency::fromUnits(40);
    EXPECT_EQ(reservation->TotalPaid(), Currency::fromUnits(40));
    EXPECT_EQ(searches, Log{}) << "gifts without a reservation are not those of an unsaved one";

    StoreAccess::setId(*reservation, 7);
    EXPECT_EQ(reservation->DonationPaymentsAmount(), Currency::fromUnits(60));
    EXPECT_EQ(toCurrency(get(reservation, "TotalPaid")), Currency::fromUnits(100));
    EXPECT_EQ(searches, Log{"FKReservationId = <3:7> by ActualDate DESC"});
    call(reservation, "ResetPayments");
    reservation->Payments();
    EXPECT_EQ(searches.size(), 2U);

    // Another host answers with its record set, which can be read again afterwards.
    donations->on("GetDonationsBySearch", [](std::span<Value>) -> Value {
        return testing::recordSet({{"Id", "DonationAmount"}, {{1, 20}, {2, Null{}}, {3, 5}}});
    });
    call(reservation, "ResetPayments");
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(reservation->DonationPaymentsAmount(), Currency::fromUnits(25));
    }

    cEventReservations reservations;
    reservations.add(reservation);
    EXPECT_EQ(reservations.TotalPaid(), Currency::fromUnits(40)) << "gifts are left out on purpose";
}

TEST(Reservations, CountDistinctActivitiesAndGiveNoTotalWithoutTheirLines)
{
    ScriptedHost host;
    cEventReservations reservations;
    for (const auto& activities : {std::vector{3, 4, 3}, std::vector{4, 5}}) {
        auto reservation = makeRef<cEventReservation>();
        for (const std::int32_t activity : activities) {
            reservation->lines().Add(line(activity, 10, 2, false), nullptr);
        }
        reservations.Add(reservation, nullptr);
    }
    EXPECT_EQ(reservations.TotalActivities(), 3);
    reservations.Add(makeRef<cEventReservation>(), nullptr);
    host.failingStatement = 0;
    EXPECT_THROW(reservations.TotalExpected(), Error);
    EXPECT_EQ(host.log.back(), "ErrorUnexpected: the disk is full");
}

} // namespace
} // namespace qmevents
