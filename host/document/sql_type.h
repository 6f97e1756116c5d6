#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/document/dialect.h"

namespace refhost {

/// What a column or an expression holds. The order of the numbers is that of their promotion.
enum class TypeKind : std::uint8_t {
    unknown, ///< A NULL: fits every other type.
    yesNo,
    int16,
    int32,
    currency,
    real,
    date,
    text,
};

/// A type with what the dialects distinguish about texts.
struct SqlType {
    TypeKind kind = TypeKind::unknown;
    std::int32_t length = 0;   ///< Of a text column, in UTF-16 units; 0 without a limit.
    bool unlimited = false;    ///< A column for long texts.
    bool incomparable = false; ///< A long text that SQL Server cannot compare or sort.

    bool isNumber() const { return kind >= TypeKind::yesNo && kind <= TypeKind::real; }
    bool isWhole() const { return kind >= TypeKind::yesNo && kind <= TypeKind::int32; }
    bool is(TypeKind other) const { return kind == other; }
    bool operator==(const SqlType&) const = default;
};

/// A type as a dialect's CREATE TABLE names it.
struct TypeName {
    std::string_view name;
    TypeKind kind;
    enum class Length { none, required, requiredOrMax } length = Length::none;
    std::int32_t maximum = 0; ///< Longest length that the engine allows.
    bool counter = false;     ///< Numbers its rows by itself.
    bool longText = false;
    bool incomparable = false;
};

/// The type that `dialect` calls `name` in a table, or nothing.
const TypeName* findTypeName(Dialect dialect, std::string_view name);
/// All names of the dialect's types, separated by commas, for messages.
std::string typeNames(Dialect dialect);

/// How a column of this type is declared in the database file.
std::string declaration(const SqlType& type);
/// The type that a declaration in the database file stands for, be it ours or the host's own.
SqlType declaredType(std::string_view declaration);

/// The name of a kind in messages: "date", "currency", "text".
std::string_view kindName(TypeKind kind);

} // namespace refhost
