#include "host/document/objects/provider.h"

#include "automation/describe.h"
#include "host/document/objects/sql_literal.h"
#include "host/document/sql_error.h"

namespace refhost {

using qmevents::arg;
using qmevents::Collection;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;
using qmevents::optional;

const Members& Code::members() const
{
    static const Members table =
        describe<Code>("One item of a code list.")
            .readOnly("Id", &Code::Id, "The key that records keep.")
            .readOnly("Name", &Code::Name, "What the user sees.")
            .asDefault()
            .readOnly("Value", &Code::Name, "What the user sees.")
            .readOnly("Visible", &Code::Visible, "Whether it is offered for new records.");
    return table;
}

const Members& Provider::members() const
{
    static const Members table =
        describe<Provider>("What kind of database is open, and how values are written for it.")
            .method("GetDocumentType", &Provider::GetDocumentType, "1 SQL Server, 2 Jet.")
            .method("VToSQL", &Provider::VToSQL, {arg("Value"), arg("Kind")},
                    "The value as a literal: 1 date, 2 key, 3 number, 5 text, 6 list name, "
                    "7 yes/no.")
            .method("DuplicateErrorOnInsert", &Provider::DuplicateErrorOnInsert,
                    {optional("Number"), optional("Description")},
                    "Whether the last statement failed because a key is taken; gives the failure.")
            .method("Codes", &Provider::Codes, {arg("List"), optional("IncludeHidden", false)},
                    "The items of \"fund\", \"campaign\" or \"giftsource\".")
            .readOnly("Utils", &Provider::utils, "Helpers; the same as those of App.");
    return table;
}

std::int32_t Provider::GetDocumentType() const
{
    return context_->sql().dialect() == Dialect::sqlServer ? 1 : 2;
}

std::string Provider::VToSQL(const Value& value, std::int32_t kind) const
{
    return sqlLiteral(context_->sql().dialect(), value, static_cast<LiteralKind>(kind));
}

bool Provider::DuplicateErrorOnInsert(std::int32_t* number, std::string* description) const
{
    const auto& failure = document_->lastFailure();
    if (number) *number = failure ? failure->number() : 0;
    if (description) *description = failure ? failure->description() : "";
    return failure && failure->number() == static_cast<int>(SqlErrorNumber::integrity) &&
           qmevents::text::lower(failure->description()).find("duplicate") != std::string::npos;
}

Ref<Collection> Provider::Codes(const std::string& list, bool includeHidden) const
{
    struct Row {
        const char *name, *table;
    };
    constexpr Row tables[] = {{"fund", "donor_funds"},
                              {"campaign", "donor_campaigns"},
                              {"giftsource", "donor_list_gifts_sources"}};
    for (const auto& [name, table] : tables) {
        if (!qmevents::text::sameName(name, list)) continue;
        const auto codes = makeRef<Collection>();
        readRows(context_,
                 std::string("SELECT id, [value], visible FROM ") + table +
                     (includeHidden ? "" : " WHERE visible <> 0") + " ORDER BY [order], id",
                 [&](const Cursor& row) {
                     const auto code = makeRef<Code>();
                     code->Id = qmevents::toInt32(row.value(0));
                     code->Name = cellOr<std::string>(row, "value", "");
                     code->Visible = cellOr<bool>(row, "visible", false);
                     codes->append(Value(code), std::to_string(code->Id));
                 });
        return codes;
    }
    throw Error::with(ErrorNumber::invalidCall, "there is no code list called " + list);
}

} // namespace refhost
