#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Text helpers. All texts are UTF-8; bytes that are no valid UTF-8 pass through unchanged.
namespace qmevents::text {

/// `value` in upper case, letters beyond ASCII (Latin, Greek, Cyrillic) included.
std::string upper(std::string_view value);
/// `value` in lower case, as `upper`.
std::string lower(std::string_view value);
/// ASCII-only lower case, enough for names of members, keys and columns.
std::string lowerAscii(std::string_view value);
/// Equal without regard to the case of ASCII letters, as names are matched.
bool sameName(std::string_view a, std::string_view b);
/// `value` without leading and trailing blanks.
std::string_view trim(std::string_view value);
/// `value` with every occurrence of `from` replaced by `to`.
std::string replaceAll(std::string_view value, std::string_view from, std::string_view to);
/// `value` as text within markup: &, <, > and " written as references.
std::string escapeMarkup(std::string_view value);
/// Number of characters (code points) of `value`.
std::size_t length(std::string_view value);

/// Hash and equality of names without regard to ASCII case, for maps that are searched by name.
struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const noexcept;
};
struct NameEqual {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const noexcept
    {
        return sameName(a, b);
    }
};

} // namespace qmevents::text
