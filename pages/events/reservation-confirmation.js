// What a donor has reserved, on a sheet to be sent or handed over.

import { all, App, ask, read } from "../lib/app.js";
import { build } from "../lib/build.js";
import { dueWords, standing, sum, times } from "../lib/money_words.js";
import { startPage } from "../lib/page.js";
import { printBar } from "../lib/print_page.js";
import { manage } from "./addin.js";
import { readLines } from "./line_records.js";
import { showMissing } from "./missing_event.js";
import { fieldType } from "./reservation_fields.js";

const id = Number(new URLSearchParams(location.search).get("id"));
const byId = (name) => document.getElementById(name);
const gone = "This reservation no longer exists. It may have been deleted by another user.";
const columns = ["FKEventId", "FKdonorId", "ReservationDate", "Description", "AmountPaid",
    "DonationPaymentsAmount"];

startPage("Events", async ({ format }) => {
    const held = id > 0 ? await manage().GetEventReservation(id) : null;
    if (!held) {
        showMissing(gone, { title: "Reservation not found" });
        return;
    }
    const [values, lines] = await Promise.all([read(held, columns), readLines(held)]);
    const [event, activities, donor] = await Promise.all([
        read(manage().GetEvent(values.FKEventId), ["Name", "StartDateTime"]),
        all([ask.list(manage().GetEventActivities(values.FKEventId), ["Id", "Name"])]),
        readDonor(values.FKdonorId),
    ]);
    byId("bar").append(printBar(`/events/event-details?id=${values.FKEventId}&tab=reservations`));
    byId("title").textContent = "Your reservation";
    document.title = `Reservation of ${donor.name} - Quillmere`;
    const time = format.time(event.StartDateTime);
    byId("event").textContent = [event.Name, format.longDate(event.StartDateTime), time]
        .filter(Boolean)
        .join(", ");
    byId("donor").textContent = donor.lines;
    byId("date").textContent = `Reserved on ${format.longDate(values.ReservationDate)}`;
    byId("description").textContent = values.Description;
    const nameOf = (activity) =>
        activities[0].rows.find((row) => row.Id === activity)?.Name ?? "(deleted activity)";
    byId("lines").tBodies[0].append(...lines.map((line) => lineElement(line, nameOf, format)));
    const stands = standing({
        expected: sum(lines.map(({ price, quantity }) => times(price, quantity))),
        direct: values.AmountPaid,
        gifts: values.DonationPaymentsAmount,
    });
    for (const name of ["expected", "direct", "gifts"]) {
        byId(name).textContent = format.money(stands[name].rounded());
    }
    byId("due").textContent = dueWords(stands, format);
    byId("letter").hidden = false;
});

async function readDonor(donorId) {
    const donor = await App.Modules.donor.DonorManage.GetDonor(donorId);
    if (!donor) return { name: "a former donor", lines: "" };
    const { Display, Address, PostalCode, City } = await read(donor, ["Display", "Address",
        "PostalCode", "City"]);
    const place = [PostalCode, City].filter(Boolean).join(" ");
    return { name: Display, lines: [Display, Address, place].filter(Boolean).join("\n") };
}

function lineElement(line, nameOf, format) {
    const answers = line.answers
        .filter(({ value }) => value)
        .map(({ type, name, value }) => `${name}: ${answerText(type, value, format)}`);
    return build("tr", {},
        build("th", { scope: "row" },
            build("span", { text: nameOf(line.activityId) }),
            build("span", { className: "faint lines", text: answers.join("\n") })),
        build("td", { className: "number", text: format.money(line.price) }),
        build("td", { className: "number", text: format.whole(line.quantity) }),
        build("td", {
            className: "number",
            text: format.money(times(line.price, line.quantity).rounded()),
        }));
}

function answerText(type, value, format) {
    const { kind } = fieldType(type);
    if (kind === "flag") return value === "1" ? "yes" : "no";
    const day = kind === "isoDate" ? format.parseDate(value) : undefined;
    return day ? format.date({ date: day }) : value;
}
