import assert from "node:assert/strict";
import { test } from "node:test";
import { quantityLeft } from "../../pages/events/activity_fields.js";
import { taskState } from "../../pages/events/task_state.js";
import { DateTime } from "../../pages/lib/values.js";
import { choiceFault, choicesText, faultOfFields, moved }
    from "../../pages/events/reservation_fields.js";

const field = (name, type = 1, choices = []) => ({ name, type, choices });
const choice = (name, visible = true) => ({ name, visible });

test("fields that nobody could tell apart or answer are refused", () => {
    const cases = [
        [[], ""], [[field("Meal"), field("Seat")], ""],
        [[field("Meal"), field(" meal ")], "Two reservation fields are called “ meal ”."],
        [[field("Meal", 2)], "The reservation field “Meal” has no choices yet."],
        [[field("Meal", 2, [choice("Fish", false)])],
            "The reservation field “Meal” has no choices yet."],
        [[field("Meal", 3)], ""], [[field("Meal", 2, [choice("Fish")])], ""],
    ];
    for (const [fields, expected] of cases) assert.equal(faultOfFields(fields), expected);
});

test("choices are told apart without regard to case", () => {
    assert.equal(choiceFault([choice("Beef"), choice("Fish")]), undefined);
    assert.deepEqual(choiceFault([choice("Fish"), choice("Beef"), choice("fish")]),
        { name: "fish", text: "“fish” is there twice." });
    assert.equal(choiceFault([]).text, "A list needs at least one choice.");
    assert.equal(choicesText([choice("Beef"), choice("Fish", false)]), "Beef, Fish (hidden)");
});

test("an item moves to the place it is given", () => {
    const cases = [[0, 2, "bca"], [2, 0, "cab"], [1, 1, "abc"], [0, 1, "bac"]];
    for (const [from, to, expected] of cases) {
        assert.equal(moved([..."abc"], from, to).join(""), expected);
    }
});

test("a task is overdue from the day after it was due", () => {
    const due = (date, time) => ({ Completed: false, DueDateTime: DateTime.of(date, time) });
    const cases = [
        [due("2026-03-06"), "Overdue"], [due("2026-03-07"), "Open"],
        [due("2026-03-07", "08:00:00"), "Open"], [due(""), "Open"],
        [{ ...due("2020-01-01"), Completed: true }, "Done"],
    ];
    for (const [task, expected] of cases) assert.equal(taskState(task, "2026-03-07"), expected);
});

test("units left are counted where they are limited, and never below zero", () => {
    const cases = [[0, 10, 4, 6], [0, 4, 10, 0], [0, 0, 0, 0], [1, 10, 4, undefined]];
    for (const [QuantityType, QuantityAvailable, QuantityInUse, expected] of cases) {
        const activity = { QuantityType, QuantityAvailable, QuantityInUse };
        assert.equal(quantityLeft(activity), expected);
    }
});
