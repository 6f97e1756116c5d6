// The reports on a saved list, offered where the list is shown.

import { App, list } from "../lib/app.js";
import { menuButton } from "../lib/menu.js";
import { offeredForList } from "./report_list.js";

const columns = ["Key", "Name", "Path", "Operation", "IsEntitySmartList", "EntityType"];

/** A menu of the reports on the saved list `listId` of `entityType`; undefined without any. */
export async function listReportsMenu(listId, entityType, allowed) {
    const [{ rows }, addInFolder] = await Promise.all([
        list(App.Modules.Quillmere.Reports.LoadChooser(), columns),
        App.Modules.Events.Path,
    ]);
    const reports = offeredForList(rows, { listId, entityType, addInFolder, allowed });
    if (reports.length === 0) return undefined;
    return menuButton("Reports", reports.map(({ name, address }) => ({
        label: name,
        run: () => location.assign(address),
    })));
}
