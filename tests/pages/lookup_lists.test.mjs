import assert from "node:assert/strict";
import { test } from "node:test";
import { deletionText } from "../../pages/events/lookup_lists.js";

test("a deletion says what becomes of whatever uses the item", () => {
    const format = { whole: (count) => count.toLocaleString("en") };
    const category = { thing: "category", usedBy: "FKCategoryId" };
    const group = { thing: "invitation group" };
    const cases = [
        [category, 0, "Delete the category “A <b>”?\nNothing uses it."],
        [category, 1, "Delete the category “A <b>”?\n1 event is left without a category."],
        [category, 1200, "Delete the category “A <b>”?\n1,200 events are left without a category."],
        [group, 1, "Delete the invitation group “A <b>”?\n1 participant leaves the group."],
        [group, 7, "Delete the invitation group “A <b>”?\n7 participants leave the group."],
    ];
    for (const [list, uses, expected] of cases) {
        assert.equal(deletionText(list, "A <b>", uses, format), expected);
    }
});
