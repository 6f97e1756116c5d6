import assert from "node:assert/strict";
import { test } from "node:test";
import { chartData, chartWords, extent, figureWords, labelStep, shortened } from
    "../../pages/host/chart_data.js";
import { addressOf, askedBy } from "../../pages/host/report_address.js";
import { captionSpan, tableForFile } from "../../pages/host/report_groups.js";
import { offered, offeredForList, pictureAddress } from "../../pages/host/report_list.js";
import { cellWords, filterText, filterValue, missingWords } from
    "../../pages/host/report_values.js";
import { csvText } from "../../pages/lib/csv.js";
import { localeFormats } from "../../pages/lib/locale.js";
import { Currency, DateTime } from "../../pages/lib/values.js";

const format = localeFormats({
    order: "dmy", dateSeparator: ".", twelveHours: false,
    currencySymbol: "€", symbolLeads: false, decimalMark: ",", groupMark: ".",
});
const money = (text) => Currency.parse(text);

test("the list offers what the user may see, by its address or by its command", () => {
    const base = { Description: "", Iconimage: "", Path: "C:\\Addin\\Cache\\Reports" };
    const categories = [
        { name: "Money", reports: [{ ...base, Key: "m", Name: "M", Operation: "Gifts/View" }] },
        {
            name: "Events",
            reports: [
                { ...base, Key: "a b", Name: "A" },
                {
                    ...base, Key: "one", Name: "One",
                    Script: "App.Modules.Events.Objects('Workflow').Events.ShowOne()",
                },
                { ...base, Key: "bad", Name: "Bad", Script: "alert(1)" },
            ],
        },
    ];
    const shown = (allowed) => offered(categories, "c:\\addin\\", allowed)
        .map(({ name, reports }) => [name, reports.map((one) => one.address ?? one.command)]);
    const events = ["Events", [
        "/host/report?folder=Cache%2FReports&key=a+b", { name: "ShowOne", args: [] },
    ]];
    assert.deepEqual(shown(() => false), [events]);
    assert.deepEqual(shown((right) => right === "gifts/view"), [
        ["Money", ["/host/report?folder=Cache%2FReports&key=m"]], events,
    ]);
    assert.equal(pictureAddress("D:\\x\\Cache/1033/Events/gif/report.gif"),
        "/cache/1033/events/gif/report.gif");
    assert.equal(pictureAddress("D:\\x\\report.gif"), "");
});

test("a saved list is offered the reports on its kind of records", () => {
    const report = (Key, EntityType, Operation = "", IsEntitySmartList = true) =>
        ({ Key, Name: Key, Path: "/a/Cache/Reports", Operation, EntityType, IsEntitySmartList });
    const reports = [report("s", "donors"), report("d", "donors", "donations/view"),
        report("e", "events"), report("x", "donors", "", false)];
    const about = { listId: 7, entityType: "donors", addInFolder: "/a/", allowed: () => false };
    assert.deepEqual(offeredForList(reports, about),
        [{ name: "s", address: "/host/report?folder=Cache%2FReports&key=s&list=7" }]);
    assert.equal(offeredForList(reports, { ...about, allowed: () => true }).length, 2);
});

test("a report's filters stand in its address and come back from it", () => {
    const values = new Map([["from", "2026-07-01"], ["name", "a&b=c #%+"], ["to", ""]]);
    const address = addressOf({ folder: "Cache/Reports", key: "events-list", id: 12, values });
    const asked = askedBy(new URL(address, "http://x").search);
    const expected = { folder: "Cache/Reports", key: "events-list", id: 12, listId: 0, values };
    assert.deepEqual(asked, expected);
    assert.equal(askedBy("?key=a&id=-1&list=x").values, undefined);
    assert.deepEqual([askedBy("?id=1e3").id, askedBy("?list=7").listId], [0, 7]);
});

