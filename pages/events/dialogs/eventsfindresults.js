// The events that match criteria which another page has set.

import { App, list, set, write } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { literalSearch } from "../../lib/search_text.js";
import { manage } from "../addin.js";
import { chooser } from "./event_chooser.js";

const mostShown = 200;
const byId = (id) => document.getElementById(id);

startDialogPage(async ({ format, heading, close }) => {
    if (heading) byId("heading").textContent = heading;
    const show = chooser(byId("results"), { format, choose });

    const found = manage().GetEventsBySearch(await givenCriteria());
    const { total, rows } = await list(found, ["Id", "Name", "StartDateTime"], {
        count: mostShown,
    });
    show(rows, { nothing: "Nothing matches.", hasMore: total > rows.length });
    byId("results").querySelector("button")?.focus();

    async function choose(id) {
        await set(App.Shell.Dialog("eventid"), id);
        await close(true, await App.Shell.Dialog("navigateurl"));
    }
});

/** The criteria handed over, which may be just words to look for. */
async function givenCriteria() {
    const given = await App.Shell.Dialog("searchcriteria");
    if (given && typeof given !== "string") return given;
    const criteria = await manage().GetNewEventsCriteria();
    if (given) await write(criteria, { SearchString: literalSearch(given) });
    return criteria;
}
