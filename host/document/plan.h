#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/document/convert.h"
#include "host/document/lexer.h"
#include "host/document/sql_type.h"

namespace refhost {

struct ResultColumn {
    std::string name{};
    SqlType type{};
};

/// A literal of the statement that is bound each time it runs.
struct Parameter {
    std::size_t token = 0; ///< Its index among the statement's tokens.
    bool negative = false;
    SqlType target{}; ///< The type where it stands; unknown for its own.
    Purpose purpose = Purpose::compare;
    std::string column{}; ///< The column that it is written to, for messages.
};

/// A translated statement: what the embedded engine runs for every statement of one shape.
struct Plan {
    enum class Kind { read, write, schema };
    enum class Identity { kept, counted, uncounted };

    Kind kind = Kind::read;
    std::vector<std::string> sql; ///< More than one for some changes of the schema.
    std::vector<ResultColumn> columns;
    std::vector<Parameter> parameters;
    std::vector<std::size_t> fixedTokens; ///< Literals that are part of the plan, sorted.
    Identity identity = Identity::kept;   ///< What an INSERT does to @@IDENTITY.
};

/// The type that a literal has by itself.
TypeKind literalKind(const Token& token);
/// What `token` stands for at the place that `parameter` describes. Throws Refusal.
HostValue literalValue(const Token& token, const Parameter& parameter, Dialect dialect);

/// Parses and translates a statement.
class Catalog;
Plan makePlan(Dialect dialect, Catalog& catalog, const std::vector<Token>& tokens);

} // namespace refhost
