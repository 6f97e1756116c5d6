// The form of a status of events.

import { startListItemDialog } from "./list_item_dialog.js";

startListItemDialog({ thing: "status", listName: "eventstatuses" });
