// The host's objects for page scripts: App itself, and readers that fetch many values at once.

import { answerOf, createApp, decode, encode, HostError, heldRef, stepsOf } from "./chain.js";
import { reportFailure } from "./notice.js";
import { currentSession, post } from "./server.js";

export { HostError, set } from "./chain.js";

/** The number of the window that this page's dialog stands in, if it stands in one. */
const dialogWindow = Number(new URLSearchParams(location.search).get("window")) || undefined;

/** Where every chain of calls begins. */
export const App = createApp((body) => send("call", body), reportFailure);

/**
 * The rows of a collection in one request: `columns` of `count` items from `start` on, each row an
 * object by column. Gives { total, rows }.
 */
export async function list(collection, columns, { start = 0, count = 10000, items } = {}) {
    const body = { chain: stepsOf(collection), columns, start, count, ...(items && { items }) };
    const { total, rows } = answerOf(await send("list", body));
    return { total, rows: rows.map((row) => byName(columns, row)) };
}

/** Several properties of one object in one request. */
export async function read(object, columns) {
    const { values } = answerOf(await send("read", { chain: stepsOf(object), columns }));
    return Object.fromEntries(columns.map((name) => [name, decode(values[name], App)]));
}

/** Assigns several properties; gives the host's error for each that could not be converted. */
export async function write(object, values) {
    const encoded = Object.entries(values).map(([name, value]) => [name, encode(value)]);
    const body = { chain: stepsOf(object), values: Object.fromEntries(encoded) };
    return answerOf(await send("write", body)).failed ?? {};
}

/** Runs `calls` (chains that end in a call or a property) in order in one request. */
export async function all(calls) {
    const bodies = calls.map((chain) => ({ call: { chain: stepsOf(chain) } }));
    const { results } = answerOf(await send("batch", { calls: bodies }));
    return results.map((answer) => decode(answerOf(answer).value, App));
}

/** Lets the host forget objects that it holds for this page. */
export function release(...objects) {
    const refs = objects.map(heldRef).filter((ref) => ref !== undefined);
    if (refs.length > 0) post("/api/release", { refs }).catch(() => {});
}

async function send(kind, body) {
    await currentSession();
    const answer = await post(`/api/${kind}`, {
        ...body,
        ...(dialogWindow && { window: dialogWindow }),
    });
    if (typeof answer.error === "string") throw new HostError({ description: answer.error });
    return answer;
}

function byName(columns, row) {
    return Object.fromEntries(columns.map((name, index) => [name, decode(row[index], App)]));
}
