// What there is to do for the event.

import { list } from "../../lib/app.js";
import { commands, manage } from "../addin.js";
import { loadAssignees, nameIn } from "../lookups.js";
import { taskState } from "../task_state.js";
import { recordTab } from "./record_tab.js";

const columns = ["Id", "Name", "Notes", "DueDateTime", "Completed", "FKAssignedToId"];

export const tab = recordTab({
    key: "tasks",
    title: "Tasks",

    async load({ eventId, session }) {
        const [{ rows }, assignees] = await Promise.all([
            list(manage().GetEventTasks(eventId), columns),
            loadAssignees(),
        ]);
        return rows.map((task) => ({
            ...task,
            assignee: nameIn(assignees, task.FKAssignedToId),
            state: taskState(task, session.today),
        }));
    },

    describe({ eventId, allowed, refresh }) {
        const mayEdit = allowed("events/edit");
        const edit = ({ Id }) => commands().EditEventTask(eventId, Id).then(refresh);
        return {
            name: ["task", "tasks"],
            columns: [
                { key: "Name", label: "Task", faint: ({ Notes }) => Notes },
                { key: "DueDateTime", label: "Due" },
                { key: "assignee", label: "Assigned to" },
                { key: "state", label: "State", mark: ({ state }) => marks[state] },
                { key: "Notes", label: "Notes", exportOnly: true },
            ],
            order: { key: "DueDateTime", descending: false },
            empty: "Nothing to do yet.",
            summary: summaryOf,
            titleOf: ({ Name }) => Name,
            open: mayEdit ? edit : undefined,
            tools: mayEdit
                ? [
                      {
                          label: "Add task",
                          isPrimary: true,
                          run: () => commands().AddEventTask(eventId, false).then(refresh),
                      },
                  ]
                : [],
            actions: mayEdit
                ? [
                      {
                          label: "Complete",
                          isShown: ({ Completed }) => !Completed,
                          run: ({ Id }) =>
                              commands().CompleteEventTask(eventId, Id).then(refresh),
                      },
                      { label: "Edit", run: edit },
                      {
                          label: "Delete",
                          run: ({ Id }) => commands().DeleteEventTask(eventId, Id).then(refresh),
                      },
                  ]
                : [],
        };
    },
});

const marks = { Overdue: "late", Done: "settled" };

function summaryOf(tasks) {
    const count = (state) => tasks.filter((task) => task.state === state).length;
    return ["Done", "Overdue"]
        .filter((state) => count(state) > 0)
        .map((state) => `${count(state)} ${state.toLowerCase()}`)
        .join(", ");
}
