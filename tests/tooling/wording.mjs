// Words and addresses that no file of the project may carry.

import { readFileSync } from "node:fs";
import { join } from "node:path";
import { projectFiles, root } from "../../scripts/project_files.mjs";

/** A letter in brackets keeps a pattern from finding itself here. */
const unwanted = [
    { what: "a path of one machine", pattern: /(?<![\w.])\/(home|root|Users|wor[k]|tmp)\/\w/ },
    { what: "a path of one machine", pattern: /\b[A-Z]:[\\/]+Users[\\/]/i },
    { what: "a package registry's host", pattern: /\b(registry|repo1?|deb|archive|security|ftp)\.[a-z0-9-]+\.(org|com|net|io)\b/i },
    { what: "a package registry's host", pattern: /\b(np[m]js|yarnpk[g]|pyp[i]|pythonhoste[d]|crate[s])\.(org|com|io)\b/i },
    { what: "unfinished work", pattern: /\b(TOD[O]|FIXM[E]|XX[X])\b/ },
    { what: "unfinished work", pattern: /\bstu[b](s|bed)?\b/i },
    { what: "a document outside the project", pattern: /\bspecificatio[n]s?\b|\bspe[c]\.md\b|\bthe spe[c]\b/i },
    { what: "a document outside the project", pattern: /\bPart [1-9]\.\d/ },
];

const binary = (text) => text.includes("\0");

/** What is wrong with `text` or the name of `path`, as "path:line: what: the words found". */
export function wordingFaults(path, text) {
    const lines = binary(text) ? [] : text.split("\n");
    const places = [[path, path], ...lines.map((line, index) => [`${path}:${index + 1}`, line])];
    return places.flatMap(([place, words]) =>
        unwanted.flatMap(({ what, pattern }) => {
            const found = pattern.exec(words);
            return found ? [`${place}: ${what}: ${found[0]}`] : [];
        }));
}

/** The faults of this checkout. */
export function wordingFaultsOfCheckout() {
    return projectFiles().flatMap((path) =>
        wordingFaults(path, readFileSync(join(root, path), "utf8")));
}
