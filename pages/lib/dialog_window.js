// The windows in which the host's dialog pages are shown: a native dialog with the page in a frame.

import { reportFailure } from "./notice.js";
import { post } from "./server.js";

const windows = new Map();
const gap = 48;
const narrow = matchMedia("(max-width: 40rem)");

/** Opens the window that the host asks for. */
export function openWindow({ window: id, url, width, title }) {
    const dialog = document.createElement("dialog");
    dialog.className = "window";
    dialog.style.setProperty("--wanted-width", `${width}px`);
    dialog.setAttribute("aria-labelledby", `window-title-${id}`);

    const bar = document.createElement("div");
    bar.className = "window-bar";
    const back = barButton("Back", "back", () => goBack(id));
    back.hidden = true;
    const heading = document.createElement("h2");
    heading.id = `window-title-${id}`;
    heading.textContent = title || "Dialog";
    const close = barButton("Close", "close", () => cancelWindow(id));
    bar.append(back, heading, close);

    const frame = document.createElement("iframe");
    frame.title = title || "Dialog";
    frame.addEventListener("load", () => fitToContent(frame));
    frame.addEventListener("windowtitle", ({ detail }) => {
        heading.textContent = detail;
        frame.title = detail;
    });
    frame.addEventListener("windowcancel", () => cancelWindow(id));
    dialog.append(bar, frame);
    dialog.addEventListener("cancel", (event) => {
        event.preventDefault();
        cancelWindow(id);
    });

    const opener = document.activeElement;
    windows.set(id, { dialog, frame, back, opener, pages: [] });
    document.body.append(dialog);
    dialog.showModal();
    loadInWindow({ window: id, url });
}

/** Shows another page in an open window. */
export function loadInWindow({ window: id, url }) {
    const opened = windows.get(id);
    if (!opened) return;
    const address = new URL(url, location.href);
    address.searchParams.set("window", id);
    const known = opened.pages.indexOf(address.href);
    opened.pages = known < 0 ? [...opened.pages, address.href] : opened.pages.slice(0, known + 1);
    opened.back.hidden = opened.pages.length < 2;
    // Replacing keeps the browser's own Back for the page behind the window.
    opened.frame.contentWindow.location.replace(address.href);
}

/** Removes a window that the host has closed. */
export function closeWindow({ window: id }) {
    const opened = windows.get(id);
    if (!opened) return;
    windows.delete(id);
    opened.dialog.close();
    opened.dialog.remove();
    const place = opened.opener?.isConnected ? opened.opener : document.querySelector("main h1");
    place?.focus();
}

/** The document of the page in the front window; undefined when none is open. */
export function frontDocument() {
    return [...windows.values()].at(-1)?.frame.contentDocument ?? undefined;
}

/** Asks the page in the window whether it may close, then the host to close it. */
function cancelWindow(id) {
    const page = windows.get(id)?.frame.contentDocument;
    const request = new CustomEvent("windowclosing", { cancelable: true });
    if (page && !page.dispatchEvent(request)) return;
    post("/api/dialog-close", { window: id, returnValue: false }).catch(reportFailure);
}

/** Asks the host for the page before; it then loads that page, or closes an inner dialog. */
function goBack(id) {
    const url = new URL(windows.get(id).pages.at(-2));
    post("/api/dialog-back", { window: id, url: url.pathname }).catch(reportFailure);
}

/** Keeps the frame as high as its page, as far as the screen allows. */
function fitToContent(frame) {
    const page = frame.contentDocument;
    if (!page?.body || page.URL === "about:blank") return;
    const bar = frame.previousElementSibling.offsetHeight;
    const fit = () => {
        if (page.body.hidden) return; // not set up yet
        const highest = innerHeight - bar - (narrow.matches ? 0 : gap);
        const height = Math.min(page.body.scrollHeight, highest);
        frame.style.height = `${height}px`;
    };
    new frame.contentWindow.ResizeObserver(fit).observe(page.body);
    fit();
    frame.contentWindow.focus();
}

function barButton(label, kind, run) {
    const button = document.createElement("button");
    button.type = "button";
    button.className = `icon ${kind}`;
    button.setAttribute("aria-label", label);
    button.addEventListener("click", run);
    return button;
}
