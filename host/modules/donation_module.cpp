#include "host/modules/donation_module.h"

#include "automation/describe.h"
#include "host/document/objects/sql_literal.h"

namespace refhost {

using qmevents::arg;
using qmevents::Currency;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;

const Members& DonationCriteria::members() const
{
    static const Members table =
        describe<DonationCriteria>("Which donations are wanted.")
            .property("CustomWhere", &DonationCriteria::CustomWhere, "A condition in SQL.")
            .property("CustomOrderBy", &DonationCriteria::CustomOrderBy,
                      "Columns to order by, in SQL.");
    return table;
}

const Members& Donation::members() const
{
    static const Members table =
        describe<Donation>("One payment of a gift.")
            .readOnly("Id", &Donation::Id, "The gift's key.")
            .readOnly("PaymentId", &Donation::PaymentId, "The payment's key.")
            .readOnly("DonorId", &Donation::DonorId, "The donor's key.")
            .readOnly("DonorName", &Donation::DonorName, "The donor's name.")
            .readOnly("Pledge", &Donation::Pledge, "Whether the gift is a pledge.")
            .readOnly("DonationAmount", &Donation::DonationAmount, "What was received.")
            .readOnly("ActualDate", &Donation::ActualDate, "When it was received, or Null.")
            .readOnly("ExpectedAmount", &Donation::ExpectedAmount, "What was expected.")
            .readOnly("ExpectedDate", &Donation::ExpectedDate, "When it was expected, or Null.")
            .readOnly("EventId", &Donation::EventId, "The event that the gift belongs to, or 0.")
            .readOnly("ReservationId", &Donation::ReservationId,
                      "The reservation that the gift belongs to, or 0.")
            .readOnly("Note", &Donation::Note, "What was noted with the gift.");
    return table;
}

const Members& Donations::members() const
{
    static const Members table =
        describe<Donations>("The donations of the database.")
            .method("GetNewDonationCriteria", &Donations::GetNewDonationCriteria,
                    "New criteria that all donations satisfy.")
            .method("GetDonationsBySearch", &Donations::GetDonationsBySearch, {arg("Criteria")},
                    "The payments of the gifts that satisfy the criteria.")
            .readOnly("Wizards", &Donations::wizards,
                      "What leads the user through recording gifts.")
            .method("GetNewGift", &Donations::GetNewGift, "A new gift, to be filled and saved.")
            .method("SaveGift", &Donations::SaveGift, {arg("Gift")},
                    "Writes a new gift; False when the user was told what is wrong.")
            .method("Delete", &Donations::Delete, {arg("Id")},
                    "Deletes a gift or pledge with its payments.");
    return table;
}

Ref<DonationCriteria> Donations::GetNewDonationCriteria() const
{
    return makeRef<DonationCriteria>();
}

Ref<qmevents::Collection>
Donations::GetDonationsBySearch(const Ref<DonationCriteria>& criteria) const
{
    if (!criteria) throw Error::with(ErrorNumber::objectNotSet, "donation criteria");
    std::string query =
        "SELECT g.id AS GiftId, p.id AS PaymentId, g.donorId, dd.display AS DonorName, g.pledge, "
        "p.actualAmount, p.actualDate, p.expectedAmount, p.expectedDate, g.FKEventId, "
        "g.FKReservationId, g.[note] FROM (donor_gifts g INNER JOIN donor_gifts_payments p "
        "ON g.id = p.giftId) LEFT JOIN donor_donors dd ON g.donorId = dd.id WHERE (g.deleted = 0)";
    if (!criteria->CustomWhere.empty()) query += " AND (" + criteria->CustomWhere + ")";
    query += " ORDER BY " + (criteria->CustomOrderBy.empty() ? "g.created DESC, g.id DESC, p.id"
                                                             : criteria->CustomOrderBy);
    const auto found = makeRef<qmevents::Collection>();
    readRows(context_, query, [&](const Cursor& row) {
        const auto donation = makeRef<Donation>();
        donation->Id = cellOr<std::int32_t>(row, "GiftId", 0);
        donation->PaymentId = cellOr<std::int32_t>(row, "PaymentId", 0);
        donation->DonorId = cellOr<std::int32_t>(row, "donorId", 0);
        donation->DonorName = cellOr<std::string>(row, "DonorName", "");
        donation->Pledge = cellOr<bool>(row, "pledge", false);
        donation->DonationAmount = cellOr<Currency>(row, "actualAmount", {});
        donation->ActualDate = row.value(row.columnIndex("actualDate").value());
        donation->ExpectedAmount = cellOr<Currency>(row, "expectedAmount", {});
        donation->ExpectedDate = row.value(row.columnIndex("expectedDate").value());
        donation->EventId = cellOr<std::int32_t>(row, "FKEventId", 0);
        donation->ReservationId = cellOr<std::int32_t>(row, "FKReservationId", 0);
        donation->Note = cellOr<std::string>(row, "note", "");
        found->append(Value(donation));
    });
    return found;
}

Ref<Gift> Donations::GetNewGift() const { return makeRef<Gift>(); }

bool Donations::SaveGift(const Ref<Gift>& gift) const
{
    if (!gift) throw Error::with(ErrorNumber::objectNotSet, "the gift");
    return saveGift(context_, *gift);
}

void Donations::Delete(std::int32_t giftId) const
{
    const std::string gift = std::to_string(giftId);
    const std::string yes = sqlLiteral(context_->sql().dialect(), Value(true), LiteralKind::yesNo);
    Transaction transaction(context_->sql());
    const auto changed =
        runStatement(context_, "UPDATE donor_gifts SET deleted = " + yes + " WHERE id = " + gift);
    if (changed == 0) {
        throw Error::with(ErrorNumber::invalidCall, "there is no gift with the id " + gift);
    }
    // A gift that matches another's payment names it, and the payment names the gift.
    for (const std::string& statement :
         {"UPDATE donor_gifts SET FKMatch = 0 WHERE FKMatch IN "
          "(SELECT id FROM donor_gifts_payments WHERE giftId = " +
              gift + ")",
          "UPDATE donor_gifts_payments SET FKMatch = 0 WHERE FKMatch = " + gift,
          "DELETE FROM donor_gifts_payments WHERE giftId = " + gift}) {
        runStatement(context_, statement);
    }
    transaction.commit();
}

const Members& DonationModule::members() const
{
    static const Members table =
        describe<DonationModule>("The donation module.")
            .readOnly("Donations", &DonationModule::donations, "The donations of the database.");
    return table;
}

} // namespace refhost
