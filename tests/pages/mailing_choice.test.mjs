import assert from "node:assert/strict";
import { test } from "node:test";
import { enclosed, reachedBy } from "../../pages/events/mailing_choice.js";

test("a mailing reaches every donor once, by status, activity, sponsorship or group", () => {
    const people = {
        participants: [{ donorId: 1, status: 2 }, { donorId: 2, status: 0 }],
        lines: [
            { donorId: 1, activityId: 5, isSponsorship: false },
            { donorId: 1, activityId: 6, isSponsorship: true },
            { donorId: 3, activityId: 15, isSponsorship: true },
        ],
        memberships: [{ donorId: 2, groupId: 7 }, { donorId: 9, groupId: 7 }],
    };
    const cases = [
        ["1", ["2"], [1]], ["1", ["0", "2"], [1, 2]], ["1", [], []], ["2", ["5", "6"], [1]],
        ["2", ["1"], []], ["3", ["sponsorship"], [1, 3]], ["3", ["other"], [1]],
        ["4", ["7"], [2]],
    ];
    for (const [kind, chosen, donors] of cases) {
        assert.deepEqual([...reachedBy(kind, chosen, people)], donors, `${kind} ${chosen}`);
    }
    assert.equal(enclosed(["2", "15"]), "~2~~15~");
});
