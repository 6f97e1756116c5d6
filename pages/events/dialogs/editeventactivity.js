// The short form of an activity; its reservation fields are edited on its own page.

import { activityGroups, quantityTypes } from "../activity_fields.js";
import { manage } from "../addin.js";
import { fieldNames } from "../event_fields.js";
import { loadLookups } from "../lookups.js";
import { fieldOfRefusalOf } from "../record_rules.js";
import { startRecordDialog } from "./record_dialog.js";

startRecordDialog({
    value: "eventactivity",
    groups: activityGroups,
    loadChoices: async () => ({
        ...(await loadLookups(fieldNames(activityGroups))),
        QuantityType: quantityTypes,
    }),
    save: (activity) => manage().UpdateEventActivity(activity, true),
    fieldOf: fieldOfRefusalOf("activity"),
    words: {
        add: { title: "Add an Activity", button: "Add activity" },
        edit: { title: "Edit the Activity", button: "Save activity" },
    },
});
