#include "host/modules/smart_lists.h"

#include "automation/describe.h"

namespace refhost {

using qmevents::arg;
using qmevents::Collection;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;

const Members& AppendedSchema::members() const
{
    static const Members table =
        describe<AppendedSchema>("A file of field definitions that a module appended.")
            .readOnly("ModuleName", &AppendedSchema::ModuleName, "The module's name.")
            .readOnly("ModuleKey", &AppendedSchema::ModuleKey, "The module's key.")
            .readOnly("Path", &AppendedSchema::Path, "The file.")
            .readOnly("Document", &AppendedSchema::Document, "What it holds.");
    return table;
}

const Members& FieldSchema::members() const
{
    static const Members table =
        describe<FieldSchema>("The field definitions of a kind of list or of mailings.")
            .readOnly("Name", &FieldSchema::Name, "What the fields belong to.")
            .readOnly("Schemas", &FieldSchema::Schemas, "What modules have appended.")
            .method("AppendSchema", &FieldSchema::AppendSchema,
                    {arg("ModuleName"), arg("ModuleKey"), arg("Path")},
                    "Appends a module's file of field definitions.");
    return table;
}

void FieldSchema::AppendSchema(const std::string& moduleName, const std::string& moduleKey,
                               const std::string& path) const
{
    const auto schema = makeRef<AppendedSchema>();
    schema->ModuleName = moduleName;
    schema->ModuleKey = moduleKey;
    schema->Path = path;
    schema->Document = makeRef<XmlDocument>();
    if (!schema->Document->Load(path)) {
        throw Error::with(ErrorNumber::invalidCall,
                          path + ": " + schema->Document->parseError()->reason());
    }
    if (Schemas->contains(moduleKey)) Schemas->take(std::string_view(moduleKey));
    Schemas->append(Value(schema), moduleKey);
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

const Members& SmartLists::members() const
{
    static const Members table =
        describe<SmartLists>("Lists of records with the fields that modules add.")
            .readOnly("types", &SmartLists::type, {arg("Name")},
                      "The fields of \"donors\", \"donations\" or \"pledges\".")
            .method("LoadTypes", &SmartLists::LoadTypes, "Asks the modules for their fields.")
            .method("GetColumns", &SmartLists::GetColumns, {arg("ListType")},
                    "Asks the modules for the columns of a list type.");
    return table;
}

SmartLists::SmartLists(SharedContext context) : context_(std::move(context))
{
    for (const char* name : {"donors", "donations", "pledges"}) {
        types_->append(Value(makeRef<FieldSchema>(name)), name);
    }
}

Ref<FieldSchema> SmartLists::type(const std::string& name) const
{
    if (!types_->contains(name)) {
        throw Error::with(ErrorNumber::invalidCall, "there is no list type called " + name);
    }
    return qmevents::refCast<FieldSchema>(types_->at(std::string_view(name)).object());
}

void SmartLists::LoadTypes() const
{
    context_->raise("smartlist-loadtypes", {});
    context_->raise("smartlist-modifytypes", {});
}

Ref<Collection> SmartLists::GetColumns(const std::string& listType) const
{
    const auto payload = makeRef<SmartListColumns>(listType);
    context_->raise("smartlist-columns", Value(payload));
    return payload->Columns;
}

} // namespace refhost
