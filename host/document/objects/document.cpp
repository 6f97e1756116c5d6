#include "host/document/objects/document.h"

#include "automation/clock.h"
#include "automation/describe.h"
#include "automation/locale.h"
#include "host/document/objects/stored_value.h"

namespace refhost {

using qmevents::arg;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;

namespace {

std::int64_t number(std::int32_t id) { return id; }

const std::string& textOf(const HostValue& value) { return std::get<std::string>(value); }

} // namespace

const Members& Document::members() const
{
    static const Members table =
        describe<Document>("The open database.")
            .method("Execute", &Document::Execute, {arg("Statement")},
                    "Runs a statement that changes data or the schema.")
            .method("GetDataSet", &Document::GetDataSet, {arg("Statement")},
                    "Runs a SELECT and gives its rows.")
            .method("GetLock", &Document::GetLock, {arg("Kind"), arg("Id")},
                    "Locks a record for as long as the object given is held; error 70 when "
                    "somebody else has it, whom the user has then been told.")
            .method("ForceUpdate", &Document::ForceUpdate,
                    "Makes what is shown read its data again.")
            .method("BeginTrans", &Document::BeginTrans,
                    "Begins a transaction; False when one is open already.")
            .method("CommitTrans", &Document::CommitTrans, "Keeps what the transaction did.")
            .method("RollbackTrans", &Document::RollbackTrans, "Undoes what the transaction did.")
            .property("Preferences", &Document::preference, &Document::setPreference,
                      {arg("Section"), arg("Name")},
                      "What a user prefers; False when it was never stored.")
            .property("Setting", &Document::setting, &Document::setSetting, {arg("Name")},
                      "A text kept with the database; empty when it was never stored.");
    return table;
}

void Document::Execute(const std::string& sql)
{
    lastFailure_.reset();
    try {
        context_->sql().execute(sql);
    } catch (const Error& error) {
        lastFailure_ = error; // for the provider to tell a duplicate key from other causes
        throw;
    }
}

Ref<RecordSet> Document::GetDataSet(const std::string& sql)
{
    return makeRef<RecordSet>(context_->sql().query(sql));
}

Ref<LockObject> Document::GetLock(const std::string& kind, std::int32_t id)
{
    const LockedRecord record{qmevents::text::lower(kind), id};
    const LockHolder taker{context_->lockSession, context_->user.name, qmevents::Clock::now()};
    if (id < 1) return makeRef<LockObject>(nullptr, record, taker);
    const auto holder = context_->locks->acquire(record, taker);
    if (!holder) return makeRef<LockObject>(context_->locks, record, taker);

    const std::string since = qmevents::Locale::current().text(holder->since);
    const std::string inUse = "in use by " + holder->userName + " since " + since + ".";
    context_->shell()->MsgBox(
        "This " + record.kind + " is " + inUse + "\r\nPlease try again later.", "Record In Use");
    throw Error(static_cast<int>(ErrorNumber::permissionDenied), "Document.GetLock",
                "The " + record.kind + " " + std::to_string(id) + " is " + inUse);
}

void Document::ForceUpdate() { context_->frontEnd().refresh(); }

bool Document::BeginTrans()
{
    if (context_->sql().inTransaction()) return false;
    context_->sql().begin();
    return true;
}

void Document::CommitTrans() { context_->sql().commit(); }

void Document::RollbackTrans() { context_->sql().rollback(); }

Value Document::preference(const std::string& section, const std::string& key) const
{
    const auto rows = context_->sql().hostQuery(
        "SELECT type, value FROM host_preferences WHERE user_id = ? AND section = ? AND name = ?",
        {number(context_->user.id), section, key});
    if (rows.empty()) return Value(false);
    return restored({textOf(rows[0][0]), textOf(rows[0][1])});
}

void Document::setPreference(const std::string& section, const std::string& key, const Value& value)
{
    const auto kept = stored(value);
    const HostValue user = number(context_->user.id);
    if (!kept) {
        context_->sql().hostExecute(
            "DELETE FROM host_preferences WHERE user_id = ? AND section = ? AND name = ?",
            {user, section, key});
        return;
    }
    context_->sql().hostExecute("INSERT OR REPLACE INTO host_preferences "
                                "(user_id, section, name, type, value) VALUES (?, ?, ?, ?, ?)",
                                {user, section, key, kept->type, kept->text});
}

std::string Document::setting(const std::string& name) const
{
    const auto rows =
        context_->sql().hostQuery("SELECT value FROM host_settings WHERE name = ?", {name});
    return rows.empty() ? std::string() : textOf(rows[0][0]);
}

void Document::setSetting(const std::string& name, const std::string& value)
{
    context_->sql().hostExecute("INSERT OR REPLACE INTO host_settings (name, value) VALUES (?, ?)",
                                {name, value});
}

} // namespace refhost
