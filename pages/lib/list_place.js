// Where in a list the user was: it is kept with the page's place in the browser's history, so that
// Back returns to the same row.

/** Keeps the row with the key `id` as the one that Back returns to. */
export function keepPlace(id) {
    history.replaceState({ ...history.state, row: id, scroll: scrollY }, "");
}

/** After the rows of `body` (with data-id) are there: the one kept gets the focus again. */
export function returnToPlace(body) {
    const { row: id, scroll } = history.state ?? {};
    if (id === undefined) return;
    const row = body.querySelector(`tr[data-id="${Number(id)}"]`);
    scrollTo({ top: scroll ?? 0 });
    row?.querySelector(".row-link")?.focus({ preventScroll: Boolean(scroll) });
}
