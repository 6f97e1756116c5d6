// The mailing lists, or the donors of the one that the address names.

import { App, list } from "../lib/app.js";
import { confirmBox } from "../lib/message_box.js";
import { announce, reportFailure } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { onPress } from "../lib/press.js";
import { arrowKeys, rowFrom } from "../lib/table.js";
import { letterEditor } from "./letter_editor.js";

const columns = ["Key", "Source", "CreatedBy", "CreateDate", "DonorCount"];
const donorColumns = ["Display", "EntityType"];

const byId = (id) => document.getElementById(id);
const manage = () => App.Modules.donor.MailingManage;
const key = new URLSearchParams(location.search).get("list");

startPage("Mailings", async ({ format, allowed }) => {
    let editor;
    async function load() {
        const { rows } = await list(manage().Lists, columns);
        if (key === null) return showLists(rows, format);
        const shown = rows.find((row) => row.Key.toLowerCase() === key.toLowerCase());
        await showList(shown, format);
        byId("delete").hidden = !shown || !allowed("mailings/send");
        byId("donors-title").hidden = byId("donors").hidden;
        if (!shown || shown.DonorCount === 0 || !allowed("mailings/send")) return;
        if (editor) return editor.update();
        editor = letterEditor(byId("letter"), await manage().GetList(key), {
            count: shown.DonorCount,
            allUrl: `/host/letters?list=${encodeURIComponent(key)}`,
            format,
        });
        await editor.begin();
    }
    onPress(byId("delete"), remove);
    document.addEventListener("hostrefresh", () => load().catch(reportFailure));
    arrowKeys(byId("lists").tBodies[0]);
    await load();
});

function showLists(lists, format) {
    const rows = lists.map((one) => {
        const row = rowFrom(byId("list-row"), {
            made: format.dateTime(one.CreateDate),
            source: one.Source || "not started",
            by: one.CreatedBy,
            donors: format.whole(one.DonorCount),
        });
        row.querySelector("a").href = `/host/mailings?list=${encodeURIComponent(one.Key)}`;
        return row;
    });
    fill("lists", rows, "No mailing has been started yet.");
    announce(rows.length === 1 ? "1 mailing list" : `${format.whole(rows.length)} mailing lists`);
}

async function showList(shown, format) {
    byId("crumbs").hidden = false;
    byId("title").textContent = "Mailing list";
    document.title = "Mailing list - Quillmere";
    if (!shown) {
        byId("made").textContent = "";
        fill("donors", [], "There is no such mailing list. It may have been deleted.");
        return;
    }
    const { rows: donors } = await list(manage().GetList(key).Donors, donorColumns);
    byId("made").textContent = [
        shown.Source,
        shown.CreatedBy,
        format.dateTime(shown.CreateDate),
        donors.length === 1 ? "1 donor" : `${format.whole(donors.length)} donors`,
    ]
        .filter(Boolean)
        .join(" · ");
    const rows = donors.map(({ Display, EntityType }) =>
        rowFrom(byId("donor-row"), { name: Display, kind: EntityType }),
    );
    fill("donors", rows, "Nobody is on this list.");
}

function fill(table, rows, emptyText) {
    byId(table).tBodies[0].replaceChildren(...rows);
    byId(table).hidden = rows.length === 0;
    byId("empty").hidden = rows.length > 0;
    byId("empty").textContent = emptyText;
}

async function remove() {
    const answer = await confirmBox({
        title: "Delete Mailing List",
        text: "Are you sure you want to delete this mailing list?\nThe donors on it stay.",
        buttons: [
            ["yes", "Yes"],
            ["no", "No"],
        ],
        danger: true,
    });
    if (answer !== "yes") return;
    await manage().GetList(key).Delete();
    location.assign("/host/mailings");
}
