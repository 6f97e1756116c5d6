import assert from "node:assert/strict";
import { test } from "node:test";
import { cppFiles, layeringFaults } from "./layering.mjs";
import { wordingFaults, wordingFaultsOfCheckout } from "./wording.mjs";

test("every include of the project respects the layers", () => {
    assert.deepEqual(layeringFaults(cppFiles()), []);
});

test("no file carries a machine's path, a registry's host or an unwanted word", () => {
    assert.deepEqual(wordingFaultsOfCheckout(), []);
});

test("an include is refused where it leaves its layer", () => {
    const tree = {
        "automation/value.h": "#include <cmath>",
        "core/host.h": '#include "automation/value.h"',
        "core/root_objects.h": "",
        "model/event.h": "",
        "store/tables.h": "",
        "handlers/lists.h": "",
        "host/document/session.h": "",
        "com/factory.h": "",
    };
    const cases = [
        ["core/root_objects.cpp", '"handlers/lists.h"', true],
        ["store/save.cpp", '"model/event.h"', true],
        ["store/save.cpp", '"tables.h"', true],
        ["store/save.cpp", '"handlers/lists.h"', false],
        ["model/event.cpp", '"../store/tables.h"', false],
        ["model/event.cpp", '"core/root_objects.h"', false],
        ["model/event.cpp", '"host/document/session.h"', false],
        ["model/event.cpp", '"gone.h"', false],
        ["model/event.cpp", "<string_view>", true],
        ["model/event.cpp", "<windows.h>", false],
        ["model/event.cpp", "<nlohmann/json.hpp>", false],
        ["host/main.cpp", '"core/root_objects.h"', true],
        ["host/main.cpp", '"automation/value.h"', true],
        ["host/main.cpp", '"document/session.h"', true],
        ["host/main.cpp", "<sqlite3.h>", true],
        ["host/main.cpp", '"model/event.h"', false],
        ["host/main.cpp", "<core/host.h>", false],
        ["com/adaptor.cpp", '"model/event.h"', true],
        ["tests/store/save_test.cpp", '"core/root_objects.h"', true],
    ];
    for (const [from, name, allowed] of cases) {
        const files = new Map(Object.entries({ ...tree, [from]: `  # include ${name} // why` }));
        const faults = layeringFaults(files);
        assert.equal(faults.length, allowed ? 0 : 1, `${from} includes ${name}: ${faults}`);
    }
});

test("headers that include each other are reported with their way round", () => {
    const files = new Map([
        ["model/a.h", '#include "model/b.h"'],
        ["model/b.h", '#include "c.h"'],
        ["model/c.h", '#include "model/a.h"'],
    ]);
    assert.deepEqual(layeringFaults(files), [
        "includes go round: model/a.h > model/b.h > model/c.h > model/a.h",
    ]);
});

test("an unwanted word is found, and its innocent neighbours are not", () => {
    const joined = (...pieces) => pieces.join("");
    const unwanted = [
        joined("see /ho", "me/ann/x"),
        joined("cd /wo", "rk/main"),
        joined("C:\\Us", "ers\\Ann"),
        joined('"resolved": "https://registry.np', 'mjs.org/a"'),
        joined("// TO", "DO later"),
        joined("// a stu", "b for now"),
        joined("as the specifi", "cation says"),
        joined("from Part 3", ".2"),
    ];
    for (const text of unwanted) assert.notDeepEqual(wordingFaults("a.txt", text), [], text);

    const innocent = [
        "specific", "stubborn", "todo", "/usr/bin/chromium", "Part 2 of 3", "pages/home/x",
    ];
    for (const text of innocent) assert.deepEqual(wordingFaults("a.txt", text), [], text);

    assert.equal(wordingFaults(joined("docs/specifi", "cation.md"), "").length, 1);
});
