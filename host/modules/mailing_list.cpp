#include "host/modules/mailing_list.h"

#include <algorithm>
#include <map>

#include "automation/describe.h"
#include "host/document/objects/sql_literal.h"
#include "host/modules/donor_module.h"
#include "host/security/security.h"

namespace refhost {

using qmevents::arg;
using qmevents::Collection;
using qmevents::describe;
using qmevents::makeRef;
using qmevents::optional;

namespace {

constexpr std::size_t longestLetter = 50'000;
constexpr std::int32_t mostLetters = 1'000; // in one answer

} // namespace

const Members& MailingList::members() const
{
    static const Members table =
        describe<MailingList>("A list of donors that a mailing goes to.")
            .readOnly("Id", &MailingList::Id, "The key of its row.")
            .readOnly("Key", &MailingList::Key, "The key that it was collected under.")
            .readOnly("Source", &MailingList::Source,
                      "The module that started the mailing; empty before it has started.")
            .readOnly("CreatedBy", &MailingList::CreatedBy, "Who collected it.")
            .readOnly("CreateDate", &MailingList::CreateDate, "When it was collected.")
            .readOnly("DonorCount", &MailingList::DonorCount, "How many donors stood on it.")
            .readOnly("Donors", &MailingList::Donors, "The donors, by name.")
            .method("Delete", &MailingList::Delete, "Removes the list, not its donors.")
            .readOnly("Letter", &MailingList::Letter, "The text of its letter.")
            .method("SaveLetter", &MailingList::SaveLetter, {arg("Text")},
                    "Keeps the letter; gives why that cannot be, or an empty text.")
            .readOnly("Fields", &MailingList::Fields, "The fields that its letter can hold.")
            .method("UnknownFields", &MailingList::UnknownFields, {arg("Text")},
                    "The names in braces that are no fields of it.")
            .method("Merge", &MailingList::Merge,
                    {arg("Text"), optional("Start", 0), optional("Count", 1)},
                    "The letters that a text makes for some of the donors.");
    return table;
}

std::string MailingList::donorQuery(const std::string& columns) const
{
    return "SELECT " + columns +
           " FROM mailing_list_donors m INNER JOIN donor_donors d ON m.FKDonorId = d.id "
           "WHERE d.deleted = 0 AND m.FKListId = " +
           std::to_string(Id) + " ORDER BY d.display, d.id";
}

Ref<Collection> MailingList::Donors() const
{
    const auto donors = makeRef<Collection>();
    readRows(context_, donorQuery("d.id, d.display, d.entitytype"), [&](const Cursor& row) {
        const auto donor = makeRef<SmallDonor>();
        donor->Id = cellOr<std::int32_t>(row, "id", 0);
        donor->Display = cellOr<std::string>(row, "display", "");
        donor->EntityType = cellOr<std::string>(row, "entitytype", "");
        donors->append(Value(donor));
    });
    return donors;
}

void MailingList::requireRight() const
{
    Security(context_).require("mailings/send", "send mailings");
}

void MailingList::Delete() const
{
    requireRight();
    Transaction transaction(context_->sql());
    const std::string id = std::to_string(Id);
    runStatement(context_, "DELETE FROM mailing_list_donors WHERE FKListId = " + id);
    runStatement(context_, "DELETE FROM mailing_lists WHERE id = " + id);
    transaction.commit();
    context_->frontEnd().refresh();
}

std::string MailingList::SaveLetter(const std::string& text)
{
    requireRight();
    if (qmevents::text::length(text) > longestLetter) {
        return "A letter has at most " + std::to_string(longestLetter) + " characters.";
    }
    const auto changed = runStatement(
        context_, "UPDATE mailing_lists SET letter = " +
                      sqlLiteral(context_->sql().dialect(), Value(text), LiteralKind::text) +
                      " WHERE id = " + std::to_string(Id));
    if (changed == 0) return "This mailing list no longer exists.";
    Letter = text;
    return {};
}

std::vector<Ref<MailingField>> MailingList::fields() const
{
    requireRight();
    mailings_->LoadFields();
    return mailings_->fieldsFor(MailingType);
}

Ref<Collection> MailingList::Fields() const
{
    const auto all = makeRef<Collection>();
    for (const auto& field : fields()) all->append(Value(field));
    return all;
}

std::string MailingList::UnknownFields(const std::string& text) const
{
    const auto known = fields();
    std::vector<std::string> unknown;
    for (const auto& [name, isField] : letterParts(text)) {
        const bool isKnown = std::ranges::any_of(known, [&, &part = name](const auto& field) {
            return qmevents::text::sameName(field->Name, part);
        });
        if (isField && !isKnown && std::ranges::find(unknown, name) == unknown.end()) {
            unknown.push_back(name);
        }
    }
    std::string names;
    for (const std::string& name : unknown) names += (names.empty() ? "" : ", ") + name;
    return names;
}

Ref<Collection> MailingList::Merge(const std::string& text, std::int32_t start,
                                   std::int32_t count) const
{
    std::map<std::string, std::string, std::less<>> kinds; // by the names in lower case
    for (const auto& field : fields()) {
        kinds.emplace(qmevents::text::lowerAscii(field->Name), field->Kind);
    }
    const auto data = makeRef<MailingData>();
    std::vector<Ref<MergedLetter>> letters;
    std::int32_t place = 0;
    std::string columns = "d.id";
    for (const OwnMailingField& own : ownMailingFields()) {
        columns += std::string(", d.") + own.column;
    }
    readRows(context_, donorQuery(columns), [&](const Cursor& row) {
        const bool isWanted = place >= start && place - start < std::min(count, mostLetters);
        ++place;
        if (!isWanted) return;
        const auto letter = makeRef<MergedLetter>();
        letter->DonorId = cellOr<std::int32_t>(row, "id", 0);
        letter->DonorName = cellOr<std::string>(row, "display", "");
        for (const OwnMailingField& own : ownMailingFields()) {
            data->SetValue(letter->DonorId, own.name,
                           Value(cellOr<std::string>(row, own.column, "")));
        }
        letters.push_back(letter);
    });
    std::vector<Value> ids;
    ids.reserve(letters.size());
    for (const auto& letter : letters) ids.emplace_back(letter->DonorId);
    data->ListKey = Key;
    data->Source = Source;
    data->Reference = Reference;
    data->DonorIds = Value(qmevents::Array::list(std::move(ids)));
    if (!letters.empty()) context_->raise("mailing-data", Value(data));

    const auto merged = makeRef<Collection>();
    const auto parts = letterParts(text);
    for (const auto& letter : letters) {
        for (const auto& [words, isField] : parts) {
            const auto kind = isField ? kinds.find(qmevents::text::lowerAscii(words)) : kinds.end();
            if (kind == kinds.end()) {
                letter->Text += isField ? "{" + words + "}" : words;
            } else if (const Value* value = data->find(letter->DonorId, words)) {
                letter->Text += letterText(*value, kind->second);
            }
        }
        merged->append(Value(letter));
    }
    return merged;
}

} // namespace refhost
