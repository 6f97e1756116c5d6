#include "host/lists/list_reading.h"

#include "automation/error.h"
#include "host/lists/list_periods.h"
#include "host/security/security.h"

namespace refhost {
namespace {

using qmevents::Error;

ListReading read(const SharedContext& context, ListStatement statement)
{
    std::vector<ListKind> kinds(listKeys, ListKind::number);
    for (const ListField& field : statement.columns) kinds.push_back(field.kind);
    ListRows rows(kinds);
    if (!statement.text.empty()) {
        readRows(context, statement.text, [&](const Cursor& row) {
            for (std::size_t column = 0; column < kinds.size(); ++column) {
                try {
                    rows.add(row.value(column));
                } catch (const Error& error) {
                    const std::string caption =
                        column < listKeys ? "" : statement.columns[column - listKeys].caption;
                    throw Error(error.number(), error.source(),
                                "“" + caption + "”: " + error.description());
                }
            }
        });
    }
    return {.statement = std::move(statement), .rows = std::move(rows)};
}

template <typename Part>
bool markIfRefused(const SharedContext& context, const ListType& type, const ListTools& tools,
                   const char* what, Part& part)
{
    if (!part.fault.empty()) return false;
    try {
        readRows(context, probeOf(type, part, tools), [](const Cursor&) {});
        return false;
    } catch (const Error& error) {
        part.fault = std::string(what) + " “" + part.caption + "” is left out" +
                     placeOf(part.origin) + ": " + error.description();
        return true;
    }
}

// Finds what the engine refuses; false when it is nothing of the schema's.
bool markRefused(const SharedContext& context, ListSchema& schema, const ListDefinition& definition,
                 const ListTools& tools)
{
    bool found = false;
    const auto markField = [&](const std::string& name) {
        ListField* field = schema.field(name);
        if (field && markIfRefused(context, *schema.type, tools, "The column", *field))
            found = true;
    };
    for (const auto& column : definition.columns) markField(column.name);
    markField(definition.sort);
    if (const ListField* event = schema.eventField()) markField(event->name);
    for (const auto& filter : definition.filters) {
        ListCriterion* criterion = schema.criterion(filter.key);
        if (criterion && markIfRefused(context, *schema.type, tools, "The filter", *criterion))
            found = true;
    }
    return found;
}

} // namespace

std::vector<std::int32_t> ListReading::keys() const
{
    std::vector<std::int32_t> result;
    result.reserve(rows.count());
    for (std::size_t row = 0; row < rows.count(); ++row) {
        result.push_back(qmevents::toInt32(rows.at(row, 0)));
    }
    return result;
}

ListReading readList(const SharedContext& context, ListSchema& schema,
                     const ListDefinition& definition)
{
    const ListPeriods periods(context);
    const Security security(context);
    const ListTools tools{
        .dialect = context->sql().dialect(),
        .periods = periods,
        .allowed = [&](const std::string& right) { return security.IsAllowed(right); }};
    try {
        return read(context, listStatement(schema, definition, tools));
    } catch (const Error&) {
        if (!markRefused(context, schema, definition, tools)) throw;
        return read(context, listStatement(schema, definition, tools));
    }
}

} // namespace refhost
