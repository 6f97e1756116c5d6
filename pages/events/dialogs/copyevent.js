// Copies an event: its name and dates are asked for, then what comes along. The event itself is
// only read.

import { App, read, set, write } from "../../lib/app.js";
import { daysBetween, shifted } from "../../lib/days.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { createForm } from "../../lib/form.js";
import { noticeLater } from "../../lib/notice.js";
import { collectRefusals } from "../../lib/refusals.js";
import { submitOnce } from "../../lib/submit_once.js";
import { guardUnsaved } from "../../lib/unsaved.js";
import { DateTime } from "../../lib/values.js";
import { manage } from "../addin.js";
import { copyName, countsText, usualShift } from "../copy_plan.js";
import { copySteps } from "../event_copy.js";
import { eventGroups, fieldNames, longestName } from "../event_fields.js";
import { fieldOfRefusal } from "../event_rules.js";

const byId = (id) => document.getElementById(id);
const dates = ["StartDateTime", "EndDateTime", "RSVPDateTime"];
const names = fieldNames(eventGroups);
const groups = [
    {
        fields: [
            {
                name: "Name",
                label: "Name of the copy",
                kind: "text",
                most: longestName,
                required: true,
                wide: true,
            },
            { name: "StartDateTime", label: "Start", kind: "dateTime", required: true },
            { name: "EndDateTime", label: "End", kind: "dateTime" },
            { name: "RSVPDateTime", label: "Reply by", kind: "dateTime" },
        ],
    },
];

startDialogPage(async ({ format, close }) => {
    const original = await App.Shell.Dialog("EventInfo");
    if (!original) {
        byId("description").textContent = "There is nothing to copy. Close this and try again.";
        return;
    }
    const steps = copySteps({ withGroups: () => boxOf("groups").checked });
    const values = await read(original, [...names, "Id", ...steps.map(({ count }) => count)]);
    byId("description").textContent = `“${values.Name}” stays as it is.`;
    const form = createForm(byId("record"), groups, { format });
    form.show(Object.fromEntries(dates.map((name) => [name, new DateTime()])));
    form.fill({ Name: copyName(values.Name, values.StartDateTime) });
    shiftDates(usualShift);
    byId("steps").append(...steps.map((step) => stepChoice(step, values[step.count], format)));
    byId("record").addEventListener("change", update);
    byId("record").hidden = false;
    update();
    form.fields.get("Name").focus();
    form.fields.get("Name").element.querySelector("input").select();
    // The window grows with its page a moment later; until then the focus would scroll it.
    scrollTo(0, 0);
    const unguard = guardUnsaved(() => form.isChanged());

    // The other dates follow the start until the user has set them.
    const untouched = new Set(["EndDateTime", "RSVPDateTime"]);
    for (const name of untouched) {
        form.fields.get(name).element.addEventListener("input", () => untouched.delete(name));
    }
    form.fields.get("StartDateTime").element.addEventListener("change", () => {
        const days = shiftNow();
        for (const name of days === undefined ? [] : untouched) {
            form.fill({ [name]: shifted(values[name], days) });
        }
    });

    function shiftDates(days) {
        for (const name of dates) form.fill({ [name]: shifted(values[name], days) });
    }

    /** Days from the event's start to that of the copy; undefined while that is no date. */
    function shiftNow() {
        const { value } = form.fields.get("StartDateTime").read();
        return daysBetween(values.StartDateTime.date, value instanceof DateTime && value.date);
    }

    function chosen() {
        return steps.filter(({ key }) => boxOf(key).checked && !boxOf(key).disabled);
    }

    function update() {
        for (const { key, needs } of steps) {
            if (needs) boxOf(key).disabled = !boxOf(needs).checked || values[countOf(key)] === 0;
        }
        const counts = chosen().map(({ count, words }) => [values[count], ...words]);
        const text = countsText(counts, format);
        byId("summary").textContent = text
            ? `The copy gets ${text}.`
            : "The copy gets the event's own fields alone.";
    }

    function countOf(key) {
        return steps.find((step) => step.key === key).count;
    }

    let copy;
    let wanted;
    const finished = [];

    submitOnce(byId("record"), byId("save"), async () => {
        copy ??= await makeCopy();
        if (!copy) return;
        wanted ??= chosen();
        lockForm();
        const refused = await copyChildren();
        if (refused !== undefined) return showHalfDone(refused);
        const text = countsText(finished, format);
        noticeLater(`Event copied${text ? ` with ${text}` : ""}.`);
        await done();
    });
    byId("open").addEventListener("click", () => done());

    async function done() {
        unguard();
        await set(App.Shell.Dialog("event-copy-newid"), copy);
        await close(true);
    }

    /** Stores the event itself; gives its id, or nothing after showing why it was refused. */
    async function makeCopy() {
        form.clear();
        const entered = form.values();
        if (!entered) return undefined;
        const event = await manage().GetNewEvent();
        const own = Object.fromEntries(names.map((name) => [name, values[name]]));
        const failed = await write(event, { ...own, ...entered });
        if (Object.keys(failed).length > 0) {
            form.refuse(failed);
            return undefined;
        }
        const { result, refusals } = await collectRefusals(() =>
            manage().UpdateEvent(event, true, true),
        );
        for (const message of refusals) form.fail(message, fieldOfRefusal(message));
        return result ? event.Id : undefined;
    }

    /** Copies what was chosen; gives why it stopped, if it did. */
    async function copyChildren() {
        const days = shiftNow() ?? 0;
        for (const step of wanted) {
            if (!step.copy || finished.some(([, one]) => one === step.words[0])) continue;
            byId("summary").textContent = `Copying ${step.words[1]}…`;
            const onProgress = (count, total) => {
                byId("summary").textContent =
                    `Copying ${step.words[1]}: ${format.whole(count)} of ${format.whole(total)}…`;
            };
            const { result, refusals } = await collectRefusals(() =>
                step.copy(values.Id, copy, { days, onProgress }).catch(({ message }) => message),
            );
            if (typeof result === "string") return [...refusals, result].join("\n");
            finished.push([result, ...step.words]);
        }
        return undefined;
    }

    /** The copy is there, so its name and dates are its own matter from now on. */
    function lockForm() {
        for (const control of byId("record").querySelectorAll("input")) control.disabled = true;
        byId("cancel").hidden = true;
    }

    function showHalfDone(reason) {
        const text = countsText(finished, format);
        byId("summary").textContent = text
            ? `The copy was made with ${text}.`
            : "The copy was made.";
        form.fail(`Not everything could be copied.\n${reason}`);
        byId("save").textContent = "Try the rest again";
        byId("open").hidden = false;
    }
});

function boxOf(key) {
    return byId("steps").querySelector(`input[value="${key}"]`);
}

function stepChoice({ key, label, isUsual }, count, format) {
    const choice = document.createElement("label");
    choice.className = "option";
    const box = document.createElement("input");
    Object.assign(box, { type: "checkbox", value: key });
    box.checked = Boolean(isUsual) && count > 0;
    box.disabled = count === 0;
    const words = document.createElement("span");
    words.textContent = `${label} (${count === 0 ? "none" : format.whole(count)})`;
    choice.append(box, words);
    return choice;
}
