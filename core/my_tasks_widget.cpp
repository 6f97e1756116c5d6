// What the signed-in user has to do for events.
#include "automation/clock.h"
#include "automation/text.h"
#include "core/date_time_util.h"
#include "core/host.h"
#include "core/record_reader.h"
#include "core/widget.h"
#include "core/widget_markup.h"

namespace qmevents {
namespace {

constexpr WidgetOption options[] = {
    {"rows", "Number of tasks", WidgetOption::Kind::number, "10", 1, 50},
    {"days", "Days ahead", WidgetOption::Kind::number, "30", 0, 3650},
};

std::string queryFor(const WidgetSettings& settings)
{
    // What has no date comes last, whatever the engine makes of missing values.
    const DialectText undatedLast{.sqlServer = "CASE WHEN t.DueDateTime IS NULL THEN 1 ELSE 0 END",
                                  .jet = "IIf(t.DueDateTime IS NULL,1,0)"};
    return "SELECT TOP " + std::to_string(settings.number("rows")) +
           " t.Name, t.DueDateTime, t.FKEventId, ei.Name AS EventName "
           "FROM (events_event_tasks t "
           "INNER JOIN donor_list_assignedto la ON t.FKAssignedToId = la.Id) "
           "INNER JOIN events_event_info ei ON t.FKEventId = ei.Id WHERE la.FKuserId = " +
           literal(host().security().currentUserId(), Kind::number) +
           " AND t.Completed = 0 AND (t.DueDateTime < " +
           literal(Clock::today().plusDays(settings.number("days") + 1), Kind::date) +
           " OR t.DueDateTime IS NULL) ORDER BY " + undatedLast.forDocument() +
           ", t.DueDateTime, t.Id";
}

// A task without a time of day is due until the day ends.
bool isOverdue(Date due) { return due.hasTime() ? due < Clock::now() : due < Clock::today(); }

std::string dueText(const Value& due)
{
    if (due.isNull()) return {};
    const std::string when = DateTimeUtil().GetShortDateTime(due);
    const std::string text = markup::small(std::string(text::trim(when)));
    return isOverdue(toDate(due)) ? markup::strong("Overdue") + " " + text : text;
}

std::string content(const WidgetSettings& settings)
{
    markup::Table table;
    RecordReader rows(queryFor(settings));
    if (rows.atEnd()) return table.text("Nothing to do");
    const auto name = rows.column("Name");
    const auto due = rows.column("DueDateTime");
    const auto event = rows.column("FKEventId");
    const auto eventName = rows.column("EventName");
    for (; !rows.atEnd(); rows.next()) {
        table.row({dueText(due.value()),
                   markup::eventLink(toInt32(event.value()), "events_tasks",
                                     name.valueOr<std::string>("")),
                   markup::words(eventName.valueOr<std::string>(""))});
    }
    return table.text("");
}

} // namespace

constexpr WidgetDescription myTasksWidget{
    "events-my-tasks", "My Open Tasks", "What is assigned to you, what is overdue first.",
    "events/view",     options,         content};

} // namespace qmevents
