// The lookup lists: their items, which of them are offered, and in what order.

import { itemTabs } from "../lib/item_list.js";
import { notice } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { onPress } from "../lib/press.js";
import { chooseShown, readHidden } from "./details_choice.js";
import { hideable } from "./details_tabs.js";
import { lookupLists } from "./lookup_lists.js";
import { lookupPanel } from "./lookup_panel.js";

const byId = (id) => document.getElementById(id);

startPage("Settings", async ({ format, allowed }) => {
    const mayEdit = allowed("events/settings");
    byId("banner").hidden = mayEdit;
    async function customise() {
        const isChanged = await chooseShown(hideable({ allowed }), await readHidden());
        if (isChanged) notice("Events show these tabs and boxes from now on.");
    }
    onPress(byId("customise"), customise);
    byId("customise").hidden = false; // until here, a click would have been lost
    await itemTabs(lookupLists, (panel, description) =>
        lookupPanel(panel, description, { format, mayEdit }));
});
