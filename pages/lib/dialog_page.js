// What every page in a dialog window does: its title, Escape, closing with an answer.

import { App } from "./app.js";
import { answerOf } from "./chain.js";
import { localeFormats } from "./locale.js";
import { reportFailure } from "./notice.js";
import { currentSession, inDialog, post } from "./server.js";

const windowNumber = Number(new URLSearchParams(location.search).get("window"));

/**
 * Sets up a dialog's page, then runs `start` with { session, format, heading, description,
 * close, setTitle }. `close(true)` confirms, `close(false)` cancels; `url` is where the host goes
 * afterwards. `setTitle(text)` names a window that its command gave no title.
 */
export async function startDialogPage(start) {
    addEventListener("unhandledrejection", (event) => {
        event.preventDefault();
        reportFailure(event.reason);
    });
    try {
        if (!inDialog) return showAstray();
        const parts = await setUp();
        showContent();
        await start(parts);
    } catch (error) {
        showContent();
        reportFailure(error);
    }
}

// A form that is not set up yet would lose what is typed and entered into it, so the pages are
// hidden until `start` is about to attach its handlers; by an attribute, which holds before any
// style sheet has arrived.
function showContent() {
    document.body.hidden = false;
}

async function setUp() {
    document.addEventListener("keydown", (event) => {
        if (event.key !== "Escape" || event.defaultPrevented) return;
        if (document.querySelector("dialog:modal")) return;
        // Otherwise the same key would at once close the box that asks whether to discard.
        event.preventDefault();
        cancel();
    });
    for (const button of document.querySelectorAll("[data-cancel]")) {
        button.addEventListener("click", cancel);
    }
    const [session, title, heading, description] = await Promise.all([
        currentSession(),
        ...["title", "heading", "description"].map((name) => App.Shell.Dialog(name)),
    ]);
    showTitle(title || document.title);
    const setTitle = (text) => title || showTitle(text);
    const format = localeFormats(session.locale);
    return { session, format, heading, description, close, setTitle };
}

function showTitle(title) {
    document.title = title;
    window.frameElement?.dispatchEvent(new CustomEvent("windowtitle", { detail: title }));
}

/** Somebody typed the address of a dialog: alone it has nothing to work on. */
function showAstray() {
    const words = document.createElement("p");
    words.textContent = "This page is part of a dialog and shows nothing by itself.";
    const link = document.createElement("a");
    link.className = "button primary";
    link.href = "/events/events-view";
    link.textContent = "Back to the events";
    const box = document.createElement("main");
    box.className = "empty-page";
    const heading = document.createElement("h1");
    heading.textContent = document.title;
    box.append(heading, words, link);
    document.body.className = "";
    document.body.hidden = false;
    document.body.replaceChildren(box);
}

/** Asks the window around this page to close without an answer. */
function cancel() {
    if (inDialog) window.frameElement.dispatchEvent(new CustomEvent("windowcancel"));
}

async function close(returnValue, url) {
    const body = { window: windowNumber, returnValue, ...(url && { url }) };
    answerOf(await post("/api/dialog-close", body));
}
