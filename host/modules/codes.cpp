#include "host/modules/codes.h"

#include <algorithm>
#include <map>
#include <span>

#include "automation/describe.h"
#include "host/app/host_event.h"
#include "host/document/objects/sql_literal.h"
#include "host/security/security.h"

namespace refhost {

using qmevents::arg;
using qmevents::Collection;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;
using qmevents::optional;

namespace {

constexpr std::size_t longestName = 100;
constexpr std::size_t longestDescription = 255;

struct Reference {
    const char *table, *column;
};
constexpr Reference fundReferences[] = {{"donor_gifts", "FKFund"},
                                        {"donor_gifts_payments", "FKFund"}};
constexpr Reference campaignReferences[] = {{"donor_gifts", "FKCampaign"}};
constexpr Reference appealReferences[] = {{"donor_gifts", "FKSource"}};
constexpr Reference assigneeReferences[] = {{"actions_assignments", "FKAssignedToId"}};

} // namespace

/// A list: its table, what of the host refers to it, and the column in which modules do.
struct Codes::List {
    const char* name;
    const char* table;
    std::span<const Reference> references;
    const char* moduleColumn;
};

const Members& CodeItem::members() const
{
    static const Members table =
        describe<CodeItem>("An item of a code list.")
            .readOnly("Id", &CodeItem::Id, "The key that records keep.")
            .readOnly("Name", &CodeItem::Name, "What the user sees.")
            .readOnly("Description", &CodeItem::Description, "What it is for.")
            .readOnly("Visible", &CodeItem::Visible, "Whether it is offered for new records.");
    return table;
}

const Members& CodeUse::members() const
{
    static const Members table =
        describe<CodeUse>("How many records of a table refer to an item.")
            .readOnly("Table", &CodeUse::Table, "The table.")
            .readOnly("Count", &CodeUse::Count, "How many of its records do.");
    return table;
}

const Members& Codes::members() const
{
    static const Members table =
        describe<Codes>("The lists \"fund\", \"campaign\", \"appeal\" and \"assignee\".")
            .method("Items", &Codes::Items, {arg("List")}, "The items in their order.")
            .method("Add", &Codes::Add, {arg("List"), arg("Name"), optional("Description", "")},
                    "Adds an item; gives why that cannot be, or an empty text.")
            .method("Rename", &Codes::Rename,
                    {arg("List"), arg("Id"), arg("Name"), optional("Description", "")},
                    "Names an item anew; gives why that cannot be, or an empty text.")
            .method("SetVisible", &Codes::SetVisible, {arg("List"), arg("Id"), arg("IsVisible")},
                    "Says whether an item is offered for new records.")
            .method("Move", &Codes::Move, {arg("List"), arg("Id"), arg("Step")},
                    "Moves an item up (-1) or down (1).")
            .method("Uses", &Codes::Uses, {arg("List"), arg("Id")},
                    "How many records refer to an item, by their tables.")
            .method("Delete", &Codes::Delete, {arg("List"), arg("Id")},
                    "Deletes an item and clears what refers to it, all or nothing.");
    return table;
}

const Codes::List& Codes::find(const std::string& name) const
{
    static constexpr List lists[] = {
        {"fund", "donor_funds", fundReferences, "FKFundId"},
        {"campaign", "donor_campaigns", campaignReferences, "FKCampaignId"},
        {"appeal", "donor_list_gifts_sources", appealReferences, "FKAppealId"},
        {"assignee", "donor_list_assignedto", assigneeReferences, "FKAssignedToId"},
    };
    for (const List& list : lists) {
        if (qmevents::text::sameName(list.name, name)) return list;
    }
    throw Error::with(ErrorNumber::invalidCall, "there is no code list called " + name);
}

const Codes::List& Codes::findToChange(const std::string& name, std::int32_t id) const
{
    Security(context_).require("settings/edit", "change settings");
    const List& list = find(name);
    bool exists = id == 0;
    readRows(context_,
             std::string("SELECT id FROM ") + list.table + " WHERE id = " + std::to_string(id),
             [&](const Cursor&) { exists = true; });
    if (!exists) {
        throw Error::with(ErrorNumber::invalidCall,
                          "there is no " + name + " with the id " + std::to_string(id));
    }
    return list;
}

std::string Codes::faultOf(const List& list, const std::string& name,
                           const std::string& description, std::int32_t own) const
{
    if (name.empty()) return "A name is required.";
    if (qmevents::text::length(name) > longestName) {
        return "A name has at most " + std::to_string(longestName) + " characters.";
    }
    if (qmevents::text::length(description) > longestDescription) {
        return "A description has at most " + std::to_string(longestDescription) + " characters.";
    }
    const auto items = Items(list.name);
    Value item;
    for (const auto walk = items->NewEnum(); walk->next(item);) {
        const auto code = qmevents::refCast<CodeItem>(item.object());
        const bool isSame = qmevents::text::lower(code->Name) == qmevents::text::lower(name);
        if (isSame && code->Id != own) return "There is another one called " + code->Name + ".";
    }
    return {};
}

Ref<Collection> Codes::Items(const std::string& list) const
{
    const auto items = makeRef<Collection>();
    readRows(context_,
             std::string("SELECT id, [value], description, visible FROM ") + find(list).table +
                 " ORDER BY [order], id",
             [&](const Cursor& row) {
                 const auto item = makeRef<CodeItem>();
                 item->Id = cellOr<std::int32_t>(row, "id", 0);
                 item->Name = cellOr<std::string>(row, "value", "");
                 item->Description = cellOr<std::string>(row, "description", "");
                 item->Visible = cellOr<bool>(row, "visible", false);
                 items->append(Value(item), std::to_string(item->Id));
             });
    return items;
}

std::string Codes::Add(const std::string& list, const std::string& name,
                       const std::string& description) const
{
    const List& known = findToChange(list, 0);
    const std::string trimmed(qmevents::text::trim(name));
    if (std::string fault = faultOf(known, trimmed, description, 0); !fault.empty()) return fault;
    std::int32_t last = 0;
    readRows(context_, std::string("SELECT MAX([order]) AS Highest FROM ") + known.table,
             [&](const Cursor& row) { last = cellOr<std::int32_t>(row, "Highest", 0); });
    runStatement(context_, std::string("INSERT INTO ") + known.table +
                               " ([value], description, visible, [order]) VALUES (" +
                               text(trimmed) + ", " + text(description) + ", " + yesNo(true) +
                               ", " + std::to_string(last + 1) + ")");
    return {};
}

std::string Codes::Rename(const std::string& list, std::int32_t id, const std::string& name,
                          const std::string& description) const
{
    const List& known = findToChange(list, id);
    const std::string trimmed(qmevents::text::trim(name));
    if (std::string fault = faultOf(known, trimmed, description, id); !fault.empty()) return fault;
    runStatement(context_,
                 std::string("UPDATE ") + known.table + " SET [value] = " + text(trimmed) +
                     ", description = " + text(description) + " WHERE id = " + std::to_string(id));
    return {};
}

void Codes::SetVisible(const std::string& list, std::int32_t id, bool isVisible) const
{
    const List& known = findToChange(list, id);
    runStatement(context_, std::string("UPDATE ") + known.table + " SET visible = " +
                               yesNo(isVisible) + " WHERE id = " + std::to_string(id));
}

void Codes::Move(const std::string& list, std::int32_t id, std::int32_t step) const
{
    const List& known = findToChange(list, id);
    std::vector<std::int32_t> ids;
    readRows(context_, std::string("SELECT id FROM ") + known.table + " ORDER BY [order], id",
             [&](const Cursor& row) { ids.push_back(cellOr<std::int32_t>(row, "id", 0)); });
    const auto from = std::ranges::find(ids, id);
    const auto place = from - ids.begin() + (step < 0 ? -1 : 1);
    if (place < 0 || place >= static_cast<std::ptrdiff_t>(ids.size())) return;
    std::iter_swap(from, ids.begin() + place);
    // Items that came from elsewhere may share a place, so all get theirs anew.
    Transaction transaction(context_->sql());
    for (std::size_t position = 0; position < ids.size(); ++position) {
        runStatement(context_, std::string("UPDATE ") + known.table +
                                   " SET [order] = " + std::to_string(position + 1) +
                                   " WHERE id = " + std::to_string(ids[position]));
    }
    transaction.commit();
}

Ref<Collection> Codes::Uses(const std::string& list, std::int32_t id) const
{
    const List& known = findToChange(list, id);
    std::map<std::string, std::string> columns; // by table
    for (const auto& [table, column] : known.references) columns.emplace(table, column);
    for (const auto& table : tablesWith(known.moduleColumn)) {
        columns.emplace(table, known.moduleColumn);
    }
    const auto marked = tablesWith("deleted");
    const auto uses = makeRef<Collection>();
    for (const auto& referring : columns) {
        const auto& [table, column] = referring;
        // What is marked deleted is gone for the user.
        const bool isMarked = std::ranges::find(marked, table) != marked.end();
        readRows(context_,
                 "SELECT COUNT(*) AS Records FROM " + table + " WHERE " + column + " = " +
                     std::to_string(id) + (isMarked ? " AND deleted = " + yesNo(false) : ""),
                 [&](const Cursor& row) {
                     const auto use = makeRef<CodeUse>();
                     use->Table = referring.first;
                     use->Count = cellOr<std::int32_t>(row, "Records", 0);
                     if (use->Count > 0) uses->append(Value(use), use->Table);
                 });
    }
    return uses;
}

void Codes::Delete(const std::string& list, std::int32_t id) const
{
    const List& known = findToChange(list, id);
    const std::string key = std::to_string(id);
    const auto payload = makeRef<DeletionPayload>();
    payload->EntityId = id;
    payload->EntityType = known.table;
    Transaction transaction(context_->sql());
    context_->raise("attribute-delete", Value(payload));
    for (const auto& [table, column] : known.references) {
        runStatement(context_, std::string("UPDATE ") + table + " SET " + column + " = 0 WHERE " +
                                   column + " = " + key);
    }
    runStatement(context_, std::string("DELETE FROM ") + known.table + " WHERE id = " + key);
    transaction.commit();
}

std::vector<std::string> Codes::tablesWith(const std::string& column) const
{
    std::vector<std::string> tables;
    for (const HostRow& row : context_->sql().hostQuery(
             "SELECT tables.name FROM sqlite_master tables, pragma_table_info(tables.name) columns "
             "WHERE tables.type = 'table' AND columns.name = ? COLLATE NOCASE ORDER BY tables.name",
             {column})) {
        tables.push_back(std::get<std::string>(row[0]));
    }
    return tables;
}

std::string Codes::text(const std::string& value) const
{
    return sqlLiteral(context_->sql().dialect(), Value(value), LiteralKind::text);
}

std::string Codes::yesNo(bool value) const
{
    return sqlLiteral(context_->sql().dialect(), Value(value), LiteralKind::yesNo);
}

} // namespace refhost
