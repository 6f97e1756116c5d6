#include "host/document/functions.h"

#include <span>

#include "automation/text.h"

namespace refhost {
namespace {

using Result = Function::Result;

constexpr Function sqlServerFunctions[] = {
    {"COUNT", "a", Result::integer, "", true},
    {"SUM", "n", Result::special, "", true},
    {"AVG", "n", Result::special, "", true},
    {"MIN", "a", Result::special, "", true},
    {"MAX", "a", Result::special, "", true},
    {"ISNULL", "aa", Result::special, ""},
    {"COALESCE", "aa*", Result::special, ""},
    {"NULLIF", "aa", Result::special, ""},
    {"ISDATE", "a", Result::special, ""},
    {"GETDATE", "", Result::date, "host_now()"},
    {"YEAR", "d", Result::integer, "host_datepart('yyyy',$1)"},
    {"MONTH", "d", Result::integer, "host_datepart('m',$1)"},
    {"DAY", "d", Result::integer, "host_datepart('d',$1)"},
    {"DATEADD", "pid", Result::date, "host_dateadd($1,$2,$3)"},
    {"DATEDIFF", "pdd", Result::integer, "host_datediff($1,$2,$3)"},
    {"DATEPART", "pd", Result::integer, "host_datepart($1,$2)"},
    {"LEN", "t", Result::integer, "length(rtrim($1))"},
    {"LEFT", "ti", Result::text, "substr($1,1,max($2,0))"},
    {"RIGHT", "ti", Result::text, "host_right($1,$2)"},
    {"SUBSTRING", "tii", Result::text, "host_substring($1,$2,$3)"},
    {"UPPER", "t", Result::text, "host_upper($1)"},
    {"LOWER", "t", Result::text, "host_lower($1)"},
    {"LTRIM", "t", Result::text, "ltrim($1)"},
    {"RTRIM", "t", Result::text, "rtrim($1)"},
    {"REPLACE", "ttt", Result::text, "host_replace($1,$2,$3)"},
    {"CHARINDEX", "tt?i", Result::integer, "host_charindex($*)"},
    {"ABS", "n", Result::asFirst, "abs($1)"},
    {"ROUND", "ni", Result::asFirst, "host_round($1,$2)"},
    {"FLOOR", "n", Result::asFirst, "floor($1)"},
    {"CEILING", "n", Result::asFirst, "ceil($1)"},
};

constexpr Function jetFunctions[] = {
    {"COUNT", "a", Result::integer, "", true},
    {"SUM", "n", Result::special, "", true},
    {"AVG", "n", Result::special, "", true},
    {"MIN", "a", Result::special, "", true},
    {"MAX", "a", Result::special, "", true},
    {"IIF", "caa", Result::special, ""},
    {"ISNULL", "a", Result::special, ""},
    {"ISDATE", "a", Result::special, ""},
    {"NOW", "", Result::date, "host_now()"},
    {"DATE", "", Result::date, "host_today()"},
    {"YEAR", "d", Result::integer, "host_datepart('yyyy',$1)"},
    {"MONTH", "d", Result::integer, "host_datepart('m',$1)"},
    {"DAY", "d", Result::integer, "host_datepart('d',$1)"},
    {"DATESERIAL", "iii", Result::date, "host_dateserial($1,$2,$3)"},
    {"DATEADD", "pid", Result::date, "host_dateadd($1,$2,$3)"},
    {"DATEDIFF", "pdd", Result::integer, "host_datediff($1,$2,$3)"},
    {"DATEPART", "pd", Result::integer, "host_datepart($1,$2)"},
    {"CCUR", "a", Result::special, ""},
    {"CLNG", "a", Result::special, ""},
    {"CINT", "a", Result::special, ""},
    {"CDBL", "a", Result::special, ""},
    {"CSTR", "a", Result::special, ""},
    {"CDATE", "a", Result::special, ""},
    {"FORMAT", "a?t", Result::special, ""},
    {"LEN", "t", Result::integer, "length($1)"},
    {"LEFT", "ti", Result::text, "substr($1,1,max($2,0))"},
    {"RIGHT", "ti", Result::text, "host_right($1,$2)"},
    {"MID", "ti?i", Result::text, "host_substring($*)"},
    {"UCASE", "t", Result::text, "host_upper($1)"},
    {"LCASE", "t", Result::text, "host_lower($1)"},
    {"TRIM", "t", Result::text, "trim($1)"},
    {"LTRIM", "t", Result::text, "ltrim($1)"},
    {"RTRIM", "t", Result::text, "rtrim($1)"},
    {"INSTR", "tt", Result::integer, "host_charindex($2,$1)"},
    {"ABS", "n", Result::asFirst, "abs($1)"},
    {"ROUND", "n?i", Result::asFirst, "host_round_even($*)"},
    {"INT", "n", Result::asFirst, "floor($1)"},
    {"FIX", "n", Result::asFirst, "trunc($1)"},
    {"SGN", "n", Result::integer, "sign($1)"},
};

struct Hint {
    std::string_view name, inSqlServer, inJet;
};
constexpr Hint hints[] = {
    {"IIF", "it came with 2012; write CASE WHEN", ""},
    {"NZ", "write IsNull(x, y)", "it exists in Access itself only; write IIf(IsNull(x), y, x)"},
    {"NOW", "write GETDATE()", ""},
    {"DATE", "write GETDATE()", ""},
    {"TRIM", "it came with 2017; write LTRIM(RTRIM(x))", ""},
    {"FORMAT", "it came with 2012; write CONVERT", ""},
    {"CONCAT", "it came with 2012; write +", "write &"},
    {"UCASE", "write UPPER", ""},
    {"LCASE", "write LOWER", ""},
    {"MID", "write SUBSTRING", ""},
    {"INSTR", "write CHARINDEX", ""},
    {"CCUR", "write CAST", ""},
    {"CLNG", "write CAST", ""},
    {"DATESERIAL", "it came with 2012; write CONVERT or DATEADD", ""},
    {"COALESCE", "", "write IIf(IsNull(x), y, x)"},
    {"NULLIF", "", "write IIf(x = y, Null, x)"},
    {"GETDATE", "", "write Now()"},
    {"CAST", "", "write CCur, CLng, CDbl, CStr or CDate"},
    {"CONVERT", "", "write CCur, CLng, CDbl, CStr, CDate or Format"},
    {"EXTRACT", "write YEAR, MONTH or DATEPART", "write Year, Month or DatePart"},
    {"SUBSTRING", "", "write Mid"},
    {"UPPER", "", "write UCase"},
    {"LOWER", "", "write LCase"},
    {"CHARINDEX", "", "write InStr"},
    {"REPLACE", "", "it exists in Access itself only"},
};

struct Part {
    std::string_view code, jet;
    std::string_view sqlServer[3];
};
constexpr Part parts[] = {
    {"yyyy", "yyyy", {"year", "yy", "yyyy"}}, {"q", "q", {"quarter", "qq", "q"}},
    {"m", "m", {"month", "mm", "m"}},         {"y", "y", {"dayofyear", "dy", "y"}},
    {"d", "d", {"day", "dd", "d"}},           {"w", "w", {"weekday", "dw", ""}},
    {"ww", "ww", {"week", "wk", "ww"}},       {"h", "h", {"hour", "hh", ""}},
    {"n", "n", {"minute", "mi", "n"}},        {"s", "s", {"second", "ss", "s"}},
};

std::span<const Function> functionsOf(Dialect dialect)
{
    if (dialect == Dialect::sqlServer) return sqlServerFunctions;
    return jetFunctions;
}

} // namespace

char Function::parameter(std::size_t index) const
{
    char last = 'a';
    for (const char letter : parameters) {
        if (letter == '?' || letter == '*') continue;
        last = letter;
        if (index-- == 0) break;
    }
    return last;
}

const Function* findFunction(Dialect dialect, std::string_view name)
{
    for (const Function& function : functionsOf(dialect)) {
        if (function.name == name) return &function;
    }
    return nullptr;
}

std::string unknownFunction(Dialect dialect, std::string_view name)
{
    std::string reason =
        std::string(dialectName(dialect)) + " has no function " + std::string(name);
    for (const Hint& hint : hints) {
        if (hint.name != name) continue;
        reason += "; ";
        reason += dialect == Dialect::sqlServer ? hint.inSqlServer : hint.inJet;
    }
    return reason;
}

std::string argumentCountRefusal(const Function& function)
{
    std::string count = std::to_string(function.fewest);
    if (function.most > function.fewest) {
        count +=
            function.parameters.back() == '*' ? " or more" : " to " + std::to_string(function.most);
    }
    return std::string(function.name) + " takes " + count +
           (count == "1" ? " argument" : " arguments");
}

std::string_view datePart(Dialect dialect, std::string_view name)
{
    using qmevents::text::sameName;
    for (const Part& part : parts) {
        if (dialect == Dialect::jet) {
            if (sameName(part.jet, name)) return part.code;
            continue;
        }
        for (const std::string_view spelling : part.sqlServer) {
            if (!spelling.empty() && sameName(spelling, name)) return part.code;
        }
    }
    return "";
}

} // namespace refhost
