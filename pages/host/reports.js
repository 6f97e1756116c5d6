// The reports that modules offer, by category.

import { all, App, ask, list } from "../lib/app.js";
import { startPage } from "../lib/page.js";
import { onPress } from "../lib/press.js";
import { rowFrom } from "../lib/table.js";
import { commands } from "../events/addin.js";
import { offered } from "./report_list.js";

const columns = ["Key", "Name", "Description", "Iconimage", "Path", "Script", "Operation"];
const byId = (id) => document.getElementById(id);

startPage("Reports", async ({ allowed }) => {
    const [categories, addInFolder] = await Promise.all([
        readCategories(),
        App.Modules.Events.Path,
    ]);
    const shown = offered(categories, addInFolder, allowed);
    byId("categories").replaceChildren(...shown.map(sectionOf));
    byId("empty").hidden = shown.length > 0;
});

async function readCategories() {
    const { rows } = await list(App.Modules.Quillmere.Reports.Load(), [
        "Name",
        "Description",
        "Reports",
    ]);
    const answers = await all(rows.map(({ Reports }) => ask.list(Reports, columns)));
    return rows.map(({ Name, Description }, index) => ({
        name: Name,
        description: Description,
        reports: answers[index].rows,
    }));
}

function sectionOf({ name, description, reports }, index) {
    const section = rowFrom(byId("category"), { name, description });
    const heading = section.querySelector("h2");
    heading.id = `category-${index}`;
    section.setAttribute("aria-labelledby", heading.id);
    section.querySelector("ul").append(...reports.map(itemOf));
    return section;
}

function itemOf({ name, description, icon, address, command }) {
    const item = rowFrom(byId("report"), { name, description });
    const picture = item.querySelector("img");
    if (icon) picture.src = icon;
    else picture.remove();
    const link = item.querySelector("a");
    if (address) {
        link.href = address;
        return item;
    }
    const button = document.createElement("button");
    button.type = "button";
    button.className = "row-link";
    button.textContent = name;
    onPress(button, () => commands()[command.name](...command.args));
    link.replaceWith(button);
    return item;
}
