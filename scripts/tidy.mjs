// Runs clang-tidy over the C++ files that changed since they were last found clean.
//   node scripts/tidy.mjs [FILE...]
// A file's verdict depends on its text, the project headers it reaches, its compile command and the
// configuration; the fingerprints of clean ones are kept in build/tidy-clean.txt. Reads the compile
// commands of the dev preset, so configure that first.

import { execFileSync, spawn } from "node:child_process";
import { createHash } from "node:crypto";
import { appendFileSync, existsSync, readFileSync } from "node:fs";
import { availableParallelism } from "node:os";
import { dirname, join, relative, resolve } from "node:path";
import { projectFiles, root } from "./project_files.mjs";

const database = join(root, "build/dev");
const cleanList = join(root, "build/tidy-clean.txt");

const textOf = memoized((path) => (existsSync(path) ? readFileSync(path, "utf8") : ""));

/** The project headers that the file at `path` includes, those they include left out. */
const includesOf = memoized((path) =>
    [...textOf(path).matchAll(/^\s*#\s*include\s+"([^"]+)"/gm)]
        .flatMap(([, name]) => [resolve(dirname(path), name), join(root, name)])
        .filter((candidate) => existsSync(candidate)));

function memoized(compute) {
    const known = new Map();
    return (key) => {
        if (!known.has(key)) known.set(key, compute(key));
        return known.get(key);
    };
}

function reachedFrom(path) {
    const reached = new Set([path]);
    for (const file of reached) includesOf(file).forEach((header) => reached.add(header));
    return [...reached].sort();
}

const configuration = [
    execFileSync("clang-tidy", ["--version"], { encoding: "utf8" }),
    ...projectFiles(".clang-tidy", "**/.clang-tidy").map((path) => textOf(join(root, path))),
].join("\n");

function fingerprint({ file, command }) {
    const hash = createHash("sha256").update(configuration).update(command);
    for (const path of reachedFrom(file)) {
        hash.update(`\0${relative(root, path)}\0`).update(textOf(path));
    }
    return hash.digest("hex");
}

/** Resolves to clang-tidy's complaints about `file`, or "" when it has none. */
function complaints(file) {
    return new Promise((done) => {
        const tidy = spawn("clang-tidy", ["-p", database, "--quiet", file]);
        let output = "";
        tidy.stdout.on("data", (text) => (output += text));
        tidy.stderr.on("data", (text) => (output += text));
        const counts = /^\d+ (warning|error).*generated\.\n/gm;
        tidy.on("close", (code) =>
            done(code === 0 ? "" : output.replace(counts, "") || `ended with ${code}`));
    });
}

const sources = new Set(projectFiles("*.cpp").map((path) => join(root, path)));
const named = process.argv.slice(2).map((path) => resolve(path));
const compiled = JSON.parse(readFileSync(join(database, "compile_commands.json"), "utf8"));
const wanted = compiled.filter(({ file }) =>
    sources.has(file) && (named.length === 0 || named.includes(file)));

const clean = new Set(existsSync(cleanList) ? readFileSync(cleanList, "utf8").split("\n") : []);
const changed = [...new Map(wanted.map((entry) => [entry.file, entry])).values()]
    .map((entry) => ({ ...entry, key: fingerprint(entry) }))
    .filter(({ key }) => !clean.has(key));
console.log(`${changed.length} of ${wanted.length} files to look at`);

let faulty = 0;
async function worker() {
    for (let next = changed.shift(); next; next = changed.shift()) {
        const begun = Date.now();
        const output = await complaints(next.file);
        const seconds = ((Date.now() - begun) / 1000).toFixed(1);
        console.log(`${output ? "faulty" : "clean "} ${seconds} s  ${relative(root, next.file)}`);
        if (output) {
            faulty += 1;
            console.log(output);
        } else {
            appendFileSync(cleanList, `${next.key}\n`);
        }
    }
}

await Promise.all(Array.from({ length: availableParallelism() }, worker));
if (faulty > 0) {
    console.log(`clang-tidy complains about ${faulty} files`);
    process.exitCode = 1;
}
