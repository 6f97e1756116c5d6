#pragma once

#include <string_view>

#include "com/platform.h"

namespace qmevents::com {

/// The type information of the dispatch interface of the class `className` ("cEvent"), from the
/// type library inside this component's own file. TYPE_E_ELEMENTNOTFOUND for a class that it does
/// not describe, and what the system says when the library cannot be read.
HRESULT typeInfoOf(std::string_view className, ITypeInfo** info) noexcept;

/// The same of the class itself, which names its default interface.
HRESULT classInfoOf(std::string_view className, ITypeInfo** info) noexcept;

} // namespace qmevents::com
