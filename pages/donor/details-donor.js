// One donor: contact details, gifts, and what the modules have to say about them.

import { all, App, ask, list, read, release, set, write } from "../lib/app.js";
import { noticeLater, reportFailure } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { onPress } from "../lib/press.js";
import { recordTable } from "../lib/record_table.js";
import { nodesOf } from "../lib/safe_markup.js";
import { tabRow } from "../lib/tabs.js";
import { commands } from "../events/addin.js";
import { showMissing } from "../events/missing_event.js";

const id = Number(new URLSearchParams(location.search).get("id"));
const byId = (name) => document.getElementById(name);
const gone = "This donor no longer exists. It may have been deleted by another user.";
const page = () => App.Modules.Quillmere.Donors;
const contact = [
    ["Email", "E-mail"],
    ["Phone", "Telephone"],
    ["Address", "Address"],
    ["PostalCode", "Postal code"],
    ["City", "City"],
];
const giftColumns = ["PaymentId", "Id", "DonationAmount", "ActualDate", "ExpectedAmount",
    "ExpectedDate", "Pledge", "Note"];

startPage("", async ({ format, allowed }) => {
    let chosen;

    async function load() {
        const opened = id > 0 ? await page().OpenDetailsPage(id) : null;
        if (!opened) {
            showMissing(gone, { title: "Donor not found" });
            return;
        }
        release(opened);
        const columns = ["Display", "EntityType", "Created", ...contact.map(([name]) => name)];
        const donor = await read(page().DetailsPage.donor, columns);
        showHead(donor);
        const tabs = await readTabs();
        const made = [...tabs.map(panelOf), ...(allowed("donations/view") ? [giftsPanel()] : [])];
        made[0].panel.prepend(contactBox(donor));
        byId("panels").replaceChildren(...made.map(({ panel }) => panel));
        const choose = tabRow(byId("tabs"), made, (tab) => {
            chosen = tab.key;
            return tab.show?.();
        });
        await choose(chosen);
    }

    function showHead({ Display, EntityType, Created }) {
        document.title = `${Display} - Quillmere`;
        byId("name").textContent = Display;
        const since = Created ? `since ${format.date(Created)}` : "";
        byId("kind").textContent = [EntityType, since].filter(Boolean).join(", ");
        byId("actions").hidden = false;
    }

    function giftsPanel() {
        const panel = document.createElement("div");
        let isShown = false;
        return {
            key: "gifts",
            title: "Gifts",
            panel,
            async show() {
                if (isShown) return;
                isShown = true;
                giftTable(panel, format)(await readGifts());
            },
        };
    }

    const offers = {
        reservation: () => commands().AddEventReservation(0, id, "events_reservations"),
        participant: () => commands().AddEventParticipant(0, false, id, true),
        gift: recordGift,
        delete: deleteDonor,
    };
    for (const [name, run] of Object.entries(offers)) {
        byId(name).hidden = !allowed(byId(name).dataset.right);
        onPress(byId(name), run);
    }
    document.addEventListener("hostrefresh", () => load().catch(reportFailure));
    await load();
});

async function recordGift() {
    await App.Shell.Dialog.ClearClipboard();
    await set(App.Shell.Dialog("donorid"), id);
    await set(App.Shell.Dialog("donation-return-to-caller"), "true");
    await App.Modules.Donation.Donations.Wizards.StartDonationWizard();
}

async function deleteDonor() {
    if (!(await App.Modules.donor.DonorManage.DeleteDonor(id))) return;
    noticeLater("Donor deleted.");
    location.assign("/host/home");
}

/** The tabs of the page's model that hold anything; the first stands in any case. */
async function readTabs() {
    const { rows: tabs } = await list(page().DetailsPage.Tabs, ["Key", "Title"]);
    const sectionsOf = ({ Key }) => page().DetailsPage.Tabs.Item(Key).Sections;
    const sections = await all(tabs.map((tab) => ask.list(sectionsOf(tab), ["Key", "Title"])));
    const pairs = tabs.flatMap((tab, index) => sections[index].rows.map((one) => [tab, one]));
    const rows = await all(
        pairs.map(([tab, { Key }]) =>
            ask.list(sectionsOf(tab).Item(Key).Rows, ["Name", "Value"]),
        ),
    );
    return tabs
        .map(({ Key, Title }) => ({
            key: Key,
            title: Title,
            sections: pairs.flatMap(([owner, section], index) =>
                owner.Key === Key ? [{ ...section, rows: rows[index].rows }] : [],
            ),
        }))
        .filter(({ sections: some }, index) => index === 0 || some.length > 0);
}

function panelOf({ key, title, sections }) {
    const panel = document.createElement("div");
    panel.className = "boxes";
    panel.append(
        ...sections.map(({ Key, Title, rows }) => {
            const lines = rows.map(({ Name, Value }) => [Name, nodesOf(Value, run)]);
            const section = box(Key, Title, lines);
            section.classList.add("box-markup");
            return section;
        }),
    );
    return { key, title, panel };
}

function run({ name, args }) {
    return commands()[name](...args).catch(reportFailure);
}

function contactBox(donor) {
    const rows = contact
        .filter(([name]) => donor[name])
        .map(([name, label]) => [label, [document.createTextNode(donor[name])]]);
    return box("contact", "Contact", rows.length > 0 ? rows : [["Nothing is known yet.", []]]);
}

function box(key, title, rows) {
    const section = document.createElement("section");
    section.className = `details-box box-${key}`;
    const heading = document.createElement("h2");
    heading.id = `section-${key}`;
    heading.textContent = title;
    section.setAttribute("aria-labelledby", heading.id);
    const facts = document.createElement("dl");
    for (const [name, nodes] of rows) {
        const pair = document.createElement("div");
        pair.className = "row";
        const term = document.createElement("dt");
        term.textContent = name;
        const value = document.createElement("dd");
        value.append(...nodes);
        pair.append(term, value);
        facts.append(pair);
    }
    section.append(heading, facts);
    return section;
}

async function readGifts() {
    const criteria = await App.Modules.Donation.Donations.GetNewDonationCriteria();
    await write(criteria, { CustomWhere: `donorId = ${id}` });
    const found = App.Modules.Donation.Donations.GetDonationsBySearch(criteria);
    const { rows } = await list(found, giftColumns);
    release(criteria);
    return rows.map((row) => ({
        ...row,
        Id: row.PaymentId,
        date: row.ActualDate ?? row.ExpectedDate,
        kind: row.Pledge ? "Pledge" : "Gift",
    }));
}

function giftTable(panel, format) {
    return recordTable(panel, {
        name: ["payment", "payments"],
        fileName: () => "Gifts",
        format,
        columns: [
            { key: "date", label: "Date", text: ({ date }) => (date ? format.date(date) : "") },
            { key: "kind", label: "Kind" },
            { key: "ExpectedAmount", label: "Expected", number: true, total: true },
            { key: "DonationAmount", label: "Received", number: true, total: true },
            { key: "Note", label: "Note" },
        ],
        order: { key: "date", descending: true },
        empty: "No gifts yet.",
    });
}
