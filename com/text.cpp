#include "com/text.h"

#include <limits>
#include <new>

namespace qmevents::com {
namespace {

// Lengths count in `int` at the system's functions.
template <typename Text>
int lengthOf(Text text)
{
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()) / 4) {
        throw std::bad_alloc();
    }
    return static_cast<int>(text.size());
}

int widen(std::string_view text, wchar_t* target, int room)
{
    return MultiByteToWideChar(CP_UTF8, 0, text.data(), lengthOf(text), target, room);
}

BSTR checked(BSTR text)
{
    if (!text) throw std::bad_alloc();
    return text;
}

} // namespace

TextAllocator allocateText = SysAllocStringLen;

Bstr::Bstr(std::string_view utf8)
{
    const int length = widen(utf8, nullptr, 0);
    text_ = checked(allocateText(nullptr, static_cast<UINT>(length)));
    widen(utf8, text_, length);
}

Bstr::Bstr(std::wstring_view text)
    : text_(checked(allocateText(text.data(), static_cast<UINT>(lengthOf(text)))))
{
}

std::string utf8(std::wstring_view text)
{
    const auto narrow = [&](char* target, int room) {
        return WideCharToMultiByte(CP_UTF8, 0, text.data(), lengthOf(text), target, room, nullptr,
                                   nullptr);
    };
    std::string result(static_cast<std::size_t>(narrow(nullptr, 0)), '\0');
    narrow(result.data(), static_cast<int>(result.size()));
    return result;
}

std::string utf8(BSTR text)
{
    return text ? utf8(std::wstring_view(text, SysStringLen(text))) : std::string();
}

std::wstring wide(std::string_view utf8)
{
    std::wstring result(static_cast<std::size_t>(widen(utf8, nullptr, 0)), L'\0');
    widen(utf8, result.data(), static_cast<int>(result.size()));
    return result;
}

} // namespace qmevents::com
