// The fields of an event as forms show them.

/** The most characters that the host keeps of a name. */
export const longestName = 255;

const name = {
    name: "Name",
    label: "Event name",
    kind: "text",
    most: longestName,
    required: true,
    wide: true,
};
const start = { name: "StartDateTime", label: "Start", kind: "dateTime", required: true };
const end = { name: "EndDateTime", label: "End", kind: "dateTime" };
const location = { name: "FKLocationId", label: "Location", kind: "choice" };
const category = { name: "FKCategoryId", label: "Category", kind: "choice" };
const status = { name: "FKStatusId", label: "Status", kind: "choice" };
const most = { name: "MaxCapacity", label: "Most attendees", kind: "whole" };

/** All fields of an event. */
export const eventGroups = [
    {
        title: "Event",
        fields: [
            name,
            { name: "Description", label: "Description", kind: "multiline", wide: true },
            category,
            status,
        ],
    },
    {
        title: "When and where",
        fields: [
            { ...start, hint: "Leave the time blank if it is not set yet." },
            end,
            { name: "RSVPDateTime", label: "Reply by", kind: "dateTime" },
            location,
            { name: "FKCoordinatorId", label: "Coordinator", kind: "choice" },
        ],
    },
    {
        title: "Capacity and goals",
        fields: [
            { name: "MinCapacity", label: "Fewest attendees", kind: "whole" },
            most,
            { name: "AttendanceGoal", label: "Attendance goal", kind: "whole" },
            { name: "RevenueGoal", label: "Revenue goal", kind: "money" },
        ],
    },
    {
        title: "Gifts",
        fields: [
            {
                name: "FKFundId",
                label: "Fund",
                kind: "choice",
                hint: "Gifts for this event go here.",
            },
            { name: "FKCampaignId", label: "Campaign", kind: "choice" },
            { name: "FKAppealId", label: "Appeal", kind: "choice" },
        ],
    },
    {
        title: "Notes",
        fields: [{ name: "Notes", label: "Notes", kind: "multiline", rows: 6, wide: true }],
    },
];

/** The few that are asked first for a new event. */
export const shortEventGroups = [{
    fields: [name, start, end, location, category, status, most],
}];

export function fieldNames(groups) {
    return groups.flatMap(({ fields }) => fields.map((field) => field.name));
}
