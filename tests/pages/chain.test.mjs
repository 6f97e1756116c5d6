import assert from "node:assert/strict";
import { test } from "node:test";
import { createApp, decode, encode, heldRef, HostError, set } from "../../pages/lib/chain.js";
import { Currency, DateTime } from "../../pages/lib/values.js";

/** An App whose requests are kept in `sent` and answered by `answer`. */
function recorded(answer = () => ({ value: null })) {
    const sent = [];
    const reported = [];
    const send = async (body) => {
        sent.push(body.chain);
        return answer(body);
    };
    return { App: createApp(send, (error) => reported.push(error)), sent, reported };
}

const settled = () => new Promise((resolve) => { setTimeout(resolve); });

test("a chain goes to the host as one request", async () => {
    const { App, sent } = recorded(() => ({ value: "Gala" }));
    assert.equal(await App.Modules.Events.Objects("Events").EventsManage.GetEvent(5).Name, "Gala");
    await settled();
    assert.deepEqual(sent, [[
        { get: "Modules" }, { get: "Events" }, { get: "Objects", args: ["Events"] },
        { get: "EventsManage" }, { get: "GetEvent", args: [5] }, { get: "Name" },
    ]]);
});

test("a call runs once, awaited or not; a property alone does not", async () => {
    const { App, sent, reported } = recorded(() => ({ error: { number: 5, description: "No." } }));
    const name = App.Modules.Events;
    App.Shell.Beep(1);
    await settled();
    assert.deepEqual(sent, [[{ get: "Shell" }, { call: "Beep", args: [1] }]]);
    assert.deepEqual(reported.map(({ message }) => message), ["No."]);

    const call = App.Shell.Beep(2);
    await assert.rejects(call.then(), HostError);
    await assert.rejects(call.then(), HostError);
    await settled();
    assert.equal(sent.length, 2);
    assert.equal(reported.length, 1);
    assert.equal(typeof name, "function");
});

test("an object that comes back starts further chains and can be passed on", async () => {
    const { App, sent } = recorded(({ chain }) =>
        ({ value: chain.at(-1).call === "GetEvent" ? { $ref: 7, $class: "cEvent" } : true }));
    const event = await App.Manage.GetEvent(5);
    assert.equal(heldRef(event), 7);
    assert.equal(await event.Name, true);
    await App.Manage.UpdateEvent(event, true);
    assert.deepEqual(sent.slice(1), [
        [{ from: { $ref: 7 } }, { get: "Name" }],
        [{ get: "Manage" }, { call: "UpdateEvent", args: [{ $ref: 7 }, true] }],
    ]);
    assert.throws(() => App.Manage.UpdateEvent(App.Manage.GetEvent(5)), TypeError);
});

test("an assignment names the property, its indices and the value", async () => {
    const { App, sent } = recorded();
    await set(App.Shell.Dialog("eventid"), 5);
    await set(App.Shell.Dialog.NextPage, "results");
    await settled();
    assert.deepEqual(sent, [
        [{ get: "Shell" }, { put: "Dialog", value: 5, args: ["eventid"] }],
        [{ get: "Shell" }, { get: "Dialog" }, { put: "NextPage", value: "results" }],
    ]);
});

test("values keep their kind on the way to the host and back", () => {
    const { App } = recorded();
    const cases = [
        [Currency.parse("12.5"), { $currency: "12.50" }],
        [new DateTime("2026-03-07T18:00:00"), { $date: "2026-03-07T18:00:00" }],
        [undefined, { $missing: true }], [null, null], [true, true], ["5", "5"], [5, 5],
        [[1, Currency.parse("0.1")], [1, { $currency: "0.10" }]],
    ];
    for (const [value, wire] of cases) {
        assert.deepEqual(encode(value), wire);
        assert.deepEqual(decode(wire, App), value);
    }
});
