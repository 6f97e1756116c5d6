// The signed-in user's open tasks of all events.

import { App, list, release, write } from "../lib/app.js";
import { announce, reportFailure } from "../lib/notice.js";
import { rowFrom } from "../lib/table.js";
import { commands, manage } from "../events/addin.js";
import { taskState } from "../events/task_state.js";

const mostShown = 8;
const columns = ["Id", "FKEventId", "Name", "DueDateTime", "Completed"];

/**
 * Sets up the list in `section` with rows from `template`; gives a function that reads and shows
 * the tasks.
 */
export function myTasks(section, template, { session, format, mayEdit }) {
    const find = (selector) => section.querySelector(selector);

    async function update() {
        const { rows } = await list(manage().GetEventsTasksByDate(""), columns);
        const names = await eventNames(rows.slice(0, mostShown));
        const items = rows.slice(0, mostShown).map((task) => itemOf(task, names));
        find("ol").replaceChildren(...items);
        find(".empty").hidden = items.length > 0;
        const more = rows.length - items.length;
        find(".hint").textContent = more > 0 ? `and ${format.whole(more)} more` : "";
    }

    function itemOf(task, names) {
        const eventName = names.get(task.FKEventId) ?? "";
        const state = taskState(task, session.today);
        const item = rowFrom(template, {
            name: task.Name,
            event: eventName,
            due: `due ${format.dateTime(task.DueDateTime, format.longDate)}`,
            state: state === "Overdue" ? state : "",
        });
        item.querySelector("a").href = `/events/event-details?id=${task.FKEventId}&tab=tasks`;
        const button = item.querySelector("button");
        button.hidden = !mayEdit;
        button.setAttribute("aria-label", `Complete ${task.Name} of ${eventName}`);
        button.addEventListener("click", () => complete(task, button).catch(reportFailure));
        return item;
    }

    async function complete({ Id, FKEventId, Name }, button) {
        button.disabled = true;
        const place = [...find("ol").children].indexOf(button.closest("li"));
        await commands().CompleteEventTask(FKEventId, Id);
        const stored = await manage().GetEventTask(Id);
        if (stored && (await stored.Completed)) announce(`${Name} is done`);
        await update();
        const next = find("ol").children[place] ?? find("ol").lastElementChild;
        (next?.querySelector("a") ?? find("h2")).focus();
    }

    return update;
}

/** The names of the tasks' events by their ids. */
async function eventNames(tasks) {
    const ids = [...new Set(tasks.map(({ FKEventId }) => FKEventId))];
    if (ids.length === 0) return new Map();
    const literals = await Promise.all(ids.map((id) => App.Provider.VToSQL(id, 2)));
    const criteria = await manage().GetNewEventsCriteria();
    await write(criteria, { CustomWhere: `Id IN (${literals.join(", ")})` });
    const { rows } = await list(manage().GetEventsBySearch(criteria), ["Id", "Name"]);
    release(criteria);
    return new Map(rows.map(({ Id, Name }) => [Id, Name]));
}
