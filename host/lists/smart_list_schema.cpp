#include "host/lists/smart_list_schema.h"

#include <algorithm>

#include "automation/describe.h"
#include "host/security/security.h"

namespace refhost {

using qmevents::arg;
using qmevents::Collection;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;

const Members& SmartListType::members() const
{
    static const Members table =
        describe<SmartListType>("A kind of list, to which modules append files of fields.")
            .readOnly("Name", &SmartListType::Name, "\"donors\", \"donations\" or \"pledges\".")
            .readOnly("Count", &SmartListType::Count, "How many files were appended.")
            .method("AppendSchema", &SmartListType::AppendSchema,
                    {arg("ModuleName"), arg("ModuleKey"), arg("Path")},
                    "Appends a module's file of field definitions.");
    return table;
}

void SmartListType::AppendSchema(const std::string& moduleName, const std::string& moduleKey,
                                 const std::string& path)
{
    std::erase_if(files,
                  [&](const File& file) { return qmevents::text::sameName(file.key, moduleKey); });
    files.push_back({moduleName, moduleKey, path});
}

const Members& SmartListColumn::members() const
{
    static const Members table =
        describe<SmartListColumn>("A column that a module offers for a list.")
            .property("ModuleId", &SmartListColumn::ModuleId, "The module's key.")
            .property("Key", &SmartListColumn::Key, "The key among the columns.")
            .property("Caption", &SmartListColumn::Caption, "The heading.")
            .property("Visible", &SmartListColumn::Visible, "Whether it is shown at first.")
            .property("Width", &SmartListColumn::Width, "In pixels.")
            .property("DataField", &SmartListColumn::DataField, "The field that it shows.")
            .property("dataType", &SmartListColumn::dataType,
                      "3 whole number, 6 money, 7 date, 8 text.")
            .property("Operation", &SmartListColumn::Operation, "The right that a user needs.");
    return table;
}

const Members& SmartListColumns::members() const
{
    static const Members table =
        describe<SmartListColumns>("What modules add their columns to.")
            .readOnly("ListType", &SmartListColumns::ListType, "The kind of list.")
            .readOnly("Columns", &SmartListColumns::Columns, "The columns, by their keys.")
            .method("GetNewColumn", &SmartListColumns::GetNewColumn, "A new column, to be added.");
    return table;
}

Ref<SmartListColumn> SmartListColumns::GetNewColumn() const { return makeRef<SmartListColumn>(); }

const Members& SmartListCriterion::members() const
{
    static const Members table =
        describe<SmartListCriterion>("What a list can be filtered by.")
            .readOnly("Key", &SmartListCriterion::Key, "The key that filters name.")
            .readOnly("Caption", &SmartListCriterion::Caption, "What the user sees.")
            .readOnly("Group", &SmartListCriterion::Group, "The heading under which it stands.")
            .readOnly("Kind", &SmartListCriterion::Kind,
                      "\"text\", \"yesno\", \"date\", \"money\", \"number\" or \"choice\".");
    return table;
}

const Members& SmartListChoice::members() const
{
    static const Members table =
        describe<SmartListChoice>("One of the choices of a criterion.")
            .readOnly("Id", &SmartListChoice::Id, "The key that filters hold.")
            .readOnly("Name", &SmartListChoice::Name, "What the user sees.");
    return table;
}

const Members& SmartListSchema::members() const
{
    static const Members table =
        describe<SmartListSchema>("What the lists of a type can show and be filtered by.")
            .readOnly("Title", &SmartListSchema::Title, "What the lists hold.")
            .readOnly("Sort", &SmartListSchema::Sort, "The field that new lists are sorted by.")
            .readOnly("Fields", &SmartListSchema::Fields, "What can be shown, by name.")
            .readOnly("Criteria", &SmartListSchema::Criteria, "What can be filtered by, by key.")
            .readOnly("Warnings", &SmartListSchema::Warnings,
                      "What modules offer but cannot be used, and why.")
            .method("Choices", &SmartListSchema::Choices, {arg("Key")},
                    "The choices of a criterion.");
    return table;
}

Ref<Collection> SmartListSchema::Fields() const
{
    const Security security(context_);
    const auto fields = makeRef<Collection>();
    for (const ListField& field : schema_.fields) {
        if (!field.fault.empty() || !security.IsAllowed(field.operation)) continue;
        fields->append(Value(makeRef<SmartListField>(field)), field.name);
    }
    return fields;
}

Ref<Collection> SmartListSchema::Criteria() const
{
    const Security security(context_);
    const auto criteria = makeRef<Collection>();
    for (const ListCriterion& criterion : schema_.criteria) {
        if (!criterion.fault.empty() || !security.IsAllowed(criterion.operation)) continue;
        criteria->append(Value(makeRef<SmartListCriterion>(criterion)), criterion.key);
    }
    return criteria;
}

Ref<Collection> SmartListSchema::Choices(const std::string& key) const
{
    const ListCriterion* criterion = schema_.criterion(key);
    if (!criterion || criterion->kind != ListKind::choice) {
        throw Error::with(ErrorNumber::invalidCall, "there is no choice called " + key);
    }
    if (!Security(context_).IsAllowed(criterion->operation)) {
        throw Error::with(ErrorNumber::permissionDenied, "you may not see " + criterion->caption);
    }
    const auto choices = makeRef<Collection>();
    for (const auto& [id, name] : criterion->fixedChoices) {
        choices->append(Value(makeRef<SmartListChoice>(id, name)));
    }
    if (criterion->choices.empty()) return choices;
    try {
        readRows(context_, criterion->choices, [&](const Cursor& row) {
            choices->append(Value(makeRef<SmartListChoice>(cellOr<std::string>(row, "Id", ""),
                                                           cellOr<std::string>(row, "Name", ""))));
        });
    } catch (const Error& error) {
        throw Error(error.number(), error.source(),
                    "The choices of “" + criterion->caption + "” cannot be read" +
                        placeOf(criterion->origin) + ": " + error.description());
    }
    return choices;
}

} // namespace refhost
