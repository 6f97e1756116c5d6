#include "com/incoming_arguments.h"

#include "com/errors.h"
#include "com/variant.h"

namespace qmevents::com {
namespace {

// More than any member takes; a count beyond it is no count.
constexpr UINT mostArguments = 255;

const DISPPARAMS& required(const DISPPARAMS* parameters)
{
    if (!parameters) throw CallRefused{E_INVALIDARG, 0, "The call has no DISPPARAMS"};
    return *parameters;
}

HRESULT argumentResult(const Error& error)
{
    return error.is(ErrorNumber::overflow) ? DISP_E_OVERFLOW : DISP_E_TYPEMISMATCH;
}

CallRefused refusedArgument(const Error& error, UINT place, UINT count)
{
    return {argumentResult(error), place,
            error.description() + ": argument " + std::to_string(count - place)};
}

bool assigns(WORD flags) { return (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0; }

} // namespace

IncomingArguments::IncomingArguments(const DISPPARAMS* parameters, WORD flags, const Member* member)
    : parameters_(required(parameters))
{
    constexpr WORD known =
        DISPATCH_METHOD | DISPATCH_PROPERTYGET | DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
    if (!(flags & known)) throw CallRefused{E_INVALIDARG, 0, "The call is neither read nor write"};
    checkShape();
    takePositional();
    for (UINT place = 0; place < parameters_.cNamedArgs; ++place) takeNamed(place, member);

    if (!assigns(flags)) {
        kind_ = (flags & DISPATCH_METHOD) ? CallKind::method : CallKind::get;
        return;
    }
    if (isAssigned_) {
        values_.push_back(std::move(assigned_));
    } else if (values_.empty()) {
        throw CallRefused{DISP_E_PARAMNOTOPTIONAL, 0, "The value to be assigned is missing"};
    }
    // A caller that does not know the member may leave the choice to us.
    const bool both = (flags & DISPATCH_PROPERTYPUT) && (flags & DISPATCH_PROPERTYPUTREF);
    const bool byReference = both ? values_.back().isObject() : !(flags & DISPATCH_PROPERTYPUT);
    kind_ = byReference ? CallKind::putReference : CallKind::put;
}

void IncomingArguments::checkShape() const
{
    const auto& [arguments, names, count, namedCount] = parameters_;
    if (count > mostArguments) {
        throw CallRefused{DISP_E_BADPARAMCOUNT, 0, "The call has too many arguments"};
    }
    if (namedCount > count) {
        throw CallRefused{DISP_E_BADPARAMCOUNT, 0, "The call names more arguments than it has"};
    }
    if ((count > 0 && !arguments) || (namedCount > 0 && !names)) {
        throw CallRefused{E_INVALIDARG, 0, "The call counts arguments that are not there"};
    }
}

Value IncomingArguments::read(UINT place) const
{
    try {
        return fromVariant(parameters_.rgvarg[place]);
    } catch (const Error& error) {
        throw refusedArgument(error, place, parameters_.cArgs);
    }
}

// Those without a name stand behind the named ones, the last first.
void IncomingArguments::takePositional()
{
    for (UINT place = parameters_.cArgs; place-- > parameters_.cNamedArgs;) {
        values_.push_back(read(place));
        if (V_VT(&parameters_.rgvarg[place]) & VT_BYREF) {
            variables_.push_back({place, values_.size() - 1, values_.back()});
        }
    }
}

void IncomingArguments::takeNamed(UINT place, const Member* member)
{
    const DISPID name = parameters_.rgdispidNamedArgs[place];
    if (name == DISPID_PROPERTYPUT) {
        assigned_ = read(place);
        isAssigned_ = true;
        return;
    }
    const std::size_t positional = parameters_.cArgs - parameters_.cNamedArgs;
    const auto index = static_cast<std::size_t>(name);
    if (name < 0 || !member || index >= member->parameters.size()) {
        throw CallRefused{DISP_E_PARAMNOTFOUND, place, "The member has no argument of this name"};
    }
    if (index < positional || (index < values_.size() && !values_[index].isMissing())) {
        throw CallRefused{DISP_E_PARAMNOTFOUND, place,
                          "The argument " + member->parameters[index].name + " is given twice"};
    }
    if (index >= values_.size()) values_.resize(index + 1, Missing{});
    values_[index] = read(place);
    if (V_VT(&parameters_.rgvarg[place]) & VT_BYREF) {
        variables_.push_back({place, index, values_[index]});
    }
}

void IncomingArguments::writeBack()
{
    for (const auto& [place, argument, before] : variables_) {
        if (sameValue(values_[argument], before)) continue;
        try {
            assignReference(parameters_.rgvarg[place], values_[argument]);
        } catch (const Error& error) {
            throw refusedArgument(error, place, parameters_.cArgs);
        }
    }
}

} // namespace qmevents::com
