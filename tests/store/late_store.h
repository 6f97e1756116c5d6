#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "automation/clock.h"
#include "tests/support/scripted_host.h"

namespace qmevents::testing {

/// Properties of a record with the values to assign.
using Cells = std::vector<std::pair<std::string, Value>>;

inline const Value null = Null{};

/// Rows with these columns, a blank between them, and audit columns that are null behind.
inline Rows rowsOf(const std::string& columns, std::vector<std::vector<Value>> cells)
{
    Rows rows{{}, std::move(cells)};
    std::istringstream names(columns + " CreateUser CreateDate LastUpdateUser LastUpdateDate");
    for (std::string name; names >> name;) rows.columns.push_back(name);
    for (auto& row : rows.rows) row.resize(rows.columns.size(), null);
    return rows;
}

/// The event store, reached by name alone, in a host with event 5, donors 9 and 4 and the
/// invitation groups 70 and 71. A new row gets the key 34.
class LateStore : public ::testing::Test {
protected:
    LateStore()
    {
        host.answer("SELECT id FROM events_event_info WHERE id=<3:5>", {{"id"}, {{5}}});
        host.answer("FROM events_event_info WHERE Id = <2:5>",
                    eventRow(5, {{"Name", "Gala <&> \"Ball\""},
                                 {"StartDateTime", Date::of(2026, 12, 1, 18)}}));
        host.answer("@@IDENTITY", {{"Expr1000"}, {{34}}});
        for (const char* group : {"70", "71"}) {
            host.answer("eventinvitationgroups WHERE Id = <3:" + std::string(group) + ">",
                        {{"Id", "Name", "Description", "Visible", "Order"},
                         {{std::stoi(group), "Board", Null{}, true, 1}}});
        }
        host.donors = {{9, "Lee, Kim"}, {4, "Ode, Ann"}};
    }
    template <typename... A>
    Value ask(const std::string& operation, A... arguments)
    {
        return call(host.store(), operation, arguments...);
    }
    template <typename... A>
    Ref<Object> make(const std::string& operation, A... arguments)
    {
        return toObject(ask(operation, arguments...));
    }
    template <typename... A>
    bool succeeds(const std::string& operation, A... arguments)
    {
        return toBool(ask(operation, arguments...));
    }
    static Ref<Object> with(const Ref<Object>& record, const Cells& cells)
    {
        for (const auto& [name, value] : cells) put(record, name, value);
        return record;
    }
    static bool is(const Ref<Object>& record, const char* flag)
    {
        return toBool(get(record, flag));
    }
    static std::int32_t idOf(const Ref<Object>& record) { return toInt32(get(record, "Id")); }

    /// A new reservation of donor 9 at event 5 with a line for each pair of activity and quantity.
    Ref<Object> reservation(const std::vector<std::pair<int, int>>& lines)
    {
        const auto made = with(make("GetNewEventReservation", 5),
                               {{"FKdonorId", 9}, {"ReservationDate", Date::of(2026, 11, 20)}});
        for (const auto& [activity, quantity] : lines) {
            call(getObject(made, "Activities"), "Add",
                 with(make("GetNewEventReservationActivity"),
                      {{"FKActivityId", activity}, {"Quantity", quantity}, {"Price", 25}}),
                 0);
        }
        host.log.clear();
        return made;
    }
    /// Has the reads of an activity, and of the lines that use it, answered: key, reservation and
    /// quantity of each line.
    void offer(std::int32_t activity, std::int32_t available,
               const std::vector<std::array<std::int32_t, 3>>& lines, std::int32_t type = 0)
    {
        host.answer("eea.Id = <3:" + std::to_string(activity) + ">",
                    rowsOf("Id FKEventId Name Description ListPrice Cost QuantityAvailable "
                           "Sponsorship ReservationInfo QuantityType FKFundId FKCampaignId "
                           "FKAppealId",
                           {{activity, 5, "Ticket", null, null, null, available, null, null, type,
                             null, null, null}}));
        host.answer("FKActivityId=<2:" + std::to_string(activity) + ">", lineRows(activity, lines));
    }
    static Rows lineRows(std::int32_t activity,
                         const std::vector<std::array<std::int32_t, 3>>& lines)
    {
        std::vector<std::vector<Value>> rows;
        for (const auto& [id, reservationId, quantity] : lines) {
            rows.push_back({id, reservationId, activity, quantity, 25, null, null, 9, 9, "Lee",
                            activity == 4});
        }
        return rowsOf("Id FKReservationId FKActivityId Quantity Price Notes ReservationInfo "
                      "FKDonorId DonorIdCheck DonorName ActivitySponsorship",
                      std::move(rows));
    }

    ScriptedHost host;
    PinnedClock clock{Date::of(2026, 11, 21, 10)};
};

} // namespace qmevents::testing
