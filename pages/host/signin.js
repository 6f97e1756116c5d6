// Signing in.

import { post } from "../lib/server.js";

const byId = (id) => document.getElementById(id);
const form = byId("signin");

form.addEventListener("submit", async (event) => {
    event.preventDefault();
    const button = form.querySelector("button");
    button.disabled = true;
    byId("fault").textContent = "";
    const attempt = secretName();
    const stopWatching = watch(attempt);
    try {
        const { ok, error, page } = await post("/api/signin", {
            user: byId("user").value.trim(),
            password: byId("password").value,
            attempt,
        });
        if (ok) {
            location.replace(nextPage(page));
            return;
        }
        showFault(typeof error === "string" && error ? error : "That did not work.");
    } catch (error) {
        showFault(error.message);
    } finally {
        stopWatching();
    }
    button.disabled = false;
});
form.querySelector("button").disabled = false; // pressed before, it would start the page over

function showFault(text) {
    byId("fault").textContent = text;
    byId("password").select();
    byId("password").focus();
}

function secretName() {
    return Array.from(crypto.getRandomValues(new Uint32Array(4)), (part) => part.toString(36)).join("");
}

/**
 * Shows what the host is doing while signing in takes longer than a moment. Gives a function that
 * ends it.
 */
function watch(attempt) {
    const bar = byId("progress").querySelector("progress");
    const timer = setInterval(async () => {
        const state = await post("/api/signin-progress", { attempt }).catch(() => ({}));
        const total = Number(state.total) || 0;
        byId("progress-title").textContent = state.heading || "Getting things ready…";
        byId("progress-text").textContent = state.description ?? "";
        bar.hidden = total <= 0;
        bar.max = Math.max(total, 1);
        bar.value = Number(state.done) || 0;
        byId("progress").hidden = false;
    }, 1000);
    return () => {
        clearInterval(timer);
        byId("progress").hidden = true;
    };
}

/**
 * The page that was asked for before signing in, never one of another site; without one that which
 * the user has chosen to begin with, `chosen`.
 */
function nextPage(chosen) {
    const asked = new URLSearchParams(location.search).get("next");
    const address = new URL(asked || chosen || "/host/home", location.origin);
    return address.origin === location.origin ? address.pathname + address.search : "/host/home";
}
