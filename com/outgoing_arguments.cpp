#include "com/outgoing_arguments.h"

namespace qmevents::com {
namespace {

// Hosts take no object by reference, and an omitted argument is no variable.
bool goesByReference(const Value& value, CallKind kind)
{
    return kind == CallKind::method && !value.isMissing() &&
           (!value.isObject() || value.isNothing());
}

} // namespace

OutgoingArguments::OutgoingArguments(std::span<Value> values, CallKind kind)
    : values_(values), contents_(values.size()), passed_(values.size())
{
    for (std::size_t i = 0; i < values.size(); ++i) {
        const std::size_t place = values.size() - 1 - i;
        contents_[place] = toVariant(values[i]);
        if (goesByReference(values[i], kind)) {
            V_VT(&passed_[place]) = VT_BYREF | VT_VARIANT;
            V_VARIANTREF(&passed_[place]) = &contents_[place];
        } else {
            passed_[place] = contents_[place];
        }
    }
    parameters_.rgvarg = passed_.data();
    parameters_.cArgs = static_cast<UINT>(passed_.size());
    if (kind == CallKind::put || kind == CallKind::putReference) {
        parameters_.rgdispidNamedArgs = &assigned_;
        parameters_.cNamedArgs = 1;
    }
}

void OutgoingArguments::takeResults()
{
    for (std::size_t i = 0; i < values_.size(); ++i) {
        const std::size_t place = values_.size() - 1 - i;
        if (!(V_VT(&passed_[place]) & VT_BYREF)) continue;
        // An array that comes back is a copy; only what changed counts as a result.
        Value result = fromVariant(contents_[place]);
        if (!sameValue(result, values_[i])) values_[i] = std::move(result);
    }
}

} // namespace qmevents::com
