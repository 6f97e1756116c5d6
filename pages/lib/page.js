// The frame of every content page: who is signed in, where one can go, what the host shows.

import { bindKey, showKeys } from "./keys.js";
import { localeFormats } from "./locale.js";
import { confirmBox } from "./message_box.js";
import { reportFailure, showLeftNotice } from "./notice.js";
import { currentSession, post, SignedOutError } from "./server.js";
import { listen } from "./shell.js";

const places = [
    { name: "Home", url: "/host/home" },
    { name: "Events", url: "/events/events-view", right: "events/view" },
    { name: "Lists", url: "/host/lists" },
    { name: "Reports", url: "/host/reports" },
    { name: "Mailings", url: "/host/mailings" },
    { name: "Settings", url: "/host/settings" },
];

/**
 * Sets up the page, which stands at the place `here`, then runs `start` with { session, format,
 * allowed }: `allowed(right)` tells what the user may do.
 */
export async function startPage(here, start) {
    listen();
    addEventListener("unhandledrejection", (event) => {
        event.preventDefault();
        showFailure(event.reason);
    });
    document.body.prepend(skipLink(), bar(here));
    bindKey("?", "Show these keys", showKeys);
    try {
        const session = await currentSession();
        document.getElementById("user-name").textContent = session.user.name;
        showLeftNotice();
        const rights = new Set(session.rights.map((right) => right.toLowerCase()));
        for (const { url, right } of places) {
            const link = document.querySelector(`.bar nav a[href="${url}"]`);
            link.hidden = right !== undefined && !rights.has(right);
        }
        await start({
            session,
            format: localeFormats(session.locale),
            allowed: (right) => rights.has(right),
        });
    } catch (error) {
        showFailure(error);
    } finally {
        document.querySelector("main").removeAttribute("aria-busy");
    }
}

async function showFailure(error) {
    if (!(error instanceof SignedOutError)) return reportFailure(error);
    const signIn = `/host/signin?next=${encodeURIComponent(location.pathname + location.search)}`;
    const choice = await confirmBox({
        title: "Signed out",
        text: `${error.message}\nWhat you typed stays on this page if you sign in on another tab.`,
        buttons: [
            ["here", "Sign in"],
            ["tab", "Sign in on another tab"],
            ["stay", "Stay here"],
        ],
    });
    if (choice === "here") location.assign(signIn);
    if (choice === "tab") open(signIn, "_blank", "noopener");
}

function skipLink() {
    const link = document.createElement("a");
    link.className = "skip";
    link.href = "#main";
    link.textContent = "Skip to content";
    return link;
}

function bar(here) {
    const header = document.createElement("header");
    header.className = "bar";
    const brand = document.createElement("a");
    brand.className = "brand";
    brand.href = "/host/home";
    brand.textContent = "Quillmere";
    const nav = document.createElement("nav");
    nav.setAttribute("aria-label", "Main");
    for (const { name, url } of places) {
        const link = document.createElement("a");
        link.href = url;
        link.textContent = name;
        if (name === here) link.setAttribute("aria-current", "page");
        nav.append(link);
    }
    const user = document.createElement("div");
    user.className = "user";
    const name = document.createElement("span");
    name.id = "user-name";
    const keys = barButton("Keys", showKeys);
    keys.classList.add("for-keyboards");
    user.append(name, keys, barButton("Sign out", signOut));
    header.append(brand, nav, user);
    return header;
}

function barButton(label, run) {
    const button = document.createElement("button");
    button.type = "button";
    button.className = "quiet";
    button.textContent = label;
    button.addEventListener("click", run);
    return button;
}

async function signOut() {
    await post("/api/signout");
    location.assign("/host/signin");
}
