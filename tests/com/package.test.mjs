// The Windows package as an integrator gets it: unpacked in a new folder, registered from there
// under Wine, its samples run, and taken away again.

import assert from "node:assert/strict";
import { execFile } from "node:child_process";
import { access, copyFile, mkdtemp, readdir, rm } from "node:fs/promises";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { promisify } from "node:util";

const build = "build/windows-x64";
const run = promisify(execFile);
let folder, addIn, environment;

before(async () => {
    const packages = (await readdir(build)).filter((name) => /^QMEvents-.*\.zip$/.test(name));
    assert.equal(packages.length, 1, `one package in ${build}: ${packages}`);
    folder = await mkdtemp(join(tmpdir(), "qmevents-package-"));
    await run("cmake", ["-E", "tar", "xf", join(process.cwd(), build, packages[0])], {
        cwd: folder,
    });
    addIn = join(folder, packages[0].replace(/\.zip$/, ""));
    environment = {
        ...process.env,
        WINEPREFIX: join(folder, "wine"),
        WINEDEBUG: "-all",
        LC_ALL: "C.UTF-8",
        WINEDLLOVERRIDES: "mscoree=;mshtml=",
    };
    delete environment.DISPLAY;
    await wine("wineboot", "--init");
});

after(async () => {
    if (!folder) return;
    await run("wineserver", ["-k"], { env: environment }).catch(() => {});
    await rm(folder, { recursive: true, force: true, maxRetries: 20, retryDelay: 200 });
});

/** Runs a Windows program in the samples' folder and gives what it printed, as lines. */
async function wine(...command) {
    const { stdout } = await run("wine", command, {
        cwd: join(addIn, "samples"),
        env: environment,
        timeout: 120_000,
    });
    return stdout.replaceAll("\r", "").trim().split("\n");
}

const regsvr32 = (...options) => wine("regsvr32", "/s", ...options, "..\\x64\\QMEvents.dll");

test("The package is the add-in's whole folder", async () => {
    const expected = [
        "x64/QMEvents.dll", "x86/QMEvents.dll", "QMEvents.tlb", "docs/integrators-guide.md",
        "data/data-schema.xml", "data/data-schema-sql.xml", "data/addin.xml",
        "pages/events/events-view.html", "node_modules/d3/dist/d3.min.js", "samples/host.vbs",
        "samples/host.cpp",
    ];
    for (const file of expected) await access(join(addIn, file));
    assert.deepEqual((await readdir(join(addIn, "x64"))), ["QMEvents.dll"]);
});

test("Its samples run once it is registered, and not after", async () => {
    // Built as its head says, but in a place of its own.
    await copyFile(join(addIn, "samples/host.cpp"), join(folder, "host.cpp"));
    await run("x86_64-w64-mingw32-g++-posix",
        ["-std=c++20", "-static", "host.cpp", "-o", join(addIn, "samples/host.exe"),
            "-lole32", "-loleaut32", "-luuid"], { cwd: folder });

    await regsvr32();
    assert.deepEqual(await wine("cscript", "//nologo", "host.vbs"), [
        "Menu entry: View Event (command 10001)",
        "Error 438 from QMEvents: Object doesn't support this property or method " +
            "(Object.Document)",
    ]);
    assert.deepEqual(await wine("host.exe"), ["Menu entry: View Event"]);

    await regsvr32("/u");
    await assert.rejects(wine("host.exe"), /QMEvents.Events cannot be made|Command failed/);
});
