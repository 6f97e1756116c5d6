// The filters of a list: a row for each, with what is compared, how, and to what.

import { build, buttonOf } from "../lib/build.js";
import { calendar, input } from "../lib/controls.js";
import { reportFailure } from "../lib/notice.js";
import { operatorOf, operators, storedValue, typedValue } from "./list_filter_kinds.js";

/**
 * Sets up the filters in `element`. `criteria` are { Key, Caption, Kind, Group }, `choicesOf(key)`
 * resolves to [{ Id, Name }]; `onChange()` hears of every change. Gives { show, read, add, fail }.
 */
export function filterRows(element, { criteria, choicesOf, format, onChange }) {
    let rows = [];

    function changed(row) {
        row?.fail("");
        onChange();
    }

    function add(filter, { focus = false } = {}) {
        const row = filterRow(filter, { criteria, choicesOf, format, changed, remove });
        rows.push(row);
        element.append(row.element);
        if (focus) row.focus();
    }

    function remove(row) {
        const at = rows.indexOf(row);
        rows = rows.filter((one) => one !== row);
        row.element.remove();
        onChange();
        const next = rows[at] ?? rows[at - 1];
        if (next) next.focus();
        else document.getElementById("add-filter")?.focus();
    }

    return {
        show(filters) {
            rows = [];
            element.replaceChildren();
            for (const filter of filters) add(filter);
        },
        read: () => rows.map((row) => row.read()),
        add: () => {
            add({ Key: criteria[0].Key, Operator: "", Values: [] }, { focus: true });
            onChange();
        },
        /** Shows what the host says about filters: { Filter, Text }, counted from 1. */
        fail(faults) {
            for (const row of rows) row.fail("");
            for (const { Filter, Text } of faults) rows[Filter - 1]?.fail(Text);
            rows[faults[0]?.Filter - 1]?.focusValue();
        },
    };
}

let made = 0;

function filterRow(filter, { criteria, choicesOf, format, changed, remove }) {
    made += 1;
    const faultId = `filter-fault-${made}`;
    const byKey = new Map(criteria.map((one) => [one.Key.toLowerCase(), one]));
    let criterion = byKey.get(filter.Key.toLowerCase());
    const what = build("select", { "aria-label": "Filter by" }, ...groupedOptions(criteria));
    const how = build("select", { "aria-label": "How it compares" });
    const values = build("div", { className: "values" });
    const fault = build("p", { className: "fault-text", id: faultId, role: "alert" });
    let operator;
    let control;

    function showOperators(name) {
        how.replaceChildren(
            ...operators[criterion.Kind].map(({ name: key, words }) => new Option(words, key)),
        );
        operator = operatorOf(criterion.Kind, name);
        how.value = operator.name;
        how.disabled = how.options.length === 1;
    }

    function showValues(stored) {
        control = valueControl(criterion, operator.takes, { choicesOf, format, faultId });
        values.replaceChildren(...control.elements);
        control.show(stored);
    }

    if (criterion) {
        what.value = criterion.Key;
        showOperators(filter.Operator);
        showValues(filter.Values);
    } else {
        // What no longer exists, or may not be seen, stays until it is taken out.
        what.prepend(new Option(`${filter.Caption || filter.Key} (not available)`, ""));
        what.value = "";
        how.hidden = true;
    }
    what.addEventListener("change", () => {
        criterion = byKey.get(what.value.toLowerCase());
        how.hidden = !criterion;
        values.replaceChildren();
        if (criterion) {
            showOperators("");
            showValues([]);
        }
        changed(row);
    });
    how.addEventListener("change", () => {
        const kept = control.read();
        operator = operatorOf(criterion.Kind, how.value);
        showValues(kept);
        changed(row);
    });
    values.addEventListener("input", () => changed(row));
    values.addEventListener("change", () => changed(row));

    const row = {
        element: build("li", { className: "list-filter" }, what, how, values,
            buttonOf("Remove", () => remove(row), {
                className: "quiet",
                "aria-label": "Remove this filter",
            }),
            fault),
        focus: () => what.focus(),
        focusValue: () => (values.querySelector("input, select") ?? what).focus(),
        read: () =>
            criterion
                ? { Key: criterion.Key, Operator: operator.name, Values: control.read() }
                : { Key: filter.Key, Operator: filter.Operator, Values: filter.Values },
        fail(text) {
            fault.textContent = text;
            row.element.classList.toggle("wrong", Boolean(text));
            for (const one of values.querySelectorAll("input, select")) {
                if (text) one.setAttribute("aria-invalid", "true");
                else one.removeAttribute("aria-invalid");
            }
        },
    };
    return row;
}

