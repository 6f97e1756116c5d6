#include "host/document/text_functions.h"

#include <algorithm>

#include "automation/text.h"

namespace refhost {
namespace {

using qmevents::text::length;
using qmevents::text::lower;

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// The end of the character that begins at `at`.
std::size_t characterEnd(std::string_view text, std::size_t at)
{
    ++at;
    while (at < text.size() && isContinuation(text[at])) ++at;
    return at;
}

// Where character number `index` (from 0) begins, or the end.
std::size_t offsetOf(std::string_view text, std::int64_t index)
{
    std::size_t at = 0;
    while (index-- > 0 && at < text.size()) at = characterEnd(text, at);
    return at;
}

// A pattern is matched in lower case, so comparing UTF-8 compares characters.
class Matcher {
public:
    Matcher(std::string_view text, std::string_view pattern, char negation)
        : text_(text), pattern_(pattern), negation_(negation)
    {
    }

    // On a mismatch the last % takes one character more, so the time is text times pattern at most.
    bool matches()
    {
        std::size_t at = 0, in = 0;
        std::size_t retryAt = std::string_view::npos, retryIn = 0;
        while (at < text_.size() || in < pattern_.size()) {
            if (in < pattern_.size() && pattern_[in] == '%') {
                retryAt = at;
                retryIn = ++in;
                continue;
            }
            std::size_t next = in;
            if (at < text_.size() && in < pattern_.size() && takes(at, next)) {
                at = characterEnd(text_, at);
                in = next;
                continue;
            }
            if (retryAt == std::string_view::npos || retryAt >= text_.size()) return false;
            retryAt = characterEnd(text_, retryAt);
            at = retryAt;
            in = retryIn;
        }
        return true;
    }

private:
    // Whether the pattern's next element takes the character at `at`; `in` then stands behind it.
    bool takes(std::size_t at, std::size_t& in) const
    {
        const std::string_view character = text_.substr(at, characterEnd(text_, at) - at);
        const std::size_t close =
            pattern_[in] == '[' ? pattern_.find(']', in + 1) : std::string_view::npos;
        if (close != std::string_view::npos) {
            const bool result = inSet(character, pattern_.substr(in + 1, close - in - 1));
            in = close + 1;
            return result;
        }
        const std::size_t end = characterEnd(pattern_, in);
        const std::string_view element = pattern_.substr(in, end - in);
        in = end;
        return element == "_" || element == character;
    }

    bool inSet(std::string_view character, std::string_view set) const
    {
        const bool negated = set.size() > 1 && set.front() == negation_;
        if (negated) set.remove_prefix(1);
        for (std::size_t i = 0; i < set.size();) {
            const std::size_t end = characterEnd(set, i);
            const std::string_view first = set.substr(i, end - i);
            std::string_view last = first;
            i = end;
            if (i + 1 < set.size() && set[i] == '-') {
                const std::size_t rangeEnd = characterEnd(set, i + 1);
                last = set.substr(i + 1, rangeEnd - i - 1);
                i = rangeEnd;
            }
            if (first <= character && character <= last) return !negated;
        }
        return negated;
    }

    std::string_view text_, pattern_;
    char negation_;
};

} // namespace

bool matchesPattern(std::string_view text, std::string_view pattern, char negation)
{
    const std::string lowerText = lower(text), lowerPattern = lower(pattern);
    return Matcher(lowerText, lowerPattern, negation).matches();
}

std::string rightPart(std::string_view text, std::int64_t wanted)
{
    const auto characters = static_cast<std::int64_t>(length(text));
    const std::int64_t kept = std::clamp<std::int64_t>(wanted, 0, characters);
    return std::string(text.substr(offsetOf(text, characters - kept)));
}

std::string middlePart(std::string_view text, std::int64_t start, std::int64_t count)
{
    constexpr std::int64_t most = INT32_MAX;
    start = std::clamp(start, -most, most);
    const std::int64_t end = start + std::clamp(count, -most, most);
    const std::size_t from = offsetOf(text, std::max<std::int64_t>(start, 1) - 1);
    const std::size_t to = offsetOf(text, std::max<std::int64_t>(end, 1) - 1);
    return std::string(text.substr(from, to - from));
}

std::string replaceText(std::string_view text, std::string_view from, std::string_view to)
{
    if (from.empty()) return std::string(text);
    const std::string lowerText = lower(text), lowerFrom = lower(from);
    // The few letters whose two cases differ in size are replaced in their exact case only.
    const bool sameSizes = lowerText.size() == text.size();
    const std::string_view haystack = sameSizes ? std::string_view(lowerText) : text;
    const std::string_view needle = sameSizes ? std::string_view(lowerFrom) : from;
    std::string result;
    std::size_t at = 0;
    for (;;) {
        const std::size_t found = haystack.find(needle, at);
        if (found == std::string_view::npos) break;
        result.append(text.substr(at, found - at)).append(to);
        at = found + needle.size();
    }
    return result.append(text.substr(at));
}

std::int64_t positionOf(std::string_view wanted, std::string_view text, std::int64_t start)
{
    if (wanted.empty()) return 0;
    const std::string lowerText = lower(text);
    const std::size_t from = offsetOf(lowerText, std::max<std::int64_t>(start, 1) - 1);
    const std::size_t found = lowerText.find(lower(wanted), from);
    if (found == std::string::npos) return 0;
    return static_cast<std::int64_t>(length(std::string_view(lowerText).substr(0, found))) + 1;
}

} // namespace refhost
