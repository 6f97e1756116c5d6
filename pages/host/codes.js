// Funds, campaigns, appeals and assignees: what is offered, in what order.

import { itemTabs } from "../lib/item_list.js";
import { startPage } from "../lib/page.js";
import { codePanel } from "./code_panel.js";
import { codeLists } from "./code_words.js";

startPage("Settings", ({ format }) =>
    itemTabs(codeLists, (panel, description) => codePanel(panel, description, format)));
