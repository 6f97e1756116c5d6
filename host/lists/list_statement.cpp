#include "host/lists/list_statement.h"

#include <algorithm>

#include "automation/text.h"
#include "host/lists/list_condition.h"
#include "host/lists/list_periods.h"

namespace refhost {
namespace {

/// The tables of a statement: the records, and the sources that its expressions speak of.
class Tables {
public:
    Tables(const ListType& type, const ListTools& tools) : type_(type), tools_(tools) {}

    /// The expression as it stands in the statement; joins its sources.
    std::string ready(std::string expression, const std::vector<ListSource>& sources)
    {
        for (const ListSource& source : sources) {
            expression = qmevents::text::replaceAll(expression, "{" + source.key + "}",
                                                    aliasOf(source.query));
        }
        return tools_.periods.in(qmevents::text::replaceAll(expression, "{id}", "d.id"));
    }
    std::string text() const
    {
        std::string text = type_.source;
        for (std::size_t i = 0; i < queries_.size(); ++i) {
            // Jet wants each further join around those before it.
            if (i > 0) text = "(" + text + ")";
            const std::string alias = numbered(i);
            text += " LEFT JOIN (" + tools_.periods.in(queries_[i]) + ") AS " + alias +
                    " ON d.id = " + alias + ".RecordId";
        }
        return text;
    }

private:
    static std::string numbered(std::size_t index) { return "s" + std::to_string(index + 1); }
    std::string aliasOf(const std::string& query)
    {
        const auto known = std::ranges::find(queries_, query);
        const auto index = static_cast<std::size_t>(known - queries_.begin());
        if (known == queries_.end()) queries_.push_back(query);
        return numbered(index);
    }

    const ListType& type_;
    const ListTools& tools_;
    std::vector<std::string> queries_;
};

const std::string& calledBy(const std::string& caption, const std::string& name)
{
    return caption.empty() ? name : caption;
}

class Maker {
public:
    Maker(const ListSchema& schema, const ListDefinition& definition, const ListTools& tools)
        : schema_(schema), definition_(definition), tools_(tools), tables_(*schema.type, tools)
    {
    }
    ListStatement make();

private:
    void chooseColumns();
    std::string obstacle(const ListCriterion* criterion,
                         const ListDefinition::Filter& filter) const;
    void makeConditions();
    std::string conditionOfAll() const;
    const ListField* sortField();
    std::string eventOfRow();
    void warn(const std::string& text) { made_.warnings.push_back(text); }
    bool isShown(const ListField& field) const
    {
        return std::ranges::find(made_.columns, field.name, &ListField::name) !=
               made_.columns.end();
    }

