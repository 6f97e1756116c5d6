#include "host/modules/donation_wizard.h"

#include "automation/clock.h"
#include "automation/describe.h"
#include "automation/text.h"
#include "host/document/objects/sql_literal.h"
#include "host/modules/donor_module.h"
#include "host/security/security.h"

namespace refhost {

using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;

namespace {

constexpr int wizardHeight = 620;
constexpr int wizardWidth = 640;

bool refuse(const SharedContext& context, const std::string& text)
{
    context->shell()->ErrorUser(text, {}, {});
    return false;
}

bool isValid(const SharedContext& context, const Gift& gift)
{
    if (!DonorManage(context).GetSmallDonor(gift.DonorId))
        return refuse(context, "The donor no longer exists.");
    if (gift.Amount <= qmevents::Currency())
        return refuse(context, "The amount must be more than 0.");
    if (!gift.GiftDate.hasDate()) return refuse(context, "The date of the gift is required.");
    return true;
}

void write(const SharedContext& context, Gift& gift)
{
    const Dialect dialect = context->sql().dialect();
    const auto date = [&](const qmevents::Date& day) {
        return sqlLiteral(dialect, Value(day), LiteralKind::date);
    };
    runStatement(context,
                 "INSERT INTO donor_gifts (donorId, created, FKFund, FKCampaign, FKSource, "
                 "FKEventId, FKReservationId, [note]) VALUES (" +
                     std::to_string(gift.DonorId) + ", " + date(qmevents::Clock::now()) + ", " +
                     std::to_string(gift.FundId) + ", " + std::to_string(gift.CampaignId) + ", " +
                     std::to_string(gift.SourceId) + ", " + std::to_string(gift.EventId) + ", " +
                     std::to_string(gift.ReservationId) + ", " +
                     sqlLiteral(dialect, Value(gift.Note), LiteralKind::text) + ")");
    gift.Id = newKey(context);
    const std::string amount = sqlLiteral(dialect, Value(gift.Amount), LiteralKind::number);
    const std::string day = date(gift.GiftDate);
    runStatement(context, "INSERT INTO donor_gifts_payments (giftId, expectedDate, expectedAmount, "
                          "actualDate, actualAmount, FKFund) VALUES (" +
                              std::to_string(gift.Id) + ", " + day + ", " + amount + ", " + day +
                              ", " + amount + ", " + std::to_string(gift.FundId) + ")");
}

} // namespace

const Members& Gift::members() const
{
    static const Members table =
        describe<Gift>("A gift that is being recorded.")
            .readOnly("Id", &Gift::Id, "The gift's key; 0 before it is saved.")
            .property("DonorId", &Gift::DonorId, "The donor's key.")
            .property("Amount", &Gift::Amount, "What was received.")
            .property("GiftDate", &Gift::GiftDate, "When it was received.")
            .property("FundId", &Gift::FundId, "The fund, or 0.")
            .property("CampaignId", &Gift::CampaignId, "The campaign, or 0.")
            .property("SourceId", &Gift::SourceId, "The appeal, or 0.")
            .property("EventId", &Gift::EventId, "The event that the gift belongs to, or 0.")
            .property("ReservationId", &Gift::ReservationId,
                      "The reservation that the gift pays for, or 0.")
            .property("Note", &Gift::Note, "What is noted with the gift.");
    return table;
}

bool saveGift(const SharedContext& context, Gift& gift)
{
    if (!Security(context).IsAllowed("events/edit")) {
        throw Error::with(ErrorNumber::permissionDenied, "you may not record gifts");
    }
    if (gift.Id != 0) throw Error::with(ErrorNumber::invalidCall, "the gift has been saved before");
    if (!isValid(context, gift)) return false;
    try {
        Transaction transaction(context->sql());
        write(context, gift);
        transaction.commit();
    } catch (...) {
        gift.Id = 0; // what was written is undone, so it can be saved again
        throw;
    }
    return true;
}

const Members& DonationWizards::members() const
{
    static const Members table =
        describe<DonationWizards>("Leads the user through recording gifts.")
            .method("StartDonationWizard", &DonationWizards::StartDonationWizard,
                    "Records a gift with the values of the dialog; True when one was recorded.");
    return table;
}

bool DonationWizards::StartDonationWizard() const
{
    DialogEngine& engine = context_->shell()->dialogEngine();
    const auto text = [&](const char* name) {
        const Value value = engine.value(name);
        return value.isEmpty() || value.isNull() ? std::string() : qmevents::toText(value);
    };
    const bool returns = qmevents::text::sameName(text("donation-return-to-caller"), "true");
    engine.show("donation", "donationwizard", wizardHeight, wizardWidth);
    const Value confirmed = engine.ReturnValue();
    const bool isRecorded = !confirmed.isEmpty() && qmevents::toBool(confirmed);
    const std::string donor = text("donorid");
    engine.ClearClipboard();
    if (isRecorded && !returns) {
        context_->shell()->Navigate("obsidian://donor/details-donor?id=" + donor, {});
    } else if (isRecorded) {
        context_->frontEnd().refresh();
    }
    return isRecorded;
}

} // namespace refhost
