#pragma once

#include <string_view>

#include "automation/value.h"
#include "com/platform.h"

// Values in memory whose type a VARTYPE tells: the content of a VARIANT, a variable passed by
// reference, an element of a safe array.
namespace qmevents::com {

/// How deep variants may lie in references and arrays. Nothing sound comes near it; a variant that
/// refers to itself would otherwise never end.
constexpr int deepestNesting = 64;

/// Error 13 that says why a value cannot cross the boundary.
[[noreturn]] void throwNotCarried(std::string_view why);
/// The Automation error for a failed conversion of the system's.
void checkConversion(HRESULT result);

Value readVariant(const VARIANT& variant, std::string_view label, int depth);
/// Reads a value of `type` at `where`, which must not be null.
Value readAt(VARTYPE type, const void* where, std::string_view label, int depth);
/// Converts `value` to `type` and replaces with it what stands at `where`, which is freed.
void writeAt(VARTYPE type, void* where, const Value& value);

/// The bytes of one element of `type`; 0 for types that are not carried.
std::size_t sizeOf(VARTYPE type);
Value fromSafeArray(SAFEARRAY* array, VARTYPE type, int depth);
/// A safe array with elements of `type`, which the caller destroys.
SAFEARRAY* toSafeArray(const Array& array, VARTYPE type);

} // namespace qmevents::com
