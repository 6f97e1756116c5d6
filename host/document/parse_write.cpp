#include "host/document/parser.h"

namespace refhost {

using syntax::Assignment;
using syntax::Delete;
using syntax::ExprPtr;
using syntax::Insert;
using syntax::TableRef;
using syntax::TableRefPtr;
using syntax::Update;

Insert Parser::insert()
{
    Insert result;
    if (!acceptWord("INTO") && !sqlServer()) unexpected("INTO");
    result.table = name("a table");
    if (peek().isSymbol("(")) result.columns = nameList("a column");
    if (peek().isWord("SELECT")) {
        result.query = query();
        return result;
    }
    expectWord("VALUES", "or a SELECT");
    result.rows.push_back(valueRow());
    while (peek().isSymbol(",")) {
        if (!sqlServer()) refuse(peek(), "Jet inserts one row a statement");
        constexpr std::size_t mostRows = 1000;
        if (result.rows.size() == mostRows) refuse(peek(), "VALUES holds at most 1,000 rows");
        take();
        result.rows.push_back(valueRow());
    }
    return result;
}

std::vector<ExprPtr> Parser::valueRow()
{
    std::vector<ExprPtr> row;
    expectSymbol("(", "before the values");
    do {
        row.push_back(expression());
    } while (acceptSymbol(","));
    expectSymbol(")", "after the values");
    return row;
}

// SQL Server joins after SET, Jet before it.
Update Parser::update()
{
    Update result;
    if (sqlServer()) {
        result.target = name("a table");
        if (joinKind()) {
            refuse(peek(), "SQL Server updates a join with UPDATE t SET ... FROM t INNER JOIN ...");
        }
    } else {
        result.target = peek();
        result.from.push_back(joinTree());
    }
    expectWord("SET", "after the table");
    result.assignments = assignments();
    if (peek().isWord("FROM")) {
        if (!sqlServer()) {
            refuse(peek(), "Jet updates a join with UPDATE t INNER JOIN ... SET ...");
        }
        take();
        result.from = fromList();
    }
    if (acceptWord("WHERE")) result.where = expression();
    return result;
}

std::vector<Assignment> Parser::assignments()
{
    std::vector<Assignment> result;
    do {
        Assignment assignment;
        assignment.at = name("a column");
        assignment.column = nameOf(assignment.at);
        if (acceptSymbol(".")) {
            assignment.qualifier = std::move(assignment.column);
            assignment.at = name("a column after the point");
            assignment.column = nameOf(assignment.at);
        }
        expectSymbol("=", "after the column");
        assignment.value = expression();
        result.push_back(std::move(assignment));
    } while (acceptSymbol(","));
    return result;
}

Delete Parser::deletion()
{
    Delete result;
    if (sqlServer()) {
        if (peek().isSymbol("*") || peek().isWord("DISTINCTROW") || peek(1).isSymbol(".")) {
            refuse(peek(), "SQL Server deletes with DELETE t FROM t ...");
        }
        const bool bare = acceptWord("FROM");
        result.target = name("a table");
        if (peek().isWord("FROM")) {
            if (bare) unexpected("WHERE");
            take();
            result.from = fromList();
        }
    } else {
        jetDeleteTarget(result);
    }
    if (acceptWord("WHERE")) result.where = expression();
    return result;
}

// DELETE FROM t, DELETE * FROM t, DELETE [DISTINCTROW] t.* FROM ...
void Parser::jetDeleteTarget(Delete& result)
{
    const bool distinctRow = acceptWord("DISTINCTROW");
    bool named = false;
    if (!acceptSymbol("*") && !peek().isWord("FROM")) {
        result.target = name("FROM or a table");
        expectSymbol(".", "and *; Jet deletes with DELETE FROM t or DELETE DISTINCTROW t.* FROM");
        expectSymbol("*", "after the point");
        named = true;
    }
    expectWord("FROM", "before the tables");
    const Token first = peek();
    std::vector<TableRefPtr> tables = fromList();
    const bool single = tables.size() == 1 && tables[0]->kind == TableRef::Kind::table;
    if (!single) {
        if (!named) refuse(first, "Jet deletes from a join with DELETE DISTINCTROW t.* FROM ...");
        if (!distinctRow) refuse(result.target, "Jet deletes from a join only with DISTINCTROW");
    }
    if (!named) {
        result.target = first;
        if (!tables[0]->alias.empty()) unexpected("no other name of the table");
        return;
    }
    result.from = std::move(tables);
}

} // namespace refhost
