#include "host/lists/donor_deletion.h"

#include "automation/error.h"
#include "host/app/host_event.h"
#include "host/document/objects/sql_literal.h"
#include "host/lists/list_runs.h"
#include "host/modules/donor_module.h"

namespace refhost {
namespace {

std::string questionFor(std::size_t count, const DeletionPayload& payload)
{
    std::string question =
        count == 1 ? "Are you sure you want to delete this donor?"
                   : "Are you sure you want to delete these " + std::to_string(count) + " donors?";
    Value message;
    for (const auto walk = payload.ConfirmationMessages->NewEnum(); walk->next(message);) {
        question += "\r\n" + qmevents::toText(message);
    }
    return question;
}

/// What the modules read the donors from, for as long as the deletion takes.
class KeptDonors {
public:
    KeptDonors(const SharedContext& context, const std::vector<std::int32_t>& donors)
        : context_(context), source_(keepRecords(context, donors))
    {
    }
    KeptDonors(const KeptDonors&) = delete;
    ~KeptDonors()
    {
        try {
            forgetRecords(context_, source_);
        } catch (const qmevents::Error&) {
            // They are dropped with the next day's first list.
        }
    }
    const std::string& source() const { return source_; }

private:
    const SharedContext& context_;
    std::string source_;
};

} // namespace

bool deleteDonors(const SharedContext& context, const std::vector<std::int32_t>& donors)
{
    requireDonorDeletion(context);
    if (donors.empty()) return false;
    const KeptDonors kept(context, donors);
    const auto payload = qmevents::makeRef<DeletionPayload>();
    payload->EntityType = "donors";
    payload->Userdata = kept.source();
    context->raise("donor-delete-smartlist-confirm", Value(payload));
    constexpr std::int32_t yesNo = 4;
    constexpr auto yes = static_cast<std::int32_t>(Button::yes);
    const std::string question = questionFor(donors.size(), *payload);
    if (context->shell()->MsgPrompt(question, yesNo, "Delete Donors") != yes) return false;

    Transaction transaction(context->sql());
    const auto failuresBefore = context->shell()->failuresShown();
    context->raise("donor-delete-smartlist", Value(payload));
    if (context->shell()->failuresShown() != failuresBefore) return false;
    markDonorsDeleted(context, "id IN (SELECT Id FROM " + kept.source() + ")");
    transaction.commit();
    context->frontEnd().refresh();
    return true;
}

} // namespace refhost
