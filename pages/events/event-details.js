// One event: the details page's model, filled by this page and shown as it then stands.

import { App, read, release } from "../lib/app.js";
import { bindKey } from "../lib/keys.js";
import { noticeLater, reportFailure } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { commands, manage } from "./addin.js";
import { fillModel, readModel } from "./details_model.js";
import { auditColumns, overviewColumns, overviewTab } from "./details_overview.js";
import { showModel } from "./details_view.js";
import { showMissing } from "./missing_event.js";
import { loadLookups } from "./lookups.js";

const id = Number(new URLSearchParams(location.search).get("id"));
const byId = (name) => document.getElementById(name);

startPage("Events", async ({ format, allowed }) => {
    let isDeleting = false;

    async function load() {
        const event = id > 0 ? await manage().GetEvent(id) : null;
        if (!event) return showMissing("This event no longer exists.");
        const [values, lookups] = await Promise.all([
            read(event, [...overviewColumns, ...auditColumns]),
            loadLookups(overviewColumns),
        ]);
        showHead(values);
        await fillModel(event, [overviewTab(values, { lookups, format })]);
        showModel(await readModel(), byId("tabs"), byId("panels"));
        byId("audit").textContent = await auditText(values);
        release(event);
    }

    function showHead({ Name, StartDateTime }) {
        document.title = `${Name} - Quillmere`;
        byId("name").textContent = Name;
        const time = format.time(StartDateTime) || "no time set";
        byId("when").textContent = `${format.longDate(StartDateTime)}, ${time}`;
        byId("actions").hidden = false;
    }

    async function auditText({ CreateUser, CreateDate, LastUpdateUser, LastUpdateDate }) {
        const texts = [
            `Created by ${await userName(CreateUser)} on ${format.dateTime(CreateDate)}.`,
        ];
        if (!LastUpdateDate.isZero) {
            const name = await userName(LastUpdateUser);
            texts.push(`Last changed by ${name} on ${format.dateTime(LastUpdateDate)}.`);
        }
        return texts.join(" ");
    }

    byId("edit").hidden = !allowed("events/edit");
    byId("delete").hidden = !allowed("events/delete");
    byId("edit").addEventListener("click", () => {
        commands().EditEvent(id);
    });
    byId("delete").addEventListener("click", async () => {
        isDeleting = true;
        await commands()
            .DeleteEvent(id)
            .finally(() => {
                isDeleting = false;
            });
        if (await manage().GetEvent(id)) return load();
        noticeLater("Event deleted.");
        location.assign("/events/events-view");
    });
    if (allowed("events/edit")) bindKey("e", "Edit this event", () => byId("edit").click());
    document.addEventListener("hostrefresh", () => isDeleting || load().catch(reportFailure));

    await load();
});

/** The user's name; someone who has left the host has none. */
function userName(user) {
    return App.Security.Users.FromId(user).Name.catch(() => "a former user");
}
