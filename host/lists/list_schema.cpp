#include "host/lists/list_schema.h"

#include <algorithm>

#include "automation/text.h"

namespace refhost {
namespace {

using qmevents::text::sameName;

template <typename Items, typename Name>
auto* findIn(Items& items, Name name, std::string_view wanted)
{
    const auto found =
        std::ranges::find_if(items, [&](const auto& item) { return sameName(item.*name, wanted); });
    return found == items.end() ? nullptr : &*found;
}

void addField(ListSchema& schema, const ListField& field)
{
    schema.criteria.push_back(criterionOf(field));
    schema.fields.push_back(field);
}

const ListField* definitionOf(const std::vector<ListOffer>& files, const std::string& name)
{
    for (const ListOffer& file : files) {
        if (const auto* field = findIn(file.fields, &ListField::name, name)) return field;
    }
    return nullptr;
}

// The column decides how the list calls and shows the field, the file what it is.
ListField shownBy(const OfferedColumn& column, ListField field)
{
    if (!column.caption.empty()) field.caption = column.caption;
    if (field.operation.empty()) field.operation = column.operation;
    field.width = column.width;
    field.isShown = column.isShown;
    return field;
}

} // namespace

const ListField* ListSchema::field(std::string_view name) const
{
    return findIn(fields, &ListField::name, name);
}

const ListField* ListSchema::eventField() const
{
    const auto found = std::ranges::find_if(
        fields, [](const ListField& field) { return field.leadsToEvent && field.fault.empty(); });
    return found == fields.end() ? nullptr : &*found;
}

const ListCriterion* ListSchema::criterion(std::string_view key) const
{
    return findIn(criteria, &ListCriterion::key, key);
}

ListField* ListSchema::field(std::string_view name)
{
    return findIn(fields, &ListField::name, name);
}

ListCriterion* ListSchema::criterion(std::string_view key)
{
    return findIn(criteria, &ListCriterion::key, key);
}

ListSchema makeSchema(const ListType& type, Dialect dialect, const std::vector<ListOffer>& files,
                      const std::vector<OfferedColumn>& columns)
{
    ListSchema schema{.type = &type};
    const ListOffer own = ownOffer(type, dialect);
    for (const ListField& field : own.fields) addField(schema, field);
    for (const ListCriterion& criterion : own.criteria) schema.criteria.push_back(criterion);

    const bool hasFiles =
        std::ranges::any_of(files, [](const auto& file) { return !file.fields.empty(); });
    for (const OfferedColumn& column : columns) {
        const ListField* field = definitionOf(files, column.field);
        if (field && !schema.field(field->name)) {
            addField(schema, shownBy(column, *field));
        } else if (!field && hasFiles) {
            // Without any file the reason has been told already.
            schema.warnings.push_back("The column “" + column.caption +
                                      "” is left out: no file "
                                      "defines its field \"" +
                                      column.field + "\".");
        }
    }
    for (const ListOffer& file : files) {
        for (ListCriterion criterion : file.criteria) {
            const ListField* owner = schema.field(criterion.owner);
            if (owner && criterion.operation.empty()) criterion.operation = owner->operation;
            if (!schema.criterion(criterion.key)) schema.criteria.push_back(std::move(criterion));
        }
    }
    return schema;
}

} // namespace refhost
