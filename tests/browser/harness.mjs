// Runs a browser test against a reference host of its own.
//
//   import { browserTest } from "./harness.mjs";
//   browserTest("An event can be opened", async ({ page, axe, shot }) => {
//       await page.goto("/");
//       await axe(page);
//       await shot(page, "start");
//   });
//
// Each test gets a fresh copy of the demonstration database, a server and an empty browser session,
// so tests neither meet nor follow each other; Chromium itself serves a whole file. A test fails on
// an error on any page's console, on a script error, on a request to anyone but the server, and
// when the server dies; a picture of its page is then in build/shots/. QUILLMERE names the program
// to test, otherwise the release build is. SLOW=300 holds up every request for up to 300 ms, so that
// answers come late and out of turn: pages that only work while the server is quick give themselves
// away.

import assert from "node:assert/strict";
import { spawn } from "node:child_process";
import { once } from "node:events";
import { copyFile, mkdir, mkdtemp, readFile, rm } from "node:fs/promises";
import { createServer } from "node:net";
import { tmpdir } from "node:os";
import { dirname, join } from "node:path";
import { after, test } from "node:test";
import { setTimeout as pause } from "node:timers/promises";
import { fileURLToPath } from "node:url";
import { chromium } from "playwright-core";

const root = dirname(dirname(dirname(fileURLToPath(import.meta.url))));
const slowness = Number(process.env.SLOW ?? 0);
const testLimit = slowness > 0 ? 600_000 : 120_000;
const startLimit = 30_000;
const stopLimit = 10_000;
const waitLimit = 15_000;

const chromiumFlags = [
    "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
    "--disable-background-networking", "--disable-component-update", "--disable-sync",
];

/**
 * A test named `name`. `body` receives:
 * - `page`: an empty page; addresses given to it may be relative to the server;
 * - `newPage()`: a page in a browser session of its own, for a second user;
 * - `url`: the server's address;
 * - `axe(page)`, `shot(page, name)`: see below;
 * - `serverLog()`: what the server has written so far.
 * `allowed` lists patterns of console errors that the test means to provoke.
 */
export function browserTest(name, body, { allowed = [] } = {}) {
    test(name, { timeout: testLimit }, async () => {
        const server = await startServer();
        const sessions = [];
        const errors = [];
        const newPage = async () => {
            const context = await newSession(server.url, errors);
            sessions.push(context);
            return context.newPage();
        };
        try {
            const page = await newPage();
            const { url, log: serverLog } = server;
            try {
                await body({ page, newPage, url, axe, shot, serverLog });
            } catch (error) {
                await shot(page, `failed ${name}`).catch(() => {});
                if (errors.length > 0) console.log("errors in the browser:", errors);
                throw error;
            }
            server.assertRunning();
        } finally {
            for (const context of sessions) await context.close();
            await server.stop();
        }
        const unexpected = errors.filter((text) => !allowed.some((pattern) => pattern.test(text)));
        assert.deepEqual(unexpected, [], "errors in the browser");
    });
}

/** Fails with a readable list unless the page and its frames are free of accessibility faults. */
export async function axe(page) {
    const source = await readFile(join(root, "node_modules/axe-core/axe.min.js"), "utf8");
    for (const frame of page.frames()) await frame.evaluate(source);
    // Preloading would add style sheets to the page, which its content policy refuses.
    const { violations } = await page.evaluate(() => window.axe.run({ preload: false }));
    const faults = violations.flatMap(({ id, help, nodes }) =>
        nodes.map(({ target }) => `${id}: ${help}: ${target.flat().join(" ")}`));
    assert.deepEqual(faults, [], `accessibility faults on ${page.url()}`);
}

/** Keeps a picture of the whole page in build/shots/. */
export async function shot(page, name) {
    const folder = join(root, "build/shots");
    await mkdir(folder, { recursive: true });
    const path = join(folder, `${name.replaceAll("/", "-")}.png`);
    await page.screenshot({ path, fullPage: true });
}

// --- The browser ------------------------------------------------------------------------------

let launched;

