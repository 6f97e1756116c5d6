// The start page: what comes next.

import { bindKey } from "../lib/keys.js";
import { reportFailure } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { rowFrom } from "../lib/table.js";
import { DateTime } from "../lib/values.js";
import { commands } from "../events/addin.js";
import { findEvents } from "../events/find_events.js";
import { loadLookups, nameIn } from "../events/lookups.js";
import { myTasks } from "./my_tasks.js";

const shown = 6;
const byId = (id) => document.getElementById(id);

startPage("Home", async ({ session, format, allowed }) => {
    byId("greeting").textContent = `Welcome, ${session.user.name}`;
    byId("today").textContent = format.longDate(DateTime.of(session.today));
    byId("quick").hidden = false;
    byId("add").hidden = !allowed("events/edit");
    byId("add").addEventListener("click", () => {
        commands().AddEvent();
    });
    byId("find").addEventListener("click", () => {
        commands().FindEvent();
    });
    bindKey("f", "Find an event", () => byId("find").click());
    if (allowed("events/edit")) bindKey("n", "Add an event", () => byId("add").click());

    async function load() {
        const state = { text: "", span: "coming", sort: "start", descending: false, shown };
        const columns = ["Id", "Name", "StartDateTime", "FKLocationId"];
        const [{ rows }, { FKLocationId }] = await Promise.all([
            findEvents(state, columns, session),
            loadLookups(["FKLocationId"]),
        ]);
        byId("next").replaceChildren(
            ...rows.map((event) => {
                const place = nameIn(FKLocationId, event.FKLocationId);
                return itemOf(event, place, session.today, format);
            }),
        );
        byId("empty").hidden = rows.length > 0;
    }
    const mayEdit = allowed("events/edit");
    const updateTasks = myTasks(byId("tasks"), byId("task"), { session, format, mayEdit });
    const update = () => Promise.all([load(), updateTasks()]);
    document.addEventListener("hostrefresh", () => update().catch(reportFailure));
    await update();
});

function itemOf({ Id, Name, StartDateTime }, place, today, format) {
    const [, month, day] = format.date(StartDateTime)
        ? StartDateTime.date.split("-")
        : ["", "", ""];
    const time = format.time(StartDateTime) || "no time set";
    const item = rowFrom(byId("next-event"), {
        name: Name,
        month: format.monthName(Number(month)),
        day: Number(day),
        when: [format.longDate(StartDateTime), time, place].filter(Boolean).join(" · "),
        ahead: aheadText(today, StartDateTime.date),
    });
    item.querySelector("a").href = `/events/event-details?id=${Id}`;
    return item;
}

function aheadText(today, date) {
    const days = Math.round((Date.parse(date) - Date.parse(today)) / 86400000);
    if (days === 0) return "today";
    if (days === 1) return "tomorrow";
    return days < 60 ? `in ${days} days` : `in ${Math.round(days / 30.4)} months`;
}
