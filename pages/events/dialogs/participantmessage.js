// A message about participants of an event.

import { App } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { manage } from "../addin.js";

const byId = (id) => document.getElementById(id);

startDialogPage(async ({ heading, close }) => {
    if (heading) byId("heading").textContent = heading;
    byId("ok").addEventListener("click", () => close(true));
    byId("ok").focus();
    const [message, eventId] = await Promise.all([
        App.Shell.Dialog("message"),
        App.Shell.Dialog("eventid"),
    ]);
    byId("message").textContent = lines(message) || "There is no message.";
    const event = Number(eventId) > 0 ? await manage().GetEvent(Number(eventId)) : null;
    byId("event").hidden = !event;
    if (event) byId("event").textContent = await event.Name;
});

/** Messages of the add-in may break their lines as the host's message boxes do. */
function lines(message) {
    return String(message ?? "").replaceAll("</br>", "\n").trim();
}
