// The four periods that users set and the day on which fiscal years begin: what lists count by.

import { all, App, ask } from "../lib/app.js";
import { build } from "../lib/build.js";
import { createForm } from "../lib/form.js";
import { notice, reportFailure } from "../lib/notice.js";
import { collectRefusals } from "../lib/refusals.js";

const smartLists = () => App.Modules.Quillmere.Smartlists;
const numbers = [1, 2, 3, 4];
const settings = [
    ...numbers.flatMap((number) => [`list-period-${number}-start`, `list-period-${number}-end`]),
    "fiscal-year-month",
    "fiscal-year-day",
];

/** Fills `element` with the fields and saves what is entered there. */
export async function periodsForm(element, format) {
    // January is what counts where nothing is chosen.
    const months = Array.from({ length: 11 }, (_, index) => ({
        id: index + 2,
        name: format.monthName(index + 2),
        visible: true,
    }));
    const form = createForm(
        element,
        [
            ...numbers.map((number) => ({
                title: `Period ${number}`,
                fields: [
                    { name: `list-period-${number}-start`, label: "First day", kind: "isoDate" },
                    { name: `list-period-${number}-end`, label: "Last day", kind: "isoDate" },
                ],
            })),
            {
                title: "Fiscal year begins",
                fields: [
                    { name: "fiscal-year-month", label: "Month", kind: "choice", none: format.monthName(1) },
                    { name: "fiscal-year-day", label: "Day", kind: "whole" },
                ],
            },
        ],
        { format, choices: { "fiscal-year-month": months } },
    );
    const button = build("button", { type: "submit", className: "primary", text: "Save periods" });
    element.append(build("div", { className: "actions" }, button));

    const stored = await all(settings.map((name) => ask.call(App.Document.Setting(name))));
    const values = Object.fromEntries(settings.map((name, index) => [name, stored[index]]));
    const month = Number(values["fiscal-year-month"]);
    form.show({
        ...values,
        "fiscal-year-month": months.some(({ id }) => id === month) ? month : 0,
        "fiscal-year-day": Number(values["fiscal-year-day"]) || 1,
    });

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
            const save = () =>
                smartLists().SetFiscalYear(
                    entered["fiscal-year-month"] || 1,
                    entered["fiscal-year-day"],
                );
            if (!(await saved(save, "fiscal-year-day"))) return;
            form.show(entered);
            notice("Periods saved.");
        } catch (error) {
            reportFailure(error);
        } finally {
            button.disabled = false;
        }
    });
}
