#include "host/modules/donor_module.h"

#include "automation/describe.h"
#include "host/app/host_event.h"
#include "host/document/objects/sql_literal.h"

namespace refhost {

using qmevents::arg;
using qmevents::describe;
using qmevents::makeRef;

namespace {

template <typename Table>
void describeDonor(Table& table)
{
    table.readOnly("Id", &SmallDonor::Id, "The donor's key.")
        .readOnly("Display", &SmallDonor::Display, "The name as lists show it.")
        .readOnly("EntityType", &SmallDonor::EntityType, "Person or organisation.");
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
            .readOnly("FirstName", &Donor::FirstName, "First name.")
            .readOnly("LastName", &Donor::LastName, "Last name.")
            .readOnly("Email", &Donor::Email, "Address for e-mail.")
            .readOnly("Phone", &Donor::Phone, "Telephone number.")
            .readOnly("Address", &Donor::Address, "Street and number.")
            .readOnly("City", &Donor::City, "City.")
            .readOnly("PostalCode", &Donor::PostalCode, "Postal code.")
            .readOnly("Created", &Donor::Created, "When the donor was entered, or Null.");
    return table;
}

const Members& DonorManage::members() const
{
    static const Members table =
        describe<DonorManage>("Reads donors.")
            .method("GetDonor", &DonorManage::GetDonor, {arg("Id")}, "The donor, or Nothing.")
            .method("GetSmallDonor", &DonorManage::GetSmallDonor, {arg("Id")},
                    "The donor's name and type only, or Nothing.")
            .method("DeleteDonor", &DonorManage::DeleteDonor, {arg("Id")},
                    "Asks the user and deletes the donor; False when the user declines.");
    return table;
}

Ref<Donor> DonorManage::GetDonor(std::int32_t id) const
{
    Ref<Donor> donor;
    readRows(context_, donorQuery("*", id), [&](const Cursor& row) {
        donor = makeRef<Donor>();
        readSmall(row, *donor);
        donor->FirstName = cellOr<std::string>(row, "firstname", "");
        donor->LastName = cellOr<std::string>(row, "lastname", "");
        donor->Email = cellOr<std::string>(row, "email", "");
        donor->Phone = cellOr<std::string>(row, "phone", "");
        donor->Address = cellOr<std::string>(row, "address", "");
        donor->City = cellOr<std::string>(row, "city", "");
        donor->PostalCode = cellOr<std::string>(row, "postalcode", "");
        donor->Created = row.value(row.columnIndex("created").value());
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

bool DonorManage::DeleteDonor(std::int32_t id) const
{
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
    context_->raise("donor-delete", Value(payload));
    runStatement(context_,
                 "UPDATE donor_donors SET deleted = " +
                     sqlLiteral(context_->sql().dialect(), Value(true), LiteralKind::yesNo) +
                     " WHERE id = " + std::to_string(id));
    transaction.commit();
    context_->frontEnd().refresh();
    return true;
}

} // namespace refhost
