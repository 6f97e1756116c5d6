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
 * What can be asked of the host in one request: each gives { kind, body, decoded }, the answer's
 * value by `decoded`.
 */
export const ask = {
    /** The value of a chain that ends in a call or a property. */
    call: (chain) => ({
        kind: "call",
        body: { chain: stepsOf(chain) },
        decoded: ({ value }) => decode(value, App),
    }),

    /** `columns` of `count` items of a collection from `start` on: { total, rows } by column. */
    list: (collection, columns, { start = 0, count = 10000, items } = {}) => ({
        kind: "list",
        body: { chain: stepsOf(collection), columns, start, count, ...(items && { items }) },
        decoded: ({ total, rows }) => ({ total, rows: rows.map((row) => byName(columns, row)) }),
    }),

    /** Several properties of one object, by name. */
    read: (object, columns) => ({
        kind: "read",
        body: { chain: stepsOf(object), columns },
        decoded: ({ values }) =>
            Object.fromEntries(columns.map((name) => [name, decode(values[name], App)])),
    }),

    /** Assigns several properties; gives the host's error for each that it could not convert. */
    write: (object, values) => ({
        kind: "write",
        body: { chain: stepsOf(object), values: encodedByName(values) },
        decoded: ({ failed }) => failed ?? {},
    }),
};

export const list = (...question) => one(ask.list(...question));
export const read = (...question) => one(ask.read(...question));
export const write = (...question) => one(ask.write(...question));

/** What the server answers in one request. */
const mostCalls = 200;

/** The answers to `questions` (see `ask`), put in order and in as few requests as can be. */
export async function all(questions) {
    const answers = [];
    for (let start = 0; start < questions.length; start += mostCalls) {
        const some = questions.slice(start, start + mostCalls);
        const calls = some.map(({ kind, body }) => ({ [kind]: body }));
        const { results } = answerOf(await send("batch", { calls }));
        answers.push(...results.map((answer, index) => some[index].decoded(answerOf(answer))));
    }
    return answers;
}

async function one({ kind, body, decoded }) {
    return decoded(answerOf(await send(kind, body)));
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

function encodedByName(values) {
    return Object.fromEntries(Object.entries(values).map(([name, value]) => [name, encode(value)]));
}

function byName(columns, row) {
    return Object.fromEntries(columns.map((name, index) => [name, decode(row[index], App)]));
}
