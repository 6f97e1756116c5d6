// Name badges of the participants that were chosen in their list, on common label sheets.

import { read } from "../lib/app.js";
import { build } from "../lib/build.js";
import { startPage } from "../lib/page.js";
import { preferences, remember } from "../lib/preferences.js";
import { printBar } from "../lib/print_page.js";
import { manage } from "./addin.js";
import { pagesOf, sheets } from "./badge_sheets.js";
import { deletedEvent, showMissing } from "./missing_event.js";
import { shownRows } from "./participant_list.js";
import { readParticipants } from "./participants.js";

const eventId = Number(new URLSearchParams(location.search).get("id"));
const byId = (id) => document.getElementById(id);
const preference = "badge-sheet";

startPage("Events", async ({ format }) => {
    const event = eventId > 0 ? await manage().GetEvent(eventId) : null;
    if (!event) return showMissing(deletedEvent);
    const [{ Name, StartDateTime }, rows, [last]] = await Promise.all([
        read(event, ["Name", "StartDateTime"]),
        readParticipants(eventId),
        preferences(preference),
    ]);
    document.title = `${Name}: name badges - Quillmere`;
    const badges = chosenRows(rows);
    const sheet = build("select", { className: "inline", "aria-label": "Label sheet" },
        ...Object.entries(sheets).map(([key, { label }]) => new Option(label, key)));
    if (Object.hasOwn(sheets, last)) sheet.value = last;
    const skipped = build("input", {
        type: "number", id: "skipped", min: "0", value: "0", className: "few",
    });
    byId("bar").append(
        printBar(`/events/event-details?id=${eventId}&tab=participants`, sheet,
            build("label", { className: "with-box" }, "Labels already used", skipped)),
    );
    const paper = new CSSStyleSheet();
    document.adoptedStyleSheets = [...document.adoptedStyleSheets, paper];

    function show() {
        const chosen = sheets[sheet.value];
        paper.replaceSync(`@page { size: ${chosen.paper}; margin: 0; }`);
        const pages = pagesOf(badges, chosen, Math.trunc(Number(skipped.value)) || 0);
        byId("sheets").replaceChildren(...pages.map((page) => sheetElement(page, chosen)));
        byId("empty").hidden = badges.length > 0;
        const words = badges.length === 1 ? "1 badge" : `${format.whole(badges.length)} badges`;
        const many = pages.length === 1 ? "1 sheet" : `${format.whole(pages.length)} sheets`;
        byId("count").textContent = `${words} on ${many}. Print at full size, without margins.`;
    }

    function sheetElement(page, { columns, width, height, top, left, gapX, gapY, paper: size }) {
        const element = build("div", { className: `sheet paper-${size}` },
            ...page.map((row) => badgeElement(row)));
        Object.assign(element.style, {
            gridTemplateColumns: `repeat(${columns}, ${width}mm)`,
            gridAutoRows: `${height}mm`,
            padding: `${top}mm 0 0 ${left}mm`,
            columnGap: `${gapX}mm`,
            rowGap: `${gapY}mm`,
        });
        return element;
    }

    function badgeElement(row) {
        if (!row) return build("div", { className: "badge blank" });
        return build("div", { className: "badge" },
            build("b", { text: row.name }),
            build("span", { text: row.groups }),
            build("small", { text: `${Name}, ${format.longDate(StartDateTime)}` }));
    }

    sheet.addEventListener("change", () => {
        remember(preference, sheet.value);
        show();
    });
    skipped.addEventListener("input", show);
    show();
});

/** Those chosen in the list, else all who have accepted, by last name. */
function chosenRows(rows) {
    const stored = sessionStorage.getItem(`badges-${eventId}`);
    const ids = new Set(stored ? JSON.parse(stored) : []);
    const chosen = ids.size > 0 ? rows.filter(({ id }) => ids.has(id)) : rows;
    const filter = ids.size > 0 ? "all" : "accepted";
    return shownRows(chosen, { text: "", filter, group: "", sort: "name" });
}
