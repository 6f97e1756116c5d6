// A native table: heads that sort, rows from a template, arrow keys from row to row.

/**
 * Makes the heads with data-sort of `table` buttons that ask for an order: `onSort(key)`. Gives a
 * function that shows the present order, { key, descending }.
 */
export function sortableHeads(table, onSort) {
    const heads = [...table.querySelectorAll("th[data-sort]")];
    for (const head of heads) {
        const button = document.createElement("button");
        button.type = "button";
        button.className = "sort";
        button.textContent = head.textContent;
        button.addEventListener("click", () => onSort(head.dataset.sort));
        head.replaceChildren(button);
    }
    return ({ key, descending }) => {
        for (const head of heads) {
            if (head.dataset.sort !== key) head.removeAttribute("aria-sort");
            else head.setAttribute("aria-sort", descending ? "descending" : "ascending");
        }
    };
}

/** A row from `template` whose cells with data-cell show `texts` by name. */
export function rowFrom(template, texts) {
    const row = template.content.firstElementChild.cloneNode(true);
    for (const cell of row.querySelectorAll("[data-cell]")) {
        cell.textContent = texts[cell.dataset.cell] ?? "";
    }
    return row;
}

/** Up, Down, Home and End go from one row's link to another's. */
export function arrowKeys(body) {
    body.addEventListener("keydown", (event) => {
        const links = [...body.querySelectorAll(".row-link")];
        const at = links.indexOf(event.target);
        const to = { ArrowUp: at - 1, ArrowDown: at + 1, Home: 0, End: links.length - 1 }[
            event.key
        ];
        if (at < 0 || to === undefined || !links[to]) return;
        event.preventDefault();
        links[to].focus();
    });
}
