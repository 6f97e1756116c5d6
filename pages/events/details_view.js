// Shows the details page's model: tabs, where there are several, and boxes of rows.

/** Shows `tabs` (see readModel) with their heads in `head` and their panels in `panels`. */
export function showModel(tabs, head, panels) {
    const shown = tabs.map(panelOf);
    panels.replaceChildren(...shown);
    head.hidden = tabs.length < 2;
    if (tabs.length < 2) {
        head.replaceChildren();
        return;
    }
    const chosen = head.querySelector('[aria-selected="true"]')?.dataset.key;
    const buttons = tabs.map((tab) => tabButton(tab));
    head.replaceChildren(...buttons);
    const select = (index) => {
        for (const [at, button] of buttons.entries()) {
            button.setAttribute("aria-selected", String(at === index));
            button.tabIndex = at === index ? 0 : -1;
            shown[at].hidden = at !== index;
        }
    };
    for (const [index, button] of buttons.entries()) {
        button.addEventListener("click", () => select(index));
        button.addEventListener("keydown", ({ key }) => {
            const step = { ArrowRight: 1, ArrowLeft: -1 }[key];
            if (!step) return;
            const next = (index + step + buttons.length) % buttons.length;
            select(next);
            buttons[next].focus();
        });
        shown[index].setAttribute("role", "tabpanel");
        shown[index].setAttribute("aria-labelledby", button.id);
    }
    select(
        Math.max(
            tabs.findIndex(({ key }) => key === chosen),
            0,
        ),
    );
}

function tabButton({ key, title }) {
    const button = document.createElement("button");
    button.type = "button";
    button.id = `tab-${key}`;
    button.dataset.key = key;
    button.setAttribute("role", "tab");
    button.textContent = title;
    return button;
}

function panelOf({ sections }) {
    const panel = document.createElement("div");
    panel.className = "boxes";
    panel.append(...sections.filter(({ rows }) => rows.length > 0).map(boxOf));
    return panel;
}

function boxOf({ key, title, link, rows }) {
    const box = document.createElement("section");
    box.className = `box-${key} details-box`;
    const heading = document.createElement("h2");
    heading.id = `section-${key}`;
    box.setAttribute("aria-labelledby", heading.id);
    if (link) {
        const anchor = document.createElement("a");
        anchor.href = link;
        anchor.textContent = title;
        heading.append(anchor);
    } else {
        heading.textContent = title;
    }
    const list = document.createElement("dl");
    for (const { Name, Value, HalfWidth } of rows) {
        const pair = document.createElement("div");
        pair.className = HalfWidth ? "row half" : "row";
        const term = document.createElement("dt");
        term.textContent = Name;
        const value = document.createElement("dd");
        value.textContent = Value;
        pair.append(term, value);
        list.append(pair);
    }
    box.append(heading, list);
    return box;
}
