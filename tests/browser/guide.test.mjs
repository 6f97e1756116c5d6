// The pictures of the user's guide, made anew from the demonstration. They go to build/pictures/;
// PICTURES=docs/pictures puts them where the guide shows them.

import assert from "node:assert/strict";
import { mkdir, readdir, readFile } from "node:fs/promises";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";
import { browserTest } from "./harness.mjs";
import { dialogPage, signIn } from "./steps.mjs";

const root = dirname(dirname(dirname(fileURLToPath(import.meta.url))));
const folder = join(root, process.env.PICTURES ?? "build/pictures");
const coming = 31; // Carols by Candlelight 2026: people have accepted and reserved
const past = 26; // Golf Day 2026: with everything that an event can have

const tabOf = (id, tab) => `/events/event-details?id=${id}&tab=${tab}`;
const button = (root, name) => root.getByRole("button", { name }).first();

/** Each picture: the page's address, and what must be seen on it; or how to get there by hand. */
const pictures = {
    home: ["/host/home", "meter"],
    events: ["/events/events-view", "tbody .row-actions"],
    event: [tabOf(past, "overview"), "text=Outstanding"],
    activities: [tabOf(past, "activities"), "tbody:visible tr"],
    participants: [tabOf(coming, "participants"), "tbody:visible tr"],
    "add-participants": async (page) => {
        await page.goto(tabOf(coming, "participants"));
        await button(page, "Add participants").click();
        await dialogPage(page).getByLabel(/One donor a line/).waitFor();
    },
    reservations: [tabOf(past, "reservations"), "tbody:visible tr"],
    reservation: async (page) => {
        await page.goto(tabOf(past, "reservations"));
        await page.locator("tbody:visible .row-link").first().click();
        await page.getByRole("group", { name: "Line 1" }).waitFor();
    },
    desk: async (page) => {
        await page.goto(`/events/attendance-desk?id=${coming}`);
        await page.getByText(/accepted/).first().waitFor();
        await page.keyboard.type("an");
        await button(page, "Mark as here").waitFor();
    },
    mailing: async (page) => {
        await page.goto(tabOf(coming, "participants"));
        await button(page, "Send mailing").click();
        await dialogPage(page).getByText(/This reaches/).waitFor();
    },
    letter: async (page) => {
        await page.goto(tabOf(coming, "participants"));
        await button(page, "Send mailing").click();
        await dialogPage(page).getByText(/This reaches [1-9]/).waitFor();
        await button(dialogPage(page), "Make the mailing list").click();
        const text = page.getByLabel("Text", { exact: true });
        await text.fill("Dear {DonorName},\n\nwe look forward to {EventName} at {EventPlace}.");
        await page.getByText("we look forward to Carols").waitFor();
    },
    copy: async (page) => {
        await page.goto(tabOf(past, "overview"));
        await button(page, "Copy").click();
        await dialogPage(page).getByLabel("Name of the copy").waitFor();
    },
    lists: ["/host/lists", "tbody tr"],
    list: async (page) => {
        await page.goto("/host/lists");
        await page.getByText("Reservations not paid in full").click();
        await page.getByText(/^[\d,]+ donors?$/).waitFor();
    },
    reports: ["/host/reports", "text=Top Events"],
    report: async (page) => {
        await page.goto("/host/reports");
        await page.getByText("Events Income - Expected vs Actual").click();
        await button(page, "Show report").click();
        await page.locator("figure svg, svg[role=img]").first().waitFor();
    },
    donor: async (page) => {
        await page.goto(tabOf(past, "reservations"));
        await page.locator("tbody:visible .row-link").first().click();
        await page.getByRole("group", { name: "Line 1" }).waitFor();
        await page.locator('a[href*="details-donor"]').first().click();
        await page.getByRole("tab", { name: "Details" }).click();
        await page.getByText("Events Info").first().waitFor();
    },
    settings: ["/events/events-settings", "text=/in all/"],
    rights: ["/host/rights", "text=See events"],
};

browserTest("Every picture of the user's guide can be taken", async ({ page }) => {
    await mkdir(folder, { recursive: true });
    await signIn(page, "anna");
    for (const [name, way] of Object.entries(pictures)) {
        if (typeof way === "function") {
            await way(page);
        } else {
            const [address, shown] = way;
            await page.goto(address);
            await page.locator(shown).first().waitFor();
        }
        await page.locator("main:not([aria-busy])").waitFor();
        await page.mouse.move(0, 0); // no row stands out by chance
        await page.screenshot({ path: join(folder, `${name}.png`) });
    }
    const guide = await readFile(join(root, "docs/users-guide.md"), "utf8");
    const named = [...guide.matchAll(/\]\(pictures\/(.+?)\.png\)/g)].map(([, name]) => name);
    assert.deepEqual([...new Set(named)].sort(), Object.keys(pictures).sort());
    const kept = await readdir(join(root, "docs/pictures"));
    assert.deepEqual(kept.sort(), named.map((name) => `${name}.png`).sort());
});
