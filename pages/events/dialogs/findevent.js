// Finds an event by words of its name.

import { App, set } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { findEvents } from "../find_events.js";
import { chooser } from "./event_chooser.js";

const columns = ["Id", "Name", "StartDateTime"];
const mostShown = 20;
const typingPause = 200;
const byId = (id) => document.getElementById(id);

startDialogPage(async ({ session, format, heading, close }) => {
    if (heading) byId("heading").textContent = heading;
    const show = chooser(byId("results"), { format, choose });
    let latest = 0;

    async function search(text) {
        latest += 1;
        const mine = latest;
        const state = { text, span: "all", sort: "start", descending: true, shown: mostShown };
        const { rows, hasMore } = await findEvents(state, columns, session);
        if (mine !== latest) return;
        const nothing = text ? `Nothing matches “${text}”.` : "No events yet.";
        show(rows, { nothing, hasMore });
    }

    /** Hands the event over; the command goes on with it, or the window with its next page. */
    async function choose(id) {
        await set(App.Shell.Dialog("eventid"), id);
        const [nextPage, address] = await Promise.all(
            ["nextpage", "navigateurl"].map((name) => App.Shell.Dialog(name)),
        );
        if (nextPage) {
            await set(App.Shell.Dialog.NextPage, nextPage);
            await App.Shell.Dialog.GoNext();
        } else {
            await close(true, address);
        }
    }

    let pause;
    byId("search").addEventListener("input", ({ target }) => {
        clearTimeout(pause);
        pause = setTimeout(() => search(target.value.trim()), typingPause);
    });
    byId("search-form").addEventListener("submit", async (event) => {
        event.preventDefault();
        // Enter may come before the typing has paused: the words typed are searched first.
        clearTimeout(pause);
        await search(byId("search").value.trim());
        byId("results").querySelector("button")?.focus();
    });
    byId("search").focus();
    await search("");
});
