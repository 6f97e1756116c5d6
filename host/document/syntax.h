#pragma once

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/document/lexer.h"
#include "host/document/sql_type.h"

// What the parser makes of a statement. Tokens point into the statement's text.
namespace refhost::syntax {

struct Query;

/// A type where it is used, with its length.
struct TypeUse {
    const TypeName* type = nullptr;
    std::int32_t length = 0; ///< 0: none was given, or MAX.
    bool unlimited = false;
    Token at;
};

enum class ExprKind {
    literal,
    null,
    boolean, ///< Jet's True and False.
    identity,
    column,
    negate,
    arithmetic,
    comparison,
    logical,
    negation, ///< NOT
    isNull,
    like,
    between,
    inList,
    inQuery,
    exists,
    subquery,
    caseWhen,
    call,
    cast,
};

struct Expr {
    ExprKind kind = ExprKind::literal;
    Token at;         ///< The token that stands for it in messages: an operator, a name, a literal.
    std::string name; ///< Of a column or a function (upper case), or the operator.
    std::string qualifier; ///< Of a column: the table before the point.
    std::vector<std::unique_ptr<Expr>> arguments;
    std::unique_ptr<Query> query;
    TypeUse type;               ///< Of a cast.
    std::size_t tokenIndex = 0; ///< Of a literal.
    std::optional<Token> style; ///< Of a CONVERT.
    bool negative = false;      ///< A literal with a minus sign, or False.
    bool negated = false;       ///< NOT LIKE, NOT IN, IS NOT NULL, ...
    bool distinct = false;      ///< COUNT(DISTINCT x)
    bool star = false;          ///< COUNT(*)
    bool parenthesised = false; ///< Stood in parentheses.
    bool withOperand = false;   ///< CASE x WHEN ...
    bool withElse = false;
    int depth = 1;
};
using ExprPtr = std::unique_ptr<Expr>;

enum class JoinKind { inner, left, right, full, cross };

struct TableRef {
    enum class Kind { table, derived, join } kind = Kind::table;
    Token at;
    std::string name;
    std::string alias; ///< Empty without one.
    std::unique_ptr<Query> query;
    JoinKind join = JoinKind::inner;
    std::unique_ptr<TableRef> left, right;
    ExprPtr on;
};
using TableRefPtr = std::unique_ptr<TableRef>;

struct SelectItem {
    Token at;
    ExprPtr expr;          ///< Nothing for a star.
    std::string qualifier; ///< Of "t.*"; empty for "*".
    std::string alias;
};

struct Select {
    Token at;
    std::optional<std::int64_t> top;
    bool distinct = false;
    bool distinctRow = false;
    std::vector<SelectItem> items;
    std::vector<TableRefPtr> from;
    ExprPtr where, having;
    std::vector<ExprPtr> groupBy;
};

struct OrderItem {
    ExprPtr expr;
    bool descending = false;
};

/// One SELECT or several joined by UNION.
struct Query {
    std::vector<Select> selects;
    std::vector<bool> unionAll; ///< Between selects i and i + 1.
    std::vector<OrderItem> orderBy;
};
using QueryPtr = std::unique_ptr<Query>;

struct Insert {
    Token table;
    std::vector<Token> columns;
    std::vector<std::vector<ExprPtr>> rows;
    QueryPtr query;
};

struct Assignment {
    Token at;
    std::string qualifier, column;
    ExprPtr value;
};

/// `target` names a table of `from` when there is one, else a table of the database.
struct Update {
    Token target;
    std::vector<Assignment> assignments;
    std::vector<TableRefPtr> from;
    ExprPtr where;
};

struct Delete {
    Token target;
    std::vector<TableRefPtr> from;
    ExprPtr where;
};

struct ColumnDefinition {
    Token name;
    TypeUse type;
    bool counter = false;
    bool notNull = false;
    bool primaryKey = false;
    bool unique = false;
    ExprPtr defaultValue;
};

struct KeyConstraint {
    bool primary = false;
    std::vector<Token> columns;
};

struct CreateTable {
    Token name;
    std::vector<ColumnDefinition> columns;
    std::vector<KeyConstraint> keys;
};

struct IndexColumn {
    Token name;
    bool descending = false;
};

struct CreateIndex {
    Token name, table;
    bool unique = false;
    bool primary = false;
    std::vector<IndexColumn> columns;
};

struct AlterTable {
    Token table;
    std::vector<ColumnDefinition> added;
    std::optional<ColumnDefinition> changed;
};

/// A view, or Jet's stored query.
struct CreateView {
    Token name;
    QueryPtr query;
};

enum class ObjectKind { table, view, procedure, index };

struct Drop {
    ObjectKind kind = ObjectKind::table;
    Token name;
    Token table; ///< Of an index.
};

using Statement = std::variant<QueryPtr, Insert, Update, Delete, CreateTable, CreateIndex,
                               AlterTable, CreateView, Drop>;

} // namespace refhost::syntax