function browser() {
    launched ??= chromium.launch({
        executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
        args: chromiumFlags,
        timeout: startLimit,
    });
    return launched;
}

after(async () => {
    if (launched) await (await launched).close();
});

/** A browser session with nothing stored; what goes wrong on its pages is added to `errors`. */
async function newSession(url, errors) {
    const context = await (await browser()).newContext({
        baseURL: url,
        locale: "en-US",
        timezoneId: "UTC",
        reducedMotion: "reduce",
        viewport: { width: 1280, height: 800 },
    });
    context.setDefaultTimeout(waitLimit);
    if (slowness > 0) {
        await context.route("**/*", async (route) => {
            await pause(Math.random() * slowness);
            await route.continue().catch(() => {}); // its page may be gone
        });
    }
    context.on("console", (message) => {
        const { url: where, lineNumber } = message.location();
        if (message.type() === "error") errors.push(`${message.text()} (${where}:${lineNumber})`);
    });
    context.on("weberror", (event) => errors.push(String(event.error().stack)));
    context.on("request", (request) => {
        const foreign = /^(https?|wss?):/.test(request.url()) && !request.url().startsWith(url);
        if (foreign) errors.push(`request to a foreign address: ${request.url()}`);
    });
    return context;
}

// --- The server -------------------------------------------------------------------------------

const running = new Set();
process.on("exit", () => running.forEach((child) => child.kill("SIGKILL")));

/** Starts scripts/host with `args`; `ended` resolves to how it ended, `log()` is what it wrote. */
function startHost(...args) {
    const child = spawn(join(root, "scripts/host"), args, {
        cwd: root,
        env: { ...process.env, TZ: "UTC" },
        stdio: ["ignore", "pipe", "pipe"],
    });
    running.add(child);
    let output = "";
    child.stdout.on("data", (text) => (output += text));
    child.stderr.on("data", (text) => (output += text));
    const ended = once(child, "close").then(([code, signal]) => {
        running.delete(child);
        return signal ?? code;
    });
    return { child, ended, log: () => output };
}

const folders = [];

async function newFolder() {
    folders.push(await mkdtemp(join(tmpdir(), "quillmere-")));
    return folders.at(-1);
}

after(async () => {
    for (const folder of folders) await rm(folder, { recursive: true, force: true });
});

let demo;

/** Path of the small demonstration database, made once for all tests of a file. */
function demonstration() {
    demo ??= (async () => {
        const path = join(await newFolder(), "demo.db");
        const { ended, log } = startHost("demo", path, "--small");
        assert.equal(await ended, 0, `making the demonstration database failed:\n${log()}`);
        return path;
    })();
    return demo;
}

async function startServer() {
    const database = join(await newFolder(), "test.db");
    await copyFile(await demonstration(), database);
    const port = await freePort();
    const url = `http://127.0.0.1:${port}`;
    const { child, ended, log } = startHost("serve", database, String(port));

    const assertRunning = () => assert.ok(running.has(child), `the server ended:\n${log()}`);
    const stop = async () => {
        child.kill("SIGTERM");
        const lastResort = setTimeout(() => child.kill("SIGKILL"), stopLimit);
        const how = await ended;
        clearTimeout(lastResort);
        assert.ok([0, "SIGTERM"].includes(how), `the server ended with ${how}:\n${log()}`);
    };
    try {
        await answers(url, assertRunning);
    } catch (error) {
        await stop();
        throw error;
    }
    return { url, log, assertRunning, stop };
}

async function freePort() {
    const listener = createServer().listen(0, "127.0.0.1");
    await once(listener, "listening");
    const { port } = listener.address();
    listener.close();
    await once(listener, "close");
    return port;
}

/** Returns once something answers at `url`, whatever it says. */
async function answers(url, assertRunning) {
    for (const begun = Date.now(); ; await pause(25)) {
        assertRunning();
        try {
            await fetch(url, { redirect: "manual" });
            return;
        } catch {
            // Refused until the server listens.
            assert.ok(Date.now() - begun < startLimit, "the server does not answer");
        }
    }
}
