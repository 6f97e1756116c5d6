#include "host/lists/list_result.h"

#include <algorithm>

#include "automation/describe.h"
#include "host/lists/donor_deletion.h"

namespace refhost {

using qmevents::arg;
using qmevents::Collection;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;

const Members& SmartListField::members() const
{
    static const Members table =
        describe<SmartListField>("A column that a list shows or can show.")
            .readOnly("Name", &SmartListField::Name, "The field's name.")
            .readOnly("Caption", &SmartListField::Caption, "The heading.")
            .readOnly("Group", &SmartListField::Group, "The heading among the columns to choose.")
            .readOnly("Kind", &SmartListField::Kind,
                      "\"text\", \"yesno\", \"date\", \"money\" or \"number\".")
            .readOnly("Width", &SmartListField::Width, "In pixels.")
            .readOnly("Visible", &SmartListField::Visible, "Whether a new list shows it.");
    return table;
}

const Members& SmartListFault::members() const
{
    static const Members table =
        describe<SmartListFault>("What is wrong with a filter of a list.")
            .readOnly("Filter", &SmartListFault::Filter, "The filter's position from 1.")
            .readOnly("Text", &SmartListFault::Text, "What is wrong.");
    return table;
}

const Members& SmartListResult::members() const
{
    static const Members table =
        describe<SmartListResult>("The records that a list held when it was read.")
            .readOnly("Count", &SmartListResult::Count, "Number of records.")
            .readOnly("Columns", &SmartListResult::Columns, "The columns, in their order.")
            .readOnly("Warnings", &SmartListResult::Warnings, "What was left out, and why.")
            .readOnly("Faults", &SmartListResult::Faults,
                      "What is wrong with filters; there are no records then.")
            .readOnly("IsWidened", &SmartListResult::IsWidened,
                      "Whether a filter was left out, so that there may be more records.")
            .method("Rows", &SmartListResult::Rows, {arg("Start"), arg("Count")},
                    "Rows from a position, counted from 0: an array of two dimensions with the "
                    "keys of record, donor and event, then the columns.")
            .method("DeleteDonors", &SmartListResult::DeleteDonors,
                    "Asks the user and deletes the donors that stand here, all or none; False "
                    "when the user declines.");
    return table;
}

Ref<Collection> textsOf(const std::vector<std::string>& texts)
{
    const auto collection = makeRef<Collection>();
    for (const std::string& text : texts) collection->append(Value(text));
    return collection;
}

Ref<Collection> SmartListResult::Columns() const
{
    const auto columns = makeRef<Collection>();
    for (const ListField& field : reading_.statement.columns) {
        columns->append(Value(makeRef<SmartListField>(field)), field.name);
    }
    return columns;
}

Ref<Collection> SmartListResult::Warnings() const { return textsOf(reading_.statement.warnings); }

Ref<Collection> SmartListResult::Faults() const
{
    const auto faults = makeRef<Collection>();
    for (const ListFault& fault : reading_.statement.faults) {
        faults->append(Value(makeRef<SmartListFault>(fault)));
    }
    return faults;
}

Value SmartListResult::Rows(std::int32_t start, std::int32_t count) const
{
    constexpr std::int32_t most = 5000;
    const std::int32_t first = std::clamp(start, 0, Count());
    const std::int32_t rows = std::clamp(count, 0, std::min(most, Count() - first));
    const auto width = listKeys + reading_.statement.columns.size();
    auto array = std::make_shared<qmevents::Array>();
    array->dimensions = {{0, rows}, {0, static_cast<std::int32_t>(width)}};
    array->items.reserve(static_cast<std::size_t>(rows) * width);
    for (std::int32_t row = first; row < first + rows; ++row) {
        for (std::size_t column = 0; column < width; ++column) {
            array->items.push_back(reading_.rows.at(static_cast<std::size_t>(row), column));
        }
    }
    return {std::move(array)};
}

bool SmartListResult::DeleteDonors() const
{
    if (type_.name != std::string_view("donors")) {
        throw Error::with(ErrorNumber::invalidCall, "the list is not one of donors");
    }
    if (IsWidened()) {
        throw Error::with(ErrorNumber::invalidCall,
                          "a filter was left out, so that the list may hold others than meant");
    }
    return deleteDonors(context_, reading_.keys());
}

} // namespace refhost
