#pragma once

#include <optional>
#include <string>

#include "automation/error.h"
#include "host/app/session_context.h"
#include "host/document/objects/record_lock.h"
#include "host/document/objects/record_set.h"

namespace refhost {

/// `App.Document`: the open database. Every statement fails with the engine's error, which names
/// the place in the text; nothing is swallowed.
class Document : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Document";
    const Members& members() const override;

    explicit Document(SharedContext context) : context_(std::move(context)) {}

    /// Why the last Execute failed, if it did.
    const std::optional<qmevents::Error>& lastFailure() const { return lastFailure_; }

    // The late-bound face.
    void Execute(const std::string& sql);
    Ref<RecordSet> GetDataSet(const std::string& sql);
    /// When another session holds the record, the user is told and error 70 raised. A record that
    /// has no id yet (below 1) is known to nobody else and always granted.
    Ref<LockObject> GetLock(const std::string& kind, std::int32_t id);
    void ForceUpdate();
    bool BeginTrans(); ///< False when a transaction is open already.
    void CommitTrans();
    void RollbackTrans();
    /// A preference of the signed-in user, False when it was never stored. What is stored keeps
    /// its type; an empty or null value forgets it.
    Value preference(const std::string& section, const std::string& key) const;
    void setPreference(const std::string& section, const std::string& key, const Value& value);
    /// A text kept with the database, empty when it was never stored.
    std::string setting(const std::string& name) const;
    void setSetting(const std::string& name, const std::string& value);

private:
    SharedContext context_;
    std::optional<qmevents::Error> lastFailure_;
};

} // namespace refhost
