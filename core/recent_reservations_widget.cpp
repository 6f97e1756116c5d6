// Who has reserved lately.
#include <map>
#include <vector>

#include "automation/clock.h"
#include "automation/locale.h"
#include "automation/text.h"
#include "core/date_time_util.h"
#include "core/host.h"
#include "core/record_reader.h"
#include "core/widget.h"
#include "core/widget_markup.h"

namespace qmevents {
namespace {

constexpr WidgetOption options[] = {
    {"rows", "Number of reservations", WidgetOption::Kind::number, "5", 1, 50},
    {"days", "Days back", WidgetOption::Kind::number, "90", 1, 3650},
};

struct Reservation {
    std::int32_t id;
    std::int32_t eventId;
    Value date;
    std::string event;
    std::string donor;
};

std::vector<Reservation> readReservations(const WidgetSettings& settings)
{
    std::vector<Reservation> reservations;
    RecordReader rows(
        "SELECT TOP " + std::to_string(settings.number("rows")) +
        " r.Id, r.FKEventId, r.ReservationDate, ei.Name AS EventName, dd.Display "
        "FROM (events_event_reservations r INNER JOIN events_event_info ei ON r.FKEventId = ei.Id) "
        "INNER JOIN donor_donors dd ON r.FKDonorId = dd.Id WHERE r.ReservationDate >= " +
        literal(Clock::today().plusDays(-settings.number("days")), Kind::date) +
        " ORDER BY r.ReservationDate DESC, r.Id DESC");
    if (rows.atEnd()) return reservations;
    const auto id = rows.column("Id");
    const auto event = rows.column("FKEventId");
    const auto date = rows.column("ReservationDate");
    const auto eventName = rows.column("EventName");
    const auto donor = rows.column("Display");
    for (; !rows.atEnd(); rows.next()) {
        reservations.push_back({toInt32(id.value()), toInt32(event.value()), date.value(),
                                eventName.valueOr<std::string>(""),
                                donor.valueOr<std::string>("")});
    }
    return reservations;
}

// What each was reserved for; nothing for a user who may not see money.
std::map<std::int32_t, Currency> readAmounts(const std::vector<Reservation>& reservations)
{
    std::map<std::int32_t, Currency> amounts;
    if (!host().security().isAllowed("donations/view")) return amounts;
    std::string ids;
    for (const auto& one : reservations) ids += (ids.empty() ? "" : ",") + std::to_string(one.id);
    RecordReader rows("SELECT l.FKReservationId, SUM(l.Price * l.Quantity) AS Amount "
                      "FROM events_event_reservations_activities l WHERE l.FKReservationId IN (" +
                      ids + ") GROUP BY l.FKReservationId");
    if (rows.atEnd()) return amounts;
    const auto id = rows.column("FKReservationId");
    const auto amount = rows.column("Amount");
    for (; !rows.atEnd(); rows.next()) {
        amounts[toInt32(id.value())] = amount.valueOr(Currency());
    }
    return amounts;
}

std::string content(const WidgetSettings& settings)
{
    markup::Table table;
    const auto reservations = readReservations(settings);
    if (reservations.empty()) return table.text("No recent reservations");
    const auto amounts = readAmounts(reservations);
    for (const auto& one : reservations) {
        const std::string when = DateTimeUtil().GetShortDateTime(one.date);
        const auto amount = amounts.find(one.id);
        table.row({markup::small(std::string(text::trim(when))), markup::words(one.donor),
                   markup::eventLink(one.eventId, "events_reservations", one.event),
                   amount == amounts.end()
                       ? ""
                       : markup::words(Locale::current().money(amount->second))});
    }
    return table.text("");
}

} // namespace

constexpr WidgetDescription recentReservationsWidget{"events-recent-reservations",
                                                     "Recent Reservations",
                                                     "Who has reserved lately.",
                                                     "events/view",
                                                     options,
                                                     content};

} // namespace qmevents