function groupedOptions(criteria) {
    const groups = new Map();
    for (const { Key, Caption, Group } of criteria) {
        const group = Group || "Other";
        if (!groups.has(group)) groups.set(group, build("optgroup", { label: group }));
        groups.get(group).append(new Option(Caption, Key));
    }
    return [...groups.values()];
}

/** The controls of a filter's values: { elements, show(stored), read() }. */
function valueControl(criterion, takes, tools) {
    if (criterion.Kind === "choice") return choiceControl(criterion, tools);
    if (criterion.Kind === "yesno") return yesNoControl(criterion, tools);
    return typedControl(criterion, takes, tools);
}

function typedControl({ Caption, Kind }, takes, { format, faultId }) {
    const isDate = Kind === "date";
    const modes = { money: "decimal", number: "decimal" };
    const controls = Array.from({ length: takes }, (_, index) => {
        const control = input("text", modes[Kind] ?? "text");
        const part = takes === 2 ? [" from", " to"][index] : "";
        control.setAttribute("aria-label", `${Caption}${part}`);
        control.setAttribute("aria-describedby", faultId);
        if (isDate) control.placeholder = format.dateHint;
        return control;
    });
    const elements = controls.flatMap((control, index) => {
        const extra = isDate ? [calendar(control, format)] : [];
        const holder = build("span", { className: "control" }, control, ...extra);
        return index > 0 ? [build("span", { text: "and" }), holder] : [holder];
    });
    return {
        elements,
        show: (stored) =>
            controls.forEach((control, index) => {
                control.value = typedValue(Kind, stored[index] ?? "", format);
            }),
        read: () => controls.map(({ value }) => storedValue(Kind, value, format)),
    };
}

function yesNoControl({ Caption }, { faultId }) {
    const select = build("select", { "aria-label": Caption, "aria-describedby": faultId },
        new Option("Yes", "Yes"), new Option("No", "No"));
    return {
        elements: [select],
        show: (stored) => {
            select.value = stored[0] === "No" ? "No" : "Yes";
        },
        read: () => [select.value],
    };
}

function choiceControl({ Key, Caption }, { choicesOf, faultId }) {
    const select = build("select", { "aria-label": `Add to ${Caption}`, "aria-describedby": faultId },
        new Option("Choose…", ""));
    const chips = build("ul", { className: "chips", "aria-label": Caption });
    let keys = [];
    const names = new Map();
    choicesOf(Key).then((choices) => {
        for (const { Id, Name } of choices) {
            names.set(Id, Name);
            select.append(new Option(Name, Id));
        }
        draw();
    }).catch(reportFailure);

    function draw() {
        chips.replaceChildren(...keys.map((key) => {
            const name = names.get(key) ?? (names.size > 0 ? "(no longer exists)" : "…");
            return build("li", {}, buttonOf(name, () => take(key), {
                className: "chip",
                "aria-label": `Take out ${name}`,
            }));
        }));
        chips.hidden = keys.length === 0;
    }
    function take(key) {
        keys = keys.filter((one) => one !== key);
        draw();
        (chips.querySelector("button") ?? select).focus();
        chips.dispatchEvent(new Event("change", { bubbles: true }));
    }
    select.addEventListener("change", () => {
        if (select.value && !keys.includes(select.value)) keys = [...keys, select.value];
        select.value = "";
        draw();
    });
    return {
        elements: [select, chips],
        show: (stored) => {
            keys = [...stored];
            draw();
        },
        read: () => keys,
    };
}
