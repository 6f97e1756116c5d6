// Shows a tab of the details page's model: boxes of rows.

/** Fills `panel` with the sections that have rows (see readModel). */
export function showBoxes(panel, sections) {
    panel.replaceChildren(...sections.filter(({ rows }) => rows.length > 0).map(boxOf));
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
