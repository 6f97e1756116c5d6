import assert from "node:assert/strict";
import { test } from "node:test";
import { addressOfState, criteriaValues, orderBy, spanCondition, stateFromAddress }
    from "../../pages/events/event_search.js";
import { literalSearch } from "../../pages/lib/search_text.js";

test("what is typed into a search means itself", () => {
    const cases = [
        ["100%", "100[%]"], ["run_5k", "run[_]5k"], ["[gala]", "[[]gala]"],
        ["  spring   gala ", "spring gala"],
        ["it's", "it's"], ["", ""],
    ];
    for (const [typed, expected] of cases) assert.equal(literalSearch(typed), expected, typed);
});

test("an order is made of the list's own columns and never ties", () => {
    const cases = [
        [{ sort: "start", descending: true }, "StartDateTime DESC, Name, Id"],
        [{ sort: "name", descending: false }, "Name, StartDateTime, Id"],
        [{ sort: "capacity", descending: true }, "MaxCapacity DESC, StartDateTime, Name, Id"],
        [{ sort: "1; DROP TABLE x", descending: true }, "StartDateTime DESC, Name, Id"],
    ];
    for (const [state, expected] of cases) assert.equal(orderBy(state), expected);
});

test("a span of time becomes a condition on the start", async () => {
    const literal = async (date) => `<${date.text}>`;
    const session = { today: "2026-03-07", season: { from: "2025-07-01", until: "2026-07-01" } };
    const cases = [
        ["upcoming", "StartDateTime >= <2026-03-07T00:00:00>"],
        ["past", "StartDateTime < <2026-03-07T00:00:00>"],
        ["season", "StartDateTime >= <2025-07-01T00:00:00> " +
            "AND StartDateTime < <2026-07-01T00:00:00>"],
        ["all", ""],
    ];
    for (const [span, expected] of cases) {
        assert.equal(await spanCondition(span, session, literal), expected, span);
    }
});

test("a search asks for one row more than it shows", () => {
    const values = criteriaValues({ text: "a b", where: "", order: "Id", shown: 50 });
    const unset = { FKCategoryId: null, FKStatusId: null, FKLocationId: null,
        FKCoordinatorId: null, FKFundId: null, FKCampaignId: null, FKAppealId: null };
    const asked = { SearchString: "a b", CustomWhere: "", CustomOrderBy: "Id", MaxRows: 51 };
    assert.deepEqual(values, { ...unset, ...asked });
    const filters = { FKStatusId: 0, FKFundId: 4 };
    assert.deepEqual(
        criteriaValues({ text: "a b", filters, where: "", order: "Id", shown: 50 }),
        { ...unset, ...asked, ...filters });
});

test("a list's state survives the address, and nonsense in it does no harm", () => {
    const usual = { text: "", filters: {}, span: "upcoming", sort: "start", descending: false, shown: 50 };
    const states = [
        [usual, ""],
        [{ ...usual, text: "100% & more" }, "?q=100%25+%26+more"],
        [{ ...usual, span: "past", descending: true }, "?show=past"],
        [{ ...usual, filters: { FKCategoryId: 3, FKAppealId: 0 } }, "?category=3&appeal=0"],
        [{ ...usual, sort: "name", descending: true, shown: 150 }, "?sort=name-desc&rows=150"],
    ];
    for (const [state, address] of states) {
        assert.equal(addressOfState(state), address);
        assert.deepEqual(stateFromAddress(address), state);
    }
    assert.deepEqual(stateFromAddress("?show=x&sort=Id;--&rows=-4&fund=1;--&status=-2"), usual);
});
