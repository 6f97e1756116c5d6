// What the host shows its user through this page: navigation, messages, questions and dialogs.

import { closeWindow, frontDocument, loadInWindow, openWindow } from "./dialog_window.js";
import { confirmBox } from "./message_box.js";
import { reportFailure } from "./notice.js";
import { isWaiting, leave, post, view } from "./server.js";

const titles = {
    box: "Message",
    userError: "Please check",
    unexpectedError: "Something went wrong",
};

/** Button sets of a question; numbers as the host counts buttons, the suggested one first. */
const ok = [1, "OK"];
const cancel = [2, "Cancel"];
const yes = [6, "Yes"];
const no = [7, "No"];
const buttonSets = { 0: [ok], 1: [ok, cancel], 3: [yes, no, cancel], 4: [yes, no] };

const handlers = {
    navigate: ({ url }) => location.assign(url),
    message: showMessage,
    prompt: ask,
    "dialog-open": openWindow,
    "dialog-load": loadInWindow,
    "dialog-close": closeWindow,
    refresh: () => document.dispatchEvent(new CustomEvent("hostrefresh")),
    modified: () => document.dispatchEvent(new CustomEvent("hostmodified")),
};

let source;

/** Listens to the host until the page is left. */
export function listen() {
    connect();
    addEventListener("pagehide", () => {
        source.close();
        leave();
    });
    document.addEventListener("visibilitychange", onVisibility);
    // A page out of the browser's memory has nothing left on the server.
    addEventListener("pageshow", ({ persisted }) => {
        if (persisted) location.reload();
    });
}

function connect() {
    source = new EventSource(`/api/events?view=${encodeURIComponent(view)}`);
    for (const [name, handle] of Object.entries(handlers)) {
        source.addEventListener(name, ({ data }) => handle(JSON.parse(data)));
    }
}

/**
 * Browsers allow few connections to one server, so a page out of sight that waits for nothing gives
 * its own up, and catches up once it is seen again.
 */
function onVisibility() {
    const isIdle = !isWaiting() && !document.querySelector("dialog:modal");
    if (document.hidden && isIdle) {
        source.close();
    } else if (!document.hidden && source.readyState === EventSource.CLOSED) {
        connect();
        handlers.refresh();
    }
}

/**
 * A message goes to the page in front first: one that is saving shows it beside the field it is
 * about. Nobody wanting it, it is shown in a box.
 */
async function showMessage(message) {
    const page = frontDocument() ?? document;
    const offer = new CustomEvent("hostmessage", { detail: message, cancelable: true });
    if (page.dispatchEvent(offer)) {
        const { text, kind, title = "" } = message;
        await confirmBox({ title: title || titles[kind], text, buttons: [ok] });
    }
    answer(message.id, 1);
}

async function ask({ id, text, buttons, title }) {
    answer(
        id,
        await confirmBox({
            title: title || "Question",
            text,
            buttons: buttonSets[buttons] ?? [ok],
        }),
    );
}

function answer(id, button) {
    post("/api/answer", { id, button }).catch(reportFailure);
}
