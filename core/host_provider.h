#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/host_part.h"

namespace qmevents {

/// How a value is written into statement text.
enum class Kind : std::int32_t {
    date = 1,     ///< Date or date-time.
    key = 2,      ///< Key of another row.
    number = 3,   ///< Amounts, counts, user ids, a row's own id.
    text = 5,     ///< Text.
    listName = 6, ///< Name of a lookup-list item.
    yesNo = 7,    ///< Yes or no.
};

/// `App.Provider`: what kind of database is open, and how values are written for it.
class Provider : public HostPart {
public:
    using HostPart::HostPart;

    std::int32_t documentType() const { return toInt32(call("GetDocumentType")); }
    /// Document type 1 is SQL Server, every other number Jet.
    bool isSqlServer() const { return documentType() == 1; }
    std::string valueToSql(Value value, Kind kind) const
    {
        return toText(call("VToSQL", std::move(value), static_cast<std::int32_t>(kind)));
    }
    /// After a failed insert: whether a duplicate key was the cause. The host writes details into
    /// both arguments.
    bool duplicateErrorOnInsert(Value& first, Value& second) const;
    /// The host's code list ("fund", "campaign" or "giftsource"), hidden codes included.
    Ref<Object> codes(const std::string& list) const { return toObject(call("Codes", list, true)); }
    /// Whether the code list holds an item with this id.
    bool hasCode(const std::string& list, std::int32_t id) const;
    Ref<Object> utils() const { return part("Utils"); }
};

/// `value` as a literal of the open database; quotes and date marks are the host's choice. Every
/// value that enters statement text passes through here. Error 5 for a text with a NUL character,
/// at which many a host would cut it; `name` tells in the error what the value is.
std::string literal(Value value, Kind kind, std::string_view name = {});

/// The two texts of a statement that the databases need in different words.
struct DialectText {
    std::string sqlServer;
    std::string jet;
    /// The text for the open database.
    const std::string& forDocument() const;
};

} // namespace qmevents
