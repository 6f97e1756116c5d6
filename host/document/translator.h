#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/document/catalog.h"
#include "host/document/functions.h"
#include "host/document/plan.h"
#include "host/document/syntax.h"

namespace refhost {

/// A translated expression.
struct Piece {
    std::string sql{};
    SqlType type{};
    bool condition = false;                ///< True, false or unknown rather than a value.
    const syntax::Expr* literal = nullptr; ///< The literal that it consists of.
    int parameter = -1;                    ///< The literal's parameter; -1 when it stands in `sql`.
    std::string stored{}; ///< A yes/no column as it is stored, without the dialect's truth.
};

/// A column that a query gives.
struct Output {
    std::string name{};
    SqlType type{};
    std::string sql{};
    std::string stored{}; ///< As of a Piece.
    std::string source{}; ///< The table that a plain column comes from.
    bool aliased = false;
    bool aggregate = false;
};

/// What a query is ordered by.
struct OrderTerm {
    std::string sql{};
    SqlType type{};
    bool descending = false;
    std::optional<std::size_t> output{}; ///< The output that it is, if it is one.
};

/// The name of an output where a wrapping query numbers them.
inline std::string numberedColumn(std::size_t index)
{
    return "\"c" + std::to_string(index) + "\"";
}

/// The end of a CASE expression. One that is the last alternative of another continues it, because
/// the engine limits how deep expressions nest.
inline std::string elseText(const std::string& otherwise)
{
    constexpr std::string_view nested = "CASE WHEN ";
    if (otherwise.starts_with(nested)) return otherwise.substr(nested.find(' '));
    return " ELSE " + otherwise + " END";
}

/// A table of a FROM clause.
struct Source {
    std::string alias{};
    std::string table{}; ///< Empty for a derived table.
    std::vector<CatalogColumn> columns{};
    bool stored = false;    ///< A table whose rows have numbers in the engine.
    bool updatable = false; ///< A table, or a query that neither groups nor unites.
    bool nullable = false;  ///< On the outer side of a join.
};

/// The names that an expression can refer to, and what GROUP BY demands of it.
struct Scope {
    Scope* parent = nullptr;
    std::vector<Source> sources{};
    std::size_t visibleFrom = 0; ///< A join condition sees the tables of its join only.
    bool aggregates = false;     ///< Whether aggregates may stand here.
    bool insideAggregate = false;
    bool checksGroups = false;
    std::set<std::string> groupKeys{};
    const Token* ungrouped = nullptr; ///< The first column that no group covers.
    bool sawAggregate = false;
    std::vector<std::size_t> usedSources{}; ///< Sources of the columns referred to.
};

/// A translated query.
struct QueryText {
    std::string sql;
    std::vector<Output> outputs;
    bool updatable = true;
};

/// Checks a statement against the catalog and writes it for the embedded engine. Every value has a
/// type, so that texts, dates, numbers and conditions meet only where the dialect's engine lets
/// them. Throws Refusal.
class Translator {
public:
    /// What a query is used for; it decides about names and order.
    enum class Use { result, derived, view, value, exists, rows };

    Translator(Dialect dialect, Catalog& catalog) : dialect_(dialect), catalog_(catalog) {}

    /// The plan of a statement that reads or changes data.
    Plan plan(const syntax::Statement& statement);
    /// A stored query; its literals are written out.
    QueryText view(const syntax::Query& query);
    /// A column's default, written out in the form of the column.
    std::string defaultValue(const syntax::Expr& expr, const CatalogColumn& column);

private:
    class WrittenOut;

    bool sqlServer() const { return dialect_ == Dialect::sqlServer; }

    // Queries
    QueryText query(const syntax::Query& query, Scope* parent, Use use);
    QueryText unionOf(const syntax::Query& query, Scope* parent, Use use);
    void unite(std::vector<Output>& outputs, const std::vector<Output>& next,
               const Token& at) const;
    QueryText select(const syntax::Select& select, const std::vector<syntax::OrderItem>& orderBy,
                     Scope* parent, Use use, bool collates = false);
    bool isGrouped(const syntax::Select& select) const;
    std::vector<Output> outputsOf(const syntax::Select& select, Scope& scope);
    void addStar(const syntax::SelectItem& item, Scope& scope, std::vector<Output>& outputs);
    Output outputOf(const syntax::SelectItem& item, Scope& scope);
    void nameOutputs(std::vector<Output>& outputs, const Token& at, Use use) const;
    void nameJetOutputs(std::vector<Output>& outputs, const Token& at) const;
    std::string itemList(const std::vector<Output>& outputs, Use use, bool collates,
                         bool numbered) const;
    std::string groupBy(const syntax::Select& select, Scope& scope);
    std::string distinctRowGroups(const syntax::Select& select, const Scope& scope) const;
    std::vector<OrderTerm> orderTerms(const syntax::Select& select,
                                      const std::vector<syntax::OrderItem>& orderBy, Scope& scope,
                                      const std::vector<Output>& outputs);
    std::string orderList(const std::vector<OrderTerm>& terms, bool byOutput) const;
    /// The output that an item of ORDER BY names by position or by name, if it does.
    std::optional<std::size_t> orderedOutput(const syntax::Expr& expr, const Scope* scope,
                                             const std::vector<Output>& outputs);
    void requireUngrouped(const Scope& scope) const;
    void requireDistinct(const SqlType& type, const Token& at, std::string_view clause) const;
    Piece groupedExpression(const syntax::Expr& expr, Scope& scope);

