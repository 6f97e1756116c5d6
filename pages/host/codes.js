// Funds, campaigns, appeals and assignees: what is offered, in what order.

import { bindKey } from "../lib/keys.js";
import { reportFailure } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { tabRow } from "../lib/tabs.js";
import { codePanel } from "./code_panel.js";
import { codeLists } from "./code_words.js";

const byId = (id) => document.getElementById(id);

startPage("Settings", async ({ format }) => {
    const tabs = codeLists.map((description) => {
        const panel = document.createElement("div");
        byId("panels").append(panel);
        const update = codePanel(panel, description, format);
        return { key: description.key, title: description.title, panel, update };
    });
    let shown;
    const choose = tabRow(byId("tabs"), tabs, (tab) => {
        shown = tab;
        history.replaceState(null, "", `?list=${tab.key}`);
        return tab.update();
    });
    bindKey("n", "Add to the list shown", () => shown.panel.querySelector("[data-add]").click());
    document.addEventListener("hostrefresh", () => shown?.update().catch(reportFailure));
    await choose(new URLSearchParams(location.search).get("list"));
});
