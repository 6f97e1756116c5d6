#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "automation/collection.h"
#include "tests/support/puppet.h"
#include "tests/support/record_sets.h"

namespace qmevents::testing {

/// A host for tests of the add-in: it records what the add-in does and answers as scripted.
/// Literals show their kind: number 7 as a key of another row is "<2:7>". While it lives, this
/// thread's add-in is initialised with it.
class ScriptedHost {
public:
    ScriptedHost();
    ScriptedHost(const ScriptedHost&) = delete;
    ScriptedHost& operator=(const ScriptedHost&) = delete;
    ~ScriptedHost();

    /// Everything that happened, in order: statements as they are, others as "MsgBox: text |
    /// title", "ErrorUser: text", "ErrorUnexpected: text", "Navigate: url", "Lock event 7", "Unlock
    /// event 7", "BeginTrans", "ForceUpdate", "DoEvents", "Note 9 Event 5: text" and so on.
    std::vector<std::string> log;
    std::int32_t documentType = 1;
    std::set<std::string> deniedRights;
    bool lockHeldByAnother = false;
    bool transactionOpen = false;
    std::optional<std::size_t> failingStatement; ///< The nth statement from here (0 is the next).
    std::map<std::string, Value> session;
    std::map<std::string, Value> preferences; ///< By "section/key".
    std::map<std::string, Value> settings;
    std::map<std::string, std::set<std::int32_t>> codes; ///< Ids by code list.
    std::map<std::int32_t, std::string> donors;          ///< Display names by id.
    Value noDonor = Value::nothing(); ///< What any other is read as; a text is raised.
    std::map<std::string, Value> dialogValues;
    /// What the page in a dialog does before it closes; the return value. A dialog that nobody
    /// waits for stays open.
    std::function<Value()> dialogPage;
    bool saysYes = false;                    ///< The answer to every question.
    std::optional<std::int32_t> chosenDonor; ///< What the donor chooser gives; cancelled without.
    std::int32_t requiredSchema = 2;

    /// Queries that contain `part` answer with `rows`; the newest rule that fits counts.
    void answer(const std::string& part, Rows rows);

    Ref<Object> app() const { return app_; }
    Ref<Object> root(const std::string& name) const { return roots_.at(name); }
    Ref<Object> store() const { return getObject(root("Events"), "EventsManage"); }
    Ref<Object> lists() const { return getObject(root("Events"), "ListManage"); }
    Ref<Object> commands() const { return getObject(root("Workflow"), "Events"); }

    /// What has been logged since the last call.
    std::vector<std::string> takeLog() { return std::exchange(log, {}); }

private:
    Ref<Object> makeDocument();
    Ref<Object> makeProvider();
    Ref<Object> makeShell();
    Ref<Object> makeDialogEngine();
    Ref<Object> makeDonorChooser();
    Ref<Object> makeDonation();
    Ref<Object> makeQuillmere();
    Ref<Object> makeSecurity();
    Ref<Object> makeModules();
    Ref<Object> makeEventsModule();
    Ref<Object> makeDonorModule();
    Ref<Object> makeActions();
    Ref<Object> makeUtils();
    void statement(const std::string& text);
    void closeDialog(const Value& returnValue);

    Ref<Puppet> app_;
    std::map<std::string, Ref<Object>> roots_;
    std::vector<std::pair<std::string, Rows>> answers_;
    Value dialogHandler_;
    Value dialogReturnValue_;
    bool dialogIsWaitedFor_ = true;
    bool dialogIsLeftOpen_ = false;
};

using Log = std::vector<std::string>;

} // namespace qmevents::testing
