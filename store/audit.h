#pragma once

#include "automation/clock.h"
#include "core/host.h"
#include "store/table.h"

namespace qmevents {

/// The audit columns, at the end of every table but those of the lookup lists.
template <typename C>
void addAuditColumns(std::vector<Column<C>>& columns)
{
    columns.push_back(column<C>("CreateUser", Kind::number, &C::CreateUser, Written::onInsert));
    columns.push_back(column<C>("CreateDate", Kind::date, &C::CreateDate, Written::onInsert));
    columns.push_back(
        column<C>("LastUpdateUser", Kind::number, &C::LastUpdateUser, Written::onUpdate));
    columns.push_back(
        column<C>("LastUpdateDate", Kind::date, &C::LastUpdateDate, Written::onUpdate));
}

/// The table of a record with audit columns behind its own.
template <typename C>
Table<C> audited(std::string name, std::vector<Column<C>> columns)
{
    addAuditColumns(columns);
    return Table<C>(std::move(name), std::move(columns));
}

/// Puts the current user and the present moment into the audit fields that a save writes: those of
/// the creation for a new record, else those of the update.
template <typename C>
void stampAudit(C& record)
{
    const std::int32_t user = host().security().currentUserId();
    if (record.IsNew()) {
        record.CreateUser = user;
        record.CreateDate = Clock::now();
    } else {
        record.LastUpdateUser = user;
        record.LastUpdateDate = Clock::now();
    }
}

/// Writes the record's row: inserted under a key of the database's for a new record, else rewritten
/// whole. The record stays dirty until all that belongs to it is written.
template <typename C>
void writeRow(const Table<C>& table, C& record)
{
    stampAudit(record);
    const Document document = host().document();
    if (record.IsNew()) {
        document.execute(table.insertText(record));
        StoreAccess::markInserted(record, newIdentity());
    } else {
        document.execute(table.updateText(record, "Id", record.Id()));
    }
}

} // namespace qmevents
