// One reservation line as it is edited: activity, price, quantity, what is left, the line's total,
// and the activity's reservation fields. The reservation's page and the line's dialog share it.

import { createField } from "../lib/field.js";
import {
    answersFor, leftOf, leftWords, lineTotal, readPrice, readQuantity, whyTooMany,
} from "./line_rules.js";
import { fieldType } from "./reservation_fields.js";

let made = 0;

/**
 * An editor of `line` over the activities of `offer` (see activity_offer.js). `onChange()` hears of
 * every change. Gives { element, typed, activityId, showLeft, read, fail, focus }:
 * - `showLeft(taken)`: what is left when the reservation's other lines take `taken`;
 * - `read(taken)`: the line, or undefined after showing what is wrong with it;
 * - `fail(text)`: shows why the line was refused.
 */
export function lineEditor(line, { offer, format, onChange, withNotes = false }) {
    made += 1;
    const id = `line-${made}`;
    const element = document.createElement("div");
    element.className = "line";
    const activity = document.createElement("select");
    const price = textControl("decimal");
    const quantity = textControl("numeric");
    const notes = document.createElement("textarea");
    notes.rows = 3;
    notes.value = line.notes ?? "";
    const left = word("span", "left");
    left.setAttribute("role", "status");
    const total = word("output", "line-total");
    const fault = word("p", "fault-text");
    fault.id = `${id}-fault`;
    fault.setAttribute("role", "alert");
    for (const control of [activity, price, quantity]) {
        control.setAttribute("aria-describedby", fault.id);
    }
    const questions = word("div", "line-fields");
    element.append(
        labelled("Activity", activity, `${id}-activity`, "line-activity"),
        labelled("Price", price, `${id}-price`, "line-price"),
        labelled("Quantity", quantity, `${id}-quantity`, "line-quantity", left),
        labelled("Total", total, `${id}-total`, "line-sum"),
        fault,
        questions,
    );
    if (withNotes) element.append(labelled("Notes", notes, `${id}-notes`, "line-notes"));

    const stored = line.stored ?? (line.id ? line : undefined);
    let shownActivity = line.activityId || 0;
    let answers = [];
    let pricedAs = line.id || line.activityId ? undefined : "";
    price.value = line.price && (line.id || !line.price.isZero) ? format.money(line.price) : "";
    quantity.value = line.quantity ? format.whole(line.quantity) : "";
    fillActivities(() => 0);
    askQuestions(line.answers ?? []);

    const typed = () => ({ price: price.value, quantity: quantity.value });

    function fillActivities(takenOf) {
        const options = [...offer.values()].map((one) => {
            const rest = leftOf(one, takenOf(one.id));
            const words = [format.money(one.price), leftWords(rest, format)];
            if (one.isSponsorship) words.unshift("sponsorship");
            const option = new Option(`${one.name} (${words.join(", ")})`, one.id);
            option.disabled = rest === 0 && one.id !== shownActivity;
            return option;
        });
        if (!offer.has(shownActivity)) {
            const text = shownActivity ? "(activity no longer exists)" : "Choose an activity";
            options.unshift(new Option(text, shownActivity));
        }
        activity.replaceChildren(...options);
        activity.value = String(shownActivity);
    }

    function askQuestions(given) {
        const asked = chosen()?.fields ?? [];
        answers = answersFor(asked, given).map((answer, index) => ({
            ...answer,
            field: asked[index] && answerField(asked[index], answer.value),
        }));
        questions.replaceChildren(
            ...answers.flatMap(({ field }) => (field ? [field.element] : [])),
        );
    }

    function answerField({ type, name, description, choices }, value) {
        const { kind } = fieldType(type);
        const field = createField({ name, label: name, kind, hint: description }, format, choices);
        field.show(value);
        return field;
    }

    function chosen() {
        return offer.get(shownActivity);
    }

    function clear() {
        fault.textContent = "";
        element.classList.remove("wrong");
        for (const control of [activity, price, quantity]) control.removeAttribute("aria-invalid");
    }

    function showTotal() {
        const amount = lineTotal(typed(), format);
        total.textContent = amount ? format.money(amount) : "";
    }

    // Not "change", which comes after the input event on which the choices are shown anew.
    activity.addEventListener("input", () => {
        shownActivity = Number(activity.value);
        // A price that the user has typed stays; one that came with an activity goes with it.
        if (pricedAs === price.value || !price.value) {
            price.value = format.money(chosen().price);
            pricedAs = price.value;
        }
        if (!quantity.value) quantity.value = "1";
        askQuestions([]);
        quantity.focus();
        quantity.select();
    });
    element.addEventListener("input", () => {
        clear();
        showTotal();
        onChange();
    });
    element.addEventListener("change", () => {
        showTotal();
        onChange();
    });
    showTotal();

    function fail(text, control = quantity) {
        fault.textContent = text;
        element.classList.add("wrong");
        control.setAttribute("aria-invalid", "true");
        return undefined;
    }

    // What has been sold stays sold, also where fewer are offered by now.
    function isAsStored() {
        const { quantity: count } = readQuantity(quantity.value, format);
        return stored?.activityId === shownActivity && stored.quantity === count;
    }

    function readAnswers() {
        for (const answer of answers.filter(({ field }) => field)) {
            const { value, problem } = answer.field.read();
            if (problem) {
                answer.field.fail(problem);
                element.classList.add("wrong");
                return undefined;
            }
            answer.value = value;
        }
        return answers.map(({ type, name, value }) => ({ type, name, value }));
    }

    return {
        element,
        id: line.id ?? 0,
        stored,
        typed,
        isAsStored,
        get activityId() {
            return shownActivity;
        },
        get wanted() {
            return readQuantity(quantity.value, format).quantity ?? 0;
        },
        get state() {
            const given = answers.map(({ name, field, value }) => [
                name,
                field ? (field.read().value ?? "?") : value,
            ]);
            return JSON.stringify([shownActivity, price.value, quantity.value, notes.value, given]);
        },

        showLeft(takenOf) {
            const one = chosen();
            left.textContent = one ? leftWords(leftOf(one, takenOf(one.id)), format) : "";
            fillActivities(takenOf);
        },

        read(taken) {
            clear();
            const one = chosen();
            if (!one && !line.id) return fail("Choose an activity.", activity);
            const count = readQuantity(quantity.value, format);
            if (count.problem) return fail(count.problem);
            const cost = readPrice(price.value, format);
            if (cost.problem) return fail(cost.problem, price);
            const given = readAnswers();
            if (!given) return undefined;
            if (!lineTotal(typed(), format)) return fail("The total is too large.");
            const tooMany = one && whyTooMany(count.quantity, leftOf(one, taken), format);
            if (tooMany && !isAsStored()) return fail(tooMany);
            return {
                id: line.id ?? 0,
                activityId: shownActivity,
                activityName: one?.name ?? "",
                price: cost.price,
                quantity: count.quantity,
                notes: notes.value,
                answers: given,
            };
        },

        fail,
        focus() {
            const wrong = element.querySelector('[aria-invalid="true"]');
            (wrong ?? (shownActivity ? quantity : activity)).focus();
        },
    };
}

function labelled(label, control, id, className, beside) {
    const holder = word("div", `line-part ${className}`);
    const name = document.createElement("label");
    name.textContent = label;
    control.id = id;
    name.htmlFor = id;
    holder.append(name, control);
    if (beside) holder.append(beside);
    return holder;
}

function textControl(mode) {
    const control = document.createElement("input");
    control.type = "text";
    control.inputMode = mode;
    control.autocomplete = "off";
    return control;
}

function word(tag, className) {
    const element = document.createElement(tag);
    element.className = className;
    return element;
}
