#include <cmath>
#include <cstdio>

#include "automation/locale.h"
#include "host/script/calendar.h"
#include "host/script/library.h"
#include "host/script/script_error.h"

namespace refhost::script {
namespace {

using qmevents::Currency;
using qmevents::Date;
using qmevents::ErrorNumber;
using qmevents::Locale;
using qmevents::Value;

Value formatDate(const Arguments& arguments)
{
    const Date date = qmevents::toDate(arguments[0]);
    const auto civil = date.civil();
    const Locale& locale = Locale::current();
    char time[32];
    switch (arguments.whole(1, 0)) {
    case 0:
        return locale.text(date);
    case 1:
        return std::string(weekdayName(date.weekday())) + ", " +
               std::string(monthName(civil.month)) + " " + std::to_string(civil.day) + ", " +
               std::to_string(civil.year);
    case 2:
        return locale.shortDate(date);
    case 3:
        return locale.longTime(date);
    case 4:
        std::snprintf(time, sizeof time, "%02d:%02d", civil.hour, civil.minute);
        return time;
    default:
        throw scriptError(ErrorNumber::invalidCall);
    }
}

// The digits of a number that is not negative, rounded at `places` the way people do: what shows
// as a half goes up, even where the double lies a little below it.
std::string digitsOf(const Value& value, std::size_t places)
{
    std::string digits;
    if (value.is(qmevents::ValueKind::currency)) {
        digits = value.as<Currency>().toString();
    } else {
        const double number = qmevents::toDouble(value);
        if (!(std::abs(number) < 1e15)) {
            char buffer[400];
            std::snprintf(buffer, sizeof buffer, "%.0f", number);
            digits = buffer;
        } else {
            // 15 significant digits.
            const int whole =
                number == 0 ? 1 : static_cast<int>(std::floor(std::log10(std::abs(number)))) + 1;
            char buffer[400];
            std::snprintf(buffer, sizeof buffer, "%.*f", std::max(0, 15 - whole), number);
            digits = buffer;
        }
    }
    if (digits.front() == '-') digits.erase(0, 1);
    std::size_t point = digits.find('.');
    if (point == std::string::npos) {
        point = digits.size();
        digits += '.';
    }
    const bool up = digits.size() > point + 1 + places && digits[point + 1 + places] >= '5';
    digits.resize(point + 1 + places, '0');
    digits.erase(point, 1);
    for (std::size_t i = digits.size(); up; --i) {
        if (i == 0) {
            digits.insert(0, "1");
            ++point;
            break;
        }
        if (digits[i - 1] != '9') {
            ++digits[i - 1];
            break;
        }
        digits[i - 1] = '0';
    }
    return digits.insert(point, ".");
}

// A yes/no argument that may also be left to the user's settings (-2).
bool choice(const Arguments& arguments, std::size_t index, bool setting)
{
    const std::int32_t wish = arguments.whole(index, -2);
    return wish == -2 ? setting : wish != 0;
}

// (number [, places [, leading zero [, parentheses [, groups]]]])
std::string formatted(const Arguments& arguments, const Value& value)
{
    const std::int32_t wish = arguments.whole(1, -1);
    if (wish < -1 || wish > 99) throw scriptError(ErrorNumber::invalidCall);
    const Locale& locale = Locale::current();
    std::string text = digitsOf(value, wish < 0 ? 2 : static_cast<std::size_t>(wish));
    const bool isZero = text.find_first_not_of("0.") == std::string::npos;
    const bool negative = qmevents::toDouble(value) < 0 && !isZero;
    const std::size_t point = text.find('.');
    std::string whole = text.substr(0, point);
    std::string decimals = text.substr(point + 1);
    if (whole == "0" && !decimals.empty() && !choice(arguments, 2, true)) whole.clear();
    if (choice(arguments, 4, true)) {
        for (std::size_t at = whole.size(); at > 3;) whole.insert(at -= 3, locale.groupMark);
    }
    text = decimals.empty() ? whole : whole + locale.decimalMark + decimals;
    if (!negative) return text;
    return choice(arguments, 3, false) ? "(" + text + ")" : "-" + text;
}

Value formatNumber(const Arguments& arguments) { return formatted(arguments, arguments[0]); }

Value formatPercent(const Arguments& arguments)
{
    return formatted(arguments, arguments.number(0) * 100) + "%";
}

Value formatCurrency(const Arguments& arguments)
{
    const std::string text = formatted(arguments, qmevents::toCurrency(arguments[0]));
    const Locale& locale = Locale::current();
    if (!locale.symbolLeads) return text + " " + locale.currencySymbol;
    // The symbol stands behind the sign: "-$3.00", "($3.00)".
    const std::size_t sign = text[0] == '-' || text[0] == '(' ? 1 : 0;
    return text.substr(0, sign) + locale.currencySymbol + text.substr(sign);
}

using Takes = Builtin::Takes;
constexpr Builtin functions[] = {
    {"FormatDateTime", 1, 2, Takes::values, formatDate},
    {"FormatNumber", 1, 5, Takes::values, formatNumber},
    {"FormatPercent", 1, 5, Takes::values, formatPercent},
    {"FormatCurrency", 1, 5, Takes::values, formatCurrency},
};

} // namespace

std::span<const Builtin> formatFunctions() { return functions; }

} // namespace refhost::script
