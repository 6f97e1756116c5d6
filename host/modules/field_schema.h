#pragma once

#include <string>

#include "automation/collection.h"
#include "host/app/session_context.h"
#include "host/xml/xml_document.h"

namespace refhost {

/// A file of field definitions that a module appended to a schema.
class AppendedSchema : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "AppendedSchema";
    const Members& members() const override;

    std::string ModuleName, ModuleKey, Path;
    Ref<XmlDocument> Document;
};

/// The field definitions of mailings: what modules have appended.
class FieldSchema : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "FieldSchema";
    const Members& members() const override;

    explicit FieldSchema(std::string name) : Name(std::move(name)) {}
    std::string Name;
    Ref<qmevents::Collection> Schemas = qmevents::makeRef<qmevents::Collection>();
    /// Reads the file and appends it; one that a module appends again takes the place of the old.
    /// Error 5, with the reason, when the file cannot be read.
    void AppendSchema(const std::string& moduleName, const std::string& moduleKey,
                      const std::string& path) const;
};

} // namespace refhost
