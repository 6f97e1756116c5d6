#include "host/document/sql_type.h"

#include <array>
#include <charconv>
#include <span>

#include "automation/text.h"

namespace refhost {
namespace {

using Length = TypeName::Length;

constexpr std::array sqlServerTypes{
    TypeName{.name = "INT", .kind = TypeKind::int32},
    TypeName{.name = "SMALLINT", .kind = TypeKind::int16},
    TypeName{.name = "BIT", .kind = TypeKind::yesNo},
    TypeName{.name = "MONEY", .kind = TypeKind::currency},
    TypeName{.name = "FLOAT", .kind = TypeKind::real},
    TypeName{.name = "DATETIME", .kind = TypeKind::date},
    TypeName{.name = "NVARCHAR",
             .kind = TypeKind::text,
             .length = Length::requiredOrMax,
             .maximum = 4000},
    TypeName{.name = "NTEXT", .kind = TypeKind::text, .longText = true, .incomparable = true},
};

constexpr std::array jetTypes{
    TypeName{.name = "COUNTER", .kind = TypeKind::int32, .counter = true},
    TypeName{.name = "LONG", .kind = TypeKind::int32},
    TypeName{.name = "SHORT", .kind = TypeKind::int16},
    TypeName{.name = "YESNO", .kind = TypeKind::yesNo},
    TypeName{.name = "CURRENCY", .kind = TypeKind::currency},
    TypeName{.name = "DOUBLE", .kind = TypeKind::real},
    TypeName{.name = "DATETIME", .kind = TypeKind::date},
    TypeName{.name = "TEXT", .kind = TypeKind::text, .length = Length::required, .maximum = 255},
    TypeName{.name = "MEMO", .kind = TypeKind::text, .longText = true},
};

std::span<const TypeName> typesOf(Dialect dialect)
{
    if (dialect == Dialect::sqlServer) return sqlServerTypes;
    return jetTypes;
}

// The first word of a declaration decides; the second gives the engine's storage class.
struct Declaration {
    std::string_view firstWord;
    SqlType type;
    std::string_view declared;
};

constexpr SqlType plain(TypeKind kind) { return {.kind = kind}; }
constexpr SqlType longText{.kind = TypeKind::text, .unlimited = true};
constexpr SqlType ntext{.kind = TypeKind::text, .unlimited = true, .incomparable = true};

constexpr Declaration declarations[] = {
    {"INT", plain(TypeKind::int32), "INT"},
    {"SMALLINT", plain(TypeKind::int16), "SMALLINT"},
    {"BIT", plain(TypeKind::yesNo), "BIT INTEGER"},
    {"MONEY", plain(TypeKind::currency), "MONEY REAL"},
    {"FLOAT", plain(TypeKind::real), "FLOAT"},
    {"DATETIME", plain(TypeKind::date), "DATETIME TEXT"},
    {"NTEXT", ntext, "NTEXT"},
    {"MEMO", longText, "MEMO TEXT"},
    // What the host's own tables say.
    {"INTEGER", plain(TypeKind::int32), "INTEGER"},
    {"REAL", plain(TypeKind::real), "REAL"},
    {"DOUBLE", plain(TypeKind::real), "DOUBLE"},
    {"TEXT", longText, "TEXT"},
};

} // namespace

const TypeName* findTypeName(Dialect dialect, std::string_view name)
{
    for (const TypeName& type : typesOf(dialect)) {
        if (qmevents::text::sameName(type.name, name)) return &type;
    }
    return nullptr;
}

std::string typeNames(Dialect dialect)
{
    std::string names;
    for (const TypeName& type : typesOf(dialect)) {
        if (!names.empty()) names += ", ";
        names += type.name;
    }
    return names;
}

std::string declaration(const SqlType& type)
{
    if (type.is(TypeKind::text) && !type.unlimited) {
        return "NVARCHAR(" + std::to_string(type.length) + ")";
    }
    for (const Declaration& row : declarations) {
        if (row.type == type) return std::string(row.declared);
    }
    return "";
}

SqlType declaredType(std::string_view declaration)
{
    using qmevents::text::sameName;
    const std::string_view word = declaration.substr(0, declaration.find_first_of(" ("));
    if (sameName(word, "NVARCHAR")) {
        SqlType type{.kind = TypeKind::text};
        const std::size_t open = declaration.find('(');
        type.unlimited = open == std::string_view::npos;
        if (!type.unlimited) {
            const char* const end = declaration.data() + declaration.size();
            std::from_chars(declaration.data() + open + 1, end, type.length);
        }
        return type;
    }
    for (const Declaration& row : declarations) {
        if (sameName(row.firstWord, word)) return row.type;
    }
    return {};
}

std::string_view kindName(TypeKind kind)
{
    switch (kind) {
    case TypeKind::unknown:
        return "Null";
    case TypeKind::yesNo:
        return "yes/no";
    case TypeKind::int16:
        return "short integer";
    case TypeKind::int32:
        return "integer";
    case TypeKind::currency:
        return "currency";
    case TypeKind::real:
        return "number";
    case TypeKind::date:
        return "date";
    case TypeKind::text:
        return "text";
    }
    return "";
}

} // namespace refhost
