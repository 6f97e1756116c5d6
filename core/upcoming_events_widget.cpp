// The events that come next, and how full they are.
#include <algorithm>

#include "automation/clock.h"
#include "automation/text.h"
#include "core/date_time_util.h"
#include "core/host_provider.h"
#include "core/record_reader.h"
#include "core/widget.h"
#include "core/widget_markup.h"

namespace qmevents {
namespace {

constexpr std::int32_t accepted = 2; // the status of a participant who comes

constexpr WidgetOption options[] = {
    {"rows", "Number of events", WidgetOption::Kind::number, "5", 1, 50},
    {"days", "Days ahead", WidgetOption::Kind::number, "90", 1, 3650},
};

std::string queryFor(const WidgetSettings& settings)
{
    const Date today = Clock::today();
    return "SELECT TOP " + std::to_string(settings.number("rows")) +
           " ei.Id, ei.Name, ei.StartDateTime, ei.MaxCapacity, ei.AttendanceGoal, "
           "el.Name AS PlaceName, "
           "(SELECT COUNT(*) FROM events_event_participants ep "
           "WHERE ep.FKEventId = ei.Id AND ep.Status = " +
           literal(accepted, Kind::number) +
           ") AS Accepted, "
           "(SELECT SUM(l.Quantity) FROM (events_event_reservations_activities l "
           "INNER JOIN events_event_reservations r ON l.FKReservationId = r.Id) "
           "INNER JOIN events_event_activities a ON l.FKActivityId = a.Id "
           "WHERE r.FKEventId = ei.Id AND a.Sponsorship = 0) AS Reserved "
           "FROM events_event_info ei "
           "LEFT JOIN events_list_eventlocations el ON ei.FKLocationId = el.Id "
           "WHERE ei.StartDateTime >= " +
           literal(today, Kind::date) + " AND ei.StartDateTime < " +
           literal(today.plusDays(settings.number("days") + 1), Kind::date) +
           " ORDER BY ei.StartDateTime, ei.Id";
}

// A guest may have accepted, or have a place reserved, or both: the larger number is nearest to
// those who will come. They fill the room; where its size is unknown, the goal.
std::vector<std::string> fillLevel(std::int32_t coming, std::int32_t capacity, std::int32_t goal)
{
    const std::string count = std::to_string(coming);
    const std::int32_t whole = capacity > 0 ? capacity : goal;
    if (whole < 1) return {"", count + " coming"};
    std::string text = count + " of " + std::to_string(whole);
    text += capacity > 0 ? " places" : " hoped for";
    if (capacity > 0 && coming >= capacity) {
        text += " " + markup::strong(coming > capacity ? "Overbooked" : "Full");
    }
    return {markup::meter(Currency::fromUnits(coming), Currency::fromUnits(whole)), text};
}

std::string content(const WidgetSettings& settings)
{
    markup::Table table;
    RecordReader rows(queryFor(settings));
    if (rows.atEnd()) return table.text("No upcoming events");
    const auto id = rows.column("Id");
    const auto name = rows.column("Name");
    const auto start = rows.column("StartDateTime");
    const auto place = rows.column("PlaceName");
    const auto capacity = rows.column("MaxCapacity");
    const auto goal = rows.column("AttendanceGoal");
    const auto acceptedCount = rows.column("Accepted");
    const auto reserved = rows.column("Reserved");
    for (; !rows.atEnd(); rows.next()) {
        const std::int32_t coming =
            std::max(acceptedCount.valueOr<std::int32_t>(0), reserved.valueOr<std::int32_t>(0));
        const std::string when = DateTimeUtil().GetShortDateTime(start.value());
        std::string what = markup::eventLink(toInt32(id.value()), "events_overview",
                                             name.valueOr<std::string>(""));
        if (const auto where = place.valueOr<std::string>(""); !where.empty()) {
            what += " " + markup::small(markup::words(where));
        }
        std::vector<std::string> cells{markup::small(std::string(text::trim(when))), what};
        for (auto& cell :
             fillLevel(coming, capacity.valueOr<std::int32_t>(0), goal.valueOr<std::int32_t>(0))) {
            cells.push_back(std::move(cell));
        }
        table.row(cells);
    }
    return table.text("");
}

} // namespace

constexpr WidgetDescription upcomingEventsWidget{
    "events-upcoming", "Upcoming Events", "The events that come next, and how full they are.",
    "events/view",     options,           content};

} // namespace qmevents
