// The form of a category of events.

import { startListItemDialog } from "./list_item_dialog.js";

startListItemDialog({ thing: "category", listName: "eventcategories" });
