#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "com/platform.h"

// Texts at the boundary: UTF-8 inside, UTF-16 in BSTRs outside. Embedded zeros and characters
// beyond the basic plane survive; what is no valid text on its side (stray bytes, half a surrogate
// pair) becomes U+FFFD.
namespace qmevents::com {

/// Makes every BSTR of this component. Tests replace it to see what happens when memory runs out.
using TextAllocator = BSTR(WINAPI*)(const OLECHAR* text, UINT length);
extern TextAllocator allocateText;

/// An owned BSTR, possibly null, which means the empty text.
class Bstr {
public:
    Bstr() noexcept = default;
    /// std::bad_alloc when there is no memory for it.
    explicit Bstr(std::string_view utf8);
    explicit Bstr(std::wstring_view text);
    Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
    Bstr& operator=(Bstr&& other) noexcept
    {
        std::swap(text_, other.text_);
        return *this;
    }
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    ~Bstr() { SysFreeString(text_); }

    BSTR get() const noexcept { return text_; }
    BSTR detach() noexcept { return std::exchange(text_, nullptr); }
    /// Where a function writes a BSTR that it hands over.
    BSTR* out() noexcept
    {
        *this = Bstr();
        return &text_;
    }

private:
    BSTR text_ = nullptr;
};

/// A UTF-16 text as UTF-8.
std::string utf8(std::wstring_view text);
/// A BSTR as UTF-8; null counts as the empty text.
std::string utf8(BSTR text);
/// A UTF-8 text as UTF-16.
std::wstring wide(std::string_view utf8);

} // namespace qmevents::com
