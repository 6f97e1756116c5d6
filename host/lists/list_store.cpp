#include "host/lists/list_store.h"

#include <algorithm>

#include "automation/clock.h"
#include "automation/locale.h"
#include "host/security/security.h"

namespace refhost {

using qmevents::Date;
using qmevents::makeRef;

namespace {

constexpr std::size_t longestName = 100;
constexpr const char* listQuery = "SELECT id, type, name, definition, owner_id, changed_by, "
                                  "changed, revision FROM host_lists";

std::int64_t number(std::int32_t id) { return id; }

std::int32_t wholeIn(const HostValue& value)
{
    return static_cast<std::int32_t>(std::get<std::int64_t>(value));
}

Ref<SmartList> listOf(const HostRow& row, const Users& users)
{
    const auto text = [&](std::size_t column) { return std::get<std::string>(row[column]); };
    const auto nameOf = [&](std::size_t column) {
        const auto user = users.FromId(wholeIn(row[column]));
        return user ? user->Name() : std::string();
    };
    auto list = makeRef<SmartList>();
    list->Id = wholeIn(row[0]);
    list->Name = text(2);
    list->definition = readDefinition(text(1), text(3));
    list->OwnerId = wholeIn(row[4]);
    list->Owner = nameOf(4);
    list->ChangedBy = nameOf(5);
    const auto changed = Date::parseIso(text(6));
    list->ChangedDate = changed ? Value(*changed) : Value(qmevents::Null{});
    list->revision = wholeIn(row[7]);
    return list;
}

} // namespace

std::vector<Ref<SmartList>> ListStore::all() const
{
    std::vector<Ref<SmartList>> lists;
    const Users users(context_);
    const auto rows = context_->sql().hostQuery(std::string(listQuery) +
                                                " ORDER BY name COLLATE NOCASE, type, id");
    lists.reserve(rows.size());
    for (const HostRow& row : rows) lists.push_back(listOf(row, users));
    return lists;
}

Ref<SmartList> ListStore::find(std::int32_t id) const
{
    const auto rows =
        context_->sql().hostQuery(std::string(listQuery) + " WHERE id = ?", {number(id)});
    return rows.empty() ? Ref<SmartList>() : listOf(rows.front(), Users(context_));
}

std::string ListStore::changedMeanwhile(const SmartList& list) const
{
    if (list.Id == 0) return {};
    const auto stored = find(list.Id);
    if (!stored) return "This list was deleted by another user.";
    if (stored->revision == list.revision) return {};
    return "This list was changed by " + stored->ChangedBy + " on " +
           qmevents::Locale::current().text(qmevents::toDate(stored->ChangedDate)) + ".";
}

std::string ListStore::problemOf(const SmartList& list) const
{
    const std::string name(qmevents::text::trim(list.Name));
    if (name.empty()) return "The list's name is required.";
    if (qmevents::text::length(name) > longestName) {
        return "The list's name is longer than 100 characters.";
    }
    const bool hasControls =
        std::ranges::any_of(name, [](char c) { return static_cast<unsigned char>(c) < 0x20; });
    if (hasControls) return "The list's name cannot hold control characters.";
    const auto others = context_->sql().hostQuery(
        "SELECT id FROM host_lists WHERE type = ? AND name = ? AND id <> ?",
        {list.definition.type, name, number(list.Id)});
    return others.empty() ? "" : "There is a list called \"" + name + "\" already.";
}

void ListStore::save(SmartList& list) const
{
    list.Name = std::string(qmevents::text::trim(list.Name));
    const Date now = qmevents::Clock::now();
    const std::string definition = written(list.definition);
    const HostValue user = number(context_->user.id);
    const auto changed =
        list.Id == 0 ? 0
                     : context_->sql().hostExecute(
                           "UPDATE host_lists SET name = ?, definition = ?, changed_by = ?, "
                           "changed = ?, revision = revision + 1 WHERE id = ?",
                           {list.Name, definition, user, now.iso(), number(list.Id)});
    if (changed == 0) {
        context_->sql().hostExecute(
            "INSERT INTO host_lists (type, name, definition, owner_id, changed_by, changed, "
            "revision) VALUES (?, ?, ?, ?, ?, ?, 1)",
            {list.definition.type, list.Name, definition, user, user, now.iso()});
    }
    const auto rows = context_->sql().hostQuery(
        std::string(listQuery) + " WHERE type = ? AND name = ?", {list.definition.type, list.Name});
    const auto stored = listOf(rows.at(0), Users(context_));
    list.Id = stored->Id;
    list.OwnerId = stored->OwnerId;
    list.Owner = stored->Owner;
    list.ChangedBy = stored->ChangedBy;
    list.ChangedDate = stored->ChangedDate;
    list.revision = stored->revision;
}

void ListStore::remove(std::int32_t id) const
{
    context_->sql().hostExecute("DELETE FROM host_lists WHERE id = ?", {number(id)});
}

} // namespace refhost
