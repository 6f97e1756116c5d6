// A host written in JScript: what its objects do otherwise than VBScript's.
var failures = 0, log = [];

function expect(what, actual, wanted) {
    if (actual === wanted) return;
    failures++;
    WScript.Echo(what + ": got " + actual + " instead of " + wanted);
}

function lines() {
    var text = log.join("\n");
    log = [];
    return text;
}

var names = ["Description", "FKLocationId", "StartDateTime", "EndDateTime", "RSVPDateTime",
    "MaxCapacity", "MinCapacity", "FKCategoryId", "FKStatusId", "FKCoordinatorId", "RevenueGoal",
    "AttendanceGoal", "FKFundId", "FKCampaignId", "FKAppealId", "Notes", "CreateUser",
    "CreateDate", "LastUpdateUser", "LastUpdateDate"];

function recordSet(rows) {
    var set = {
        EOF: rows.length === 0, at: 0,
        MoveNext: function () { this.EOF = ++this.at >= rows.length; },
        Close: function () {}
    };
    set.Fields = { Item: function (name) {
        var field = { Value: null };
        field.Value = name in rows[0] ? rows[0][name] : null;
        return field;
    } };
    return set;
}

var roots = {};
var App = {
    Document: {
        GetDataSet: function (sql) {
            log.push(sql);
            return recordSet(sql.indexOf("2:12") < 0 ? [] : [{ Id: 12, Name: "Gala" }]);
        },
        Execute: function (sql) { throw new Error("the disk is full"); },
        GetLock: function (kind, id) { log.push("lock " + kind + " " + id); return {}; },
        ForceUpdate: function () {}
    },
    Provider: {
        GetDocumentType: function () { return 0; },
        VToSQL: function (value, kind) { return kind + ":" + value; }
    },
    Security: { CurrentUser: { Id: 5 }, IsAllowed: function () { return true; } },
    Shell: {
        Navigate: function (url) { log.push("go " + url); },
        ErrorUnexpected: function (text) { log.push("unexpected " + text); },
        MsgBox: function (text, title) { log.push(title); }
    },
    Modules: { Events: { Objects: function (name) { return roots[name]; } } }
};
var classes = ["Events", "Workflow", "Handler", "Security"];
for (var i = 0; i < classes.length; i++) roots[classes[i]] = new ActiveXObject("QMEvents." + classes[i]);
for (var j = 0; j < classes.length; j++) roots[classes[j]].OnInitialize(App);

roots.Workflow.Events.EditEvent(12);
expect("EditEvent", lines(), "lock event 12\nSELECT * FROM events_event_info WHERE Id = 2:12\n" +
    "go obsidian://events/event-fulledit?id=12&action=edit");

var store = roots.Events.EventsManage;
var gala = store.GetEvent(12);
expect("name", gala.Name, "Gala");
gala.Name = "Caf\u00e9 \ud83c\udf89";
expect("renamed", gala.Name, "Caf\u00e9 \ud83c\udf89");
expect("missing", store.GetEvent(99), null);
lines();

// A script that throws is a failing host: told, in words that depend on the engine, and not thrown
// back.
expect("save", store.UpdateEvent(gala, false), false);
expect("told", lines().indexOf("lock event 12\nunexpected "), 0);

var links = roots.Events.Links();
for (var k = 0; k < 3; k++) links.Add(roots.Events.GetNewLink(), "k" + k);
var count = 0;
for (var walk = new Enumerator(links); !walk.atEnd(); walk.moveNext()) {
    if (walk.item().Language === "vbscript") count++;
}
expect("walked", count, 3);

try {
    links.Item("none");
    expect("an error", "none", "one");
} catch (e) {
    expect("number", e.number & 0xFFFF, 5);
    expect("text", e.description || e.message, "Invalid procedure call or argument (no item has the key none)");
}
try {
    gala.NoSuchMember();
    expect("an error", "none", "one");
} catch (e2) {
    expect("unknown", e2.number & 0xFFFF, 438);
}

if (failures === 0) WScript.Echo("all is well");
