// Chooses what a donation is for: an event, one of its reservations, or something else.

import { App, set } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { readReservationsOfDonor, reservationText } from "./donor_reservations.js";
import { givenKey, givenObject } from "./given.js";

const byId = (id) => document.getElementById(id);
const usual = "event";

startDialogPage(async ({ format, heading, description, close }) => {
    if (heading) byId("heading").textContent = heading;
    byId("description").textContent = description ?? "";
    const [wanted, donorId, reservationId, reservation] = await Promise.all([
        App.Shell.Dialog("defaultchoice"),
        givenKey("donorid"),
        givenKey("eventreservationid"),
        givenObject("eventreservation", "AmountPaid"),
    ]);
    const chosen = reservationId || (reservation ? await reservation.Id : 0);

    const reservations = donorId ? await readReservationsOfDonor(donorId) : [];
    byId("reservation").append(
        ...reservations.map((row) => new Option(reservationText(row, format), row.Id)),
    );
    if (chosen) byId("reservation").value = String(chosen);
    const radios = [...document.querySelectorAll('input[name="type"]')];
    const radio = (value) => radios.find((one) => one.value === value);
    radio("reservation").disabled = reservations.length === 0;
    byId("for-reservation").classList.toggle("disabled", reservations.length === 0);
    const preset = radio(String(wanted ?? ""));
    const first = preset && !preset.disabled ? preset : radio(usual);
    first.checked = true;

    const showWhich = () => {
        byId("which").hidden = !radio("reservation").checked;
    };
    byId("choice").addEventListener("change", showWhich);
    showWhich();
    byId("choice").addEventListener("submit", async (event) => {
        event.preventDefault();
        byId("confirm").disabled = true;
        const type = radios.find((one) => one.checked).value;
        const id = type === "reservation" ? Number(byId("reservation").value) : 0;
        await set(App.Shell.Dialog("eventreservationid"), id);
        await set(App.Shell.Dialog("event-donation-type"), type);
        await close(true);
    });
    byId("choice").hidden = false;
    first.focus();
});
