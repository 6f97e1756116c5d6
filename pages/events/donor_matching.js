// Who is meant by the lines of a list that was pasted or read from a file.

/** What a column of a list can hold, and by which words its head is recognised. */
export const meanings = {
    none: { label: "Not used" },
    id: { label: "Donor number", heads: /^(donor )?(id|no|nr|number)\.?$/i },
    name: { label: "Name", heads: /^(full |donor |display )?name$|^donor$|^guest$/i },
    firstName: { label: "First name", heads: /^(first|given)[ _-]?names?$/i },
    lastName: { label: "Last name", heads: /^(last|family)[ _-]?name$|^surname$/i },
    email: { label: "E-mail", heads: /^e-?mail( address)?$/i },
};

/** The meanings of the columns of a file by the cells of its first row; none is guessed twice. */
export function guessMeanings(heads) {
    const used = new Set();
    return heads.map((head) => {
        const found = Object.keys(meanings).find(
            (key) => !used.has(key) && meanings[key].heads?.test(head.trim()),
        );
        if (found) used.add(found);
        return found ?? "none";
    });
}

/** The entries of `rows` (arrays of cells) by the `meaning` of each column. */
export function entriesOf(rows, columnMeanings) {
    return rows.map((cells) => {
        const entry = { cells };
        for (const [index, meaning] of columnMeanings.entries()) {
            if (meaning !== "none") entry[meaning] = (cells[index] ?? "").trim();
        }
        return entry;
    });
}

/** The entry of one pasted line: a number, an e-mail address, "Name <address>", or a name. */
export function entryOfLine(line) {
    const text = line.trim();
    const both = /^(.*?)[\s,;]*<([^<>\s]+@[^<>\s]+)>$/.exec(text);
    if (both) return { cells: [text], name: both[1].replace(/^"|"$/g, ""), email: both[2] };
    if (/^#?\d{1,9}$/.test(text)) return { cells: [text], id: text.replace("#", "") };
    if (/^[^\s@]+@[^\s@]+$/.test(text)) return { cells: [text], email: text };
    return { cells: [text], name: text };
}

const plain = (text) =>
    String(text ?? "")
        .normalize("NFKD")
        .replace(/\p{Mark}/gu, "")
        .toLocaleLowerCase()
        .replace(/[.\s]+/g, " ")
        .trim();

/**
 * A function that finds the donors an entry can mean among `donors`: by number, else by e-mail
 * address, else by name, where an address that fits one of several namesakes settles it.
 */
export function matcher(donors) {
    const byId = new Map(donors.map((donor) => [donor.Id, donor]));
    const byEmail = grouped(donors, ({ Email }) => [plain(Email)]);
    const byName = grouped(donors, ({ Display, FirstName, LastName }) => [
        plain(Display),
        plain(`${FirstName} ${LastName}`),
        plain(`${LastName}, ${FirstName}`),
        plain(`${LastName} ${FirstName}`),
    ]);
    return ({ id, name, firstName, lastName, email }) => {
        if (id) return byId.has(Number(id)) ? [byId.get(Number(id))] : [];
        const full = plain(name || [firstName, lastName].filter(Boolean).join(" "));
        const named = full ? (byName.get(full) ?? []) : [];
        const addressed = email ? (byEmail.get(plain(email)) ?? []) : [];
        if (addressed.length === 0) return named;
        const both = addressed.filter((donor) => named.includes(donor));
        return both.length > 0 ? both : addressed;
    };
}

function grouped(donors, keysOf) {
    const groups = new Map();
    for (const donor of donors) {
        for (const key of new Set(keysOf(donor))) {
            if (!key || key === ",") continue;
            if (groups.has(key)) groups.get(key).push(donor);
            else groups.set(key, [donor]);
        }
    }
    return groups;
}

/**
 * What becomes of `entries`: each with its `outcome` ("add", "there", "twice", "unclear" or
 * "unknown") and, where one was found, its `donor`; an unclear one has its `candidates`. Nobody is
 * added who is `there` already (ids), nor twice.
 */
export function sortOut(entries, find, there) {
    const taken = new Set();
    return entries.map((entry) => {
        const candidates = find(entry);
        if (candidates.length === 0) return { ...entry, outcome: "unknown" };
        if (candidates.length > 1) return { ...entry, outcome: "unclear", candidates };
        const [donor] = candidates;
        const outcome = there.has(donor.Id) ? "there" : taken.has(donor.Id) ? "twice" : "add";
        if (outcome === "add") taken.add(donor.Id);
        return { ...entry, donor, outcome };
    });
}

/** The words for the outcomes, and whether a line of that outcome is rejected. */
export const outcomes = {
    add: { label: "will be added" },
    there: { label: "already on the list" },
    twice: { label: "twice in this list" },
    unclear: { label: "several donors match", isRejected: true },
    unknown: { label: "not found", isRejected: true },
};
