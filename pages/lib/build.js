// Builds elements: build("p", { className: "hint", text: "Words" }, child, ...).

import { onPress } from "./press.js";

/** Names that are attributes and not properties of an element. */
const isAttribute = (name) => name === "role" || name === "for" || name.includes("-");

/**
 * An element with `properties`: `text` is its text, `on` its listeners by event, `data` its data
 * attributes; names with a dash, "role" and "for" are attributes.
 */
export function build(tag, { text, on = {}, data = {}, ...properties } = {}, ...children) {
    const element = document.createElement(tag);
    for (const [name, value] of Object.entries(properties)) {
        if (value === undefined) continue;
        if (isAttribute(name)) element.setAttribute(name, value);
        else element[name] = value;
    }
    Object.assign(element.dataset, data);
    for (const [event, run] of Object.entries(on)) element.addEventListener(event, run);
    if (text !== undefined) element.textContent = text;
    element.append(...children.filter((child) => child !== undefined && child !== null));
    return element;
}

/** A button that runs `run` once at a time. */
export function buttonOf(text, run, properties = {}) {
    const button = build("button", { type: "button", text, ...properties });
    onPress(button, run);
    return button;
}
