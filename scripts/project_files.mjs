// What the checks look at: the files of this checkout, new ones included, ignored ones not.

import { execFileSync } from "node:child_process";
import { existsSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";

export const root = dirname(dirname(fileURLToPath(import.meta.url)));

/** Paths relative to the root, sorted, of the files that match the git `patterns` (all without). */
export function projectFiles(...patterns) {
    // A checkout of another user's is as good as our own: nothing of it is run.
    const git = ["-c", `safe.directory=${root}`, "ls-files", "-z", "--cached", "--others"];
    const listed = execFileSync("git", [...git, "--exclude-standard", "--", ...patterns], {
        cwd: root,
        encoding: "utf8",
        maxBuffer: 1 << 26,
    });
    const paths = [...new Set(listed.split("\0").filter(Boolean))];
    return paths.filter((path) => existsSync(join(root, path))).sort();
}
