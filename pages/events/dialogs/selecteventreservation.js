// Picks one of a donor's reservations.

import { App, set } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { readReservationsOfDonor, showReservations } from "./donor_reservations.js";
import { givenKey } from "./given.js";

const byId = (id) => document.getElementById(id);

startDialogPage(async ({ format, heading, description, close }) => {
    if (heading) byId("heading").textContent = heading;
    byId("description").textContent = description ?? "";
    const donorId = await givenKey("donorid");
    const reservations = donorId ? await readReservationsOfDonor(donorId) : [];
    showReservations(byId("results"), reservations, { format, choose });
    (byId("results").querySelector("button") ?? document.querySelector("[data-cancel]")).focus();

    async function choose(id) {
        await set(App.Shell.Dialog("eventreservationid"), id);
        await close(true);
    }
});
