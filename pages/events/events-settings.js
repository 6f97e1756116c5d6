// The lookup lists: their items, which of them are offered, and in what order.

import { bindKey } from "../lib/keys.js";
import { notice, reportFailure } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { tabRow } from "../lib/tabs.js";
import { chooseShown, readHidden } from "./details_choice.js";
import { hideable } from "./details_tabs.js";
import { lookupLists } from "./lookup_lists.js";
import { lookupPanel } from "./lookup_panel.js";

const byId = (id) => document.getElementById(id);

startPage("Settings", async ({ format, allowed }) => {
    const mayEdit = allowed("events/settings");
    byId("banner").hidden = mayEdit;
    const tabs = lookupLists.map((description) => {
        const panel = document.createElement("div");
        byId("panels").append(panel);
        const update = lookupPanel(panel, description, { format, mayEdit });
        return { key: description.key, title: description.title, panel, update };
    });
    let shown;
    const choose = tabRow(byId("tabs"), tabs, (tab) => {
        shown = tab;
        history.replaceState(null, "", `?list=${tab.key}`);
        return tab.update();
    });
    if (mayEdit) {
        bindKey("n", "Add to the list shown", () =>
            shown.panel.querySelector("[data-add]").click(),
        );
    }
    async function customise() {
        const isChanged = await chooseShown(hideable({ allowed }), await readHidden());
        if (isChanged) notice("Events show these tabs and boxes from now on.");
    }
    byId("customise").addEventListener("click", () => customise().catch(reportFailure));
    byId("customise").hidden = false; // until here, a click would have been lost
    document.addEventListener("hostrefresh", () => shown?.update().catch(reportFailure));
    await choose(new URLSearchParams(location.search).get("list"));
});
