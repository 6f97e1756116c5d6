#include "host/modules/donor_search.h"

#include <algorithm>

#include "automation/clock.h"
#include "automation/describe.h"
#include "host/document/objects/sql_literal.h"
#include "host/modules/donor_module.h"
#include "host/security/security.h"

namespace refhost {

using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;

namespace {

constexpr const char* searched[] = {"display", "email", "phone", "address", "city", "postalcode"};

std::string literal(const SharedContext& context, const std::string& text)
{
    return sqlLiteral(context->sql().dialect(), Value(text), LiteralKind::text);
}

std::string conditionFor(const SharedContext& context, std::string_view word)
{
    const std::string pattern = literal(context, "%" + likeText(word) + "%");
    std::string condition;
    for (const char* column : searched) {
        condition += condition.empty() ? " AND (" : " OR ";
        condition.append(column).append(" LIKE ").append(pattern);
    }
    return condition + ")";
}

std::string conditions(const SharedContext& context, const DonorCriteria& criteria)
{
    std::string all = "deleted = 0";
    std::string_view rest = criteria.SearchString;
    while (!(rest = qmevents::text::trim(rest)).empty()) {
        const std::string_view word = rest.substr(0, rest.find(' '));
        all += conditionFor(context, word);
        rest.remove_prefix(word.size());
    }
    if (!criteria.CustomWhere.empty()) all += " AND (" + criteria.CustomWhere + ")";
    return all;
}

struct StoredText {
    const char* column;
    std::string Donor::*field;
    std::size_t longest;
};
constexpr StoredText texts[] = {
    {"display", &Donor::Display, 255},      {"firstname", &Donor::FirstName, 100},
    {"lastname", &Donor::LastName, 100},    {"entitytype", &Donor::EntityType, 50},
    {"email", &Donor::Email, 255},          {"phone", &Donor::Phone, 50},
    {"address", &Donor::Address, 255},      {"city", &Donor::City, 100},
    {"postalcode", &Donor::PostalCode, 20},
};

bool refuse(const SharedContext& context, const std::string& text)
{
    context->shell()->ErrorUser(text, {}, {});
    return false;
}

// Counts characters, not the bytes in which they are kept.
std::size_t length(const std::string& text)
{
    return static_cast<std::size_t>(std::ranges::count_if(
        text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

bool isValid(const SharedContext& context, const Donor& donor)
{
    if (qmevents::text::trim(donor.LastName).empty())
        return refuse(context, "The donor's name is required.");
    for (const auto& [column, field, longest] : texts) {
        if (length(donor.*field) > longest) {
            return refuse(context, "The donor's " + std::string(column) + " is longer than " +
                                       std::to_string(longest) + " characters.");
        }
    }
    return true;
}

void insert(const SharedContext& context, Donor& donor)
{
    std::string columns;
    std::string values;
    for (const auto& [column, field, longest] : texts) {
        columns += std::string(column) + ", ";
        values += literal(context, donor.*field) + ", ";
    }
    donor.Created = Value(qmevents::Clock::now());
    runStatement(context,
                 "INSERT INTO donor_donors (" + columns + "created) VALUES (" + values +
                     sqlLiteral(context->sql().dialect(), donor.Created, LiteralKind::date) + ")");
    donor.Id = newKey(context);
}

void update(const SharedContext& context, const Donor& donor)
{
    std::string assignments;
    for (const auto& [column, field, longest] : texts) {
        if (!assignments.empty()) assignments += ", ";
        assignments += std::string(column) + " = " + literal(context, donor.*field);
    }
    const auto changed = runStatement(context, "UPDATE donor_donors SET " + assignments +
                                                   " WHERE id = " + std::to_string(donor.Id));
    if (changed == 0) {
        throw Error::with(ErrorNumber::invalidCall,
                          "there is no donor with the id " + std::to_string(donor.Id));
    }
}

} // namespace

const Members& DonorCriteria::members() const
{
    static const Members table =
        describe<DonorCriteria>("Which donors are wanted.")
            .property("SearchString", &DonorCriteria::SearchString,
                      "Words that must all stand in what is known of the donor.")
            .property("CustomWhere", &DonorCriteria::CustomWhere, "A further condition in SQL.")
            .property("CustomOrderBy", &DonorCriteria::CustomOrderBy,
                      "Columns to order by, in SQL.")
            .property("MaxRows", &DonorCriteria::MaxRows, "Largest number of donors; 0 for all.");
    return table;
}

Ref<qmevents::Collection> findDonors(const SharedContext& context, const DonorCriteria& criteria)
{
    const std::string top =
        criteria.MaxRows > 0 ? "TOP " + std::to_string(criteria.MaxRows) + " " : "";
    const std::string order = criteria.CustomOrderBy.empty() ? "lastname, firstname, display, id"
                                                             : criteria.CustomOrderBy;
    const auto found = makeRef<qmevents::Collection>();
    readRows(context,
             "SELECT " + top + "* FROM donor_donors WHERE " + conditions(context, criteria) +
                 " ORDER BY " + order,
             [&](const Cursor& row) {
                 const auto donor = makeRef<Donor>();
                 donor->read(row);
                 found->append(Value(donor));
             });
    return found;
}

bool saveDonor(const SharedContext& context, Donor& donor)
{
    if (!Security(context).IsAllowed("events/edit")) {
        throw Error::with(ErrorNumber::permissionDenied, "you may not change donors");
    }
    if (!isValid(context, donor)) return false;
    if (qmevents::text::trim(donor.Display).empty()) {
        donor.Display = std::string(qmevents::text::trim(donor.FirstName + " " + donor.LastName));
    }
    Transaction transaction(context->sql());
    if (donor.Id == 0) {
        insert(context, donor);
    } else {
        update(context, donor);
    }
    transaction.commit();
    return true;
}

} // namespace refhost
