// Tasks: columns, rules, messages and everything that is done with them.
#include "automation/text.h"
#include "store/child_story.h"
#include "store/events_manage.h"
#include "store/record_loader.h"
#include "store/statement.h"

namespace qmevents {
namespace {

using C = cEventTask;

const Table<C>& taskTable()
{
    static const auto table = audited<C>(
        "events_event_tasks", {
                                  column("FKEventId", Kind::key, &C::FKEventId),
                                  column("Name", Kind::text, &C::Name),
                                  column("Notes", Kind::text, &C::Notes),
                                  column("DueDateTime", Kind::date, &C::DueDateTime),
                                  column("Completed", Kind::yesNo, &C::Completed),
                                  column("FKAssignedToId", Kind::key, &C::FKAssignedToId),
                              });
    return table;
}

constexpr Rule<C> rules[] = {
    {lacksEvent, eventRequired},
    {[](const C& task) { return text::trim(task.Name.get()).empty(); },
     "A valid task name is required."},
    {[](const C& task) { return !task.DueDateTime->hasDate(); },
     "A valid due date/time is required."},
};

const ChildStory<C>& story()
{
    static const ChildStory<C> story{
        {.updateMethod = "UpdateEventTask",
         .thing = "event task",
         .idName = "taskid",
         .cascade =
             [](const std::string& id) {
                 return std::vector{"DELETE FROM events_event_tasks WHERE Id = " + id};
             }},
        taskTable,
        [](const C& task) { return rulesHold(rules, task); }};
    return story;
}

} // namespace

Ref<cEventTasks> EventsManage::GetEventTasks(std::int32_t EventId)
{
    return reported([&] {
        return readAll<cEventTasks>("SELECT * FROM events_event_tasks WHERE FKEventId=" +
                                        literal(EventId, Kind::key) + " ORDER BY duedatetime DESC",
                                    taskTable());
    });
}

Ref<cEventTasks> EventsManage::GetEventsTasksByDate(const std::string& DateString)
{
    return reported([&] {
        Statement statement(
            "SELECT tasks.*, events.Name as EventName FROM ((events_event_tasks AS tasks "
            "INNER JOIN events_event_info AS events ON tasks.FKEventId = Events.Id) "
            "INNER JOIN donor_list_assignedto AS dlassignedto "
            "ON tasks.FKAssignedToId = dlassignedto.Id) "
            "WHERE Completed = 0 AND dlassignedto.FKuserId = " +
            literal(host().security().currentUserId(), Kind::number));
        if (!DateString.empty()) statement.add("AND " + DateString);
        statement.add("ORDER BY duedatetime ASC");
        return readAll<cEventTasks>(statement.text(), taskTable());
    });
}

Ref<cEventTask> EventsManage::GetEventTask(std::int32_t EventTaskId)
{
    return reported([&] {
        return readOne("SELECT * FROM events_event_tasks eet WHERE eet.Id = " +
                           literal(EventTaskId, Kind::number),
                       taskTable());
    });
}

Ref<cEventTask> EventsManage::GetNewEventTask(std::int32_t EventId) { return newChild<C>(EventId); }

bool EventsManage::UpdateEventTask(const Ref<cEventTask>& EventTask, bool Validate)
{
    return updateChild(story(), EventTask, Validate);
}

bool EventsManage::ValidateEventTask(const Ref<cEventTask>& EventTask)
{
    return validateChild(story(), EventTask);
}

bool EventsManage::DeleteEventTask(std::int32_t EventId, std::int32_t EventTaskId)
{
    return deleteChild(story(), EventId, EventTaskId);
}

} // namespace qmevents