    // FROM
    std::string from(const std::vector<syntax::TableRefPtr>& tables, Scope& scope);
    std::string table(const syntax::TableRef& ref, Scope& scope);
    std::string namedTable(const syntax::TableRef& ref, Scope& scope);
    std::string derivedTable(const syntax::TableRef& ref, Scope& scope);
    std::string join(const syntax::TableRef& ref, Scope& scope);
    void checkJetJoin(const syntax::TableRef& ref, const Scope& scope,
                      const std::vector<std::size_t>& joined) const;
    void addSource(Scope& scope, Source source, const Token& at) const;
    const CatalogTable& tableNamed(const Token& name);
    const CatalogTable& storedTable(const Token& name);

    // Expressions
    Piece expression(const syntax::Expr& expr, Scope& scope);
    Piece anyExpression(const syntax::Expr& expr, Scope& scope);
    Piece value(const syntax::Expr& expr, Scope& scope);
    std::string condition(const syntax::Expr& expr, Scope& scope);
    std::string asCondition(const Piece& piece, const syntax::Expr& expr) const;
    Piece asValue(Piece piece, const syntax::Expr& expr) const;
    Piece literal(const syntax::Expr& expr);
    Piece column(const syntax::Expr& expr, Scope& scope);
    Piece columnOf(Scope& scope, std::size_t source, const CatalogColumn& found, const Token& at);
    Piece negate(const syntax::Expr& expr, Scope& scope);
    Piece arithmetic(const syntax::Expr& expr, Scope& scope);
    Piece joinTexts(const syntax::Expr& expr, Piece left, const Piece& right);
    Piece dateArithmetic(const syntax::Expr& expr, const Piece& left, const Piece& right) const;
    Piece division(const syntax::Expr& expr, const Piece& left, const Piece& right) const;
    Piece comparison(const syntax::Expr& expr, Scope& scope);
    Piece logical(const syntax::Expr& expr, Scope& scope);
    Piece isNull(const syntax::Expr& expr, Scope& scope);
    Piece like(const syntax::Expr& expr, Scope& scope);
    Piece between(const syntax::Expr& expr, Scope& scope);
    Piece inList(const syntax::Expr& expr, Scope& scope);
    Piece inQuery(const syntax::Expr& expr, Scope& scope);
    Piece subquery(const syntax::Expr& expr, Scope& scope);
    QueryText singleColumn(const syntax::Expr& expr, Scope& scope);
    Piece caseWhen(const syntax::Expr& expr, Scope& scope);
    Piece cast(const syntax::Expr& expr, Scope& scope);

    // Functions
    Piece call(const syntax::Expr& expr, Scope& scope);
    Piece specialCall(const syntax::Expr& expr, const Function& function, Scope& scope);
    std::vector<Piece> arguments(const syntax::Expr& expr, const Function& function, Scope& scope);
    Piece argument(const syntax::Expr& expr, char parameter, Scope& scope);
    Piece aggregate(const syntax::Expr& expr, Scope& scope);
    Piece isDate(const syntax::Expr& expr, Scope& scope);
    Piece format(const syntax::Expr& expr, Scope& scope);
    Piece firstNotNull(const syntax::Expr& expr, Scope& scope);
    Piece conversionCall(const syntax::Expr& expr, Scope& scope);

    // Types
    /// Makes two values comparable, or refuses at `at`; true when they compare as texts.
    bool align(Piece& left, Piece& right, const Token& at);
    /// The type that two alternatives share; texts beside other types as the dialect has it.
    SqlType unify(const SqlType& first, const SqlType& second, const Token& at) const;
    Piece converted(Piece piece, const SqlType& target, Purpose purpose,
                    const std::string& column = "");
    /// `piece` in the form that `column` stores.
    std::string assigned(Piece piece, const CatalogColumn& column, const Token& at);
    void requireComparable(const SqlType& type, const Token& at, std::string_view purpose) const;
    std::string collated(const std::string& sql, const SqlType& type) const;

    // Changes
    Plan insert(const syntax::Insert& insert);
    std::vector<const CatalogColumn*> insertColumns(const syntax::Insert& insert,
                                                    const CatalogTable& table) const;
    std::string insertedRows(const syntax::Insert& insert,
                             const std::vector<const CatalogColumn*>& columns);
    std::string insertedQuery(const syntax::Insert& insert,
                              const std::vector<const CatalogColumn*>& columns);
    Plan update(const syntax::Update& update);
    std::string simpleUpdate(const syntax::Update& update, const CatalogTable& table);
    std::string joinedUpdate(const syntax::Update& update);
    std::size_t jetUpdateTarget(const syntax::Update& update, const Scope& scope) const;
    std::vector<std::string> assignments(const syntax::Update& update, std::size_t target,
                                         Scope& scope, std::vector<std::string>& columns);
    Plan deletion(const syntax::Delete& deletion);
    std::size_t targetNamed(const Token& name, const Scope& scope) const;
    std::string where(const syntax::ExprPtr& where, Scope& scope);
    Plan finish(Plan::Kind kind, std::string sql);

    Dialect dialect_;
    Catalog& catalog_;
    std::vector<Parameter> parameters_;
    std::vector<std::size_t> fixedTokens_;
    bool writtenOut_ = false;
};

/// Writes literals into the text instead of binding them, for a scope.
class Translator::WrittenOut {
public:
    WrittenOut(Translator& translator, bool writtenOut)
        : translator_(translator), before_(translator.writtenOut_)
    {
        translator.writtenOut_ = before_ || writtenOut;
    }
    WrittenOut(const WrittenOut&) = delete;
    WrittenOut& operator=(const WrittenOut&) = delete;
    ~WrittenOut() { translator_.writtenOut_ = before_; }

private:
    Translator& translator_;
    bool before_;
};

} // namespace refhost
