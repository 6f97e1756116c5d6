import assert from "node:assert/strict";
import { test } from "node:test";
import { deletionQuestion } from "../../pages/host/code_words.js";
import { letterFile } from "../../pages/host/letter_file.js";
import { choicesOf, fieldOf } from "../../pages/host/widget_options.js";

test("A file of letters keeps markup in them from being any", () => {
    const file = letterFile([{ Text: "Dear <b>A & \"B\"</b>\n  you" }, { Text: "" }]);
    assert.match(file, /<div class="letter">Dear &lt;b&gt;A &amp; &quot;B&quot;&lt;\/b&gt;\n  you<\/div>/);
    assert.equal(file.match(/<div class="letter">/g).length, 2);
});

test("Deleting a code says what is left without it", () => {
    const format = { whole: (number) => String(number) };
    const fund = { thing: "fund" };
    const start = "Are you sure you want to delete the fund “<Sea>”?\n";
    const cases = [
        [[], "Nothing refers to it."],
        [[["donor_gifts", 1]], "1 gift refers to it and will be left without."],
        [[["donor_gifts", 3], ["events_event_info", 1]],
            "3 gifts and 1 event refer to it and will be left without."],
        [[["events_event_tasks", 2], ["garden_beds", 1], ["actions_assignments", 1]],
            "2 tasks, 1 other record and 1 assignment refer to it and will be left without."],
    ];
    for (const [uses, expected] of cases) {
        const rows = uses.map(([Table, Count]) => ({ Table, Count }));
        assert.equal(deletionQuestion(fund, "<Sea>", rows, format), start + expected);
    }
});

test("A widget's options become fields", () => {
    assert.deepEqual(choicesOf("name=By name|date=By date = first|plain"), [
        { id: "name", name: "By name" }, { id: "date", name: "By date = first" },
        { id: "plain", name: "plain" },
    ]);
    assert.deepEqual(choicesOf(null), []);
    const kindOf = (Kind) => fieldOf({ Key: "k", Caption: "c", Kind }).kind;
    assert.deepEqual(["number", "choice", "yesno", "text"].map(kindOf),
        ["text", "pick", "flag", "text"]);
});
