#pragma once

#include <string>

#include "automation/collection.h"
#include "host/app/session_context.h"
#include "host/lists/list_definition.h"

namespace refhost {

/// One filter of a list.
class SmartListFilter : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "SmartListFilter";
    const Members& members() const override;

    explicit SmartListFilter(ListDefinition::Filter filter) : filter_(std::move(filter)) {}
    std::string Key() const { return filter_.key; }
    std::string Caption() const { return filter_.caption; }
    std::string Operator() const { return filter_.operation; }
    Value Values() const; ///< An array of texts.

private:
    ListDefinition::Filter filter_;
};

/// A list as it is defined: saved under a name, or not yet.
class SmartList : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "SmartList";
    const Members& members() const override;

    std::int32_t Id = 0; ///< 0 before it was saved.
    std::string Name;
    std::int32_t OwnerId = 0;
    std::string Owner;     ///< The name of the user who saved it first.
    std::string ChangedBy; ///< The name of the user who saved it last.
    Value ChangedDate;
    std::int32_t revision = 0; ///< Counts the savings; 0 before the first.
    ListDefinition definition;

    // The late-bound face.
    std::string ListType() const { return definition.type; }
    bool MatchAny() const { return definition.matchesAny; }
    void SetMatchAny(bool any) { definition.matchesAny = any; }
    std::string Sort() const { return definition.sort; }
    void SetSort(const std::string& field) { definition.sort = field; }
    bool Descending() const { return definition.sortsDown; }
    void SetDescending(bool descending) { definition.sortsDown = descending; }
    Value Columns() const; ///< An array of field names.
    void SetColumns(const Value& names);
    Ref<qmevents::Collection> Filters() const;
    /// Adds a filter; `values` is an array of texts or one text. Error 5 beyond the 50th.
    void AddFilter(const std::string& key, const std::string& operation, const Value& values);
    void ClearFilters() { definition.filters.clear(); }
};

} // namespace refhost
