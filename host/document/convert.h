#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "automation/date.h"
#include "host/document/dialect.h"
#include "host/document/host_value.h"
#include "host/document/sql_error.h"
#include "host/document/sql_type.h"

namespace refhost {

/// A value that does not fit the type where it stands.
struct ConversionError : std::runtime_error {
    ConversionError(SqlErrorNumber errorNumber, const std::string& reason)
        : std::runtime_error(reason), number(errorNumber)
    {
    }
    SqlErrorNumber number;
};

/// Why a value is converted: what does not fit a column is an error, a cast cuts its text.
enum class Purpose { compare, assign, cast };

/// `value`, stored as `from` is, in the storage form of `to`. Dates are stored as
/// "yyyy-mm-dd hh:nn:ss", money rounded to four decimals, yes/no as 0 and the dialect's truth.
/// Null stays null. Throws ConversionError.
HostValue convert(HostValue value, TypeKind from, const SqlType& to, Dialect dialect,
                  Purpose purpose);

/// The engine's call that converts the value of `sql` so.
std::string convertedSql(const std::string& sql, TypeKind from, const SqlType& to, Dialect dialect,
                         Purpose purpose);

/// The number that `text` is, or nothing. Throws ConversionError when it is too big for any number.
std::optional<double> readNumber(std::string_view text);

/// A date text as the engine reads it whatever language its user speaks: in SQL Server
/// "yyyy-mm-ddThh:nn:ss", "yyyymmdd" and "yyyymmdd hh:nn:ss" (an empty text is 1 January 1900); in
/// Jet what a user would type. Throws ConversionError.
qmevents::Date readDate(std::string_view text, Dialect dialect);
/// Whether the engine's IsDate takes `text` for a date.
bool readsAsDate(std::string_view text, Dialect dialect);

/// The content of Jet's #...#: "yyyy-mm-dd hh:nn:ss" or month/day/year, each with or without a
/// time. Nothing when it is no date.
std::optional<qmevents::Date> readJetDate(std::string_view content);

/// A stored date. Throws ConversionError when it is none.
qmevents::Date storedDate(std::string_view text);

/// `amount` rounded to four decimals. Throws ConversionError out of money's range.
double roundedMoney(double amount);

} // namespace refhost
