// All letters of a mailing list, each on a page of its own: to be printed, or taken away in a file.

import { App, list } from "../lib/app.js";
import { build } from "../lib/build.js";
import { saveFile } from "../lib/csv.js";
import { startPage } from "../lib/page.js";
import { printBar } from "../lib/print_page.js";
import { letterFile } from "./letter_file.js";

const byId = (id) => document.getElementById(id);
const key = new URLSearchParams(location.search).get("list") ?? "";
const atOnce = 200;

startPage("Mailings", async ({ format }) => {
    const held = await App.Modules.donor.MailingManage.GetList(key);
    if (!held) {
        byId("count").textContent = "There is no such mailing list. It may have been deleted.";
        return;
    }
    const letters = await readLetters(held, (count) => {
        byId("count").textContent = `${format.whole(count)} letters so far…`;
    });
    byId("count").textContent =
        letters.length === 1 ? "1 letter" : `${format.whole(letters.length)} letters`;
    byId("letters").replaceChildren(
        ...letters.map(({ DonorName, Text }) =>
            build("article", {
                className: "paper-sheet lines",
                "aria-label": `Letter to ${DonorName}`,
                text: Text,
            }),
        ),
    );
    const save = build("button", {
        type: "button",
        text: "Save as a file",
        on: { click: () => saveFile("letters.html", "text/html", letterFile(letters)) },
    });
    byId("bar").append(printBar(`/host/mailings?list=${encodeURIComponent(key)}`, save));
});

async function readLetters(held, onRange) {
    const text = await held.Letter;
    const letters = [];
    for (;;) {
        const range = held.Merge(text, letters.length, atOnce);
        const { rows } = await list(range, ["DonorName", "Text"]);
        letters.push(...rows);
        if (rows.length < atOnce) return letters;
        onRange(letters.length);
    }
}
