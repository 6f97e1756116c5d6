import assert from "node:assert/strict";
import { test } from "node:test";
import { copyName, countsText } from "../../pages/events/copy_plan.js";
import { daysBetween, shifted } from "../../pages/lib/days.js";
import { DateTime } from "../../pages/lib/values.js";

test("a copy's name carries the next year, or says that it is a copy", () => {
    const cases = [
        ["Winter Gala 2026", "2026-02-14", "Winter Gala 2027"],
        ["2026 Gala", "2026-02-14", "2027 Gala"],
        ["Gala 12026", "2026-02-14", "Copy of Gala 12026"],
        ["Gala 2026", "2026-01-01", "Gala 2026"], // 52 weeks on it is still that year
        ["Gala", "2026-02-14", "Copy of Gala"], ["Gala 1899", "", "Copy of Gala 1899"],
    ];
    for (const [name, start, expected] of cases) {
        assert.equal(copyName(name, DateTime.of(start, "18:00:00")), expected);
    }
});

test("dates move by whole days and keep their time; what has no date stays", () => {
    const cases = [
        ["2026-02-14", "18:30:00", 364, "2027-02-13T18:30:00"],
        ["2028-02-28", "", 1, "2028-02-29T00:00:00"], ["2026-03-01", "", -1, "2026-02-28T00:00:00"],
        ["", "22:00:00", 364, "1899-12-30T22:00:00"], ["2026-02-14", "", 0, "2026-02-14T00:00:00"],
    ];
    for (const [date, time, days, expected] of cases) {
        assert.equal(shifted(DateTime.of(date, time), days).text, expected);
    }
    assert.equal(daysBetween("2026-02-14", "2027-02-13"), 364);
    assert.equal(daysBetween("2026-02-14", ""), undefined);
});

test("what is copied is counted in words", () => {
    const format = { whole: (count) => count.toLocaleString("en") };
    const [one, task, people] =
        [[1, "activity", "activities"], [0, "task", "tasks"], [1200, "person", "people"]];
    const cases = [[[], ""], [[task], ""], [[one], "1 activity"],
        [[one, task, people], "1 activity and 1,200 people"],
        [[one, people, one], "1 activity, 1,200 people and 1 activity"]];
    for (const [counts, expected] of cases) assert.equal(countsText(counts, format), expected);
});
