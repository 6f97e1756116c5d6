// Reads events from the store, one request for the rows and none for what is not shown.

import { App, list, write } from "../lib/app.js";
import { manage } from "./addin.js";
import { criteriaValues, orderBy, spanCondition } from "./event_search.js";

const literals = new Map();
let criteria;
let running = Promise.resolve();

/**
 * The rows that `state` ({ text, span, sort, descending, shown }) asks for, from `start` on, with
 * `columns`; `hasMore` tells whether there are more. `today` and `season` are the session's.
 * Searches run one after the other, as they share the criteria.
 */
export function findEvents(state, columns, range) {
    const asked = { ...state };
    running = running.then(
        () => find(asked, columns, range),
        () => find(asked, columns, range),
    );
    return running;
}

async function find(state, columns, { today, season, start = 0 }) {
    const where = await spanCondition(state.span, { today, season }, dateLiteral);
    await setCriteria(criteriaValues({ ...state, where, order: orderBy(state) }));
    const range = { start, count: state.shown - start };
    const { total, rows } = await list(manage().GetEventsBySearch(await criteria), columns, range);
    return { rows, hasMore: total > state.shown };
}

/** Fills the page's one criteria object, with a new one if the host has forgotten it. */
async function setCriteria(values, { isRetry = false } = {}) {
    criteria ??= manage()
        .GetNewEventsCriteria()
        .then((made) => made);
    try {
        await write(await criteria, values);
    } catch (error) {
        criteria = undefined;
        if (isRetry) throw error;
        await setCriteria(values, { isRetry: true });
    }
}

/** `date` as a literal of the open database; the host chooses the marks. */
function dateLiteral(date) {
    if (!literals.has(date.text)) {
        literals.set(
            date.text,
            App.Provider.VToSQL(date, 1).then((text) => text),
        );
    }
    return literals.get(date.text);
}
