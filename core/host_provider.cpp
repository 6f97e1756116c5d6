#include "core/host_provider.h"

#include "automation/error.h"
#include "core/host.h"

namespace qmevents {

bool Provider::duplicateErrorOnInsert(Value& first, Value& second) const
{
    Value arguments[] = {first, second};
    const bool duplicate =
        toBool(invokeNamed(object(), "DuplicateErrorOnInsert", CallKind::method, arguments));
    first = std::move(arguments[0]);
    second = std::move(arguments[1]);
    return duplicate;
}

bool Provider::hasCode(const std::string& list, std::int32_t id) const
{
    const auto items = codes(list);
    if (!items) return false;
    Value item;
    for (const auto walk = items->enumerate(); walk->next(item);) {
        if (toInt32(qmevents::get(toObject(item), "Id")) == id) return true;
    }
    return false;
}

std::string literal(Value value, Kind kind, std::string_view name)
{
    if (value.isText() && value.text().find('\0') != std::string::npos) {
        throw Error(ErrorNumber::invalidCall,
                    "The text" + (name.empty() ? "" : " of " + std::string(name)) +
                        " holds a NUL character, which cannot be stored.");
    }
    return host().provider().valueToSql(std::move(value), kind);
}

const std::string& DialectText::forDocument() const
{
    return host().provider().isSqlServer() ? sqlServer : jet;
}

} // namespace qmevents
