#include <algorithm>
#include <cstdio>
#include <limits>

#include "automation/text.h"
#include "host/script/characters.h"
#include "host/script/library.h"
#include "host/script/operators.h"
#include "host/script/script_error.h"

namespace refhost::script {
namespace {

using qmevents::ErrorNumber;
using qmevents::Value;
namespace text = qmevents::text;

constexpr std::size_t all = std::numeric_limits<std::size_t>::max();

Value countOf(std::size_t number) { return static_cast<std::int32_t>(number); }

// The optional last argument of the searching functions: 1 ignores case. Both cases of a letter
// have the same length, so that positions in the folded text are those of the text.
bool ignoresCase(const Arguments& arguments, std::size_t index)
{
    const std::int32_t mode = arguments.whole(index, 0);
    if (mode != 0 && mode != 1) throw scriptError(ErrorNumber::invalidCall);
    return mode == 1;
}
std::string folded(const std::string& value, bool ignoreCase)
{
    return ignoreCase ? text::lower(value) : value;
}

Value left(const Arguments& arguments) { return slice(arguments.text(0), 0, arguments.count(1)); }

Value right(const Arguments& arguments)
{
    const std::string value = arguments.text(0);
    const std::size_t length = text::length(value);
    const std::size_t count = arguments.count(1);
    return count >= length ? Value(value) : Value(slice(value, length - count, all));
}

Value mid(const Arguments& arguments)
{
    return slice(arguments.text(0), arguments.count(1, 1) - 1,
                 arguments.given(2) ? arguments.count(2) : all);
}

// InStr([start,] text, wanted [, compare])
Value find(const Arguments& arguments)
{
    const std::size_t first = arguments.size() > 2 ? 1 : 0;
    const bool ignoreCase = ignoresCase(arguments, 3);
    const std::size_t start = first == 1 ? arguments.count(0, 1) : 1;
    const std::string value = folded(arguments.text(first), ignoreCase);
    const std::string wanted = folded(arguments.text(first + 1), ignoreCase);
    const std::size_t from = offsetOf(value, start - 1);
    if (start - 1 > text::length(value) || value.empty()) return countOf(0);
    const std::size_t hit = value.find(wanted, from);
    return countOf(hit == std::string::npos ? 0 : indexOf(value, hit) + 1);
}

// InStrRev(text, wanted [, start [, compare]])
Value findLast(const Arguments& arguments)
{
    const bool ignoreCase = ignoresCase(arguments, 3);
    std::string value = folded(arguments.text(0), ignoreCase);
    const std::string wanted = folded(arguments.text(1), ignoreCase);
    const std::int32_t start = arguments.whole(2, -1);
    if (start == 0 || start < -1) throw scriptError(ErrorNumber::invalidCall);
    if (start > 0) {
        if (static_cast<std::size_t>(start) > text::length(value)) return countOf(0);
        value.resize(offsetOf(value, static_cast<std::size_t>(start)));
    }
    const std::size_t hit = value.rfind(wanted);
    if (hit == std::string::npos || value.empty()) return countOf(0);
    return wanted.empty() ? countOf(text::length(value)) : countOf(indexOf(value, hit) + 1);
}

// Replace(text, from, to [, start [, count [, compare]]]) gives the text from `start` on.
Value replace(const Arguments& arguments)
{
    const bool ignoreCase = ignoresCase(arguments, 5);
    const std::size_t start = arguments.given(3) ? arguments.count(3, 1) : 1;
    const std::string whole = arguments.text(0);
    const std::string value(slice(whole, start - 1, all));
    const std::string from = folded(arguments.text(1), ignoreCase);
    const std::string to = arguments.text(2);
    std::int32_t remaining = arguments.whole(4, -1);
    if (remaining < -1) throw scriptError(ErrorNumber::invalidCall);
    if (from.empty()) return value;
    const std::string searched = folded(value, ignoreCase);
    std::string result;
    std::size_t at = 0;
    while (remaining != 0) {
        const std::size_t hit = searched.find(from, at);
        if (hit == std::string::npos) break;
        checkLength(result.size() + to.size() + hit - at);
        result.append(value, at, hit - at).append(to);
        at = hit + from.size();
        if (remaining > 0) --remaining;
    }
    return result.append(value, at);
}

Value trimmed(const Arguments& arguments, bool atStart, bool atEnd)
{
    const std::string value = arguments.text(0);
    const std::size_t first = atStart ? value.find_first_not_of(' ') : 0;
    if (first == std::string::npos) return "";
    const std::size_t last = atEnd ? value.find_last_not_of(' ') : value.size() - 1;
    return value.empty() || last == std::string::npos
               ? Value("")
               : Value(value.substr(first, last + 1 - first));
}

std::string repeated(std::size_t count, const std::string& what)
{
    checkLength(what.empty() ? 0 : count > longestText ? count : count * what.size());
    std::string result;
    result.reserve(count * what.size());
    for (std::size_t i = 0; i < count; ++i) result += what;
    return result;
}

// String(count, character): a number, or a text whose first character counts.
Value repeatedCharacter(const Arguments& arguments)
{
    std::string what;
    if (arguments[1].isText()) {
        if (arguments[1].text().empty()) throw scriptError(ErrorNumber::invalidCall);
        what = slice(arguments[1].text(), 0, 1);
    } else {
        what = character(static_cast<std::uint32_t>(arguments.whole(1)) % 256);
    }
    return repeated(arguments.count(0), what);
}

Value compare(const Arguments& arguments)
{
    const bool ignoreCase = ignoresCase(arguments, 2);
    const int order =
        folded(arguments.text(0), ignoreCase).compare(folded(arguments.text(1), ignoreCase));
    return static_cast<std::int16_t>(order < 0 ? -1 : order > 0 ? 1 : 0);
}

Value reversed(const Arguments& arguments)
{
    const std::string value = arguments.text(0);
    std::string result;
    result.reserve(value.size());
    std::size_t end = value.size();
    while (end > 0) {
        std::size_t start = end - 1;
        while (start > 0 && (static_cast<unsigned char>(value[start]) & 0xC0U) == 0x80U) --start;
        result.append(value, start, end - start);
        end = start;
    }
    return result;
}

Value code(const Arguments& arguments)
{
    const std::string value = arguments.text(0);
    if (value.empty()) throw scriptError(ErrorNumber::invalidCall);
    return static_cast<std::int32_t>(codeOf(value));
}

Value characterWith(const Arguments& arguments, std::int32_t most)
{
    std::int32_t number = arguments.whole(0);
    // Numbers from the upper half of 16 bits are often written as negative ones.
    if (most > 255 && number < 0 && number >= -32768) number += 65536;
    if (number < 0 || number > most || (number >= 0xD800 && number <= 0xDFFF)) {
        throw scriptError(ErrorNumber::invalidCall);
    }
    return character(static_cast<std::uint32_t>(number));
}

// Split(text [, separator [, count [, compare]]])
Value split(const Arguments& arguments)
{
    const bool ignoreCase = ignoresCase(arguments, 3);
    const std::string value = arguments.text(0);
    const std::string separator = folded(arguments.text(1, " "), ignoreCase);
    const std::int32_t most = arguments.whole(2, -1);
    if (most < -1) throw scriptError(ErrorNumber::invalidCall);
    std::vector<Value> pieces;
    if (!value.empty() && most != 0) {
        const std::string searched = folded(value, ignoreCase);
        std::size_t at = 0;
        while (!separator.empty() &&
               (most < 0 || pieces.size() + 1 < static_cast<std::size_t>(most))) {
            const std::size_t hit = searched.find(separator, at);
            if (hit == std::string::npos) break;
            if (pieces.size() == mostElements) throw scriptError(ErrorNumber::outOfMemory);
            pieces.emplace_back(value.substr(at, hit - at));
            at = hit + separator.size();
        }
        pieces.emplace_back(value.substr(at));
    }
    return qmevents::Array::list(std::move(pieces));
}

const qmevents::Array& listOf(const Value& value)
{
    if (!value.is(qmevents::ValueKind::array) || value.array()->dimensions.size() != 1) {
        throw scriptError(ErrorNumber::typeMismatch);
    }
    return *value.array();
}

Value join(const Arguments& arguments)
{
    const std::string separator = arguments.text(1, " ");
    std::string result;
    bool first = true;
    for (const Value& item : listOf(arguments[0]).items) {
        if (!std::exchange(first, false)) result += separator;
        result += qmevents::toText(plainValue(item));
        checkLength(result.size());
    }
    return result;
}

// Filter(texts, wanted [, include [, compare]])
Value filter(const Arguments& arguments)
{
    const bool ignoreCase = ignoresCase(arguments, 3);
    const std::string wanted = folded(arguments.text(1), ignoreCase);
    const bool include = arguments.flag(2, true);
    std::vector<Value> kept;
    for (const Value& item : listOf(arguments[0]).items) {
        std::string value = qmevents::toText(plainValue(item));
        const bool has = folded(value, ignoreCase).find(wanted) != std::string::npos;
        if (has == include) kept.emplace_back(std::move(value));
    }
    return qmevents::Array::list(std::move(kept));
}

// Hex and Oct: a negative number as its bits, 16 of them when it is a short one.
Value inBase(const Arguments& arguments, const char* format)
{
    const auto number = static_cast<std::uint32_t>(arguments.whole(0));
    const bool isShort = arguments[0].is(qmevents::ValueKind::int16) ||
                         arguments[0].is(qmevents::ValueKind::boolean);
    char buffer[16];
    const int length =
        std::snprintf(buffer, sizeof buffer, format, isShort ? number & 0xFFFFU : number);
    return std::string(buffer, static_cast<std::size_t>(length));
}

using Takes = Builtin::Takes;
constexpr Builtin functions[] = {
    {"Len", 1, 1, Takes::nullable,
     [](const Arguments& arguments) { return countOf(text::length(arguments.text(0))); }},
    {"Left", 2, 2, Takes::nullable, left},
    {"Right", 2, 2, Takes::nullable, right},
    {"Mid", 2, 3, Takes::nullable, mid},
    {"InStr", 2, 4, Takes::nullable, find},
    {"InStrRev", 2, 4, Takes::nullable, findLast},
    {"Replace", 3, 6, Takes::values, replace},
    {"UCase", 1, 1, Takes::nullable,
     [](const Arguments& arguments) -> Value { return text::upper(arguments.text(0)); }},
    {"LCase", 1, 1, Takes::nullable,
     [](const Arguments& arguments) -> Value { return text::lower(arguments.text(0)); }},
    {"Trim", 1, 1, Takes::nullable,
     [](const Arguments& arguments) { return trimmed(arguments, true, true); }},
    {"LTrim", 1, 1, Takes::nullable,
     [](const Arguments& arguments) { return trimmed(arguments, true, false); }},
    {"RTrim", 1, 1, Takes::nullable,
     [](const Arguments& arguments) { return trimmed(arguments, false, true); }},
    {"Space", 1, 1, Takes::values,
     [](const Arguments& arguments) -> Value { return repeated(arguments.count(0), " "); }},
    {"String", 2, 2, Takes::nullable, repeatedCharacter},
    {"StrComp", 2, 3, Takes::nullable, compare},
    {"StrReverse", 1, 1, Takes::values, reversed},
    {"Asc", 1, 1, Takes::values, code},
    {"AscW", 1, 1, Takes::values, code},
    {"Chr", 1, 1, Takes::values,
     [](const Arguments& arguments) { return characterWith(arguments, 255); }},
    {"ChrW", 1, 1, Takes::values,
     [](const Arguments& arguments) { return characterWith(arguments, 0x10FFFF); }},
    {"Split", 1, 4, Takes::values, split},
    {"Join", 1, 2, Takes::values, join},
    {"Filter", 2, 4, Takes::values, filter},
    {"Hex", 1, 1, Takes::nullable,
     [](const Arguments& arguments) { return inBase(arguments, "%X"); }},
    {"Oct", 1, 1, Takes::nullable,
     [](const Arguments& arguments) { return inBase(arguments, "%o"); }},
};

} // namespace

std::span<const Builtin> textFunctions() { return functions; }

} // namespace refhost::script
