// The code lists and the words for what happens to their items.

export const codeLists = [
    { key: "fund", thing: "fund", title: "Funds" },
    { key: "campaign", thing: "campaign", title: "Campaigns" },
    { key: "appeal", thing: "appeal", title: "Appeals" },
    { key: "assignee", thing: "assignee", title: "Assignees" },
];

/** What the records of a table are called, one and several. */
const records = {
    donor_gifts: ["gift", "gifts"],
    donor_gifts_payments: ["payment", "payments"],
    actions_assignments: ["assignment", "assignments"],
    events_event_info: ["event", "events"],
    events_event_activities: ["activity", "activities"],
    events_event_tasks: ["task", "tasks"],
};

/** Asks whether to delete `name`, to which `uses` ({ Table, Count }) refer. */
export function deletionQuestion({ thing }, name, uses, format) {
    const question = `Are you sure you want to delete the ${thing} “${name}”?`;
    if (uses.length === 0) return `${question}\nNothing refers to it.`;
    const total = uses.reduce((sum, { Count }) => sum + Count, 0);
    const parts = uses.map(({ Table, Count }) => {
        const [one, several] = records[Table] ?? ["other record", "other records"];
        return `${format.whole(Count)} ${Count === 1 ? one : several}`;
    });
    const list =
        parts.length > 1 ? `${parts.slice(0, -1).join(", ")} and ${parts.at(-1)}` : parts[0];
    return total === 1
        ? `${question}\n${list} refers to it and will be left without.`
        : `${question}\n${list} refer to it and will be left without.`;
}
