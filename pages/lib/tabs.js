// A row of tabs: one is chosen, arrow keys go from one to the next.

/**
 * Shows `tabs`, each { key, title, panel }, as buttons in `head`; one tab alone needs no row.
 * `onChoose(tab)` hears of each choice. Gives a function that chooses the tab with a key.
 */
export function tabRow(head, tabs, onChoose) {
    const buttons = tabs.map(({ key, title }) => tabButton(key, title));
    head.replaceChildren(...buttons);
    head.hidden = tabs.length < 2;

    function choose(index) {
        for (const [at, button] of buttons.entries()) {
            button.setAttribute("aria-selected", String(at === index));
            button.tabIndex = at === index ? 0 : -1;
            tabs[at].panel.hidden = at !== index;
        }
        if (!head.hidden) buttons[index].scrollIntoView({ block: "nearest", inline: "nearest" });
        return onChoose(tabs[index]);
    }

    for (const [index, button] of buttons.entries()) {
        const { panel } = tabs[index];
        panel.setAttribute("role", "tabpanel");
        panel.setAttribute("aria-labelledby", button.id);
        button.addEventListener("click", () => choose(index));
        button.addEventListener("keydown", (event) => {
            const next = stepFrom(index, event.key, buttons.length);
            if (next === undefined) return;
            event.preventDefault();
            choose(next);
            buttons[next].focus();
        });
    }
    return (key) => {
        const index = tabs.findIndex((tab) => tab.key === key);
        return choose(Math.max(index, 0));
    };
}

function stepFrom(index, key, count) {
    switch (key) {
        case "ArrowRight":
            return (index + 1) % count;
        case "ArrowLeft":
            return (index - 1 + count) % count;
        case "Home":
            return 0;
        case "End":
            return count - 1;
        default:
            return undefined;
    }
}

function tabButton(key, title) {
    const button = document.createElement("button");
    button.type = "button";
    button.id = `tab-${key}`;
    button.setAttribute("role", "tab");
    button.textContent = title;
    return button;
}
