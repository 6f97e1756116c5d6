#include "automation/locale.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "automation/clock.h"
#include "automation/text.h"

namespace qmevents {
namespace {

constexpr std::array<std::string_view, 12> monthNames{
    "january", "february", "march",     "april",   "may",      "june",
    "july",    "august",   "september", "october", "november", "december"};

// What a date text is made of: numbers, words and the marks between them.
struct Token {
    enum class Type { number, word, colon, separator } type;
    int value = 0; // of a number; the month (1 to 12) of a month's name
    std::size_t digits = 0;
    std::string word;
};

bool tokenize(std::string_view text, std::vector<Token>& tokens)
{
    for (std::size_t i = 0; i < text.size();) {
        const char c = text[i];
        if (c == ' ' || c == ',') {
            ++i;
        } else if (c == ':') {
            tokens.push_back({Token::Type::colon, 0, 0, {}});
            ++i;
        } else if (c == '/' || c == '-' || c == '.') {
            tokens.push_back({Token::Type::separator, 0, 0, {}});
            ++i;
        } else if (c >= '0' && c <= '9') {
            Token token{Token::Type::number, 0, 0, {}};
            for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
                if (++token.digits > 4) return false;
                token.value = token.value * 10 + (text[i] - '0');
            }
            tokens.push_back(token);
        } else {
            Token token{Token::Type::word, 0, 0, {}};
            for (; i < text.size() &&
                   ((text[i] >= 'a' && text[i] <= 'z') || (text[i] >= 'A' && text[i] <= 'Z'));
                 ++i) {
                token.word += text[i];
            }
            if (token.word.empty()) return false;
            token.word = text::lowerAscii(token.word);
            tokens.push_back(token);
        }
    }
    return true;
}

int monthNamed(const std::string& word)
{
    if (word.size() < 3) return 0;
    for (std::size_t i = 0; i < monthNames.size(); ++i) {
        if (monthNames[i] == word || monthNames[i].substr(0, 3) == word) {
            return static_cast<int>(i) + 1;
        }
    }
    return 0;
}

int fullYear(const Token& token)
{
    if (token.digits > 2) return token.value;
    return token.value < 30 ? 2000 + token.value : 1900 + token.value;
}

// Takes "h:mm[:ss] [AM|PM]" or "h AM" out of `tokens`; false when there is a broken time.
bool takeTime(std::vector<Token>& tokens, CivilTime& civil, bool& found)
{
    using Type = Token::Type;
    const auto is = [&](std::size_t i, Type type) {
        return i < tokens.size() && tokens[i].type == type;
    };
    const auto isHalf = [&](std::size_t i) {
        return is(i, Type::word) && (tokens[i].word == "am" || tokens[i].word == "pm");
    };
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].type != Type::number || !(is(i + 1, Type::colon) || isHalf(i + 1))) continue;
        std::size_t end = i + 1;
        civil.hour = tokens[i].value;
        if (is(end, Type::colon)) {
            if (!is(end + 1, Type::number)) return false;
            civil.minute = tokens[end + 1].value;
            end += 2;
            if (is(end, Type::colon)) {
                if (!is(end + 1, Type::number)) return false;
                civil.second = tokens[end + 1].value;
                end += 2;
            }
        }
        if (isHalf(end)) {
            if (civil.hour < 1 || civil.hour > 12) return false;
            civil.hour = civil.hour % 12 + (tokens[end].word == "pm" ? 12 : 0);
            ++end;
        }
        found = true;
        tokens.erase(tokens.begin() + static_cast<std::ptrdiff_t>(i),
                     tokens.begin() + static_cast<std::ptrdiff_t>(end));
        return civil.hour < 24 && civil.minute < 60 && civil.second < 60;
    }
    return true;
}

// What is left of a date text without its time: numbers, and perhaps the name of a month.
struct DayParts {
    std::vector<Token> numbers;
    int namedMonth = 0;
    std::size_t nameAt = 0; // how many numbers stand before the name
};

bool collectParts(const std::vector<Token>& tokens, DayParts& parts)
{
    for (const Token& token : tokens) {
        switch (token.type) {
        case Token::Type::number:
            parts.numbers.push_back(token);
            break;
        case Token::Type::word:
            if (parts.namedMonth != 0) return false;
            parts.namedMonth = monthNamed(token.word);
            if (parts.namedMonth == 0) return false;
            parts.nameAt = parts.numbers.size();
            break;
        case Token::Type::separator:
            break;
        case Token::Type::colon:
            return false;
        }
    }
    return true;
}

