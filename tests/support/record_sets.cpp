#include "tests/support/record_sets.h"

#include "tests/support/puppet.h"
#include "tests/support/shown_value.h"

namespace qmevents::testing {

Ref<Object> recordSet(Rows rows, int* closed)
{
    struct State {
        Rows data;
        std::size_t at = 0;
    };
    const auto state = std::make_shared<State>(State{std::move(rows), 0});
    auto fields = puppet("Fields");
    fields->on("Item", [state](std::span<Value> arguments) -> Value {
        const auto& columns = state->data.columns;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const bool byName =
                arguments[0].isText() && text::sameName(columns[i], arguments[0].text());
            if (!byName && !(arguments[0].isNumber() && toInt32(arguments[0]) == int(i))) continue;
            auto field = puppet("Field");
            field->on("Value",
                      [state, i](std::span<Value>) { return state->data.rows[state->at][i]; });
            return field;
        }
        throw Error(3265, "Recordset", "no column " + shown(arguments[0]));
    });
    auto set = puppet("Recordset");
    set->on("Fields", [fields](std::span<Value>) { return Value(fields); });
    set->on("EOF",
            [state](std::span<Value>) { return Value(state->at >= state->data.rows.size()); });
    set->on("MoveNext", [state](std::span<Value>) {
        ++state->at;
        return Value();
    });
    set->on("MoveFirst", [state](std::span<Value>) {
        state->at = 0;
        return Value();
    });
    set->on("Close", [closed](std::span<Value>) {
        if (closed) ++*closed;
        return Value();
    });
    return set;
}

Rows eventRow(std::int32_t id, const std::map<std::string, Value>& cells)
{
    Rows event{{"Id",
                "Name",
                "Description",
                "FKLocationId",
                "StartDateTime",
                "EndDateTime",
                "RSVPDateTime",
                "MaxCapacity",
                "MinCapacity",
                "FKCategoryId",
                "FKStatusId",
                "FKCoordinatorId",
                "RevenueGoal",
                "AttendanceGoal",
                "FKFundId",
                "FKCampaignId",
                "FKAppealId",
                "Notes",
                "CreateUser",
                "CreateDate",
                "LastUpdateUser",
                "LastUpdateDate"},
               {}};
    auto& row = event.rows.emplace_back();
    for (const auto& column : event.columns) {
        const auto cell = cells.find(column);
        row.push_back(cell == cells.end() ? Value(Null{}) : cell->second);
    }
    row[0] = id;
    return event;
}

} // namespace qmevents::testing
