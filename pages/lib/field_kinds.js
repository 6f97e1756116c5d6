// The kinds of a form's fields. A kind makes the controls of one field and gives
// - parts: its controls, each { control, label? };
// - display(value): puts a value of the host into the controls;
// - parse(): { value }, or { problem, part } for what is surely wrong. What cannot be read here
//   goes to the host as it was typed: it may know better, or says what it does not understand;
// - text(value): the value as people read it;
// - wrong(typed, error): the words for a conversion that the host refused; its part, if it has one.

import { calendar, checkBox, input } from "./controls.js";
import { textKinds } from "./text_kinds.js";
import { Currency, DateTime } from "./values.js";

const mismatch = 13;
const overflow = 6;

export const kinds = {
    text,
    multiline,
    whole,
    money,
    date,
    dateTime,
    choice,
    yesNo,
    ...textKinds,
};

/** A line of text of at most `most` characters, where the host has a limit. */
function text({ required, most = Infinity }) {
    const control = input("text");
    control.required = Boolean(required);
    return {
        parts: [{ control }],
        ...plainText(control),
        parse() {
            const { length } = control.value;
            if (length <= most) return { value: control.value };
            return { problem: `At most ${most} characters fit; these are ${length}.` };
        },
    };
}

function multiline({ rows = 4 }) {
    const control = document.createElement("textarea");
    control.rows = rows;
    return { parts: [{ control }], ...plainText(control) };
}

function plainText(control) {
    return {
        display: (value) => {
            control.value = value ?? "";
        },
        parse: () => ({ value: control.value }),
        text: (value) => String(value ?? ""),
        wrong: (typed, error) => ({ problem: error.description }),
    };
}

function whole(field, format) {
    const control = input("text", "numeric", "short");
    return {
        parts: [{ control }],
        display: (value) => {
            control.value = value ? wholeText(value) : "";
        },
        parse: () => numberFrom(control.value, 0, format.parseWhole, fraction),
        text: wholeText,
        wrong: (typed, error) => ({ problem: refused(typed, error, "a whole number") }),
    };

    function wholeText(value) {
        return typeof value === "number" ? format.whole(value) : String(value);
    }

    // The host would round these, which nobody asked for.
    function fraction(typed) {
        const amount = format.parseMoney(typed);
        const isWhole = !amount || amount.toString().endsWith(".00");
        return isWhole ? undefined : `“${typed}” is not a whole number.`;
    }
}

function money(field, format) {
    const control = input("text", "decimal", "short");
    return {
        parts: [{ control }],
        display: (value) => {
            control.value = !value || value.isZero ? "" : moneyText(value);
        },
        parse: () => numberFrom(control.value, new Currency(), format.parseMoney, tooFine),
        text: moneyText,
        wrong: (typed, error) => ({ problem: refused(typed, error, "an amount of money") }),
    };

    function moneyText(value) {
        return value instanceof Currency ? format.money(value) : String(value);
    }

    function tooFine(typed) {
        const isTooFine = /^\D*[\d\s.,']*[.,]\d{5,}$/.test(typed);
        return isTooFine ? `“${typed}” has more than four decimals.` : undefined;
    }
}

/** A day without a time. */
function date({ required }, format) {
    const control = input("text", "text", "short");
    control.placeholder = format.dateHint;
    control.required = Boolean(required);
    return {
        parts: [{ control, extra: calendar(control, format) }],
        display(value) {
            control.value = value instanceof DateTime ? format.date(value) : (value ?? "");
        },
        parse() {
            const typed = control.value.trim();
            const day = typed ? format.parseDate(typed) : "";
            return { value: day === undefined ? typed : DateTime.of(day) };
        },
        text: (value) => (value instanceof DateTime ? format.date(value) : String(value)),
        wrong: (typed, error) => ({ problem: refused(typed, error, "a date") }),
    };
}

function dateTime({ required }, format) {
    const date = input("text", "text", "short");
    const time = input("text", "text", "short");
    date.placeholder = format.dateHint;
    time.placeholder = format.timeHint;
    date.required = Boolean(required);
    const parsed = (control, parse) => (control.value.trim() ? parse(control.value) : "");
    return {
        parts: [
            { control: date, label: "Date", extra: calendar(date, format) },
            { control: time, label: "Time" },
        ],
        display(value) {
            const isRead = value instanceof DateTime;
            date.value = isRead ? format.date(value) : (value ?? "");
            time.value = isRead ? format.time(value) : "";
        },
        parse() {
            const day = parsed(date, format.parseDate);
            const clock = parsed(time, format.parseTime);
            if (day !== undefined && clock !== undefined) return { value: DateTime.of(day, clock) };
            return { value: [day ?? date.value, clock ?? time.value].join(" ").trim() };
        },
        text(value) {
            if (!(value instanceof DateTime)) return String(value);
            return value.isZero
                ? ""
                : `${format.dateTime(value)}${value.time ? "" : " (no time set)"}`;
        },
        wrong(typed, error) {
            const dateIsRight = parsed(date, format.parseDate) !== undefined;
            const [part, control, thing] = dateIsRight ? [1, time, "a time"] : [0, date, "a date"];
            return { problem: refused(control.value.trim(), error, thing), part };
        },
    };
}

/** One of `choices`, { id, name, visible }; a hidden one is offered only where it is chosen. */
function choice({ none = "None" }, format, choices) {
    const control = document.createElement("select");
    const nameOf = (id) => {
        const item = choices.find((one) => one.id === id);
        if (!item) return id ? "(no longer exists)" : none;
        return item.visible ? item.name : `${item.name} (hidden)`;
    };
    return {
        parts: [{ control }],
        display(value) {
            const offered = new Set([
                0,
                ...choices.filter((one) => one.visible).map(({ id }) => id),
            ]);
            offered.add(value ?? 0);
            control.replaceChildren(...[...offered].map((id) => new Option(nameOf(id), id)));
            control.value = String(value ?? 0);
        },
        parse: () => ({ value: Number(control.value) }),
        text: nameOf,
        wrong: (typed, error) => ({ problem: error.description }),
    };
}

function yesNo() {
    const control = checkBox();
    return {
        parts: [{ control }],
        display: (value) => {
            control.checked = Boolean(value);
        },
        parse: () => ({ value: control.checked }),
        text: (value) => (value ? "Yes" : "No"),
        wrong: (typed, error) => ({ problem: error.description }),
    };
}

function numberFrom(typed, blank, parse, surelyWrong) {
    const trimmed = typed.trim();
    if (!trimmed) return { value: blank };
    const value = parse(trimmed);
    if (value !== undefined) return { value };
    const problem = surelyWrong(trimmed);
    return problem ? { problem } : { value: trimmed };
}

function refused(typed, error, thing) {
    if (error.number === overflow) return `“${typed}” is too large.`;
    if (error.number === mismatch) return `“${typed}” is not ${thing}.`;
    return error.description;
}
