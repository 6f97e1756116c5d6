// Expenses and tasks.
#include "workflow/child_commands.h"
#include "workflow/workflow_events.h"

namespace qmevents {
namespace {

constexpr EditedInDialog<cEventExpense> editedExpense{
    &EventsManage::IsValidEventExpenseAction, "editeventexpense", "EventExpense",
    [](EventsManage& store, const Ref<cEventExpense>& expense) {
        return store.UpdateEventExpense(expense);
    }};
constexpr DeletedAfterAsking<cEventExpense> deletedExpense{
    &EventsManage::IsValidEventExpenseAction,
    [](EventsManage& store, std::int32_t eventId, std::int32_t id) {
        return store.DeleteEventExpense(eventId, id);
    },
    "Delete Expense",
    [](const cEventExpense&) -> std::string {
        return "Are you sure you want to delete this event expense?";
    }};

constexpr EditedInDialog<cEventTask> editedTask{
    &EventsManage::IsValidEventTaskAction, "editeventtask", "EventTask",
    [](EventsManage& store, const Ref<cEventTask>& task) { return store.UpdateEventTask(task); }};
constexpr DeletedAfterAsking<cEventTask> deletedTask{
    &EventsManage::IsValidEventTaskAction,
    [](EventsManage& store, std::int32_t eventId, std::int32_t id) {
        return store.DeleteEventTask(eventId, id);
    },
    "Delete Task",
    [](const cEventTask&) -> std::string {
        return "Are you sure you want to delete this event task?";
    }};

constexpr EventSearch eventOfTask{"Add a Task", "Find an Event For This Task", eventSearchHint};

} // namespace

void WorkflowEvents::AddEventExpense(std::int32_t EventId, bool* ForceUpdate)
{
    reported([&] {
        const auto expense = eventsManage()->GetNewEventExpense(EventId);
        if (enter(editedExpense, "add", expense)) setTrue(ForceUpdate);
    });
}

void WorkflowEvents::EditEventExpense(std::int32_t EventId, std::int32_t ExpenseId)
{
    reported([&] {
        if (edit(editedExpense, EventId, ExpenseId)) refresh();
    });
}

void WorkflowEvents::DeleteEventExpense(std::int32_t EventId, std::int32_t ExpenseId)
{
    reported([&] {
        if (deleteAfterAsking(deletedExpense, EventId, ExpenseId)) refresh();
    });
}

void WorkflowEvents::AddEventTask(std::int32_t EventId, bool* ForceUpdate)
{
    reported([&] {
        const auto eventId = eventOrFound(EventId, eventOfTask);
        if (eventId == 0) return;
        const auto task = eventsManage()->GetNewEventTask(eventId);
        if (enter(editedTask, "add", task)) setTrue(ForceUpdate);
    });
}

void WorkflowEvents::EditEventTask(std::int32_t EventId, std::int32_t TaskId)
{
    reported([&] {
        if (edit(editedTask, EventId, TaskId)) refresh();
    });
}

void WorkflowEvents::DeleteEventTask(std::int32_t EventId, std::int32_t TaskId)
{
    reported([&] {
        if (deleteAfterAsking(deletedTask, EventId, TaskId)) refresh();
    });
}

void WorkflowEvents::CompleteEventTask(std::int32_t EventId, std::int32_t TaskId)
{
    reported([&] {
        const RecordLock lock = lockEvent(EventId);
        const auto task =
            allowed(&EventsManage::IsValidEventTaskAction, TaskId, EventsActions::CompleteTask);
        if (!task) return;
        task->Completed = true;
        eventsManage()->UpdateEventTask(task);
        refresh();
    });
}

} // namespace qmevents
