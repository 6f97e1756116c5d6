import assert from "node:assert/strict";
import { test } from "node:test";
import { commandOf, withoutStyles } from "../../pages/lib/safe_markup.js";

test("a link runs a command with plain arguments, and nothing else", () => {
    const prefix = "javascript:App.Modules.Events.Objects('Workflow').Events.";
    const cases = [
        ["ViewEvent(12,'events_participants');", ["ViewEvent", 12, "events_participants"]],
        ["ViewEvent(12,'events_reservations', 7);", ["ViewEvent", 12, "events_reservations", 7]],
        ["EditEventReservation(5, 9);", ["EditEventReservation", 5, 9]],
        ["ViewEvent(1,'it\\'s')", ["ViewEvent", 1, "it's"]], ["ManageEvents()", ["ManageEvents"]],
        ["ViewEvent(alert(1))", undefined], ["ViewEvent(1);alert(1)", undefined],
        ["ViewEvent(1,'a'+'b')", undefined],
    ];
    for (const [text, expected] of cases) {
        const command = commandOf(prefix + text);
        assert.deepEqual(command && [command.name, ...command.args], expected, text);
    }
    for (const link of ["javascript:alert(1)", "https://example.org/", "", null]) {
        assert.equal(commandOf(link), undefined);
    }
});

test("styles go out of tags and stay in words", () => {
    const markup = `<table width=100% style='color:#777'><td STYLE = "a:b" width=9>of style='x'`;
    assert.equal(withoutStyles(markup), "<table width=100%><td width=9>of style='x'");
});
