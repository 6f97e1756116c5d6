#include "tests/support/scripted_host.h"

#include <gtest/gtest.h>

#include "tests/support/transport.h"

namespace qmevents::testing {
namespace {

std::string shown(const Value& value)
{
    switch (value.kind()) {
    case ValueKind::null:
        return "Null";
    case ValueKind::missing:
        return "missing";
    case ValueKind::date:
        return transport.written(value.as<Date>()).iso();
    case ValueKind::object:
        return value.isNothing() ? "Nothing" : typeName(value);
    default:
        return toText(value);
    }
}

class LockDouble : public Object {
public:
    LockDouble(ScriptedHost& host, std::string what) : host_(host), what_(std::move(what))
    {
        host_.log.push_back("Lock " + what_);
    }
    ~LockDouble() override { host_.log.push_back("Unlock " + what_); }
    std::string_view className() const override { return "Lock"; }
    MemberId memberId(std::string_view) const override { return unknownMember; }
    Value invoke(MemberId, CallKind, std::span<Value>) override { return {}; }

private:
    ScriptedHost& host_;
    std::string what_;
};

Value donorObject(const ScriptedHost& host, std::int32_t id)
{
    const auto found = host.donors.find(id);
    if (found == host.donors.end()) return Value::nothing();
    auto donor = puppet("Donor");
    donor->holds("Id", id).holds("Display", found->second).holds("EntityType", "household");
    return donor;
}

} // namespace

Ref<Object> recordSet(Rows rows, int* closed)
{
    struct State {
        Rows data;
        std::size_t at = 0;
    };
    const auto state = std::make_shared<State>(State{std::move(rows), 0});
    auto fields = puppet("Fields");
    fields->on("Item", [state](std::span<Value> arguments) -> Value {
        const auto& columns = state->data.columns;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const bool byName =
                arguments[0].isText() && text::sameName(columns[i], arguments[0].text());
            if (!byName && !(arguments[0].isNumber() && toInt32(arguments[0]) == int(i))) continue;
            auto field = puppet("Field");
            field->on("Value",
                      [state, i](std::span<Value>) { return state->data.rows[state->at][i]; });
            return field;
        }
        throw Error(3265, "Recordset", "no column " + shown(arguments[0]));
    });
    auto set = puppet("Recordset");
    set->on("Fields", [fields](std::span<Value>) { return Value(fields); });
    set->on("EOF",
            [state](std::span<Value>) { return Value(state->at >= state->data.rows.size()); });
    set->on("MoveNext", [state](std::span<Value>) {
        ++state->at;
        return Value();
    });
    set->on("MoveFirst", [state](std::span<Value>) {
        state->at = 0;
        return Value();
    });
    set->on("Close", [closed](std::span<Value>) {
        if (closed) ++*closed;
        return Value();
    });
    return set;
}

Rows eventRow(std::int32_t id, const std::map<std::string, Value>& cells)
{
    Rows event{{"Id",
                "Name",
                "Description",
                "FKLocationId",
                "StartDateTime",
                "EndDateTime",
                "RSVPDateTime",
                "MaxCapacity",
                "MinCapacity",
                "FKCategoryId",
                "FKStatusId",
                "FKCoordinatorId",
                "RevenueGoal",
                "AttendanceGoal",
                "FKFundId",
                "FKCampaignId",
                "FKAppealId",
                "Notes",
                "CreateUser",
                "CreateDate",
                "LastUpdateUser",
                "LastUpdateDate"},
               {}};
    auto& row = event.rows.emplace_back();
    for (const auto& column : event.columns) {
        const auto cell = cells.find(column);
        row.push_back(cell == cells.end() ? Value(Null{}) : cell->second);
    }
    row[0] = id;
    return event;
}

