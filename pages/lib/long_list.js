// Long lists: read from the host range by range, shown piece by piece.

import { list } from "./app.js";
import { reportFailure } from "./notice.js";

const rangeSize = 2500;
const pieceSize = 100;

/**
 * All rows of `collection`, an object that the host holds, read in ranges so that no answer grows
 * with the list. `onRange(count, total, found)` hears of each.
 */
export async function readByRange(collection, columns, { size = rangeSize, onRange } = {}) {
    const rows = [];
    for (;;) {
        const range = { start: rows.length, count: size };
        const { total, rows: found } = await list(collection, columns, range);
        rows.push(...found);
        onRange?.(rows.length, total, found);
        if (found.length === 0 || rows.length >= total) return rows;
    }
}

/**
 * Shows rows in `body` a piece at a time: more follow when `more`, a button below the list, is
 * pressed or comes into view. `make(row)` gives a row's element; `onShown(rows)` hears of those
 * that have just been added. Gives `show(rows, { keep })`, which keeps as many in view as there
 * were when `keep` is set.
 */
export function longList(body, more, { make, onShown = () => {}, piece = pieceSize }) {
    let rows = [];
    let shown = 0;

    function add(count) {
        const added = rows.slice(shown, shown + count);
        body.append(...added.map(make));
        shown += added.length;
        more.hidden = shown >= rows.length;
        if (added.length > 0) onShown(added);
    }
    more.addEventListener("click", () => {
        const first = shown;
        add(piece);
        body.children[first]?.querySelector("input, a, button")?.focus();
    });
    new IntersectionObserver((entries) => {
        if (entries.some((entry) => entry.isIntersecting)) add(piece);
    }).observe(more);

    return {
        show(all, { keep = false } = {}) {
            const wanted = keep ? Math.max(shown, piece) : piece;
            rows = all;
            shown = 0;
            body.replaceChildren();
            add(wanted);
        },
        /** Shows `row` at least, when it is one of the list's. */
        reach(row) {
            const at = rows.indexOf(row);
            if (at >= shown) add(at - shown + piece);
        },
    };
}

/**
 * Shows a list that is read as far as it is looked at: `read(start, count)` gives rows, `make(row)`
 * a row's element. Gives `show(total)`, which begins anew and resolves when the first piece is there,
 * and `reach(most)`.
 */
export function growingList(body, more, { make, read, piece = pieceSize }) {
    let total = 0;
    let reading;
    let showing = 0; // counts the lists shown, so that rows of one before are dropped

    function add() {
        reading ??= append().finally(() => {
            reading = undefined;
        });
        return reading;
    }

    async function append() {
        const mine = showing;
        const rows = await read(body.rows.length, piece);
        if (mine !== showing) return;
        body.append(...rows.map(make));
        more.hidden = rows.length === 0 || body.rows.length >= total;
    }

    more.addEventListener("click", async () => {
        const first = body.rows.length;
        await add();
        body.rows[first]?.querySelector("a, button")?.focus();
    });
    new IntersectionObserver((entries) => {
        if (entries.some((entry) => entry.isIntersecting)) add().catch(reportFailure);
    }).observe(more);

    return {
        async show(count) {
            showing += 1;
            await reading?.catch(() => {});
            total = count;
            body.replaceChildren();
            more.hidden = true;
            if (total > 0) await add();
        },
        /** Shows the first `most` rows at least, as far as there are so many. */
        async reach(most) {
            const wanted = Math.min(most, total);
            for (let before = -1; body.rows.length < wanted && body.rows.length > before; ) {
                before = body.rows.length;
                await add();
            }
        },
    };
}
