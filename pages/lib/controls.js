// The plain controls that fields are made of.

import { DateTime } from "./values.js";

export function input(type, mode, className = "") {
    const control = document.createElement("input");
    control.type = type;
    control.className = className;
    control.autocomplete = "off";
    if (mode) control.inputMode = mode;
    return control;
}

/** A check box. Its value is what stands for its state, as that of every other control does. */
export function checkBox() {
    const control = input("checkbox");
    Object.defineProperty(control, "value", {
        get: () => (control.checked ? "1" : ""),
        set: (value) => {
            control.checked = value === "1";
        },
    });
    return control;
}

/** A button that lets the browser's calendar fill in `date`. */
export function calendar(date, format) {
    const picker = input("date");
    picker.className = "picker";
    picker.tabIndex = -1;
    picker.setAttribute("aria-hidden", "true");
    const button = document.createElement("button");
    button.type = "button";
    button.className = "icon calendar";
    button.setAttribute("aria-label", "Choose a date");
    button.addEventListener("click", () => {
        picker.value = format.parseDate(date.value) ?? "";
        picker.showPicker();
    });
    picker.addEventListener("change", () => {
        date.value = format.date(DateTime.of(picker.value));
        date.dispatchEvent(new Event("input", { bubbles: true }));
        date.focus();
    });
    const both = document.createElement("span");
    both.className = "with-picker";
    both.append(button, picker);
    return both;
}
