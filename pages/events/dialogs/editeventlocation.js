// The form of a location of events.

import { locationFields } from "../lookup_lists.js";
import { startListItemDialog } from "./list_item_dialog.js";

startListItemDialog({ thing: "location", listName: "eventlocations", more: locationFields });
