// What the tabs with a list of records have in common.

import { orderPreference, recordTable } from "../../lib/record_table.js";
import { preferences } from "../../lib/preferences.js";

/**
 * A tab ({ key, title, right }) with the list that `describe(context)` gives (see recordTable) of
 * the rows that `load(context)` reads.
 */
export function recordTab({ key, title, right, describe, load }) {
    return {
        key,
        title,
        right,
        async show(panel, context) {
            const { event, format } = context;
            // A command is over before the page is read again, so that the next one can begin.
            const refresh = () => {
                context.refresh();
            };
            const description = describe({ ...context, refresh });
            const [, several] = description.name;
            const [[remembered], rows] = await Promise.all([
                preferences(orderPreference(several)),
                load(context),
            ]);
            const showRows = recordTable(panel, {
                ...description,
                format,
                remembered,
                fileName: () => `${event.Name} - ${several}`,
            });
            showRows(rows);
            return async () => showRows(await load(context));
        },
    };
}
