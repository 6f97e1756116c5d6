// Who may include whom. Run as a program it checks the checkout and exits with 1 on a fault.

import { readFileSync } from "node:fs";
import { join, posix } from "node:path";
import { pathToFileURL } from "node:url";
import { projectFiles, root } from "../../scripts/project_files.mjs";

// --- The rules --------------------------------------------------------------------------------

/** The add-in's folders, lowest first: each may include itself and those before it. */
const layers = ["automation", "core", "model", "store", "workflow", "handlers"];

/** The root objects know every layer; only those who make an add-in may know the root objects. */
const rootObjects = /^core\/root_objects\.(h|cpp)$/;
const makersOfAddins = ["com", "host", "tests", "bench", "tools"];

/** The reference host meets the add-in by member names, so it sees only these folders of it. */
const hostSees = ["automation", "host"];

/** The add-in uses the standard library alone: its headers' names have no dot, slash or capital. */
const standardHeader = /^[a-z0-9_]+$/;

// --- The check --------------------------------------------------------------------------------

const folderOf = (path) => path.split("/")[0];
const isAddin = (path) => layers.includes(folderOf(path));

function includesOf(text) {
    return [...text.matchAll(/^[ \t]*#[ \t]*include[ \t]*(?:"([^"\n]+)"|<([^>\n]+)>)/gm)]
        .map(([, quoted, angled]) => ({ quoted, angled }));
}

/** The project file that `name` means in an include of `from`: beside it or from the root. */
function resolved(name, from, files) {
    const beside = posix.normalize(posix.join(posix.dirname(from), name));
    return [beside, posix.normalize(name)].find((path) => files.has(path));
}

/** Why `from` may not include the project file `target`, or undefined when it may. */
function refusal(from, target) {
    const [folder, targetFolder] = [folderOf(from), folderOf(target)];
    if (rootObjects.test(target)) {
        if (rootObjects.test(from) || makersOfAddins.includes(folder)) return undefined;
        return `only ${makersOfAddins.join(", ")} may know the root objects`;
    }
    if (rootObjects.test(from) && isAddin(target)) return undefined;
    if (isAddin(from)) {
        if (!isAddin(target)) return `the add-in knows nothing of ${targetFolder}/`;
        const points = layers.indexOf(targetFolder) - layers.indexOf(folder);
        return points > 0 ? `an include points down, and ${targetFolder}/ lies above` : undefined;
    }
    if (folder === "host" && !hostSees.includes(targetFolder)) {
        return "the host meets the add-in by member names";
    }
    return undefined;
}

/** Faults of one file's includes, as "path: what is wrong". */
function faultsOf(from, text, files) {
    const faults = [];
    for (const { quoted, angled } of includesOf(text)) {
        const target = resolved(quoted ?? angled, from, files);
        const name = quoted ? `"${quoted}"` : `<${angled}>`;
        if (target) {
            const reason = refusal(from, target);
            if (reason) faults.push(`${from}: ${name}: ${reason}`);
        } else if (isAddin(from) && quoted) {
            faults.push(`${from}: ${name}: there is no such file`);
        } else if (isAddin(from) && !standardHeader.test(angled)) {
            faults.push(`${from}: ${name}: the add-in uses the standard library alone`);
        }
    }
    return faults;
}

/** The first circle of headers that include each other, as the paths along it, or undefined. */
function circleIn(files) {
    const done = new Set();
    const visit = (path, trail) => {
        if (trail.includes(path)) return [...trail.slice(trail.indexOf(path)), path];
        if (done.has(path)) return undefined;
        for (const { quoted, angled } of includesOf(files.get(path))) {
            const target = resolved(quoted ?? angled, path, files);
            const circle = target && visit(target, [...trail, path]);
            if (circle) return circle;
        }
        done.add(path);
        return undefined;
    };
    for (const path of files.keys()) {
        const circle = visit(path, []);
        if (circle) return circle;
    }
    return undefined;
}

/** What is wrong in `files`, a Map from path to text; one line each, none when all is well. */
export function layeringFaults(files) {
    const faults = [...files].flatMap(([path, text]) => faultsOf(path, text, files));
    const circle = circleIn(files);
    return circle ? [...faults, `includes go round: ${circle.join(" > ")}`] : faults;
}

/** The C++ files of this checkout with their texts. */
export function cppFiles() {
    const paths = projectFiles("*.h", "*.cpp");
    return new Map(paths.map((path) => [path, readFileSync(join(root, path), "utf8")]));
}

if (import.meta.url === pathToFileURL(process.argv[1]).href) {
    const faults = layeringFaults(cppFiles());
    faults.forEach((fault) => console.log(fault));
    process.exitCode = faults.length > 0 ? 1 : 0;
}
