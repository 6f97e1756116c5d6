#include "host/modules/donor_module.h"

#include "automation/describe.h"
#include "host/app/host_event.h"
#include "host/document/objects/sql_literal.h"
#include "host/security/security.h"

namespace refhost {

using qmevents::arg;
using qmevents::describe;
using qmevents::makeRef;

namespace {

template <typename Table>
void describeDonor(Table& table)
{
    table.readOnly("Id", &SmallDonor::Id, "The donor's key.")
        .property("Display", &SmallDonor::Display, "The name as lists show it.")
        .property("EntityType", &SmallDonor::EntityType, "Person or organisation.");
}

void readSmall(const Cursor& row, SmallDonor& donor)
{
    donor.Id = cellOr<std::int32_t>(row, "id", 0);
    donor.Display = cellOr<std::string>(row, "display", "");
    donor.EntityType = cellOr<std::string>(row, "entitytype", "");
}

std::string donorQuery(const char* columns, std::int32_t id)
{
    return std::string("SELECT ") + columns +
           " FROM donor_donors WHERE deleted = 0 AND id = " + std::to_string(id);
}

} // namespace

const Members& SmallDonor::members() const
{
    static const Members table = describe<SmallDonor>("What a list shows of a donor.")
                                     .with(describeDonor<qmevents::Describe<SmallDonor>>);
    return table;
}

const Members& Donor::members() const
{
    static const Members table =
        describe<Donor>("A donor with address.")
            .with(describeDonor<qmevents::Describe<Donor>>)
            .property("FirstName", &Donor::FirstName, "First name.")
            .property("LastName", &Donor::LastName, "Last name.")
            .property("Email", &Donor::Email, "Address for e-mail.")
            .property("Phone", &Donor::Phone, "Telephone number.")
            .property("Address", &Donor::Address, "Street and number.")
            .property("City", &Donor::City, "City.")
            .property("PostalCode", &Donor::PostalCode, "Postal code.")
            .readOnly("Created", &Donor::Created, "When the donor was entered, or Null.");
    return table;
}

void Donor::read(const Cursor& row)
{
    readSmall(row, *this);
    FirstName = cellOr<std::string>(row, "firstname", "");
    LastName = cellOr<std::string>(row, "lastname", "");
    Email = cellOr<std::string>(row, "email", "");
    Phone = cellOr<std::string>(row, "phone", "");
    Address = cellOr<std::string>(row, "address", "");
    City = cellOr<std::string>(row, "city", "");
    PostalCode = cellOr<std::string>(row, "postalcode", "");
    Created = row.value(row.columnIndex("created").value());
}

const Members& DonorManage::members() const
{
    static const Members table =
        describe<DonorManage>("Reads, finds and keeps donors.")
            .method("GetDonor", &DonorManage::GetDonor, {arg("Id")}, "The donor, or Nothing.")
            .method("GetSmallDonor", &DonorManage::GetSmallDonor, {arg("Id")},
                    "The donor's name and type only, or Nothing.")
            .method("GetNewDonorCriteria", &DonorManage::GetNewDonorCriteria,
                    "New criteria that all donors satisfy.")
            .method("GetDonorsBySearch", &DonorManage::GetDonorsBySearch, {arg("Criteria")},
                    "The donors that satisfy the criteria.")
            .method("GetNewDonor", &DonorManage::GetNewDonor,
                    "A new donor, to be filled and saved.")
            .method("UpdateDonor", &DonorManage::UpdateDonor, {arg("Donor")},
                    "Writes a new or changed donor; False when the user was told what is wrong.")
            .method("DeleteDonor", &DonorManage::DeleteDonor, {arg("Id")},
                    "Asks the user and deletes the donor; False when the user declines.");
    return table;
}

Ref<Donor> DonorManage::GetDonor(std::int32_t id) const
{
    Ref<Donor> donor;
    readRows(context_, donorQuery("*", id), [&](const Cursor& row) {
        donor = makeRef<Donor>();
        donor->read(row);
    });
    return donor;
}

Ref<SmallDonor> DonorManage::GetSmallDonor(std::int32_t id) const
{
    Ref<SmallDonor> donor;
    readRows(context_, donorQuery("id, display, entitytype", id), [&](const Cursor& row) {
        donor = makeRef<SmallDonor>();
        readSmall(row, *donor);
    });
    return donor;
}

Ref<DonorCriteria> DonorManage::GetNewDonorCriteria() const { return makeRef<DonorCriteria>(); }

Ref<qmevents::Collection> DonorManage::GetDonorsBySearch(const Ref<DonorCriteria>& criteria) const
{
    if (!criteria) {
        throw qmevents::Error::with(qmevents::ErrorNumber::objectNotSet, "donor criteria");
    }
    return findDonors(context_, *criteria);
}

Ref<Donor> DonorManage::GetNewDonor() const
{
    const auto donor = makeRef<Donor>();
    donor->EntityType = "Person";
    return donor;
}

bool DonorManage::UpdateDonor(const Ref<Donor>& donor) const
{
    if (!donor) throw qmevents::Error::with(qmevents::ErrorNumber::objectNotSet, "the donor");
    return saveDonor(context_, *donor);
}

void requireDonorDeletion(const SharedContext& context)
{
    if (!Security(context).IsAllowed("events/delete")) {
        throw qmevents::Error::with(qmevents::ErrorNumber::permissionDenied,
                                    "you may not delete donors");
    }
}

void markDonorsDeleted(const SharedContext& context, const std::string& condition)
{
    runStatement(context,
                 "UPDATE donor_donors SET deleted = " +
                     sqlLiteral(context->sql().dialect(), Value(true), LiteralKind::yesNo) +
                     " WHERE " + condition);
}

bool DonorManage::DeleteDonor(std::int32_t id) const
{
    requireDonorDeletion(context_);
    const auto donor = GetSmallDonor(id);
    if (!donor) {
        throw qmevents::Error::with(qmevents::ErrorNumber::invalidCall,
                                    "there is no donor with the id " + std::to_string(id));
    }
    const auto payload = makeRef<DeletionPayload>();
    payload->EntityId = id;
    payload->EntityType = "donors";
    context_->raise("donor-delete-validate-and-confirm", Value(payload));
    std::string question = "Are you sure you want to delete " + donor->Display + "?";
    Value message;
    for (const auto walk = payload->ConfirmationMessages->NewEnum(); walk->next(message);) {
        question += "\r\n" + qmevents::toText(message);
    }
    constexpr std::int32_t yesNo = 4;
    constexpr auto yes = static_cast<std::int32_t>(Button::yes);
    if (context_->shell()->MsgPrompt(question, yesNo, "Delete Donor") != yes) return false;

    Transaction transaction(context_->sql());
    const auto failuresBefore = context_->shell()->failuresShown();
    context_->raise("donor-delete", Value(payload));
    if (context_->shell()->failuresShown() != failuresBefore) return false;
    markDonorsDeleted(context_, "id = " + std::to_string(id));
    transaction.commit();
    context_->frontEnd().refresh();
    return true;
}

} // namespace refhost
