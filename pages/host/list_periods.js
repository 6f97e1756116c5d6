// The four periods that users set: what lists count by, besides calendar and fiscal years.

import { all, App, ask } from "../lib/app.js";
import { build } from "../lib/build.js";
import { createForm } from "../lib/form.js";
import { notice, reportFailure } from "../lib/notice.js";
import { collectRefusals } from "../lib/refusals.js";

const smartLists = () => App.Modules.Quillmere.Smartlists;
const numbers = [1, 2, 3, 4];
const settings = numbers.flatMap((number) => [
    `list-period-${number}-start`,
    `list-period-${number}-end`,
]);

/** Fills `element` with the fields and saves what is entered there. */
export async function periodsForm(element, format) {
    const form = createForm(
        element,
        numbers.map((number) => ({
            title: `Period ${number}`,
            fields: [
                { name: `list-period-${number}-start`, label: "First day", kind: "isoDate" },
                { name: `list-period-${number}-end`, label: "Last day", kind: "isoDate" },
            ],
        })),
        { format },
    );
    const button = build("button", { type: "submit", className: "primary", text: "Save periods" });
    element.append(
        build("p", { className: "hint", text: "Where a fiscal year begins is said among the " },
            build("a", { href: "/host/settings", text: "settings" }), "."),
        build("div", { className: "actions" }, button),
    );

    const stored = await all(settings.map((name) => ask.call(App.Document.Setting(name))));
    form.show(Object.fromEntries(settings.map((name, index) => [name, stored[index]])));

    /** Saves one part; what the host refuses stands at the field called `name`. */
    async function saved(save, name) {
        const { result, refusals } = await collectRefusals(save);
        if (!result) form.fail(refusals.join("\n"), name);
        return result;
    }

    element.addEventListener("submit", async (submission) => {
        submission.preventDefault();
        form.clear();
        const entered = form.values();
        if (!entered) return;
        button.disabled = true;
        try {
            for (const number of numbers) {
                const [start, end] = [`list-period-${number}-start`, `list-period-${number}-end`];
                const save = () => smartLists().SetPeriod(number, entered[start], entered[end]);
                if (!(await saved(save, start))) return;
            }
            form.show(entered);
            notice("Periods saved.");
        } catch (error) {
            reportFailure(error);
        } finally {
            button.disabled = false;
        }
    });
}
