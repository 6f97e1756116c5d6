import assert from "node:assert/strict";
import { test } from "node:test";
import { advancedCondition } from "../../pages/donor/donor_search.js";

test("advanced fields become a condition in which every character means itself", async () => {
    const literal = async (text) => `'${text.replaceAll("'", "''")}'`;
    const cases = [
        [{}, ""], [{ lastName: "O'H_" }, "lastname LIKE 'O''H[_]%'"],
        [{ city: "100%", kind: "Person" }, "city LIKE '%100[%]%' AND entitytype = 'Person'"],
        [{ number: "42" }, "id = 42"], [{ number: "4 OR 1=1" }, "id = 0"],
        [{ number: "99999999999" }, "id = 0"],
    ];
    for (const [fields, expected] of cases) {
        assert.equal(await advancedCondition(fields, literal), expected);
    }
});
