// Records calls on the host's objects as they are written and sends each as one request:
//
//     await App.Modules.Events.Objects("Events").EventsManage.GetEvent(5).Name
//     App.Modules.Events.Objects("Workflow").Events.EditEvent(12)      // runs though not awaited
//     await set(App.Shell.Dialog("eventid"), 5)
//
// An object that comes back stays with the host and is held here as the start of further chains.

import { Currency, DateTime } from "./values.js";

const chainOf = Symbol("chain");

/** The host refused a call; `number`, `source` and `description` are its own. */
export class HostError extends Error {
    constructor({ number, source, description }) {
        super(description || `Error ${number}`);
        Object.assign(this, { name: "HostError", number, source, description });
    }
}

/**
 * The host's root object. `send(body)` carries out one recorded chain and gives the server's
 * answer; `report(error)` hears of failures of calls that nobody waits for.
 */
export function createApp(send, report) {
    return recorder({ ref: undefined, steps: [], send, report });
}

/** What goes to the server for `proxy`: its steps, from App or from a held object. */
export function stepsOf(proxy) {
    const chain = proxy[chainOf];
    chain.used = true;
    return chain.ref === undefined ? chain.steps : [{ from: { $ref: chain.ref } }, ...chain.steps];
}

/** The number of the held object that `proxy` is; undefined for anything else. */
export function heldRef(proxy) {
    const chain = isProxy(proxy) ? proxy[chainOf] : undefined;
    return chain?.steps.length === 0 ? chain.ref : undefined;
}

/** Assigns `value` to the property (or indexed property) that `proxy` names. */
export async function set(proxy, value) {
    const { send } = proxy[chainOf];
    const steps = stepsOf(proxy);
    const { get, call, args } = steps.at(-1);
    const put = { put: get ?? call, value: encode(value), ...(args && { args }) };
    return answerOf(await send({ chain: [...steps.slice(0, -1), put] }));
}

/** A value for the server. Objects must have been awaited, so that the host holds them. */
export function encode(value) {
    if (value === undefined) return { $missing: true };
    if (value instanceof Currency) return { $currency: value.toString() };
    if (value instanceof DateTime) return { $date: value.text };
    if (Array.isArray(value)) return value.map(encode);
    if (isProxy(value)) {
        const ref = heldRef(value);
        if (ref === undefined) throw new TypeError("await the object before passing it on");
        return { $ref: ref };
    }
    return value;
}

/** A value from the server; objects become starts of chains that `host` (any proxy) sends. */
export function decode(value, host) {
    if (value === null || typeof value !== "object") return value;
    if (Array.isArray(value)) return value.map((item) => decode(item, host));
    if ("$currency" in value) return Currency.parse(value.$currency);
    if ("$date" in value) return new DateTime(value.$date);
    if ("$missing" in value) return undefined;
    if ("$ref" in value) {
        const { send, report } = host[chainOf];
        return recorder({ ref: value.$ref, steps: [], send, report });
    }
    return value;
}

/** The answer itself, or its error thrown. */
export function answerOf(answer) {
    if (answer.error) throw new HostError(answer.error);
    return answer;
}

function isProxy(value) {
    return typeof value === "function" && value[chainOf] !== undefined;
}

function recorder(chain) {
    const run = () => {
        chain.used = true;
        chain.running ??= chain
            .send({ chain: stepsOf(proxy) })
            .then((answer) => decode(answerOf(answer).value, proxy));
        return chain.running;
    };
    const extended = (steps) => recorder({ ...chain, steps, used: false, running: undefined });

    const proxy = new Proxy(function () {}, {
        get(_, name) {
            if (name === chainOf) return chain;
            if (typeof name === "symbol") return undefined;
            if (["then", "catch", "finally"].includes(name)) {
                // A held object is no promise, or awaiting it would never end.
                if (chain.steps.length === 0) return undefined;
                const running = run();
                return running[name].bind(running);
            }
            chain.used = true;
            return extended([...chain.steps.map(asGet), { get: name }]);
        },
        apply(_, self, args) {
            chain.used = true;
            const { get: call } = chain.steps.at(-1);
            const step = { call, args: args.map(encode) };
            const called = extended([...chain.steps.slice(0, -1), step]);
            queueMicrotask(() => {
                if (!called[chainOf].used) called.catch(chain.report);
            });
            return called;
        },
    });
    return proxy;
}

/** A call that is not the last of its chain only leads on to what it returns. */
function asGet(step) {
    return step.call ? { get: step.call, args: step.args } : step;
}
