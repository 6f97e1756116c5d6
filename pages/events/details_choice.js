// What a user leaves out of the event details page: tabs, and boxes of the overview.

import { all, App, ask, list, release, set, write } from "../lib/app.js";
import { preferences, remember } from "../lib/preferences.js";
import { detailsPage } from "./addin.js";

const preference = "details-hidden";

/** The keys of tabs ("tab-gifts") and boxes ("box-people") that the user leaves out. */
export async function readHidden() {
    const [kept] = await preferences(preference);
    return new Set(kept.split(",").filter(Boolean));
}

/**
 * Lets the user choose among `choices`, each { key, title }, of which `hidden` are left out now.
 * Gives whether that was changed.
 */
export async function chooseShown(choices, hidden) {
    const settings = await detailsPage().GetNewSection();
    const rows = await all(choices.map(() => ask.call(detailsPage().GetNewSectionRow())));
    await all(
        rows.flatMap((row, index) => {
            const { key, title } = choices[index];
            const Value = hidden.has(key) ? "0" : "1";
            return [
                ask.write(row, { Id: key, Name: title, Value }),
                ask.call(settings.Rows.Add(row, key)),
            ];
        }),
    );
    const dialog = await App.Modules.Events.Objects("Events").Dialogs.NewDialog(
        "customizeeventdetails",
    );
    await write(dialog, { Title: "Customise the Event Details" });
    await set(dialog.Settings, settings);
    const isConfirmed = await dialog.Create();
    const chosen = await list(settings.Rows, ["Id", "Value"]);
    release(dialog, settings, ...rows);
    if (!isConfirmed) return false;
    const left = chosen.rows.filter(({ Value }) => Value === "0").map(({ Id }) => Id);
    await remember(preference, left.join(","));
    return true;
}
