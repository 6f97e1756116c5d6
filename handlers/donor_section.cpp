#include "handlers/donor_section.h"

#include "automation/locale.h"
#include "automation/text.h"
#include "core/host.h"
#include "core/record_reader.h"

namespace qmevents {
namespace {

constexpr const char* greyTable =
    "<table cellpadding=0 cellspacing=0 width=100% style='color:#777'><tr>";
constexpr const char* plainTable = "<table cellpadding=0 cellspacing=0 width=100%>";
constexpr const char* endOfTable = "</tr></table>";

std::string money(Currency amount) { return Locale::current().money(amount); }

/// A figure of a one-line table; the first has no caption, the row's name being it.
struct Figure {
    const char* caption;
    std::string text;
};

std::string lineOfFigures(std::initializer_list<Figure> figures)
{
    std::string markup = greyTable;
    for (const auto& [caption, text] : figures) {
        if (*caption) {
            markup += std::string("<td width=100px style='color:#999999'>") + caption + "</td>";
        }
        markup += "<td width=100px>" + text + "</td>";
    }
    return markup + endOfTable;
}

std::string emptyTable(const char* text)
{
    return std::string(greyTable) + "<td>" + text + "</td>" + endOfTable;
}

std::string commandLink(const std::string& command, const std::string& arguments,
                        const std::string& shown)
{
    return "<a href=\"javascript:App.Modules.Events.Objects('Workflow').Events." + command + "(" +
           arguments + ");\">" + shown + "</a>";
}

/// A text cut off where its column ends. `title` is markup already.
std::string cutOff(const std::string& shown, const std::string& title)
{
    return "<span style=\"text-overflow:ellipsis;overflow:hidden;width:150;cursor:hand;\"" +
           (title.empty() ? "" : " title=\"" + title + "\"") + ">" + shown + "</span>";
}

std::string totalSpent(const std::string& donor)
{
    Currency total, reservations, sponsorship;
    const RecordReader row(
        "SELECT vds.totalreservationpaid As TotalReservationDollars, vds.totalamount As "
        "TotalDollars, vds.totalsponsorshipamount As TotalSponsorshipDollars FROM "
        "vw_events_donor_summary vds WHERE vds.DonorId = " +
        donor);
    if (!row.atEnd()) {
        const auto amount = [&](const char* name) { return row.column(name).valueOr(Currency()); };
        reservations = amount("TotalReservationDollars");
        total = amount("TotalDollars");
        sponsorship = amount("TotalSponsorshipDollars");
    }
    return lineOfFigures({{"", money(total)},
                          {"Reservations Paid:", money(reservations)},
                          {"Total Sponsorship:", money(sponsorship)}});
}

std::string invitations(const std::string& donor)
{
    // Invited, accepted and declined: all of these were invited.
    const std::string invitedRows =
        "FROM events_event_participants ep WHERE ep.Status IN(1,2,3) AND ep.FKDonorId = " + donor;
    const DialectText sums{
        .sqlServer = "SELECT IsNull(SUM(InvitedFlag),0) As Invited, IsNull(SUM(AcceptedFlag),0) As "
                     "Accepted, IsNull(SUM(DeclinedFlag),0) As Declined FROM (SELECT 1 As "
                     "InvitedFlag, CASE WHEN ep.Status=2 THEN 1 ELSE 0 END As AcceptedFlag, CASE "
                     "WHEN ep.Status=3 THEN 1 ELSE 0 END As DeclinedFlag " +
                     invitedRows + ") [mainquery]",
        .jet = "SELECT IIf(SUM(InvitedFlag) IS NULL,0,SUM(InvitedFlag)) As Invited, "
               "IIf(SUM(AcceptedFlag) IS NULL,0,SUM(AcceptedFlag)) As Accepted, "
               "IIf(SUM(DeclinedFlag) IS NULL,0,SUM(DeclinedFlag)) As Declined FROM (SELECT 1 As "
               "InvitedFlag, IIf(ep.Status=2,1,0) As AcceptedFlag, IIf(ep.Status=3,1,0) As "
               "DeclinedFlag " +
               invitedRows + ")"};
    const RecordReader row(sums.forDocument());
    const auto count = [&](const char* name) {
        return std::to_string(row.atEnd() ? 0 : row.column(name).valueOr<std::int32_t>(0));
    };
    return lineOfFigures({{"", count("invited")},
                          {"Accepted:", count("accepted")},
                          {"Declined:", count("declined")}});
}

std::string attended(const std::string& donor)
{
    RecordReader rows("SELECT ei.Name, ei.Id FROM events_event_participants ep INNER JOIN "
                      "events_event_info ei ON ep.FKEventId=ei.Id WHERE ep.Attended <> 0 AND "
                      "ep.FKDonorId = " +
                      donor);
    if (rows.atEnd()) return emptyTable("No events attended");
    const auto id = rows.column("id");
    const auto name = rows.column("name");
    std::string markup = std::string(plainTable) + "<tr><td>";
    for (bool first = true; !rows.atEnd(); rows.next(), first = false) {
        if (!first) markup += "</td></tr><tr style='padding-top:3px'><td>";
        markup += commandLink(
            "ViewEvent", std::to_string(id.valueOr<std::int32_t>(0)) + ",'events_participants'",
            text::escapeMarkup(name.valueOr<std::string>("")));
    }
    return markup + "</td></tr></table>";
}

std::string reservations(const std::string& donor, std::int32_t donorId)
{
    const DialectText sponsorship{.sqlServer =
                                      "CASE WHEN NOT ea.Sponsorship = 0 THEN 'Yes' ELSE 'No' END",
                                  .jet = "IIf(ea.Sponsorship,'Yes','No')"};
    RecordReader rows(
        "SELECT ei.Name As EventName, ei.Id As EventId, eer.Id As ReservationId, "
        "eer.ReservationDate As ReservationDate, ea.Name As ActivityName, eera.Price*eera.Quantity "
        "As Amount, eera.Quantity As Quantity, " +
        sponsorship.forDocument() +
        " As ActivitySponsorship FROM ((events_event_reservations_activities eera INNER JOIN "
        "events_event_reservations eer ON eera.FKReservationId = eer.Id) INNER JOIN "
        "events_event_activities ea ON eera.FKActivityId = ea.Id) INNER JOIN events_event_info ei "
        "ON eer.FKEventId = ei.Id WHERE (eer.FKDonorId = " +
        donor + ") ORDER BY eer.reservationdate DESC");
    if (rows.atEnd()) return emptyTable("No reservations");
    const auto eventId = rows.column("EventId");
    const auto reservationId = rows.column("ReservationId");
    const auto eventName = rows.column("EventName");
    const auto activityName = rows.column("ActivityName");
    const auto quantity = rows.column("Quantity");
    const auto amount = rows.column("Amount");
    const bool mayEdit = host().security().isAllowed("events/edit");
    constexpr const char* wideCell = "<td width=\"150\" style=\"padding-right:10px;\">";

    std::string markup = plainTable;
    for (; !rows.atEnd(); rows.next()) {
        const auto number = [](const RecordReader::Column& column) {
            return std::to_string(column.valueOr<std::int32_t>(0));
        };
        const std::string event = text::escapeMarkup(eventName.valueOr<std::string>(""));
        const std::string activity = text::escapeMarkup(activityName.valueOr<std::string>(""));
        markup +=
            std::string("<tr style='padding-top:3px'>") + wideCell +
            commandLink("ViewEvent",
                        number(eventId) + ",'events_reservations', " + std::to_string(donorId),
                        cutOff("<nobr>" + event + "</nobr>", event)) +
            "</td>" + wideCell +
            cutOff("<nobr>" + number(quantity) + " - " + activity + "</nobr>", activity) +
            "</td><td>" + money(amount.valueOr(Currency()));
        if (mayEdit) {
            markup +=
                "<span style=\"padding-left:15px;\">" +
                commandLink("EditEventReservation", number(eventId) + ", " + number(reservationId),
                            cutOff("Edit", "")) +
                "</span>";
        }
        markup += "</td></tr>";
    }
    return markup + "</table>";
}

} // namespace

void addEventsSection(const DonorPage& page)
{
    const std::int32_t donorId = page.donorId();
    const std::string donor = literal(donorId, Kind::number);
    const auto section = page.newSection();
    section.setTitle("Events Info");
    section.setKey("EventsInfo");
    page.addSection("detail", section, "EventsInfo");
    const auto add = [&](const char* name, const std::string& markup) {
        section.addRow(page.newRow(name, markup));
    };
    add("Total Spent", totalSpent(donor));
    add("Invitations", invitations(donor));
    add("Attended", attended(donor));
    add("Reservations", reservations(donor, donorId));
}

} // namespace qmevents
