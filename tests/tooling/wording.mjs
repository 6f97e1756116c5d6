// Words and addresses that no file of the project may carry.

import { readFileSync } from "node:fs";
import { join } from "node:path";
import { projectFiles, root } from "../../scripts/project_files.mjs";

const machinePath = "a path of one machine";
const registry = "a package registry's host";
const unfinished = "unfinished work";
const outside = "a document outside the project";

/** A letter in brackets keeps a pattern from finding itself here. */
const unwanted = [
    [machinePath, /(?<![\w.])\/(home|root|Users|wor[k]|tmp)\/\w/],
    [machinePath, /\b[A-Z]:[\\/]+Users[\\/]/i],
    [registry, /\b(registry|repo1?|deb|archive|security|ftp)\.[a-z0-9-]+\.(org|com|net|io)\b/i],
    [registry, /\b(np[m]js|yarnpk[g]|pyp[i]|pythonhoste[d]|crate[s])\.(org|com|io)\b/i],
    [unfinished, /\b(TOD[O]|FIXM[E]|XX[X])\b/],
    [unfinished, /\bstu[b](s|bed)?\b/i],
    [outside, /\bspecificatio[n]s?\b|\bspe[c]\.md\b|\bthe spe[c]\b/i],
    [outside, /\bPart [1-9]\.\d/],
];

const binary = (text) => text.includes("\0");

/** What is wrong with `text` or the name of `path`, as "path:line: what: the words found". */
export function wordingFaults(path, text) {
    const lines = binary(text) ? [] : text.split("\n");
    const places = [[path, path], ...lines.map((line, index) => [`${path}:${index + 1}`, line])];
    return places.flatMap(([place, words]) =>
        unwanted.flatMap(([what, pattern]) => {
            const found = pattern.exec(words);
            return found ? [`${place}: ${what}: ${found[0]}`] : [];
        }));
}

/** The faults of this checkout. */
export function wordingFaultsOfCheckout() {
    return projectFiles().flatMap((path) =>
        wordingFaults(path, readFileSync(join(root, path), "utf8")));
}
