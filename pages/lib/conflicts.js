// What two people changed in the same record.

import { sameValue } from "./values.js";

/**
 * The fields whose stored value is no longer what was loaded, with all that a choice between the
 * two needs. `mine` holds the values that the user changed; a field that both brought to the same
 * value is none.
 */
export function changesBetween(loaded, stored, mine) {
    return Object.keys(loaded)
        .filter((name) => !sameValue(loaded[name], stored[name]))
        .filter((name) => !(name in mine && sameValue(mine[name], stored[name])))
        .map((name) => ({
            name,
            mine: name in mine ? mine[name] : loaded[name],
            theirs: stored[name],
            isMineChanged: name in mine,
        }));
}
