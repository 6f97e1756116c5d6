#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/host_part.h"

namespace qmevents {

/// `App.Document`, the open database: the add-in's one way to the data.
class Document : public HostPart {
public:
    using HostPart::HostPart;

    /// Runs a statement that changes data or the schema, in the dialect of the open database.
    void execute(const std::string& sql) const { call("Execute", sql); }
    /// Runs a SELECT; the record set that the host gives, or nothing.
    Ref<Object> dataSet(const std::string& sql) const { return toObject(call("GetDataSet", sql)); }
    /// The host's lock object for one record; the host reports a conflict itself.
    Ref<Object> lock(const std::string& entity, std::int32_t id) const
    {
        return toObject(call("GetLock", entity, id));
    }
    /// Makes the host read again what it shows.
    void forceUpdate() const { call("ForceUpdate"); }

    /// True when a transaction was begun, which the caller must then end.
    bool beginTrans() const { return toBool(call("BeginTrans")); }
    void commitTrans() const { call("CommitTrans"); }
    void rollbackTrans() const { call("RollbackTrans"); }

    /// A preference of the user; one never stored reads as False.
    Value preference(const std::string& section, const std::string& key) const
    {
        return get("Preferences", section, key);
    }
    void setPreference(const std::string& section, const std::string& key, Value value) const
    {
        put("Preferences", section, key, std::move(value));
    }
    /// A text kept with the database; empty when never stored.
    Value setting(const std::string& name) const { return get("Setting", name); }
    void setSetting(const std::string& name, Value value) const
    {
        put("Setting", name, std::move(value));
    }
};

/// A transaction for a scope. Rolls back unless commit() was reached. One that the host did not
/// begin, because another is open, is left alone.
class Transaction {
public:
    explicit Transaction(Document document)
        : document_(std::move(document)), begun_(document_.beginTrans())
    {
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();
    void commit()
    {
        if (begun_) document_.commitTrans();
        begun_ = false;
    }

private:
    Document document_;
    bool begun_;
};

} // namespace qmevents
