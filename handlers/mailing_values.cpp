#include "handlers/mailing_values.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>

#include "core/date_time_util.h"
#include "core/host.h"
#include "core/record_reader.h"
#include "model/event_participant.h"
#include "model/reservation_fields.h"
#include "store/reservation_field_xml.h"

namespace qmevents {
namespace {

using Donors = std::vector<std::int32_t>;

std::string textOf(const RecordReader::Column& column) { return column.valueOr<std::string>(""); }

void append(std::string& list, const std::string& separator, const std::string& item)
{
    if (item.empty()) return;
    if (!list.empty()) list += separator;
    list += item;
}

// A few donors are asked for by their keys, as in a preview; for many, all of the event are read.
std::string whereDonors(const char* column, const Donors& donors)
{
    constexpr std::size_t mostKeys = 200;
    if (donors.size() > mostKeys) return {};
    std::string keys;
    for (const std::int32_t donor : donors) append(keys, ",", std::to_string(donor));
    return " AND " + std::string(column) + " IN (" + keys + ")";
}

/// Gives the sink what is not blank, for the donors that were asked for.
class Values {
public:
    Values(const Donors& donors, const MailingValueSink& sink)
        : donors_(donors.begin(), donors.end()), sink_(sink)
    {
    }
    bool wants(std::int32_t donor) const { return donors_.contains(donor); }
    void set(std::int32_t donor, const char* field, const Value& value) const
    {
        const bool isBlank =
            value.isNull() || value.isEmpty() || (value.isText() && value.text().empty());
        if (!isBlank) sink_(donor, field, value);
    }
    /// For all of them.
    void setAll(const char* field, const Value& value) const
    {
        for (const std::int32_t donor : donors_) set(donor, field, value);
    }

private:
    std::set<std::int32_t> donors_;
    const MailingValueSink& sink_;
};

// --- The event

void setMoment(const Values& values, const char* dateField, const char* timeField,
               const Value& moment)
{
    if (moment.isNull() || !toDate(moment).hasDate()) return;
    // A letter is read on another day, so the day stands as a date and never as "Today".
    values.setAll(dateField, toDate(moment).datePart());
    if (timeField) values.setAll(timeField, DateTimeUtil().GetShortTime(moment));
}

void readEvent(const StartedMailing& mailing, const Values& values)
{
    const RecordReader row(
        "SELECT ei.Name, ei.Description, ei.StartDateTime, ei.EndDateTime, ei.RSVPDateTime, "
        "el.Name AS PlaceName, el.Address AS PlaceAddress, el.Phone AS PlacePhone, "
        "ec.Name AS CategoryName, dd.Display AS CoordinatorName "
        "FROM ((events_event_info ei "
        "LEFT JOIN events_list_eventlocations el ON ei.FKLocationId = el.Id) "
        "LEFT JOIN events_list_eventcategories ec ON ei.FKCategoryId = ec.Id) "
        "LEFT JOIN donor_donors dd ON ei.FKCoordinatorId = dd.Id WHERE ei.Id = " +
        literal(mailing.eventId, Kind::number));
    if (row.atEnd()) return; // deleted since the mailing was started
    const struct {
        const char *field, *column;
    } texts[] = {{"EventName", "Name"},
                 {"EventDescription", "Description"},
                 {"EventPlace", "PlaceName"},
                 {"EventAddress", "PlaceAddress"},
                 {"EventPhone", "PlacePhone"},
                 {"EventCategory", "CategoryName"},
                 {"EventCoordinator", "CoordinatorName"}};
    for (const auto& [field, column] : texts) values.setAll(field, textOf(row.column(column)));
    setMoment(values, "EventDate", "EventTime", row.column("StartDateTime").value());
    setMoment(values, "EventEndDate", "EventEndTime", row.column("EndDateTime").value());
    setMoment(values, "EventReplyBy", nullptr, row.column("RSVPDateTime").value());
}

// --- Participants

// A participant comes once for each invitation group, in rows that follow each other.
void readParticipants(const StartedMailing& mailing, const Donors& donors, const Values& values)
{
    RecordReader rows(
        "SELECT ep.FKDonorId, ep.Status, ep.Attended, eg.Name AS GroupName "
        "FROM (events_event_participants ep "
        "LEFT JOIN events_event_participants_groups epg "
        "ON (ep.FKDonorId = epg.FKDonorId) AND (ep.FKEventId = epg.FKEventId)) "
        "LEFT JOIN events_list_eventinvitationgroups eg ON epg.FKInvitationGroupId = eg.Id "
        "WHERE ep.FKEventId = " +
        literal(mailing.eventId, Kind::key) + whereDonors("ep.FKDonorId", donors) +
        " ORDER BY ep.FKDonorId, eg.[Order], eg.Id");
    if (rows.atEnd()) return;
    const auto donor = rows.column("FKDonorId");
    const auto status = rows.column("Status");
    const auto attended = rows.column("Attended");
    const auto group = rows.column("GroupName");
    std::map<std::int32_t, std::string> groups;
    for (; !rows.atEnd(); rows.next()) {
        const std::int32_t id = toInt32(donor.value());
        if (!values.wants(id)) continue;
        const auto [names, isNew] = groups.emplace(id, "");
        append(names->second, ", ", textOf(group));
        if (!isNew) continue;
        values.set(id, "ParticipantStatus", statusText(status.valueOr<std::int16_t>(0)));
        values.set(id, "ParticipantAttended", attended.valueOr(false) ? "Yes" : "No");
    }
    for (const auto& [id, names] : groups) values.set(id, "ParticipantGroups", names);
}

// --- Reservations

struct Reservation {
    std::int32_t donorId = 0;
    Value date;
    Currency paid;
    Currency total;
    bool isChosen = false; ///< Holds a line of what was chosen.
};

/// What a donor reserved of what was chosen, and how the reservations that hold it stand.
struct Reserved {
    Value date; ///< The latest.
    std::vector<std::pair<std::string, std::int32_t>> activities;
    std::int32_t quantity = 0;
    std::string details;
    Currency amount, total, paid, outstanding;

