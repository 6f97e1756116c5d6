// Who is expected, to be ticked off at the door with a pen.

import { read } from "../lib/app.js";
import { build } from "../lib/build.js";
import { dueWords } from "../lib/money_words.js";
import { startPage } from "../lib/page.js";
import { printBar } from "../lib/print_page.js";
import { manage } from "./addin.js";
import { deletedEvent, showMissing } from "./missing_event.js";
import { accepted, shownRows } from "./participant_list.js";
import { readParticipants, readStandings } from "./participants.js";
import { linesText } from "./reservations.js";

const eventId = Number(new URLSearchParams(location.search).get("id"));
const byId = (id) => document.getElementById(id);

startPage("Events", async ({ format }) => {
    const event = eventId > 0 ? await manage().GetEvent(eventId) : null;
    if (!event) return showMissing(deletedEvent);
    const [{ Name, StartDateTime }, rows, standings] = await Promise.all([
        read(event, ["Name", "StartDateTime"]),
        readParticipants(eventId),
        readStandings(eventId),
    ]);
    const everybody = build("input", { type: "checkbox", id: "everybody" });
    byId("bar").append(
        printBar(
            `/events/event-details?id=${eventId}&tab=participants`,
            build("label", { className: "with-box" }, everybody, "Also those who have not accepted"),
        ),
    );
    byId("title").textContent = `${Name}: door list`;
    document.title = `${Name}: door list - Quillmere`;
    everybody.addEventListener("change", show);
    show();

    function show() {
        const there = new Set(rows.map(({ donorId }) => donorId));
        // Whoever has reserved is expected, on the list of participants or not.
        const others = [...standings.values()]
            .filter(({ donorId }) => !there.has(donorId))
            .map((one) => ({ ...one, id: -one.donorId, status: accepted, groups: "",
                groupNames: [], search: "" }));
        const expected = [...rows, ...others].filter(
            (row) =>
                everybody.checked || row.status === accepted || standings.has(row.donorId),
        );
        const state = { text: "", filter: "all", group: "", sort: "name" };
        const shown = shownRows(expected, state);
        byId("list").tBodies[0].replaceChildren(
            ...shown.map((row) => rowElement(row, standings.get(row.donorId), format)),
        );
        byId("list").hidden = shown.length === 0;
        byId("empty").hidden = shown.length > 0;
        const when = [format.longDate(StartDateTime), format.time(StartDateTime) || "no time set"];
        byId("when").textContent = `${when.join(", ")}. ${format.whole(shown.length)} expected.`;
    }
});

function rowElement(row, standing, format) {
    const lines = standing?.reservations.flatMap((one) => one.lines) ?? [];
    return build("tr", {},
        build("td", {}, build("span", { className: "tick", text: row.attended ? "✓" : "" })),
        build("th", { scope: "row", text: row.sortName }),
        build("td", { text: row.groups }),
        build("td", { text: linesText(lines, format) }),
        build("td", { text: standing ? dueWords(standing.stands, format) : "" }));
}