ScriptedHost::ScriptedHost()
{
    transport.release();
    app_ = puppet("App");
    for (const auto& [name, part] : std::map<std::string, Ref<Object>>{{"Document", makeDocument()},
                                                                       {"Provider", makeProvider()},
                                                                       {"Shell", makeShell()},
                                                                       {"Security", makeSecurity()},
                                                                       {"Modules", makeModules()},
                                                                       {"Utils", makeUtils()}}) {
        app_->holds(name, part);
    }
    app_->on("Session", [this](std::span<Value> a) { return session[toText(a[0])]; });
    app_->onPut("Session", [this](std::span<Value> a) {
        session[toText(a[0])] = a[1];
        log.push_back("Session " + toText(a[0]) + " = " + shown(a[1]));
        return Value();
    });
    app_->on("IsModuleLoaded", [](std::span<Value>) { return Value(true); });
    app_->on("CreateObject", [this](std::span<Value> a) -> Value {
        if (toText(a[0]) != "ScriptControl") return Value::nothing();
        auto failure = puppet("Error");
        failure->holds("Number", 0).holds("Description", "").holds("Line", 0);
        auto control = puppet("ScriptControl");
        control->holds("Language", "").holds("Error", failure);
        control->on("AddObject", [](std::span<Value>) { return Value(); });
        control->on("AddCode", [this, failure](std::span<Value> code) {
            log.push_back("Script: " + toText(code[0]));
            try {
                if (runScript) runScript(toText(code[0]));
            } catch (const Error& error) {
                put(failure, "Number", error.number());
                put(failure, "Description", error.description());
                put(failure, "Line", 3);
                throw;
            }
            return Value();
        });
        return control;
    });
    for (const char* name : {"Events", "Workflow", "Handler", "Security"}) {
        roots_[name] = transport.makeRoot(std::string("QMEvents.") + name);
    }
    for (const auto& [name, object] : roots_) call(object, "OnInitialize", app_);
}

ScriptedHost::~ScriptedHost()
{
    roots_.clear();
    transport.release();
}

void ScriptedHost::answer(const std::string& part, Rows rows)
{
    answers_.insert(answers_.begin(), {part, std::move(rows)});
}

void ScriptedHost::statement(const std::string& text)
{
    log.push_back(text);
    if (!failingStatement) return;
    if (*failingStatement == 0) {
        failingStatement.reset();
        throw Error(3000, "Document", "the disk is full");
    }
    --*failingStatement;
}

Ref<Object> ScriptedHost::makeDocument()
{
    auto document = puppet("Document");
    document->on("Execute", [this](std::span<Value> a) {
        statement(toText(a[0]));
        return Value();
    });
    document->on("GetDataSet", [this](std::span<Value> a) -> Value {
        const std::string text = toText(a[0]);
        statement(text);
        for (const auto& [part, rows] : answers_) {
            if (text.find(part) != std::string::npos) return recordSet(rows);
        }
        return recordSet({});
    });
    document->on("GetLock", [this](std::span<Value> a) -> Value {
        const std::string what = toText(a[0]) + " " + toText(a[1]);
        if (lockHeldByAnother) {
            log.push_back("Lock refused " + what);
            throw Error(70, "Document.GetLock", "held by another");
        }
        return makeRef<LockDouble>(*this, what);
    });
    for (const char* name : {"ForceUpdate", "CommitTrans", "RollbackTrans"}) {
        document->on(name, [this, name](std::span<Value>) {
            log.emplace_back(name);
            return Value();
        });
    }
    document->on("BeginTrans", [this](std::span<Value>) {
        log.emplace_back("BeginTrans");
        return Value(!transactionOpen);
    });
    document->on("Setting", [this](std::span<Value> a) {
        const auto found = settings.find(toText(a[0]));
        return found == settings.end() ? Value("") : found->second;
    });
    document->onPut("Setting", [this](std::span<Value> a) {
        settings[toText(a[0])] = a[1];
        log.push_back("Setting " + toText(a[0]) + " = " + shown(a[1]));
        return Value();
    });
    document->on("Preferences", [this](std::span<Value> a) {
        const auto found = preferences.find(toText(a[0]) + "/" + toText(a[1]));
        return found == preferences.end() ? Value(false) : found->second;
    });
    document->onPut("Preferences", [this](std::span<Value> a) {
        preferences[toText(a[0]) + "/" + toText(a[1])] = a[2];
        return Value();
    });
    return document;
}

Ref<Object> ScriptedHost::makeProvider()
{
    auto provider = puppet("Provider");
    provider->on("GetDocumentType", [this](std::span<Value>) { return Value(documentType); });
    provider->on("VToSQL", [](std::span<Value> a) {
        return Value("<" + toText(a[1]) + ":" + shown(a[0]) + ">");
    });
    provider->on("Codes", [this](std::span<Value> a) -> Value {
        auto list = makeRef<Collection>();
        for (const std::int32_t id : codes[toText(a[0])]) {
            auto code = puppet("Code");
            code->holds("Id", id);
            list->append(code);
        }
        return list;
    });
    return provider;
}

