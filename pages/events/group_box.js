// Asks which invitation groups a selection of participants joins and leaves.

import { build } from "../lib/build.js";
import { confirmBox } from "../lib/message_box.js";

/** Choices for the visible `groups`: { element, read }, where `read()` gives { joins, leaves }. */
export function groupChoices(groups) {
    const offered = groups.filter(({ visible }) => visible);
    const choices = offered.map((group) => {
        const select = build("select", { className: "inline", "aria-label": group.name },
            new Option("Leave as it is", ""), new Option("Add to it", "join"),
            new Option("Take out of it", "leave"));
        return { group, select };
    });
    const element = build("div", { className: "group-choices" },
        ...choices.map(({ group, select }) =>
            build("div", {}, build("span", { text: group.name }), select)));
    if (offered.length === 0) {
        element.append(build("p", { className: "hint", text: "There are no invitation groups yet." }));
    }
    const chosen = (value) =>
        choices.filter(({ select }) => select.value === value).map(({ group }) => group);
    return { element, read: () => ({ joins: chosen("join"), leaves: chosen("leave") }) };
}

/** Asks in a box: { joins, leaves } of groups { id, name }, or undefined when nothing was chosen. */
export async function chooseGroups(groups, count) {
    const { element, read } = groupChoices(groups);
    const answer = await confirmBox({
        title: count === 1 ? "Groups of 1 participant" : `Groups of ${count} participants`,
        content: element,
        buttons: [
            ["ok", "Change the groups"],
            ["cancel", "Cancel"],
        ],
    });
    const change = read();
    const isAny = change.joins.length + change.leaves.length > 0;
    return answer === "ok" && isAny ? change : undefined;
}
