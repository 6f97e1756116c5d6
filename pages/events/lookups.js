// What an event can be given from lists: categories, locations, funds and so on.

import { all, App, ask, list } from "../lib/app.js";
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
    const wanted = names.filter((name) => name in sources);
    const columnsOf = (name) => sources[name].columns ?? ["Id", "Name", "Visible"];
    const answers = await all(
        wanted.map((name) => ask.list(sources[name].items(), columnsOf(name))),
    );
    const choices = answers.map(({ rows }, index) => {
        const columns = columnsOf(wanted[index]);
        return rows.map((row) => {
            const [id, name, visible] = columns.map((column) => row[column]);
            return { id, name, visible };
        });
    });
    return Object.fromEntries(wanted.map((name, index) => [name, choices[index]]));
}

/** The name of the choice `id`, blank when there is none. */
export function nameIn(choices, id) {
    return choices.find((choice) => choice.id === id)?.name ?? "";
}

/** Who tasks can be assigned to, as choices. */
export async function loadAssignees() {
    const values = lists().GetAttributeValues("donor_list_assignedto", "", true);
    const { rows } = await list(values, ["Id", "Name", "Visible"]);
    return rows.map(({ Id, Name, Visible }) => ({ id: Id, name: Name, visible: Visible }));
}