Ref<Object> ScriptedHost::makeShell()
{
    auto shell = puppet("Shell");
    shell->on("MsgBox", [this](std::span<Value> a) {
        log.push_back("MsgBox: " + toText(a[0]) + " | " + toText(a[1]));
        return Value();
    });
    shell->on("MsgPrompt", [this](std::span<Value> a) {
        log.push_back("MsgPrompt: " + toText(a[0]) + " | " + toText(a[1]) + " | " + toText(a[2]));
        return Value(saysYes ? 6 : 7);
    });
    auto page = puppet("Page");
    page->on("SetModified", [this](std::span<Value>) {
        log.emplace_back("Page.SetModified");
        return Value();
    });
    shell->holds("Page", page);
    for (const char* name : {"ErrorUser", "ErrorUnexpected"}) {
        shell->on(name, [this, name](std::span<Value> a) {
            std::string line = name + std::string(": ") + toText(a[0]);
            for (const auto& more : a.subspan(1)) line += " | " + shown(more);
            log.push_back(line);
            return Value();
        });
    }
    shell->on("Navigate", [this](std::span<Value> a) {
        log.push_back("Navigate: " + toText(a[0]) + (a.size() > 1 ? " | " + shown(a[1]) : ""));
        return Value();
    });
    const auto engine = makeDialogEngine();
    shell->on("Dialog", [this, engine](std::span<Value> a) {
        return a.empty() ? Value(engine) : dialogValues[toText(a[0])];
    });
    shell->onPut("Dialog", [this](std::span<Value> a) {
        dialogValues[toText(a[0])] = a[1];
        log.push_back("Dialog " + toText(a[0]) + " = " + shown(a[1]));
        return Value();
    });
    return shell;
}

Ref<Object> ScriptedHost::makeDialogEngine()
{
    auto engine = puppet("Dialog");
    engine->on("Handler", [this](std::span<Value>) { return dialogHandler_; });
    engine->onPut("Handler", [this](std::span<Value> a) {
        dialogHandler_ = a[0];
        return Value();
    });
    engine->on("ReturnValue", [this](std::span<Value>) { return dialogReturnValue_; });
    engine->onPut("ReturnValue", [this](std::span<Value> a) {
        dialogReturnValue_ = a[0];
        return Value();
    });
    engine->on("GetRestoreTask", [](std::span<Value>) -> Value {
        auto task = puppet("Task");
        task->holds("Url", "events\\findevent.html");
        return task;
    });
    for (const char* name : {"ClearClipboard", "SetRestorePoint", "Restore", "Close", "GoNext"}) {
        engine->on(name, [this, name](std::span<Value> a) {
            log.push_back("Dialog." + std::string(name) + (a.empty() ? "" : " " + shown(a[0])));
            if (name == std::string("ClearClipboard")) dialogValues.clear();
            return Value();
        });
    }
    engine->onPut("WaitForClose", [this](std::span<Value> a) {
        dialogIsWaitedFor_ = toBool(a[0]);
        return Value();
    });
    engine->onPut("NextPage", [this](std::span<Value> a) {
        log.push_back("Dialog.NextPage = " + shown(a[0]));
        return Value();
    });
    return engine;
}

Ref<Object> ScriptedHost::makeSecurity()
{
    auto user = puppet("User");
    user->holds("Id", 5).holds("Name", "Anna");
    auto security = puppet("Security");
    security->holds("CurrentUser", user);
    security->on("IsAllowed", [this](std::span<Value> a) {
        return Value(!deniedRights.contains(toText(a[0])));
    });
    return security;
}