    void add(const std::string& activity, std::int32_t units)
    {
        quantity += units;
        for (auto& [name, count] : activities) {
            if (name != activity) continue;
            count += units;
            return;
        }
        activities.emplace_back(activity, units);
    }
    std::string activityText() const
    {
        std::string text;
        for (const auto& [name, count] : activities) {
            append(text, ", ", std::to_string(count) + " " + name);
        }
        return text;
    }
};

// "Meal: Fish; Table: 4"
std::string detailsOf(const std::string& document)
{
    std::string details;
    if (document.empty()) return details;
    const auto values = readReservationFieldValues(document);
    if (!values) return details; // told
    Value item;
    for (const auto walk = values->NewEnum(); walk->next(item);) {
        const auto field = refCast<cEventReservationActivityField>(item.object());
        if (field && !field->Value.empty())
            append(details, "; ", field->Name + ": " + field->Value);
    }
    return details;
}

/// The reservations of an event and, of those that hold something chosen, what each donor has.
class Reservations {
public:
    Reservations(const StartedMailing& mailing, const Donors& donors, const Values& values)
        : mailing_(mailing), donors_(donors), values_(values)
    {
    }
    void read()
    {
        readLines();
        readPayments();
        sumUp();
        const bool maySeeMoney = host().security().isAllowed("donations/view");
        for (const auto& [donor, reserved] : reserved_) set(donor, reserved, maySeeMoney);
    }

private:
    void readLines()
    {
        RecordReader rows(
            "SELECT er.Id, er.FKDonorId, er.ReservationDate, er.AmountPaid, era.FKActivityId, "
            "era.Quantity, era.Price, era.ReservationInfo, ea.Name AS ActivityName, ea.Sponsorship "
            "FROM (events_event_reservations er "
            "INNER JOIN events_event_reservations_activities era ON er.Id = era.FKReservationId) "
            "INNER JOIN events_event_activities ea ON era.FKActivityId = ea.Id "
            "WHERE er.FKEventId = " +
            literal(mailing_.eventId, Kind::key) + whereDonors("er.FKDonorId", donors_) +
            " ORDER BY er.ReservationDate, er.Id, era.Id");
        if (rows.atEnd()) return;
        const auto id = rows.column("Id");
        const auto donor = rows.column("FKDonorId");
        const auto date = rows.column("ReservationDate");
        const auto paid = rows.column("AmountPaid");
        const auto activity = rows.column("FKActivityId");
        const auto quantity = rows.column("Quantity");
        const auto price = rows.column("Price");
        const auto info = rows.column("ReservationInfo");
        const auto name = rows.column("ActivityName");
        const auto sponsorship = rows.column("Sponsorship");
        for (; !rows.atEnd(); rows.next()) {
            const std::int32_t donorId = toInt32(donor.value());
            if (!values_.wants(donorId)) continue;
            const auto units = quantity.valueOr<std::int32_t>(0);
            const Currency amount = price.valueOr(Currency()) * units;
            Reservation& reservation = reservations_[toInt32(id.value())];
            reservation.donorId = donorId;
            reservation.date = date.value();
            reservation.paid = paid.valueOr(Currency());
            reservation.total += amount;
            if (!mailing_.includes(toInt32(activity.value()), sponsorship.valueOr(false))) continue;
            reservation.isChosen = true;
            Reserved& reserved = reserved_[donorId];
            reserved.add(textOf(name), units);
            reserved.amount += amount;
            append(reserved.details, "; ", detailsOf(textOf(info)));
        }
    }
    void readPayments()
    {
        if (reserved_.empty()) return;
        RecordReader rows("SELECT vp.FKReservationId, SUM(vp.Amount) AS Paid "
                          "FROM vw_events_reservation_payments vp WHERE vp.FKEventId = " +
                          literal(mailing_.eventId, Kind::key) +
                          whereDonors("vp.FKDonorId", donors_) + " GROUP BY vp.FKReservationId");
        if (rows.atEnd()) return;
        const auto id = rows.column("FKReservationId");
        const auto paid = rows.column("Paid");
        for (; !rows.atEnd(); rows.next()) {
            const auto found = reservations_.find(toInt32(id.value()));
            if (found != reservations_.end()) found->second.paid += paid.valueOr(Currency());
        }
    }
    void sumUp()
    {
        for (const auto& [id, reservation] : reservations_) {
            if (!reservation.isChosen) continue;
            Reserved& reserved = reserved_[reservation.donorId];
            const Value& date = reservation.date;
            const bool isLater = !date.isNull() && (!reserved.date.is(ValueKind::date) ||
                                                    toDate(reserved.date) < toDate(date));
            if (isLater) reserved.date = date;
            reserved.total += reservation.total;
            reserved.paid += reservation.paid;
            // What is too much on one reservation pays nothing of another.
            reserved.outstanding += std::max(Currency(), reservation.total - reservation.paid);
        }
    }
    void set(std::int32_t donor, const Reserved& reserved, bool maySeeMoney) const
    {
        values_.set(donor, "ReservationDate", reserved.date);
        values_.set(donor, "ReservationActivities", reserved.activityText());
        values_.set(donor, "ReservationQuantity", reserved.quantity);
        values_.set(donor, "ReservationDetails", reserved.details);
        if (!maySeeMoney) return;
        values_.set(donor, "ReservationAmount", reserved.amount);
        values_.set(donor, "ReservationTotal", reserved.total);
        values_.set(donor, "ReservationPaid", reserved.paid);
        values_.set(donor, "ReservationOutstanding", reserved.outstanding);
    }

    const StartedMailing& mailing_;
    const Donors& donors_;
    const Values& values_;
    std::map<std::int32_t, Reservation> reservations_; // by key
    std::map<std::int32_t, Reserved> reserved_;        // by donor
};

} // namespace

void readMailingValues(const StartedMailing& mailing, const Donors& donors,
                       const MailingValueSink& sink)
{
    if (donors.empty()) return;
    const Values values(donors, sink);
    readEvent(mailing, values);
    if (mailing.isAboutReservations()) {
        Reservations(mailing, donors, values).read();
    } else {
        readParticipants(mailing, donors, values);
    }
}

} // namespace qmevents