// "7 March [2026]" or "March 7 [2026]"; without a year, this one's.
bool takeNamedDay(const DayParts& parts, CivilTime& civil)
{
    const auto& numbers = parts.numbers;
    if (numbers.empty() || numbers.size() > 2 || parts.nameAt > 1) return false;
    civil.month = parts.namedMonth;
    civil.day = numbers[0].value;
    civil.year = numbers.size() > 1 ? fullYear(numbers[1]) : Clock::now().civil().year;
    return true;
}

// Two or three numbers in the order of the locale, or with the year in front.
bool takeNumberedDay(const DayParts& parts, Locale::DateOrder order, CivilTime& civil)
{
    const auto& numbers = parts.numbers;
    if (numbers.size() != 2 && numbers.size() != 3) return false;
    const bool yearFirst =
        numbers.size() == 3 && (numbers[0].digits > 2 || order == Locale::DateOrder::yearMonthDay);
    const std::size_t first = yearFirst ? 1 : 0;
    const bool dayFirst = order == Locale::DateOrder::dayMonthYear && !yearFirst;
    civil.month = numbers[first + (dayFirst ? 1 : 0)].value;
    civil.day = numbers[first + (dayFirst ? 0 : 1)].value;
    civil.year =
        numbers.size() == 2 ? Clock::now().civil().year : fullYear(numbers[yearFirst ? 0 : 2]);
    return true;
}

} // namespace

Locale& Locale::current()
{
    static thread_local Locale locale;
    return locale;
}

std::string Locale::shortDate(Date date) const
{
    const CivilTime c = date.civil();
    const std::string mark(1, dateSeparator);
    const std::string year = std::to_string(c.year);
    const std::string month = std::to_string(c.month);
    const std::string day = std::to_string(c.day);
    switch (order) {
    case DateOrder::dayMonthYear:
        return day + mark + month + mark + year;
    case DateOrder::yearMonthDay:
        return date.iso().substr(0, 10);
    case DateOrder::monthDayYear:
        break;
    }
    return month + mark + day + mark + year;
}

std::string Locale::longTime(Date date) const
{
    const CivilTime c = date.civil();
    const int hour = twelveHours ? (c.hour + 11) % 12 + 1 : c.hour;
    char buffer[40];
    const int written =
        std::snprintf(buffer, sizeof buffer, "%d:%02d:%02d", hour, c.minute, c.second);
    std::string result(buffer, static_cast<std::size_t>(written));
    if (twelveHours) result += c.hour < 12 ? " AM" : " PM";
    return result;
}

std::string Locale::text(Date date) const
{
    if (!date.hasDate()) return longTime(date);
    return date.hasTime() ? shortDate(date) + " " + longTime(date) : shortDate(date);
}

std::string Locale::money(Currency amount) const
{
    const bool negative = amount.scaled() < 0;
    std::int64_t divisor = 1;
    for (int i = moneyDecimals; i < 4; ++i) divisor *= 10;
    // Halves go away from zero, as people round money. Taken from the negative side, which holds
    // the smallest amount as well.
    const std::int64_t below = negative ? amount.scaled() : -amount.scaled();
    const std::int64_t rounded =
        -(below / divisor) + (moneyDecimals < 4 && -(below % divisor) * 2 >= divisor ? 1 : 0);
    std::string digits = std::to_string(rounded);
    const auto places = static_cast<std::size_t>(moneyDecimals);
    if (digits.size() <= places) digits.insert(0, places + 1 - digits.size(), '0');
    std::string whole = digits.substr(0, digits.size() - places);
    for (std::size_t at = whole.size(); at > 3;) whole.insert(at -= 3, groupMark);
    std::string text = whole;
    if (places > 0) text += decimalMark + digits.substr(digits.size() - places);
    text = symbolLeads ? currencySymbol + text : text + " " + currencySymbol;
    return negative && rounded != 0 ? "-" + text : text;
}

std::optional<Date> Locale::parseDate(std::string_view text) const
{
    if (auto iso = Date::parseIso(text::trim(text))) return iso;
    std::vector<Token> tokens;
    if (!tokenize(text, tokens) || tokens.empty()) return std::nullopt;
    CivilTime civil;
    bool hasTime = false;
    if (!takeTime(tokens, civil, hasTime)) return std::nullopt;

    DayParts parts;
    if (!collectParts(tokens, parts)) return std::nullopt;
    if (parts.numbers.empty() && parts.namedMonth == 0) {
        return hasTime ? std::optional(Date::fromCivil(civil)) : std::nullopt;
    }
    const bool isDay =
        parts.namedMonth != 0 ? takeNamedDay(parts, civil) : takeNumberedDay(parts, order, civil);
    if (!isDay) return std::nullopt;
    if (!Date::isValidDay(civil.year, civil.month, civil.day)) return std::nullopt;
    return Date::fromCivil(civil);
}

} // namespace qmevents