Ref<Object> ScriptedHost::makeModules()
{
    auto configuration = puppet("Configuration");
    configuration->on("getValue", [this](std::span<Value>) { return Value(requiredSchema); });
    auto events = puppet("EventsModule");
    events->holds("Configuration", configuration).holds("Path", "C:\\Events\\");
    events->on("Objects", [this](std::span<Value> a) { return Value(roots_.at(toText(a[0]))); });
    events->on("ShowDialog", [this](std::span<Value> a) {
        log.push_back("ShowDialog " + toText(a[0]) + " " + shown(a[1]) + " " + shown(a[2]) + " " +
                      toText(a[3]) + " " + toText(a[4]));
        dialogReturnValue_ = {};
        if (!std::exchange(dialogIsWaitedFor_, true)) return Value();
        dialogReturnValue_ = dialogPage ? dialogPage() : Value(false);
        Value closing[] = {Value("events/page"), Value(false)};
        invokeNamed(dialogHandler_.object(), "OnDialogClose", CallKind::method, closing);
        EXPECT_FALSE(toBool(closing[1])) << "a top-level dialog lets its window close";
        return Value();
    });
    events->on("LoadDialog", [this](std::span<Value> a) {
        log.push_back("LoadDialog " + toText(a[0]));
        return Value();
    });
    auto donorManage = puppet("DonorManage");
    for (const char* name : {"GetDonor", "GetSmallDonor"}) {
        donorManage->on(name,
                        [this](std::span<Value> a) { return donorObject(*this, toInt32(a[0])); });
    }
    auto mailings = puppet("MailingManage");
    for (const char* name :
         {"OpenMailingDialog", "AddToMailingList", "CloseMailingDialog", "StartMailingProcess"}) {
        mailings->on(name, [this, name](std::span<Value> a) {
            std::string line = name;
            for (const auto& argument : a) line += " " + shown(argument);
            statement(line);
            return Value();
        });
    }
    auto donorDialogs = puppet("DonorDialogs");
    donorDialogs->on("NewDialog", [this](std::span<Value> a) {
        EXPECT_EQ(toText(a[0]), "getdonor");
        return Value(makeDonorChooser());
    });
    auto donor = puppet("DonorModule");
    donor->holds("DonorManage", donorManage).holds("MailingManage", mailings);
    donor->holds("Dialogs", donorDialogs);
    auto actions = puppet("Actions");
    actions->on("NewActionCriteria", [](std::span<Value>) -> Value {
        auto criteria = puppet("ActionCriteria");
        criteria->holds("EntityType", "").holds("EntityId", 0);
        return criteria;
    });
    actions->on("GetAssignments", [this](std::span<Value> a) -> Value {
        statement("GetAssignments " + toText(get(a[0].object(), "EntityType")) + " " +
                  toText(get(a[0].object(), "EntityId")));
        auto assignment = puppet("Assignment");
        assignment->holds("Id", 77);
        auto found = makeRef<Collection>();
        found->append(assignment);
        return found;
    });
    actions->on("DeleteAssignment", [this](std::span<Value> a) {
        statement("DeleteAssignment " + toText(a[0]));
        return Value();
    });
    actions->on("NewNote", [this](std::span<Value>) -> Value {
        auto note = puppet("Note");
        for (const char* name : {"DonorId", "Group", "Reference", "Text"}) note->holds(name, "");
        note->on("Save", [this, note = note.get()](std::span<Value>) {
            const auto said = [&](const char* name) {
                return toText(get(Ref<Object>(note), name));
            };
            statement("Note " + said("DonorId") + " " + said("Group") + " " + said("Reference") +
                      ": " + said("Text"));
            return Value();
        });
        return note;
    });
    auto modules = puppet("Modules");
    modules->holds("Events", events).holds("donor", donor).holds("Donation", makeDonation());
    modules->holds("Actions", actions).holds("Quillmere", makeQuillmere());
    return modules;
}

Ref<Object> ScriptedHost::makeDonorChooser()
{
    auto chooser = puppet("DonorChooser");
    for (const char* name :
         {"Title", "Heading", "Description", "AllowNew", "ShowAll", "AllowAdvanced"}) {
        chooser->onPut(name, [this, name](std::span<Value> a) {
            log.push_back("getdonor " + std::string(name) + " = " + shown(a[0]));
            return Value();
        });
    }
    chooser->on("Create", [this](std::span<Value>) {
        log.emplace_back("getdonor shown");
        return Value(chosenDonor.has_value());
    });
    chooser->on("DonorId", [this](std::span<Value>) { return Value(chosenDonor.value()); });
    return chooser;
}

Ref<Object> ScriptedHost::makeDonation()
{
    auto wizards = puppet("Wizards");
    wizards->on("StartDonationWizard", [this](std::span<Value> a) {
        EXPECT_TRUE(a.empty());
        log.emplace_back("StartDonationWizard");
        return Value();
    });
    auto donations = puppet("Donations");
    donations->holds("Wizards", wizards).on("Delete", [this](std::span<Value> a) {
        statement("Donation.Delete " + toText(a[0]));
        return Value();
    });
    auto donation = puppet("DonationModule");
    donation->holds("Donations", donations);
    return donation;
}

Ref<Object> ScriptedHost::makeQuillmere()
{
    auto reports = puppet("Reports");
    reports->on("GetReportTaskString", [](std::span<Value> a) {
        return Value("report:" + toText(a[0]) + "|" + toText(a[1]) + "|" + toText(a[2]));
    });
    auto quillmere = puppet("Quillmere");
    quillmere->holds("Reports", reports);
    return quillmere;
}

Ref<Object> ScriptedHost::makeUtils()
{
    auto utils = puppet("Utils");
    utils->on("DoEvents", [this](std::span<Value>) {
        log.emplace_back("DoEvents");
        return Value();
    });
    utils->on("GetGuid", [](std::span<Value>) { return Value("{1}"); });
    return utils;
}

} // namespace qmevents::testing
