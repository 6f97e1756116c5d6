#pragma once

#include <string_view>

#include "automation/value.h"
#include "com/com_ptr.h"

namespace qmevents::com {

/// An owned VARIANT.
class Variant : public VARIANT {
public:
    Variant() noexcept { VariantInit(this); }
    Variant(Variant&& other) noexcept : VARIANT(other) { VariantInit(&other); }
    Variant& operator=(Variant&& other) noexcept
    {
        std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other));
        return *this;
    }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(this); }

    /// Gives the content away.
    VARIANT detach() noexcept
    {
        const VARIANT content = *this;
        VariantInit(this);
        return content;
    }
};

/// `value` as the VARIANT of the same kind; std::bad_alloc when memory runs out.
Variant toVariant(const Value& value);

/// What `variant` holds, references followed. A host object without a name of its own is called
/// `label` in messages. Error 13 for what no Value can hold (records, error values, interfaces that
/// are no automation objects, references to nothing), 6 for dates outside the years 100 to 9999.
///
/// Integers become 16- or 32-bit ones where they fit and doubles otherwise; decimals become
/// currency where that is exact and doubles otherwise.
Value fromVariant(const VARIANT& variant, std::string_view label = {});

/// Writes a by-reference result into what `target`, a VT_BYREF, refers to, converted to the type of
/// the variable, whose old content is freed. On an error it is left as it was.
void assignReference(const VARIANT& target, const Value& value);

/// Whether both are of one kind and content; objects and arrays by identity.
bool sameValue(const Value& a, const Value& b);

} // namespace qmevents::com
