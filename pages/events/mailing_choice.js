// Who a mailing of an event reaches: the choice as the command takes it, and how many that are.

/** The kinds of choices by the numbers that the add-in knows them by. */
export const byStatus = "1";
export const byActivity = "2";
export const bySponsorship = "3";
export const byGroup = "4";

/** Codes each enclosed in "~", as the add-in looks for them: "~2~~3~". */
export function enclosed(codes) {
    return codes.map((code) => `~${code}~`).join("");
}

/**
 * The donors that `kind` with its `chosen` keys reaches, each once. `people` holds the event's
 * participants, its reservation lines and its memberships in groups.
 */
export function reachedBy(kind, chosen, { participants, lines, memberships }) {
    const has = (key) => chosen.includes(String(key));
    const isThere = new Set(participants.map(({ donorId }) => donorId));
    const donors = {
        [byStatus]: () => participants.filter(({ status }) => has(status)),
        [byActivity]: () => lines.filter(({ activityId }) => has(activityId)),
        [bySponsorship]: () =>
            lines.filter(({ isSponsorship }) => has(isSponsorship ? "sponsorship" : "other")),
        [byGroup]: () =>
            memberships.filter(({ donorId, groupId }) => has(groupId) && isThere.has(donorId)),
    }[kind]();
    return new Set(donors.map(({ donorId }) => donorId));
}
