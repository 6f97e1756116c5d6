// One event: the details page's model, filled by this page and shown as it then stands.

import { App, read, release } from "../lib/app.js";
import { coalesced } from "../lib/coalesced.js";
import { bindKey } from "../lib/keys.js";
import { noticeLater, reportFailure } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { onPress } from "../lib/press.js";
import { commands, manage } from "./addin.js";
import { chooseShown, readHidden } from "./details_choice.js";
import { fillModel, readModel } from "./details_model.js";
import { auditColumns, overviewColumns } from "./details_overview.js";
import { hideable, showTabs, tabsForModel } from "./details_tabs.js";
import { reportsMenu } from "./event_reports.js";
import { loadLookups } from "./lookups.js";
import { deletedEvent, showMissing } from "./missing_event.js";

const eventId = Number(new URLSearchParams(location.search).get("id"));
const byId = (name) => document.getElementById(name);

startPage("Events", async ({ session, format, allowed }) => {
    const context = { eventId, session, format, allowed, refresh };
    let isDeleting = false;
    let updateTabs;

    // Readings follow each other, as the model that they fill is shared.
    const load = coalesced(readPage);

    async function readPage() {
        const event = eventId > 0 ? await manage().GetEvent(eventId) : null;
        if (!event) return showMissing(deletedEvent);
        const [values, lookups, hidden] = await Promise.all([
            read(event, [...overviewColumns, ...auditColumns]),
            loadLookups(overviewColumns),
            readHidden(),
        ]);
        Object.assign(context, { event: values, lookups });
        showHead(values);
        await fillModel(event, tabsForModel(context, hidden));
        const model = await readModel();
        context.sections = (key) =>
            model.find((tab) => tab.key === key || tab.key === `events_${key}`)?.sections ?? [];
        release(event);
        byId("audit").textContent = await auditText(values);
        if (updateTabs) return updateTabs();
        updateTabs = await showTabs(model, context, { head: byId("tabs"), panels: byId("panels") });
    }

    function refresh() {
        return load().catch(reportFailure);
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

    const offers = [
        ["edit", "events/edit", () => commands().EditEvent(eventId)],
        ["copy", "events/edit", () => commands().CopyEvent(eventId)],
        ["delete", "events/delete", deleteEvent],
        ["customise", "events/view", customise],
    ];
    for (const [id, right, run] of offers) {
        byId(id).hidden = !allowed(right);
        onPress(byId(id), run);
    }

    byId("customise").after(reportsMenu(eventId));

    async function customise() {
        if (await chooseShown(hideable(context), await readHidden())) location.reload();
    }

    async function deleteEvent() {
        isDeleting = true;
        await commands()
            .DeleteEvent(eventId)
            .finally(() => {
                isDeleting = false;
            });
        if (await manage().GetEvent(eventId)) return load();
        noticeLater("Event deleted.");
        location.assign("/events/events-view");
    }

    if (allowed("events/edit")) bindKey("e", "Edit this event", () => byId("edit").click());
    bindKey("n", "Add to the list shown", () => {
        document.querySelector("#panels > :not([hidden]) .primary:not([hidden])")?.click();
    });
    document.addEventListener("hostrefresh", () => isDeleting || refresh());

    await load();
});

/** The user's name; someone who has left the host has none. */
function userName(user) {
    return App.Security.Users.FromId(user).Name.catch(() => "a former user");
}
