#pragma once

#include <string>
#include <vector>

#include "automation/collection.h"
#include "host/lists/list_result.h"

namespace refhost {

/// A kind of list, to which modules append files that define fields.
class SmartListType : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "SmartListType";
    const Members& members() const override;

    struct File {
        std::string module, key, path;
    };
    explicit SmartListType(std::string name) : Name(std::move(name)) {}
    std::string Name;
    std::vector<File> files;
    /// Appends a module's file of field definitions; another one of the module takes its place.
    void AppendSchema(const std::string& moduleName, const std::string& moduleKey,
                      const std::string& path);
    std::int32_t Count() const { return static_cast<std::int32_t>(files.size()); }
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

/// What a list can be filtered by.
class SmartListCriterion : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "SmartListCriterion";
    const Members& members() const override;

    explicit SmartListCriterion(ListCriterion criterion) : criterion_(std::move(criterion)) {}
    std::string Key() const { return criterion_.key; }
    std::string Caption() const { return criterion_.caption; }
    std::string Group() const { return criterion_.group; }
    std::string Kind() const { return std::string(nameOf(criterion_.kind)); }

private:
    ListCriterion criterion_;
};

/// One of a criterion's choices.
class SmartListChoice : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "SmartListChoice";
    const Members& members() const override;

    SmartListChoice(std::string id, std::string name) : Id(std::move(id)), Name(std::move(name)) {}
    std::string Id, Name;
};

/// What the lists of a type can show and be filtered by, as far as the user may see it.
class SmartListSchema : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "SmartListSchema";
    const Members& members() const override;

    SmartListSchema(SharedContext context, ListSchema schema)
        : context_(std::move(context)), schema_(std::move(schema))
    {
    }
    std::string Title() const { return schema_.type->title; }
    std::string Sort() const { return schema_.type->sort; }
    Ref<qmevents::Collection> Fields() const;
    Ref<qmevents::Collection> Criteria() const;
    Ref<qmevents::Collection> Warnings() const { return textsOf(schema_.warnings); }
    /// The choices of a criterion; error 5 when it has none, 70 when the user may not see it.
    Ref<qmevents::Collection> Choices(const std::string& key) const;

private:
    SharedContext context_;
    ListSchema schema_;
};

} // namespace refhost