    const ListSchema& schema_;
    const ListDefinition& definition_;
    const ListTools& tools_;
    Tables tables_;
    ListStatement made_;
    std::vector<std::string> conditions_;
};

void Maker::chooseColumns()
{
    for (const auto& [name, caption] : definition_.columns) {
        const ListField* field = schema_.field(name);
        if (!field) {
            warn("The column “" + calledBy(caption, name) + "” no longer exists and is left out.");
        } else if (!tools_.allowed(field->operation)) {
            warn("You may not see “" + field->caption + "”; the column is left out.");
        } else if (!field->fault.empty()) {
            warn(field->fault);
        } else if (!isShown(*field)) {
            made_.columns.push_back(*field);
        }
    }
}

// Why the criterion of a filter cannot count; empty when it can.
std::string Maker::obstacle(const ListCriterion* criterion,
                            const ListDefinition::Filter& filter) const
{
    if (!criterion) {
        return "The filter “" + calledBy(filter.caption, filter.key) +
               "” no longer exists and is left out.";
    }
    if (!tools_.allowed(criterion->operation)) {
        return "You may not see “" + criterion->caption + "”; the filter is left out.";
    }
    return criterion->fault;
}

void Maker::makeConditions()
{
    std::size_t position = 0;
    for (const ListDefinition::Filter& filter : definition_.filters) {
        ++position;
        const ListCriterion* criterion = schema_.criterion(filter.key);
        const std::string why = obstacle(criterion, filter);
        if (!why.empty()) {
            made_.isWidened = true;
            warn(why);
            continue;
        }
        ListCriterion made = *criterion;
        made.value = tables_.ready(made.value, made.sources);
        made.condition = tables_.ready(made.condition, made.sources);
        ListCondition condition = conditionOf(made, filter, tools_.dialect);
        if (condition.fault.empty()) {
            conditions_.push_back(std::move(condition.sql));
        } else {
            made_.faults.push_back({position, std::move(condition.fault)});
        }
    }
}

std::string Maker::conditionOfAll() const
{
    std::string all;
    for (const std::string& condition : conditions_) {
        if (!all.empty()) all += definition_.matchesAny ? " OR " : " AND ";
        all += "(" + condition + ")";
    }
    return schema_.type->condition + (all.empty() ? "" : " AND (" + all + ")");
}

// The field by which the list is sorted; none means the record's key alone.
const ListField* Maker::sortField()
{
    if (definition_.sort.empty()) return nullptr;
    const ListField* field = schema_.field(definition_.sort);
    const bool isUsable = field && field->fault.empty() && tools_.allowed(field->operation);
    return isUsable ? field : nullptr;
}

// What leads from a row to its event; nothing for a user who may not see it.
std::string Maker::eventOfRow()
{
    const ListField* field = schema_.eventField();
    if (!field) return schema_.type->eventId;
    return tools_.allowed(field->operation) ? tables_.ready(field->value, field->sources) : "0";
}

ListStatement Maker::make()
{
    chooseColumns();
    makeConditions();
    if (!made_.faults.empty()) return std::move(made_);

    const ListType& type = *schema_.type;
    std::string inner = std::string("SELECT d.id AS Id, ") + type.donorId + " AS RowDonorId, " +
                        eventOfRow() + " AS RowEventId";
    std::string outer = "SELECT q.Id, q.RowDonorId, q.RowEventId";
    const auto readToo = [&](const ListField& field) {
        inner += ", " + tables_.ready(field.value, field.sources) + " AS [" + field.name + "]";
    };
    for (const ListField& field : made_.columns) {
        readToo(field);
        outer += ", q.[" + field.name + "]";
    }
    const ListField* sort = sortField();
    if (sort && !isShown(*sort)) readToo(*sort);
    inner += " FROM " + tables_.text() + " WHERE " + conditionOfAll();
    const std::string direction = definition_.sortsDown ? " DESC" : "";
    made_.text = outer + " FROM (" + inner + ") q ORDER BY " +
                 (sort ? "q.[" + sort->name + "]" + direction + ", q.Id" : "q.Id" + direction);
    return std::move(made_);
}

} // namespace

ListStatement listStatement(const ListSchema& schema, const ListDefinition& definition,
                            const ListTools& tools)
{
    return Maker(schema, definition, tools).make();
}

std::string probeOf(const ListType& type, const ListField& field, const ListTools& tools)
{
    Tables tables(type, tools);
    const std::string value = tables.ready(field.value, field.sources);
    return "SELECT " + value + " AS Probe FROM " + tables.text() + " WHERE 1 = 0";
}

std::string probeOf(const ListType& type, const ListCriterion& criterion, const ListTools& tools)
{
    const bool isChoice = criterion.kind == ListKind::choice;
    const std::string none = criterion.hasTextKeys ? "''" : "0";
    Tables tables(type, tools);
    const std::string made =
        tables.ready(isChoice ? criterion.condition : criterion.value, criterion.sources);
    const std::string condition =
        isChoice ? qmevents::text::replaceAll(made, "{values}", none) : made + " IS NULL";
    return "SELECT d.id AS Probe FROM " + tables.text() + " WHERE 1 = 0 AND (" + condition + ")";
}

} // namespace refhost
