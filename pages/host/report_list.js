// What modules offer in the list of reports, as the user is shown it.

import { commandOf } from "../lib/safe_markup.js";
import { addressOf } from "./report_address.js";

/**
 * The categories that have something for a user whom `allowed` lets do things, with the reports
 * that are theirs. A report is reached by its `address`, or by the `command` ({ name, args }) that
 * asks first of what it is to be. One that names a script which is none of ours is left out.
 */
export function offered(categories, addInFolder, allowed) {
    return categories
        .map(({ reports, ...category }) => ({
            ...category,
            reports: reports
                .filter(({ Operation }) => mayRun(Operation, allowed))
                .map((report) => entryOf(report, addInFolder))
                .filter(({ address, command }) => address || command),
        }))
        .filter(({ reports }) => reports.length > 0);
}

/**
 * The reports that work on a saved list of records of `entityType` ("donors", "events"), for a user
 * whom `allowed` lets do things: { name, address } of each on the list `listId`.
 */
export function offeredForList(reports, { listId, entityType, addInFolder, allowed }) {
    return reports
        .filter(({ IsEntitySmartList, EntityType, Operation }) =>
            IsEntitySmartList && EntityType === entityType && mayRun(Operation, allowed))
        .map(({ Key, Name, Path }) => {
            const folder = folderWithin(Path, addInFolder);
            return { name: Name, address: addressOf({ folder, key: Key, listId }) };
        });
}

const mayRun = (operation, allowed) => !operation || allowed(operation.toLowerCase());

function entryOf({ Key, Name, Description, Iconimage, Path, Script }, addInFolder) {
    const entry = { name: Name, description: Description, icon: pictureAddress(Iconimage) };
    if (Script) return { ...entry, command: commandOf(`javascript:${Script}`) };
    const folder = folderWithin(Path, addInFolder);
    return { ...entry, address: addressOf({ folder, key: Key }) };
}

/** A path of a module with plain slashes, without the add-in's own folder before it. */
function folderWithin(path, addInFolder) {
    const [plain, base] = [path, addInFolder].map((one) => one.replaceAll("\\", "/"));
    const isWithin = plain.toLowerCase().startsWith(base.toLowerCase());
    return isWithin ? plain.slice(base.length) : plain;
}

/** Where the server has the picture at `path`, a file in a module's cache. */
export function pictureAddress(path) {
    const plain = (path ?? "").replaceAll("\\", "/").toLowerCase();
    const at = plain.lastIndexOf("/cache/");
    return at < 0 ? "" : plain.slice(at);
}
