// The short form for a new event.

import { manage } from "../addin.js";
import { fieldNames, shortEventGroups } from "../event_fields.js";
import { fieldOfRefusal } from "../event_rules.js";
import { loadLookups } from "../lookups.js";
import { startRecordDialog } from "./record_dialog.js";

startRecordDialog({
    value: "EventInfo",
    groups: shortEventGroups,
    loadChoices: () => loadLookups(fieldNames(shortEventGroups)),
    save: (event) => manage().UpdateEvent(event, true, true),
    fieldOf: fieldOfRefusal,
    words: { add: { title: "Add an Event", button: "Add event" } },
});
