#pragma once

#include <string>

#include "automation/members.h"

namespace qmevents {

/// A link that the host shows and runs.
class ApplicationLink : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "ApplicationLink";
    const Members& members() const override;

    std::string Key;
    std::string Title;
    std::string Description;
    std::string Language = "vbscript";
    std::string Script; ///< A script line of the host.
    std::string Operation;
};

/// Names one record by table, key column and key value.
class EntityKeyLock : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "EntityKeyLock";
    const Members& members() const override;

    void Init(const std::string& keyTable, const std::string& keyField);

    std::string table;
    std::string Keyfield;
    std::string keyvalue;
};

} // namespace qmevents
