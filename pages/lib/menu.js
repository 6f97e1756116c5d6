// A button that shows further buttons below it.

import { build } from "./build.js";

/**
 * A button called `label` with a menu of `items`, each { label, run }. The arrow keys go from one
 * to the next; Escape, a choice, or leaving closes it.
 */
export function menuButton(label, items, { className = "" } = {}) {
    const choices = items.map(({ label: text, run }) =>
        build("button", {
            type: "button",
            text,
            on: {
                click: () => {
                    close();
                    opener.focus();
                    run();
                },
            },
        }));
    const menu = build("ul", { className: "menu", hidden: true, "aria-label": label },
        ...choices.map((choice) => build("li", {}, choice)));
    const opener = build("button", {
        type: "button", className, text: label, "aria-expanded": "false",
        on: { click: () => (menu.hidden ? open() : close()) },
    });
    const holder = build("div", { className: "menu-holder" }, opener, menu);

    function open() {
        menu.hidden = false;
        opener.setAttribute("aria-expanded", "true");
        choices[0]?.focus();
    }

    function close() {
        menu.hidden = true;
        opener.setAttribute("aria-expanded", "false");
    }

    holder.addEventListener("keydown", (event) => {
        if (menu.hidden) return;
        const at = choices.indexOf(document.activeElement);
        const last = choices.length - 1;
        const to = {
            ArrowDown: at < last ? at + 1 : 0,
            ArrowUp: at > 0 ? at - 1 : last,
            Home: 0,
            End: last,
        }[event.key];
        if (event.key !== "Escape" && to === undefined) return;
        event.preventDefault();
        if (event.key === "Escape") {
            close();
            opener.focus();
        } else {
            choices[to].focus();
        }
    });
    holder.addEventListener("focusout", ({ relatedTarget }) => {
        if (!holder.contains(relatedTarget)) close();
    });
    return holder;
}
