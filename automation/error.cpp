#include "automation/error.h"

namespace qmevents {

std::string_view standardText(ErrorNumber number)
{
    switch (number) {
    case ErrorNumber::invalidCall:
        return "Invalid procedure call or argument";
    case ErrorNumber::overflow:
        return "Overflow";
    case ErrorNumber::outOfMemory:
        return "Out of memory";
    case ErrorNumber::subscriptOutOfRange:
        return "Subscript out of range";
    case ErrorNumber::divisionByZero:
        return "Division by zero";
    case ErrorNumber::typeMismatch:
        return "Type mismatch";
    case ErrorNumber::internal:
        return "Internal error";
    case ErrorNumber::permissionDenied:
        return "Permission denied";
    case ErrorNumber::objectNotSet:
        return "Object variable not set";
    case ErrorNumber::invalidNull:
        return "Invalid use of Null";
    case ErrorNumber::readOnlyProperty:
        return "Property is read-only";
    case ErrorNumber::objectRequired:
        return "Object required";
    case ErrorNumber::noSuchMember:
        return "Object doesn't support this property or method";
    case ErrorNumber::argumentNotOptional:
        return "Argument not optional";
    case ErrorNumber::wrongArgumentCount:
        return "Wrong number of arguments";
    case ErrorNumber::notACollection:
        return "Object not a collection";
    case ErrorNumber::duplicateKey:
        return "This key is already associated with an element of this collection";
    }
    return "Unknown error";
}

Error::Error(ErrorNumber number) : Error(number, std::string(standardText(number))) {}

Error Error::with(ErrorNumber number, std::string_view detail)
{
    return Error(number, std::string(standardText(number)) + " (" + std::string(detail) + ")");
}

} // namespace qmevents
