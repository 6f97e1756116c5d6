// The entries of the settings, and the few settings that need no page of their own.

import { App, list, read } from "../lib/app.js";
import { notice, reportFailure } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { preferences, remember } from "../lib/preferences.js";
import { submitOnce } from "../lib/submit_once.js";
import { rowFrom } from "../lib/table.js";

const byId = (id) => document.getElementById(id);
const settings = () => App.Modules.Quillmere.Settings;
/** What a user can begin with, by the value that is remembered. */
const firstPages = [
    ["", "Home"],
    ["events", "The list of events"],
];
const signInPage = "signin-page";
/** The last day that each month has in every year. */
const lastDays = [31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31];

startPage("Settings", async ({ format, allowed }) => {
    await Promise.all([showEntries(), showFirstPage()]);
    if (allowed("settings/edit")) await showFiscalYear(format);
});

async function showEntries() {
    const { rows } = await list(settings().Load(), ["Key", "Name", "Description"]);
    byId("entries").replaceChildren(
        ...rows.map(({ Key, Name, Description }) => {
            const entry = rowFrom(byId("entry"), { name: Name, description: Description });
            entry.querySelector("button").addEventListener("click", () => {
                settings().Open(Key).catch(reportFailure);
            });
            return entry;
        }),
    );
}

async function showFirstPage() {
    const [kept] = await preferences(signInPage);
    const select = byId("signin-page");
    select.replaceChildren(...firstPages.map(([value, name]) => new Option(name, value)));
    select.value = firstPages.some(([value]) => value === kept) ? kept : "";
    select.addEventListener("change", async () => {
        await remember(signInPage, select.value);
        notice("Kept for the next time you sign in.");
    });
}

async function showFiscalYear(format) {
    const start = await read(settings(), ["FiscalYearMonth", "FiscalYearDay"]);
    const [month, day] = [byId("fiscal-month"), byId("fiscal-day")];
    month.replaceChildren(
        ...lastDays.map((last, index) => new Option(monthName(index), index + 1)),
    );
    const offerDays = (chosen) => {
        const last = lastDays[month.value - 1];
        day.replaceChildren(
            ...Array.from({ length: last }, (unused, index) => new Option(index + 1, index + 1)),
        );
        day.value = Math.min(chosen, last);
    };
    month.value = start.FiscalYearMonth;
    offerDays(start.FiscalYearDay);
    month.addEventListener("change", () => offerDays(Number(day.value)));
    byId("fiscal").hidden = false;
    submitOnce(byId("fiscal").querySelector("form"), byId("fiscal-save"), async () => {
        await settings().SetFiscalYearStart(Number(month.value), Number(day.value));
        notice("The fiscal year is set.");
    });
}

function monthName(index) {
    const day = new Date(Date.UTC(2000, index, 1));
    return day.toLocaleString("en", { month: "long", timeZone: "UTC" });
}
