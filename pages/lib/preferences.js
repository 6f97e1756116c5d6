// What a user's pages remember from one visit to the next.

import { all, App, ask, set } from "./app.js";
import { reportFailure } from "./notice.js";

const section = "events";

/** The values remembered under `names`, in their order; blank where nothing is. */
export async function preferences(...names) {
    const values = await all(
        names.map((name) => ask.call(App.Document.Preferences(section, name))),
    );
    return values.map((value) => String(value ?? ""));
}

/** Remembers `value` (a text) under `name`; a page that goes on does not wait for it. */
export function remember(name, value) {
    return set(App.Document.Preferences(section, name), value).catch(reportFailure);
}
