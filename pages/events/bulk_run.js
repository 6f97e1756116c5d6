// Shows how far a change of many records is, with a way to stop it.

import { build } from "../lib/build.js";
import { announce } from "../lib/notice.js";

/**
 * Runs `work({ onProgress, isCancelled })` with a bar in a modal box once it takes a while. What was
 * done before a cancel stays done.
 */
export async function withProgress(title, work) {
    let isCancelled = false;
    const bar = build("progress", { "aria-label": title });
    const words = build("p", { role: "status", text: "Working…" });
    const cancel = build("button", {
        type: "button",
        text: "Stop here",
        on: {
            click: () => {
                isCancelled = true;
                cancel.disabled = true;
            },
        },
    });
    const box = build(
        "dialog",
        { className: "box", "aria-label": title },
        build("h2", { text: title }),
        bar,
        words,
        build("div", { className: "actions" }, cancel),
    );
    box.addEventListener("cancel", (event) => {
        event.preventDefault();
        cancel.click();
    });
    document.body.append(box);
    const patience = setTimeout(() => box.showModal(), 400);
    try {
        return await work({
            isCancelled: () => isCancelled,
            onProgress(done, total) {
                Object.assign(bar, { max: total, value: done });
                words.textContent = `${done} of ${total}`;
            },
        });
    } finally {
        clearTimeout(patience);
        box.close();
        box.remove();
        announce(`${title}: done`);
    }
}
