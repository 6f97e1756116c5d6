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

/// The field definitions of a kind of list or of mailings: what modules have appended.
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

/// A column that a module offers for a list.
class SmartListColumn : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "SmartListColumn";
    const Members& members() const override;

    std::string ModuleId, Key, Caption;
    bool Visible = true;
    std::int32_t Width = 100;
    std::string DataField;
    std::int32_t dataType = 8; ///< 3 whole number, 6 money, 7 date, 8 text.
    std::string Operation;     ///< The right that a user needs; empty for none.
};

/// What modules add their columns to.
class SmartListColumns : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "SmartListColumns";
    const Members& members() const override;

    explicit SmartListColumns(std::string listType) : ListType(std::move(listType)) {}
    std::string ListType;
    Ref<qmevents::Collection> Columns = qmevents::makeRef<qmevents::Collection>();
    Ref<SmartListColumn> GetNewColumn() const;
};

/// `App.Modules.Quillmere.Smartlists`.
class SmartLists : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "SmartLists";
    const Members& members() const override;

    explicit SmartLists(SharedContext context);
    /// The fields of "donors", "donations" or "pledges"; error 5 for another name.
    Ref<FieldSchema> type(const std::string& name) const;
    void LoadTypes() const; ///< Asks the modules for their fields.
    /// Asks the modules for the columns of a list type.
    Ref<qmevents::Collection> GetColumns(const std::string& listType) const;

private:
    SharedContext context_;
    Ref<qmevents::Collection> types_ = qmevents::makeRef<qmevents::Collection>();
};

} // namespace refhost
