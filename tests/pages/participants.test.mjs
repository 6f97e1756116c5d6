import assert from "node:assert/strict";
import { test } from "node:test";
import {
    entriesOf, entryOfLine, guessMeanings, matcher, sortOut,
} from "../../pages/events/donor_matching.js";
import {
    countsOf, overCapacity, resultLine, rowOf, shownRows, stateFrom, textOf,
} from "../../pages/events/participant_list.js";

const format = { whole: String };
const person = (Id, Status, Attended, First, Last, InvitationGroupsString = "") =>
    rowOf({ Id, FKdonorId: Id, Status, Attended, ParticipantName: `${First} ${Last}`,
        InvitationGroupsString }, { FirstName: First, LastName: Last });
const rows = [
    person(1, 2, true, "Zoe", "abbot", "Board, Press"), person(2, 1, false, "Al", "Abbot"),
    person(3, 3, false, "Cy", "Moore 100%", "Press"), person(4, 0, false, "Bea", "Zimmer"),
    person(5, 7, false, "Al", "Abbot"),
];
const shown = (changes) =>
    shownRows(rows, { text: "", filter: "all", group: "", sort: "name", ...changes })
        .map(({ id }) => id);

test("participants are counted as everywhere: whoever answered was invited", () => {
    assert.deepEqual(countsOf(rows), {
        all: 5, invited: 3, noAnswer: 1, accepted: 1, declined: 1, notInvited: 2, attended: 1,
    });
    const cases = [[2, 0, 0], [1, 0, 0], [1, 3, 3], [0, 9, 0], [4, 3, 0]];
    for (const [most, more, over] of cases) {
        assert.equal(overCapacity(rows, most, more), over, `${most} ${more}`);
    }
});

test("the list stands by last name without case, then by key, and filters literally", () => {
    const cases = [
        [{}, [2, 5, 1, 3, 4]], [{ descending: true }, [4, 3, 1, 2, 5]],
        [{ sort: "status" }, [5, 4, 2, 1, 3]], [{ text: "AL  abb" }, [2, 5]],
        [{ text: "0%" }, [3]], [{ text: "_" }, []], [{ group: "Press" }, [1, 3]],
        [{ filter: "attended" }, [1]], [{ filter: "invited", text: "c" }, [3]],
    ];
    for (const [changes, ids] of cases) assert.deepEqual(shown(changes), ids);
});

test("a list's state goes into the address and comes back", () => {
    for (const text of ["", "find=0%25&show=accepted&group=A+%26+B&by=due-desc", "by=status"]) {
        assert.equal(textOf(stateFrom(`?id=5&tab=participants&${text}`)), text);
    }
    assert.equal(stateFrom("?id=5", "show=declined").filter, "declined");
    assert.equal(stateFrom("?show=all&by=nonsense", "show=declined").filter, "all");
    assert.equal(stateFrom("?show=toString").filter, "all");
});

test("a result tells what was done and why the rest was not", () => {
    const cases = [
        [48, [["already accepted", 2]], "48 changed, 2 skipped: already accepted."],
        [0, [["already there", 1], ["gone", 3]], "0 changed, 4 skipped: 1 already there, 3 gone."],
        [5, [], "5 changed."],
    ];
    for (const [done, skipped, line] of cases) {
        assert.equal(resultLine(done, "changed", new Map(skipped), format), line);
    }
});

const donors = [
    { Id: 1, Display: "Ann O'Hara", FirstName: "Ann", LastName: "O'Hara", Email: "a@x.org" },
    { Id: 2, Display: "Bo Lee", FirstName: "Bo", LastName: "Lee", Email: "bo@x.org" },
    { Id: 3, Display: "Bo Lee", FirstName: "Bo", LastName: "Lee", Email: "lee@x.org" },
    { Id: 4, Display: "Renée Works", FirstName: "", LastName: "Renée Works", Email: "" },
];

test("columns are recognised by their heads, each meaning once", () => {
    const heads = ["Donor ID", "First Name", "Surname", "E-mail", "email", "Table"];
    const found = guessMeanings(heads);
    assert.deepEqual(found, ["id", "firstName", "lastName", "email", "none", "none"]);
    const [entry] = entriesOf([["", " Bo ", "Lee", "LEE@x.org"]], found);
    assert.equal(matcher(donors)(entry)[0].Id, 3);
});

test("each line is added, there already, twice, unclear or unknown", () => {
    const lines = ["ann o'hara", "O'Hara, Ann", "#2", "Bo Lee", "Bo Lee <lee@x.org>", "renee works",
        "nobody@x.org", "99", "Ann O'Hara <new@x.org>", "%"];
    const sorted = sortOut(lines.map(entryOfLine), matcher(donors), new Set([2]));
    assert.deepEqual(sorted.map(({ outcome, donor }) => `${outcome} ${donor?.Id ?? ""}`.trim()), [
        "add 1", "twice 1", "there 2", "unclear", "add 3", "add 4", "unknown", "unknown",
        "twice 1", "unknown",
    ]);
});
