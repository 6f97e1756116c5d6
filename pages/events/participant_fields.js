// The fields of a participant as forms show them.

import { statuses } from "./participant_list.js";

export const statusChoices = statuses.map((name, id) => ({ id, name, visible: true }));

export const participantGroups = [
    {
        fields: [
            { name: "Status", label: "Status", kind: "choice", none: statuses[0] },
            { name: "Attended", label: "Attended", kind: "yesNo" },
            { name: "Notes", label: "Notes", kind: "multiline", rows: 3, wide: true },
        ],
    },
];
