// How far a long operation has come. Whoever runs it changes the dialog's values as it goes on:
// "heading" and "description", and "done" and "total" where it counts. Cancelling closes the dialog
// with a false answer; the operation ends with what it is at.

import { all, App, ask } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";

const pause = 400;
const names = ["heading", "description", "done", "total"];
const byId = (id) => document.getElementById(id);

startDialogPage(async ({ format }) => {
    byId("stop").focus();
    for (;;) {
        const values = await all(names.map((name) => ask.call(App.Shell.Dialog(name))));
        show(...values, format);
        await new Promise((resolve) => {
            setTimeout(resolve, pause);
        });
    }
});

function show(heading, description, done, total, format) {
    if (heading) byId("heading").textContent = heading;
    const [count, all] = [Number(done), Number(total)];
    const isCounted = all > 0 && count >= 0;
    const bar = byId("bar");
    if (isCounted) Object.assign(bar, { max: all, value: Math.min(count, all) });
    else bar.removeAttribute("value");
    const counted = isCounted ? `${format.whole(count)} of ${format.whole(all)}` : "";
    const text = [description, counted].filter(Boolean).join("\n");
    // The same words again would only be read out again.
    if (byId("description").textContent !== text) byId("description").textContent = text;
}
