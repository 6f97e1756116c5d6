// Pages that are meant for paper: a note and a button on the screen, the list on paper.

import { build } from "./build.js";

/** A row over the paper with a way back and a button that prints; `extra` goes between. */
export function printBar(back, ...extra) {
    return build(
        "div",
        { className: "print-bar screen-only" },
        build("a", { className: "button", href: back, text: "Back" }),
        ...extra,
        build("button", {
            type: "button",
            className: "primary",
            text: "Print",
            on: { click: () => print() },
        }),
    );
}