test("filters keep their types between form, address and host", () => {
    const cases = [
        ["date", DateTime.of("2026-03-07"), "2026-03-07", DateTime.of("2026-03-07")],
        ["date", DateTime.of(""), "", ""],
        ["date", "next week", "next week", "next week"],
        ["date", "2026-02-31", "2026-02-31", "2026-02-31"],
        ["number", 10, "10", "10"],
        ["yesno", false, "0", false],
        ["choice", "net", "net", "net"],
        ["event", 12, "12", "12"],
        ["activity", null, "", ""],
        ["text", " a ", " a ", " a "],
    ];
    for (const [Kind, value, text, back] of cases) {
        assert.equal(filterText({ Kind }, value), text, `${Kind} ${value}`);
        assert.deepEqual(filterValue({ Kind }, text), back, `${Kind} ${text}`);
    }
    assert.equal(missingWords({ Kind: "event", Required: true }, ""), "Choose one.");
    assert.equal(missingWords({ Kind: "date", Required: true }, DateTime.of("")), "Enter a date.");
    assert.equal(missingWords({ Kind: "yesno", Required: true }, false), "");
    assert.equal(missingWords({ Kind: "date" }, ""), "");
});

test("cells read as their columns are", () => {
    const cases = [
        [money("-1234.5"), "money", "-1.234,50 €"],
        [money("0.0050"), "money", "0,01 €"],
        [new DateTime("2026-03-07T18:30:00"), "date", "7.3.2026"],
        [new DateTime("2026-03-07T18:30:00"), "datetime", "7.3.2026, 18:30"],
        [12345, "number", "12.345"],
        [-0.001, "number", "0"],
        [2.5, "number", "2,5"],
        [33.333, "percent", "33,3%"],
        [100, "percent", "100,0%"],
        [0, "number", "0"],
        [true, "yesno", "Yes"],
        [null, "money", ""],
        ["0 < 1", "text", "0 < 1"],
    ];
    for (const [value, kind, text] of cases) assert.equal(cellWords(value, kind, format), text);
});

const line = (Kind, Level, Caption, ...Cells) => ({ Kind, Level, Caption, Cells });
const lines = [
    line("head", 0, "=Spring", null, null),
    line("head", 1, "Gala", null, null),
    line("row", 2, "", "Ann", money("40")),
    line("subtotal", 1, "Gala: 1", null, money("40")),
    line("subtotal", 0, "Spring: 1", null, money("40")),
    line("head", 0, "Autumn", null, null),
    line("row", 2, "", "Ben", money("2.5")),
    line("total", 0, "2 in all", null, money("42.5")),
];

test("a file has each line once, with its groups, and no sums", () => {
    const columns = [{ Caption: "Donor" }, { Caption: "Paid" }];
    const file = tableForFile(columns, lines);
    assert.equal(csvText(file.columns, file.rows), "\uFEFF" + [
        "Group,Group 2,Donor,Paid", "'=Spring,Gala,Ann,40.00", "Autumn,,Ben,2.50", "",
    ].join("\r\n"));
    const flat = tableForFile(columns, [line("row", 0, "", "Ann", null)]);
    assert.equal(csvText(flat.columns, flat.rows), "\uFEFFDonor,Paid\r\nAnn,\r\n");
});

test("the words of a sum reach to its first figure", () => {
    const cases = [[["", null, money("1")], 2], [[3, 4], 1], [[null, null], 2], [[null, 0], 1]];
    for (const [Cells, span] of cases) assert.equal(captionSpan({ Cells }), span);
});

test("a chart's figures are plain, keep their gaps and fit its axis", () => {
    const data = chartData({
        kind: "groupedbar", title: "Income", categories: ["Gala", null],
        series: [
            { name: "Expected", values: [money("1200.5"), null] },
            { name: "Actual", values: [money("-3"), money("0")] },
        ],
    });
    assert.deepEqual(data.series.map(({ values }) => values), [[1200.5, null], [-3, 0]]);
    assert.deepEqual(data.marks.map(({ at, one, value }) => [at, one, value]),
        [[0, 0, 1200.5], [0, 1, -3], [1, 1, 0]]);
    assert.deepEqual(extent(data.marks), [-3, 1200.5]);
    assert.deepEqual([extent([]), extent([{ value: 0 }])], [[0, 1], [0, 1]]);
    assert.equal(chartWords(data), "Bar chart: Income. Expected and Actual for 2 entries. " +
        "The table below has the figures.");
    assert.deepEqual([1200.5, 12000, -0.5].map((value) => figureWords(value, true, format)),
        ["1.200,50 €", "12.000 €", "-0,50 €"]);
    assert.equal(figureWords(1234.5, false, format), "1.234,5");
    assert.equal(shortened("A very long name", 8), "A very…");
    assert.deepEqual([labelStep(12, 20), labelStep(24, 5), labelStep(3, 0)], [1, 5, 3]);
});
