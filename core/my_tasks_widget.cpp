// What the signed-in user has to do for events.
#include <algorithm>
#include <vector>

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
           " t.Id, t.Name, t.DueDateTime, t.FKEventId, ei.Name AS EventName "
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

struct Task {
    std::int32_t id;
    std::int32_t eventId;
    std::string name;
    std::string event;
    Value due;
    bool isOverdue;
};

std::vector<Task> readTasks(const WidgetSettings& settings)
{
    std::vector<Task> tasks;
    RecordReader rows(queryFor(settings));
    if (rows.atEnd()) return tasks;
    const auto id = rows.column("Id");
    const auto event = rows.column("FKEventId");
    const auto name = rows.column("Name");
    const auto eventName = rows.column("EventName");
    const auto due = rows.column("DueDateTime");
    for (; !rows.atEnd(); rows.next()) {
        const Value day = due.value();
        tasks.push_back({toInt32(id.value()), toInt32(event.value()), name.valueOr<std::string>(""),
                         eventName.valueOr<std::string>(""), day,
                         !day.isNull() && isOverdue(toDate(day))});
    }
    // What is due today at no given time stands before what was due this morning.
    std::stable_partition(tasks.begin(), tasks.end(), [](const Task& t) { return t.isOverdue; });
    return tasks;
}

std::string dueText(const Task& task)
{
    if (task.due.isNull()) return {};
    const std::string when = DateTimeUtil().GetShortDateTime(task.due);
    const std::string text = markup::small(std::string(text::trim(when)));
    return task.isOverdue ? markup::strong("Overdue") + " " + text : text;
}

std::string content(const WidgetSettings& settings)
{
    const bool mayComplete = host().security().isAllowed("events/edit");
    markup::Table table;
    for (const auto& task : readTasks(settings)) {
        const std::string complete = "CompleteEventTask(" + std::to_string(task.eventId) + "," +
                                     std::to_string(task.id) + ")";
        table.row({dueText(task), markup::eventLink(task.eventId, "events_tasks", task.name),
                   markup::words(task.event),
                   mayComplete ? markup::commandLink(complete, "Complete") : ""});
    }
    return table.text("Nothing to do");
}

} // namespace

constexpr WidgetDescription myTasksWidget{
    "events-my-tasks", "My Open Tasks", "What is assigned to you, what is overdue first.",
    "events/view",     options,         content};

} // namespace qmevents
