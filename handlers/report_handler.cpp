#include "handlers/report_handler.h"

#include "core/host.h"

namespace qmevents {
namespace {

constexpr const char* category = "events-reports";

struct Entry {
    const char *key = "", *name = "", *description = "";
    const char* right = nullptr;   ///< What a user needs, where it is more than to see reports.
    const char* command = nullptr; ///< The command that has the event searched first.
    const char* listOf = nullptr;  ///< The records whose list it can work on.
};

// In the order in which they are listed. Their layouts are found by their keys.
constexpr Entry entries[] = {
    {.key = "events-list",
     .name = "Events List",
     .description = "View all events and filter the list by event date."},
    {.key = "events-by-eventstatus",
     .name = "Events By Event Status",
     .description = "View all events and filter the list by events status."},
    {.key = "events-expected-vs-actual",
     .name = "Events Income - Expected vs Actual",
     .description = "View an analysis of events expected income versus actual income received."},
    {.key = "events-revenue-vs-expenses",
     .name = "Events Analysis - Income vs Expenses",
     .description =
         "View an analysis of events actual income received versus actual expenses incurred."},
    {.key = "events-top-events",
     .name = "Top Events",
     .description = "View your top events (by income, expenses or net income)."},
    {.key = "events-eventreservations-donation-history-by-campaign",
     .name = "Event Reservations and Donation History By Campaign",
     .description = "View event reservations and donations according to the campaign that prompted "
                    "the donor to support the event or make the donation.",
     .right = "donations/view"},
    {.key = "events-sponsorships-by-donor",
     .name = "Event Sponsorships By Donor",
     .description = "View a list of event sponsorship activities by donor.",
     .listOf = "donors"},
    {.key = "events-donor-summary",
     .name = "Donor Events Summary",
     .description = "View events summary information for your donors.",
     .right = "donations/view",
     .listOf = "donors"},
    {.key = "events-event-participant-list",
     .name = "Event Participant List",
     .description = "View the participant list for a single event.",
     .command = "ShowParticipantReport",
     .listOf = "events"},
    {.key = "events-event-reservation-list-by-activity",
     .name = "Event Reservation List By Activity",
     .description = "View the reservation list by activity for a single event.",
     .command = "ShowReservationByActivityReport",
     .listOf = "events"},
    {.key = "events-event-reservation-list",
     .name = "Event Reservation List",
     .description = "View the reservation list for a single event, showing the total amount due.",
     .command = "ShowReservationReport",
     .listOf = "events"},
    {.key = "events-event-activity-reservation-list",
     .name = "Event Reservations For Activity List",
     .description =
         "View the reservations list, including reservation fields, for a single event activity.",
     .command = "ShowActivityReservationReport",
     .listOf = "events"},
    {.key = "events-event-activity-summary",
     .name = "Event Activity Summary",
     .description = "View a summary of the activity information for a single event.",
     .command = "ShowActivitySummaryReport",
     .listOf = "events"},
    {.key = "events-event-summary",
     .name = "Event Summary",
     .description = "View a summary of information for a single event.",
     .command = "ShowSummaryReport",
     .listOf = "events"},
};

Report reportOf(const Entry& entry)
{
    const auto events = host().modules().events();
    const auto report = host().modules().quillmere().reports().newReport();
    report.setKey(entry.key);
    report.setName(entry.name);
    report.setDescription(entry.description);
    report.setIcon(events.reportIcon());
    report.setFolder(events.reportFolder());
    if (entry.command) {
        report.setScript("App.Modules.Events.Objects('Workflow').Events." +
                         std::string(entry.command) + "()");
    }
    if (entry.right) report.setOperation(entry.right);
    return report;
}

void addReports()
{
    const auto list = host().modules().quillmere().reports().reportsOf(category);
    for (const Entry& entry : entries) addReport(list, reportOf(entry), entry.key);
}

void addReportsOnLists(const Ref<Object>& list)
{
    for (const Entry& entry : entries) {
        if (!entry.listOf) continue;
        const auto report = reportOf(entry);
        report.setListOf(entry.listOf);
        addReport(list, report, entry.key);
    }
}

} // namespace

const Members& ReportHandler::members() const
{
    static const Members table =
        answererMembers<ReportHandler>("Answers the host's requests for reports.");
    return table;
}

void ReportHandler::EventHandler(const Ref<Object>& Ev)
{
    const HostEvent event(Ev);
    const std::string key = event.key();
    if (key == "reports-categories") {
        host().modules().quillmere().reports().addCategory(
            category, "Events Reports", "Create reports to better understand your events.");
    } else if (key == "reports-categories-reports") {
        addReports();
    } else if (key == "reports-chooser-dialog") {
        addReportsOnLists(event.data());
    }
}

} // namespace qmevents
