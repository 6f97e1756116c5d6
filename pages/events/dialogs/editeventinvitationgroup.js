// The form of an invitation group.

import { startListItemDialog } from "./list_item_dialog.js";

startListItemDialog({ thing: "invitation group", listName: "eventinvitationgroups" });
