#pragma once

#include <string>

#include "automation/collection.h"
#include "host/lists/list_reading.h"

namespace refhost {

/// A column that a list shows or can show.
class SmartListField : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "SmartListField";
    const Members& members() const override;

    explicit SmartListField(ListField field) : field_(std::move(field)) {}
    std::string Name() const { return field_.name; }
    std::string Caption() const { return field_.caption; }
    std::string Group() const { return field_.group; }
    std::string Kind() const { return std::string(nameOf(field_.kind)); }
    std::int32_t Width() const { return field_.width; }
    bool Visible() const { return field_.isShown; }

private:
    ListField field_;
};

/// What is wrong with a filter.
class SmartListFault : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "SmartListFault";
    const Members& members() const override;

    explicit SmartListFault(ListFault fault) : fault_(std::move(fault)) {}
    std::int32_t Filter() const { return static_cast<std::int32_t>(fault_.filter); }
    std::string Text() const { return fault_.text; }

private:
    ListFault fault_;
};

/// The records that a list held when it was read.
class SmartListResult : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "SmartListResult";
    const Members& members() const override;

    SmartListResult(SharedContext context, const ListType& type, ListReading reading)
        : context_(std::move(context)), type_(type), reading_(std::move(reading))
    {
    }
    std::int32_t Count() const { return static_cast<std::int32_t>(reading_.rows.count()); }
    Ref<qmevents::Collection> Columns() const;  ///< SmartListField, in their order.
    Ref<qmevents::Collection> Warnings() const; ///< Texts: what was left out, and why.
    Ref<qmevents::Collection> Faults() const;   ///< SmartListFault; there are no rows then.
    bool IsWidened() const { return reading_.statement.isWidened; }
    /// Up to 5,000 rows from `start`, counted from 0: an array of two dimensions with the record's
    /// key, its donor's and its event's, then the columns.
    Value Rows(std::int32_t start, std::int32_t count) const;
    /// Asks the user and deletes the donors that stand here, all or none; False when the user
    /// declines. Error 5 for other lists and where a filter was left out, 70 without the right.
    bool DeleteDonors() const;

private:
    SharedContext context_;
    const ListType& type_;
    ListReading reading_;
};

/// A collection of texts.
Ref<qmevents::Collection> textsOf(const std::vector<std::string>& texts);

} // namespace refhost
