// The invitation groups: how many of each take part, and how they have answered.

import { reportFailure } from "../../lib/notice.js";
import { preferences } from "../../lib/preferences.js";
import { orderPreference, recordTable } from "../../lib/record_table.js";
import { mailTo } from "../participant_actions.js";
import { countsOf } from "../participant_list.js";
import { readGroups, readMemberships, readParticipants } from "../participants.js";

export const tab = {
    key: "groups",
    title: "Invitation groups",
    async show(panel, context) {
        const { eventId, format, allowed } = context;
        const several = "groups";
        const [remembered] = await preferences(orderPreference(several));
        const count = (key, label) => ({ key, label, number: true });
        const show = recordTable(panel, {
            name: ["group", several],
            fileName: () => `${context.event.Name} invitation groups`,
            format,
            columns: [
                { key: "name", label: "Group" },
                count("all", "Participants"),
                count("invited", "Invited"),
                count("accepted", "Accepted"),
                count("declined", "Declined"),
                count("attended", "Attended"),
            ],
            order: { key: "name", descending: false },
            remembered,
            empty: "Nobody belongs to an invitation group yet.",
            titleOf: ({ name }) => name,
            open: ({ name, Id }) => openGroup(Id === 0 ? "" : name),
            tools: allowed("events/settings")
                ? [{ label: "All groups", run: () => location.assign("/events/events-settings") }]
                : [],
            actions: allowed("mailings/send")
                ? [
                    {
                        label: "Mailing",
                        run: ({ donors }) => mailTo(donors),
                        isShown: ({ donors }) => donors.length > 0,
                    },
                ]
                : [],
        });

        /** The participants tab with this group alone. */
        function openGroup(name) {
            const query = new URLSearchParams({ id: eventId, tab: "participants", show: "all" });
            if (name) query.set("group", name);
            location.assign(`/events/event-details?${query}`);
        }

        async function update() {
            const [groups, memberships, participants] = await Promise.all([
                readGroups(),
                readMemberships(eventId),
                readParticipants(eventId),
            ]);
            const groupsOf = new Map();
            for (const { donorId, groupId } of memberships) {
                groupsOf.set(donorId, [...(groupsOf.get(donorId) ?? []), groupId]);
            }
            const membersOf = (id) =>
                participants.filter(({ donorId }) => groupsOf.get(donorId)?.includes(id));
            const bare = participants.filter(({ donorId }) => !groupsOf.has(donorId));
            const rows = groups
                .map(({ id, name }) => rowOf(id, name, membersOf(id)))
                .filter((row, index) => row.all > 0 || groups[index].visible);
            if (bare.length > 0) rows.push(rowOf(0, "In no group", bare));
            show(rows);
        }

        await update();
        return () => update().catch(reportFailure);
    },
};

function rowOf(Id, name, members) {
    return { Id, name, donors: members.map(({ donorId }) => donorId), ...countsOf(members) };
}
