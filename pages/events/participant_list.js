// The participants of an event as a list: who is counted, shown and in which order.

import { compareValues } from "../lib/sorting.js";

/** The invitation statuses by their numbers. */
export const statuses = ["Not invited", "Invited", "Accepted", "Declined"];
export const [notInvited, invited, accepted, declined] = [0, 1, 2, 3];

/** What the strip over the list counts, and shows when it is chosen. */
export const filters = {
    all: { label: "Everyone", holds: () => true },
    invited: { label: "Invited", holds: ({ status }) => isInvited(status) },
    noAnswer: { label: "No answer yet", holds: ({ status }) => status === invited },
    accepted: { label: "Accepted", holds: ({ status }) => status === accepted },
    declined: { label: "Declined", holds: ({ status }) => status === declined },
    notInvited: { label: "Not invited", holds: ({ status }) => !isInvited(status) },
    attended: { label: "Attended", holds: ({ attended }) => attended },
};

/** Whoever has answered was invited. */
function isInvited(status) {
    return status === invited || status === accepted || status === declined;
}

/** How many of `rows` each filter shows. */
export function countsOf(rows) {
    return Object.fromEntries(
        Object.entries(filters).map(([key, { holds }]) => [key, rows.filter(holds).length]),
    );
}

const sorts = {
    name: ({ sortName }) => sortName,
    status: ({ status }) => (isInvited(status) ? status : notInvited),
    groups: ({ groups }) => groups,
    attended: ({ attended }) => attended,
    due: ({ stands }) => stands?.due,
};

export const sortKeys = Object.keys(sorts);

/** `rows` that `state` ({ text, filter, group, sort, descending }) asks for, in its order. */
export function shownRows(rows, { text, filter, group, sort, descending }) {
    const words = text.toLocaleLowerCase().split(/\s+/).filter(Boolean);
    const { holds } = filters[filter] ?? filters.all;
    const found = rows.filter(
        (row) =>
            holds(row) &&
            (!group || row.groupNames.includes(group)) &&
            words.every((word) => row.search.includes(word)),
    );
    const value = sorts[sort] ?? sorts.name;
    const direction = descending ? -1 : 1;
    return found.sort(
        (one, other) =>
            direction * compareValues(value(one), value(other)) ||
            compareValues(one.sortName, other.sortName) ||
            one.id - other.id,
    );
}

/** A row of the list from what the add-in and the host know of a participant. */
export function rowOf(participant, donor) {
    const { Id, FKdonorId, Status, Attended, ParticipantName, InvitationGroupsString } =
        participant;
    const groups = InvitationGroupsString ?? "";
    const name = ParticipantName || donor?.Display || "(deleted donor)";
    const sortName = donor?.LastName ? [donor.LastName, donor.FirstName].filter(Boolean).join(", ") : name;
    return {
        id: Id,
        donorId: FKdonorId,
        name,
        sortName,
        status: Status,
        attended: Attended,
        groups,
        groupNames: groups ? groups.split(", ") : [],
        search: name.toLocaleLowerCase(),
    };
}

/** The word for a status; an unknown one counts as not invited. */
export function statusText(status) {
    return statuses[status] ?? statuses[notInvited];
}

/** "48 changed, 2 skipped: 1 already accepted, 1 no longer on the list". */
export function resultLine(done, verb, skipped, format) {
    const reasons = [...skipped];
    const count = reasons.reduce((sum, [, number]) => sum + number, 0);
    const first = `${format.whole(done)} ${verb}`;
    if (count === 0) return `${first}.`;
    const why =
        reasons.length === 1
            ? reasons[0][0]
            : reasons.map(([reason, number]) => `${format.whole(number)} ${reason}`).join(", ");
    return `${first}, ${format.whole(count)} skipped: ${why}.`;
}

/**
 * How many people there would be over the event's maximum with `more` who come; 0 where there is
 * room, or no maximum.
 */
export function overCapacity(rows, most, more = 0) {
    if (!most) return 0;
    const coming = rows.filter(({ status }) => status === accepted).length;
    return Math.max(0, coming + more - most);
}

const usual = { text: "", filter: "all", group: "", sort: "name", descending: false };
const names = { text: "find", filter: "show", group: "group", sort: "by" };

/** A list's state from the text of an address, what it does not tell from `remembered`. */
export function stateFrom(search, remembered = "") {
    const query = new URLSearchParams(search);
    const source = Object.values(names).some((name) => query.has(name))
        ? query
        : new URLSearchParams(remembered);
    const [sort, direction] = (source.get(names.sort) ?? "").split("-");
    const filter = source.get(names.filter) ?? "";
    return {
        text: source.get(names.text) ?? "",
        filter: Object.hasOwn(filters, filter) ? filter : usual.filter,
        group: source.get(names.group) ?? "",
        sort: Object.hasOwn(sorts, sort) ? sort : usual.sort,
        descending: Object.hasOwn(sorts, sort) && direction === "desc",
    };
}

/** The state as a text for the address; what is usual is left out. */
export function textOf({ text, filter, group, sort, descending }) {
    const query = new URLSearchParams();
    if (text) query.set(names.text, text);
    if (filter !== usual.filter) query.set(names.filter, filter);
    if (group) query.set(names.group, group);
    if (sort !== usual.sort || descending) query.set(names.sort, descending ? `${sort}-desc` : sort);
    return String(query);
}

/** The names under which an address tells the state of a list. */
export const addressNames = Object.values(names);
