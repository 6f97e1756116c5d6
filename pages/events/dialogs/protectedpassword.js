// Asks for a password and hands it over as the dialog value "password"; whoever opened the dialog
// knows what it is for and whether it is right.

import { App, set } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { submitOnce } from "../../lib/submit_once.js";

const byId = (id) => document.getElementById(id);

startDialogPage(async ({ close }) => {
    byId("password").focus();
    submitOnce(byId("prompt"), byId("ok"), async () => {
        const password = byId("password").value;
        byId("fault").textContent = password ? "" : "Enter the password.";
        byId("password").setAttribute("aria-invalid", String(!password));
        if (!password) return byId("password").focus();
        await set(App.Shell.Dialog("password"), password);
        await close(true);
    });
});
