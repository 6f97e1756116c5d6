// Keys of a page. Single characters count only while nothing is being typed.

import { confirmBox } from "./message_box.js";

const bindings = new Map();

/** Runs `run` on `key` ("/", "n", "?" or "Ctrl+Enter"); `label` says what it does. */
export function bindKey(key, label, run) {
    if (bindings.size === 0) document.addEventListener("keydown", onKey);
    bindings.set(key, { label, run });
}

function onKey(event) {
    const ctrl = event.ctrlKey || event.metaKey;
    const key = ctrl ? `Ctrl+${event.key}` : event.key;
    const binding = bindings.get(key);
    const typing = event.target.closest?.("input, textarea, select, [contenteditable]");
    if (!binding || event.altKey || (typing && !ctrl) || document.querySelector("dialog:modal"))
        return;
    event.preventDefault();
    binding.run();
}

/** Shows the keys of this page. */
export function showKeys() {
    const list = document.createElement("dl");
    list.className = "keys";
    for (const [key, { label }] of bindings) {
        const term = document.createElement("dt");
        const cap = document.createElement("kbd");
        cap.textContent = key;
        term.append(cap);
        const meaning = document.createElement("dd");
        meaning.textContent = label;
        list.append(term, meaning);
    }
    return confirmBox({ title: "Keyboard shortcuts", content: list, buttons: [["ok", "Close"]] });
}
