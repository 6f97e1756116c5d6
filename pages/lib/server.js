// The one module that talks to the server. Every request is a POST with JSON.

/** The server could not be reached or answered with something else than data. */
export class ConnectionError extends Error {}

/** Nobody is signed in any more. */
export class SignedOutError extends Error {}

const viewKey = "view";
let token;
let pending = 0;

/** Whether this page stands in a dialog of another page. */
export const inDialog = window.parent !== window;

/**
 * What the server knows this page by. A dialog's page shares the id of the page that shows it;
 * each page shown gets a new one, so that a late farewell of the page before cannot hurt it.
 */
export const view = inDialog ? sessionStorage.getItem(viewKey) : newView();

function newView() {
    const id = crypto.randomUUID?.() ?? String(Math.random()).slice(2);
    sessionStorage.setItem(viewKey, id);
    return id;
}

/** Posts `body` to `path` and gives the answer's data. */
export async function post(path, body = {}) {
    const headers = { "Content-Type": "application/json", "X-View": view };
    if (token) headers["X-Token"] = token;
    pending += 1;
    const response = await fetch(path, { method: "POST", headers, body: JSON.stringify(body) })
        .catch(() => cutOff("The server cannot be reached. Try again in a moment."))
        .finally(() => {
            pending -= 1;
        });
    if (response.status === 401 && path !== "/api/signin") {
        throw new SignedOutError("Your session has ended. Sign in again to go on.");
    }
    const answer = await response.json().catch(() => cutOff("The server's answer broke off."));
    if (!response.ok && !answer.error) {
        throw new ConnectionError(`The server answered with an error (${response.status}).`);
    }
    return answer;
}

/** Fails, but not if it was leaving the page that cut the request off: then nobody is there. */
async function cutOff(reason) {
    await new Promise((resolve) => {
        setTimeout(resolve, 250);
    });
    throw new ConnectionError(reason);
}

/** Whether an answer of the server is still awaited. */
export const isWaiting = () => pending > 0;

let session;

/** Who is signed in, their rights and locale, and the present day; asked for once a page. */
export function currentSession() {
    session ??= post("/api/session").then((answer) => {
        token = answer.token;
        return answer;
    });
    return session;
}

/** Tells the server that this page is gone; works while the page is being closed. */
export function leave() {
    navigator.sendBeacon(
        "/api/leave",
        new Blob([JSON.stringify({ view })], { type: "application/json" }),
    );
}
