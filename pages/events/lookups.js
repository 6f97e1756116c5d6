// What an event can be given from lists: categories, locations, funds and so on.

import { App, list } from "../lib/app.js";
import { lists } from "./addin.js";

/** The choices of an event's fields: who gives them, and what their columns are called. */
const sources = {
    FKCategoryId: { items: () => lists().GetEventCategories(true) },
    FKStatusId: { items: () => lists().GetEventStatuses(true) },
    FKLocationId: { items: () => lists().GetEventLocations(true) },
    FKCoordinatorId: {
        items: () => lists().GetEventCoordinators(true),
        columns: ["FKdonorId", "Display", "Visible"],
    },
    FKFundId: { items: () => App.Provider.Codes("fund", true) },
    FKCampaignId: { items: () => App.Provider.Codes("campaign", true) },
    FKAppealId: { items: () => App.Provider.Codes("giftsource", true) },
};

/** The choices of the fields called `names`, as { id, name, visible } by field name. */
export async function loadLookups(names) {
    const loaded = await Promise.all(
        names
            .filter((name) => name in sources)
            .map(async (name) => {
                const { items, columns = ["Id", "Name", "Visible"] } = sources[name];
                const { rows } = await list(items(), columns);
                const choices = rows.map((row) => {
                    const [id, label, visible] = columns.map((column) => row[column]);
                    return { id, name: label, visible };
                });
                return [name, choices];
            }),
    );
    return Object.fromEntries(loaded);
}

/** The name of the choice `id`, blank when there is none. */
export function nameIn(choices, id) {
    return choices.find((choice) => choice.id === id)?.name ?? "";
}
