// The address of a report: which one, of what record, with which filters.

const page = "/host/report";
const filterMark = "f.";

/**
 * What an address asks for: { folder, key, id, listId, values }, the last being the filters' texts
 * by their keys. Without a filter in it there are no `values`: nobody has been asked yet.
 */
export function askedBy(search) {
    const query = new URLSearchParams(search);
    const filters = [...query].filter(([name]) => name.startsWith(filterMark));
    return {
        folder: query.get("folder") ?? "",
        key: query.get("key") ?? "",
        id: wholeNumber(query.get("id")),
        listId: wholeNumber(query.get("list")),
        values:
            filters.length > 0
                ? new Map(filters.map(([name, text]) => [name.slice(filterMark.length), text]))
                : undefined,
    };
}

/** The address that asks for the same again; what is 0 is left out. */
export function addressOf({ folder, key, id = 0, listId = 0, values = new Map() }) {
    const query = new URLSearchParams({ folder, key });
    if (id) query.set("id", id);
    if (listId) query.set("list", listId);
    for (const [name, text] of values) query.set(filterMark + name, text);
    return `${page}?${query}`;
}

function wholeNumber(text) {
    return /^\d{1,9}$/.test(text ?? "") ? Number(text) : 0;
}
