#include "host/document/format_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <span>
#include <vector>

#include "automation/conversions.h"
#include "automation/currency.h"
#include "automation/locale.h"
#include "automation/text.h"

namespace refhost {
namespace {

using qmevents::CivilTime;
using qmevents::Date;
using qmevents::text::sameName;

constexpr std::array<std::string_view, 12> months{"January",   "February", "March",    "April",
                                                  "May",       "June",     "July",     "August",
                                                  "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> weekdays{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                   "Thursday", "Friday", "Saturday"};

struct NamedPattern {
    std::string_view name, pattern;
};
constexpr NamedPattern datePatterns[] = {
    {"Short Date", "m/d/yyyy"},           {"Medium Date", "dd-mmm-yy"},
    {"Long Date", "dddd, mmmm dd, yyyy"}, {"Short Time", "hh:nn"},
    {"Medium Time", "hh:nn AM/PM"},       {"Long Time", "h:nn:ss AM/PM"},
};
constexpr NamedPattern numberPatterns[] = {
    {"Fixed", "0.00"},
    {"Standard", "#,##0.00"},
    {"Percent", "0.00%"},
};

// The date styles of CONVERT, in the letters of Format.
struct Style {
    int number;
    std::string_view pattern;
};
constexpr Style styles[] = {
    {0, "mmm _d yyyy _h:nnAM/PM"},
    {100, "mmm _d yyyy _h:nnAM/PM"},
    {101, "mm/dd/yyyy"},
    {102, "yyyy.mm.dd"},
    {103, "dd/mm/yyyy"},
    {104, "dd.mm.yyyy"},
    {105, "dd-mm-yyyy"},
    {108, "hh:nn:ss"},
    {110, "mm-dd-yyyy"},
    {111, "yyyy/mm/dd"},
    {112, "yyyymmdd"},
    {120, "yyyy-mm-dd hh:nn:ss"},
    {126, "yyyy-mm-dd\"T\"hh:nn:ss"},
};

std::string_view named(std::string_view pattern, const NamedPattern* first,
                       const NamedPattern* last)
{
    for (; first != last; ++first) {
        if (sameName(first->name, pattern)) return first->pattern;
    }
    return pattern;
}

std::string padded(int value, std::size_t width, char fill = '0')
{
    const std::string digits = std::to_string(value);
    std::string result(width > digits.size() ? width - digits.size() : 0, fill);
    return result.append(digits);
}

char lowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

// Writes a date by a pattern, letter run by letter run.
class DateWriter {
public:
    DateWriter(Date date, std::string_view pattern)
        : date_(date), civil_(date.civil()), pattern_(pattern)
    {
        const std::string lower = qmevents::text::lowerAscii(pattern);
        twelveHours_ = lower.find("am/pm") != std::string::npos;
    }

    std::string write()
    {
        while (at_ < pattern_.size()) step();
        return result_;
    }

private:
    void step()
    {
        const char letter = lowerAscii(pattern_[at_]);
        if (letter == '"') return quoted();
        if (letter == '\\') {
            ++at_;
            if (at_ < pattern_.size()) result_ += pattern_[at_++];
            return;
        }
        if (sameName(pattern_.substr(at_, 5), "am/pm")) {
            result_ += civil_.hour < 12 ? "AM" : "PM";
            at_ += 5;
            return;
        }
        // An underscore before a letter fills its two places with a blank instead of a zero.
        const bool blankFilled = letter == '_';
        if (blankFilled) ++at_;
        if (at_ >= pattern_.size()) return;
        const char kind = lowerAscii(pattern_[at_]);
        std::size_t run = 0;
        while (at_ + run < pattern_.size() && lowerAscii(pattern_[at_ + run]) == kind) ++run;
        if (!part(kind, run, blankFilled)) {
            result_.append(pattern_.substr(at_, run));
            afterHour_ = afterHour_ && kind != ' ';
        }
        at_ += run;
    }

    void quoted()
    {
        const std::size_t end = std::min(pattern_.find('"', at_ + 1), pattern_.size());
        result_.append(pattern_.substr(at_ + 1, end - at_ - 1));
        at_ = std::min(end + 1, pattern_.size());
    }

    bool part(char kind, std::size_t run, bool blankFilled)
    {
        const std::size_t width = blankFilled || run > 1 ? 2 : 1;
        const char fill = blankFilled ? ' ' : '0';
        switch (kind) {
        case 'y':
            result_ += run > 2 ? padded(civil_.year, 4) : padded(civil_.year % 100, 2);
            break;
        case 'm': // minutes after an hour
            result_ += afterHour_ ? padded(civil_.minute, width)
                                  : word(run, civil_.month, months, civil_.month, width);
            break;
        case 'd':
            result_ += blankFilled ? padded(civil_.day, width, fill)
                                   : word(run, civil_.day, weekdays, date_.weekday(), width);
            break;
        case 'h': {
            const int hour = twelveHours_ ? (civil_.hour + 11) % 12 + 1 : civil_.hour;
            result_ += padded(hour, width, fill);
            break;
        }
        case 'n':
            result_ += padded(civil_.minute, width);
            break;
        case 's':
            result_ += padded(civil_.second, width);
            break;
        default:
            return false;
        }
        afterHour_ = kind == 'h';
        return true;
    }

    // A number in one or two places, or the name that it stands for, short or long.
    static std::string word(std::size_t run, int number, std::span<const std::string_view> names,
                            int name, std::size_t width)
    {
        if (run < 3) return padded(number, width);
        const std::string_view full = names[static_cast<std::size_t>(name - 1)];
        return std::string(run == 3 ? full.substr(0, 3) : full);
    }

    Date date_;
    CivilTime civil_;
    std::string_view pattern_;
    std::size_t at_ = 0;
    std::string result_;
    bool twelveHours_ = false;
    bool afterHour_ = false;
};

// The places that one section of a number pattern asks for.
struct NumberPattern {
    std::string before, after;
    std::size_t leastWhole = 0, leastDecimals = 0, mostDecimals = 0;
    bool grouped = false, percent = false, anyDigit = false;

    explicit NumberPattern(std::string_view pattern)
    {
        bool decimals = false;
        for (std::size_t i = 0; i < pattern.size(); ++i) {
            const char c = pattern[i];
            if (c == '0' || c == '#') {
                anyDigit = true;
                if (decimals) ++mostDecimals;
                if (c == '0') decimals ? leastDecimals = mostDecimals : ++leastWhole;
            } else if (c == '.') {
                decimals = true;
            } else if (c == ',') {
                grouped = true;
            } else if (c != '"') {
                if (c == '\\' && i + 1 < pattern.size()) ++i;
                if (c == '%') percent = true;
                (anyDigit ? after : before) += pattern[i];
            }
        }
    }
};

std::string digitsOf(double amount, const NumberPattern& pattern)
{
    std::array<char, 400> buffer{};
    const int decimals = static_cast<int>(std::min<std::size_t>(pattern.mostDecimals, 20));
    // Half away from zero, also where the binary form of 1.005 lies a little below.
    const double scale = std::pow(10.0, decimals);
    const double scaled = amount * scale;
    double rounded = std::round(scaled * (1 + 1e-15)) / scale;
    if (!(std::abs(scaled) < 1e15)) rounded = amount;
    std::snprintf(buffer.data(), buffer.size(), "%.*f", decimals, rounded);
    const std::string_view digits = buffer.data();
    const std::size_t point = std::min(digits.find('.'), digits.size());
    std::string_view whole = digits.substr(0, point);
    std::string_view decimal = digits.substr(std::min(point + 1, digits.size()));
    while (decimal.size() > pattern.leastDecimals && decimal.back() == '0') {
        decimal.remove_suffix(1);
    }
    if (pattern.leastWhole == 0 && whole == "0") whole = {};
    std::string filled(whole.size() < pattern.leastWhole ? pattern.leastWhole - whole.size() : 0,
                       '0');
    filled.append(whole);
    std::string result;
    for (std::size_t i = 0; i < filled.size(); ++i) {
        const bool group = pattern.grouped && i > 0 && (filled.size() - i) % 3 == 0;
        if (group) result += ',';
        result += filled[i];
    }
    if (!decimal.empty()) result.append(".").append(decimal);
    return result;
}

} // namespace

std::optional<std::string> styledDate(Date date, int style)
{
    for (const Style& row : styles) {
        if (row.number == style) return DateWriter(date, row.pattern).write();
    }
    return std::nullopt;
}

// One pass over the pattern, a branch for each letter.
// NOLINTNEXTLINE(readability-function-cognitive-complexity)
std::optional<Date> readStyledDate(std::string_view text, int style)
{
    const auto found = std::find_if(std::begin(styles), std::end(styles),
                                    [&](const Style& row) { return row.number == style; });
    if (found == std::end(styles) || style < 101) return std::nullopt;
    CivilTime civil{1900, 1, 1};
    std::size_t at = 0;
    const std::string_view pattern = found->pattern;
    for (std::size_t i = 0; i < pattern.size() && at < text.size();) {
        const char letter = pattern[i];
        if (letter == '"') {
            ++i;
            continue;
        }
        std::size_t run = 1;
        while (i + run < pattern.size() && pattern[i + run] == letter) ++run;
        i += run;
        int* const field = letter == 'y'   ? &civil.year
                           : letter == 'm' ? &civil.month
                           : letter == 'd' ? &civil.day
                           : letter == 'h' ? &civil.hour
                           : letter == 'n' ? &civil.minute
                           : letter == 's' ? &civil.second
                                           : nullptr;
        if (!field) {
            if (text[at++] != letter) return std::nullopt;
            continue;
        }
        *field = 0;
        for (; run > 0; --run, ++at) {
            if (at >= text.size() || text[at] < '0' || text[at] > '9') return std::nullopt;
            *field = *field * 10 + (text[at] - '0');
        }
    }
    const bool valid = Date::isValidDay(civil.year, civil.month, civil.day) && civil.hour < 24 &&
                       civil.minute < 60 && civil.second < 60;
    if (at != text.size() || !valid) return std::nullopt;
    return Date::fromCivil(civil);
}

std::string formatDate(Date date, std::string_view pattern)
{
    if (pattern.empty() || sameName(pattern, "General Date")) {
        return qmevents::Locale::current().text(date);
    }
    return DateWriter(date, named(pattern, std::begin(datePatterns), std::end(datePatterns)))
        .write();
}

std::string formatNumber(double number, std::string_view pattern)
{
    if (pattern.empty() || sameName(pattern, "General Number")) {
        return qmevents::numberText(number);
    }
    if (sameName(pattern, "Currency")) {
        return qmevents::Locale::current().money(qmevents::Currency::fromDouble(number));
    }
    if (sameName(pattern, "Yes/No")) return number != 0 ? "Yes" : "No";
    pattern = named(pattern, std::begin(numberPatterns), std::end(numberPatterns));

    // Sections for positive numbers, negative numbers and zero.
    std::vector<std::string_view> sections;
    for (std::size_t at = 0; at <= pattern.size();) {
        const std::size_t end = std::min(pattern.find(';', at), pattern.size());
        sections.push_back(pattern.substr(at, end - at));
        at = end + 1;
    }
    bool sign = number < 0;
    std::string_view section = sections[0];
    if (number < 0 && sections.size() > 1 && !sections[1].empty()) {
        section = sections[1];
        sign = false;
    } else if (number == 0 && sections.size() > 2 && !sections[2].empty()) {
        section = sections[2];
    }
    const NumberPattern places(section);
    const double amount = std::abs(number) * (places.percent ? 100 : 1);
    if (!places.anyDigit) return places.before;
    const std::string digits = digitsOf(amount, places);
    sign = sign && digits.find_first_of("123456789") != std::string::npos;
    return (sign ? "-" : "") + places.before + digits + places.after;
}

} // namespace refhost
