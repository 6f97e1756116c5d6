#include "host/lists/smart_list.h"

#include <algorithm>

#include "automation/describe.h"

namespace refhost {

using qmevents::arg;
using qmevents::Collection;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;

namespace {

constexpr std::size_t mostFilters = 50;
constexpr std::size_t mostValues = 500;
constexpr std::size_t mostColumns = 200;

Value arrayOf(const std::vector<std::string>& texts)
{
    return {qmevents::Array::list({texts.begin(), texts.end()})};
}

std::vector<std::string> textsIn(const Value& values, std::size_t most)
{
    if (values.isEmpty() || values.isNull() || values.isMissing()) return {};
    if (!values.is(qmevents::ValueKind::array)) return {qmevents::toText(values)};
    std::vector<std::string> texts;
    if (!values.array()) return texts;
    if (values.array()->items.size() > most) {
        throw Error::with(ErrorNumber::invalidCall,
                          "at most " + std::to_string(most) + " can be given");
    }
    for (const Value& item : values.array()->items) texts.push_back(qmevents::toText(item));
    return texts;
}

} // namespace

const Members& SmartListFilter::members() const
{
    static const Members table =
        describe<SmartListFilter>("One filter of a list.")
            .readOnly("Key", &SmartListFilter::Key, "What is filtered by.")
            .readOnly("Caption", &SmartListFilter::Caption, "What it was called when saved.")
            .readOnly("Operator", &SmartListFilter::Operator,
                      "How it compares: \"contains\", \"between\", \"anyof\" and so on.")
            .readOnly("Values", &SmartListFilter::Values,
                      "What it compares to: days as \"2026-03-07\", numbers with a point, keys.");
    return table;
}

Value SmartListFilter::Values() const { return arrayOf(filter_.values); }

const Members& SmartList::members() const
{
    static const Members table =
        describe<SmartList>("A list of records: what it shows and what it is filtered by.")
            .readOnly("Id", &SmartList::Id, "The key; 0 before it was saved.")
            .property("Name", &SmartList::Name, "The name, unique among lists of the type.")
            .readOnly("ListType", &SmartList::ListType, "\"donors\", \"donations\" or \"pledges\".")
            .readOnly("OwnerId", &SmartList::OwnerId, "The key of the user who saved it first.")
            .readOnly("Owner", &SmartList::Owner, "Who saved it first.")
            .readOnly("ChangedBy", &SmartList::ChangedBy, "Who saved it last.")
            .readOnly("ChangedDate", &SmartList::ChangedDate, "When it was saved last, or Null.")
            .property("MatchAny", &SmartList::MatchAny, &SmartList::SetMatchAny,
                      "One filter is enough; otherwise all count.")
            .property("Columns", &SmartList::Columns, &SmartList::SetColumns,
                      "The names of the fields shown, in their order.")
            .property("Sort", &SmartList::Sort, &SmartList::SetSort,
                      "The name of the field that it is sorted by.")
            .property("Descending", &SmartList::Descending, &SmartList::SetDescending,
                      "Whether the largest stands first.")
            .readOnly("Filters", &SmartList::Filters, "The filters in their order.")
            .method("AddFilter", &SmartList::AddFilter,
                    {arg("Key"), arg("Operator"), arg("Values")}, "Adds a filter.")
            .method("ClearFilters", &SmartList::ClearFilters, "Removes all filters.");
    return table;
}

Value SmartList::Columns() const
{
    std::vector<std::string> names;
    for (const auto& column : definition.columns) names.push_back(column.name);
    return arrayOf(names);
}

void SmartList::SetColumns(const Value& names)
{
    const auto captionOf = [&](const std::string& name) {
        const auto known =
            std::ranges::find(definition.columns, name, &ListDefinition::Column::name);
        return known == definition.columns.end() ? std::string() : known->caption;
    };
    std::vector<ListDefinition::Column> columns;
    for (std::string& name : textsIn(names, mostColumns)) {
        std::string caption = captionOf(name);
        columns.push_back({std::move(name), std::move(caption)});
    }
    definition.columns = std::move(columns);
}

Ref<Collection> SmartList::Filters() const
{
    const auto filters = makeRef<Collection>();
    for (const auto& filter : definition.filters) {
        filters->append(Value(makeRef<SmartListFilter>(filter)));
    }
    return filters;
}

void SmartList::AddFilter(const std::string& key, const std::string& operation, const Value& values)
{
    if (definition.filters.size() >= mostFilters) {
        throw Error::with(ErrorNumber::invalidCall, "a list has at most 50 filters");
    }
    definition.filters.push_back({key, {}, operation, textsIn(values, mostValues)});
}

} // namespace refhost
