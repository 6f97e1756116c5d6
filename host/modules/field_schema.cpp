#include "host/modules/field_schema.h"

#include "automation/describe.h"

namespace refhost {

using qmevents::arg;
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
        describe<FieldSchema>("The field definitions of mailings.")
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

} // namespace refhost
