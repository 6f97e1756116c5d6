// What of the event details page is shown. The settings come as a section of the page's model: a
// row for each tab and box, with "1" or "0" as its value.

import { all, App, ask, list } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { submitOnce } from "../../lib/submit_once.js";

const byId = (id) => document.getElementById(id);

startDialogPage(async ({ heading, close }) => {
    if (heading) byId("heading").textContent = heading;
    const settings = await App.Shell.Dialog("settings");
    const rows = settings ? await rowsOf(settings) : [];
    byId("nothing").hidden = rows.length > 0;
    if (rows.length === 0) return;

    const choices = rows.map((row) => choiceOf(row));
    for (const [index, { Id }] of rows.entries()) {
        byId(Id.startsWith("box-") ? "boxes" : "tabs").append(choices[index]);
    }
    for (const list of document.querySelectorAll("fieldset")) {
        list.hidden = !list.querySelector("input");
    }
    byId("choice").hidden = false;
    document.querySelector("input").focus();

    submitOnce(byId("choice"), byId("save"), async () => {
        await all(
            choices.map((choice, index) =>
                ask.write(settings.Rows.Item(index + 1), {
                    Value: choice.querySelector("input").checked ? "1" : "0",
                }),
            ),
        );
        await close(true);
    });
});

async function rowsOf(settings) {
    return (await list(settings.Rows, ["Id", "Name", "Value"])).rows;
}

function choiceOf({ Name, Value }) {
    const choice = document.createElement("label");
    choice.className = "inline";
    const box = document.createElement("input");
    box.type = "checkbox";
    box.checked = Value !== "0";
    choice.append(box, Name);
    return choice;
}
