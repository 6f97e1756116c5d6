#include "tests/support/scripted_host.h"

#include "tests/support/shown_value.h"
#include "tests/support/transport.h"

namespace qmevents::testing {
namespace {

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

} // namespace

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
    app_->on("CreateObject", [](std::span<Value>) { return Value::nothing(); });
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
