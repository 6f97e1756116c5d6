// What a report is asked: a form of its filters.

import { createForm } from "../lib/form.js";
import { reportFailure } from "../lib/notice.js";
import { fieldOf, filterText, missingWords } from "./report_values.js";

/**
 * Sets up `box`, a <details> with a form in it. `onAsk(texts)` hears of what the user asks for, by
 * key as it stands in an address; `onChoice(texts)` of a choice on which others may depend, and
 * gives the filters anew. Gives { show }.
 */
export function reportFilters(box, { format, onAsk, onChoice }) {
    const element = box.querySelector("form");
    const actions = element.querySelector(".actions");
    let form;
    let filters = [];

    /** Shows `now`, and what is wrong with each of which `isAtFault` says that it is to be told. */
    function show(now, isAtFault = () => false) {
        filters = now;
        element.replaceChildren(actions);
        const choices = Object.fromEntries(filters.map((one) => [one.Key, one.choices]));
        form = createForm(element, [{ fields: filters.map(fieldOf) }], { format, choices });
        form.show(Object.fromEntries(filters.map(({ Key, Value }) => [Key, Value])));
        for (const { Key, Caption, Problem } of filters.filter(isAtFault)) {
            form.fields.get(Key).fail(plainProblem(Problem, Caption));
        }
        box.hidden = filters.length === 0;
    }

    /** What stands in the fields, as texts by key; undefined after showing what is surely wrong. */
    function texts() {
        const values = form.values();
        return values && textsOf(values);
    }

    function textsOf(values) {
        return new Map(filters.map((one) => [one.Key, filterText(one, values[one.Key])]));
    }

    element.addEventListener("submit", (event) => {
        event.preventDefault();
        form.clear();
        const values = form.values();
        if (!values) return;
        const missing = filters
            .map((one) => [one.Key, missingWords(one, values[one.Key])])
            .filter(([, words]) => words);
        for (const [key, words] of missing) form.fields.get(key).fail(words);
        if (missing.length > 0) form.fields.get(missing[0][0]).focus();
        else onAsk(textsOf(values));
    });
    element.addEventListener("change", async ({ target }) => {
        const dependent = filters.some(({ Kind }) => Kind === "activity");
        const key = filters.find(
            ({ Key }) => form.fields.get(Key).element.contains(target),
        );
        if (!dependent || key?.Kind !== "event") return;
        try {
            const entered = texts();
            if (!entered) return;
            show(await onChoice(entered));
            form.fields.get(key.Key).focus();
        } catch (error) {
            reportFailure(error);
        }
    });

    return { show };
}

/** A problem without the caption before it, which stands at the field already. */
export function plainProblem(problem, caption) {
    const mark = `"${caption}": `;
    const text = problem.startsWith(mark) ? problem.slice(mark.length) : problem;
    return text.slice(0, 1).toUpperCase() + text.slice(1);
}
