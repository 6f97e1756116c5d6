// The form of a task, new or stored.

import { manage } from "../addin.js";
import { longestName } from "../event_fields.js";
import { loadAssignees } from "../lookups.js";
import { fieldOfRefusalOf } from "../record_rules.js";
import { startRecordDialog } from "./record_dialog.js";

startRecordDialog({
    value: "eventtask",
    groups: [
        {
            fields: [
                {
                    name: "Name",
                    label: "Task",
                    kind: "text",
                    most: longestName,
                    required: true,
                    wide: true,
                },
                {
                    name: "DueDateTime",
                    label: "Due",
                    kind: "dateTime",
                    required: true,
                    hint: "Leave the time blank if any time of the day will do.",
                },
                {
                    name: "FKAssignedToId",
                    label: "Assigned to",
                    kind: "choice",
                    none: "Nobody yet",
                },
                { name: "Completed", label: "Done", kind: "yesNo" },
                { name: "Notes", label: "Notes", kind: "multiline", wide: true },
            ],
        },
    ],
    loadChoices: async () => ({ FKAssignedToId: await loadAssignees() }),
    save: (task) => manage().UpdateEventTask(task, true),
    fieldOf: fieldOfRefusalOf("task"),
    words: {
        add: { title: "Add a Task", button: "Add task" },
        edit: { title: "Edit the Task", button: "Save task" },
    },
});
