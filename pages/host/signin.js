// Signing in.

import { post } from "../lib/server.js";

const byId = (id) => document.getElementById(id);
const form = byId("signin");

form.addEventListener("submit", async (event) => {
    event.preventDefault();
    const button = form.querySelector("button");
    button.disabled = true;
    byId("fault").textContent = "";
    try {
        const { ok, error } = await post("/api/signin", {
            user: byId("user").value.trim(),
            password: byId("password").value,
        });
        if (ok) {
            location.replace(nextPage());
            return;
        }
        showFault(typeof error === "string" && error ? error : "That did not work.");
    } catch (error) {
        showFault(error.message);
    }
    button.disabled = false;
});
form.querySelector("button").disabled = false; // pressed before, it would start the page over

function showFault(text) {
    byId("fault").textContent = text;
    byId("password").select();
    byId("password").focus();
}

/** The page that was asked for before signing in; never one of another site. */
function nextPage() {
    const asked = new URLSearchParams(location.search).get("next") ?? "";
    const address = new URL(asked || "/host/home", location.origin);
    return address.origin === location.origin ? address.pathname + address.search : "/host/home";
}
