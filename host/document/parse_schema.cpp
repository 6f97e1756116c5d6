#include "host/document/parser.h"

namespace refhost {

using syntax::AlterTable;
using syntax::ColumnDefinition;
using syntax::CreateIndex;
using syntax::CreateTable;
using syntax::CreateView;
using syntax::Drop;
using syntax::IndexColumn;
using syntax::KeyConstraint;
using syntax::ObjectKind;
using syntax::Statement;
using syntax::TypeUse;

namespace {

constexpr std::size_t mostJetColumns = 255;

} // namespace

Statement Parser::create()
{
    if (acceptWord("TABLE")) return createTable();
    if (acceptWord("INDEX")) return createIndex(false);
    if (acceptWord("UNIQUE")) {
        expectWord("INDEX", "after UNIQUE");
        return createIndex(true);
    }
    const std::string_view query = sqlServer() ? "VIEW" : "PROCEDURE";
    if (acceptWord(query)) return createView();
    if (peek().isWord("VIEW")) refuse(peek(), "here a stored query is made by CREATE PROCEDURE");
    unexpected("TABLE, INDEX, UNIQUE INDEX or " + std::string(query) + " after CREATE");
}

CreateTable Parser::createTable()
{
    CreateTable result;
    result.name = name("a table");
    expectSymbol("(", "before the columns");
    do {
        if (keyConstraint(result)) continue;
        result.columns.push_back(columnDefinition());
        if (!sqlServer() && result.columns.size() > mostJetColumns) {
            refuse(result.columns.back().name, "a Jet table has at most 255 columns");
        }
    } while (acceptSymbol(","));
    expectSymbol(")", "after the columns");
    if (result.columns.empty()) refuse(result.name, "a table has at least one column");
    return result;
}

// [CONSTRAINT name] PRIMARY KEY (columns), or UNIQUE (columns)
bool Parser::keyConstraint(CreateTable& table)
{
    if (acceptWord("CONSTRAINT")) {
        name("the constraint");
        if (!peek().isWord("PRIMARY") && !peek().isWord("UNIQUE")) {
            unexpected("PRIMARY KEY or UNIQUE");
        }
    }
    KeyConstraint key;
    if (acceptWord("PRIMARY")) {
        expectWord("KEY", "after PRIMARY");
        key.primary = true;
    } else if (!acceptWord("UNIQUE")) {
        return false;
    }
    if (sqlServer() && !acceptWord("CLUSTERED")) acceptWord("NONCLUSTERED");
    key.columns = nameList("a column");
    table.keys.push_back(std::move(key));
    return true;
}

ColumnDefinition Parser::columnDefinition()
{
    ColumnDefinition column;
    column.name = name("a column");
    column.type = typeUse();
    column.counter = column.type.type->counter;
    while (columnConstraint(column)) continue;
    return column;
}

// Reads one constraint of a column, if there is one.
bool Parser::columnConstraint(ColumnDefinition& column)
{
    if (peek().isWord("IDENTITY")) {
        if (!sqlServer()) refuse(peek(), "Jet numbers rows with the type COUNTER");
        if (column.type.type->kind != TypeKind::int32) {
            refuse(peek(), "an IDENTITY column is an INT");
        }
        take();
        if (acceptSymbol("(")) {
            if (fixedInteger("1") != 1) refuse(peek(), "IDENTITY begins at 1");
            expectSymbol(",", "after the seed");
            if (fixedInteger("1") != 1) refuse(peek(), "IDENTITY counts by 1");
            expectSymbol(")", "after the increment");
        }
        column.counter = true;
        return true;
    }
    if (acceptWord("NOT")) {
        expectWord("NULL", "after NOT");
        return column.notNull = true;
    }
    if (acceptWord("NULL")) return true;
    if (acceptWord("DEFAULT")) {
        column.defaultValue = expression();
        return true;
    }
    if (acceptWord("UNIQUE")) return column.unique = true;
    if (acceptWord("CONSTRAINT")) {
        name("the constraint");
        return true;
    }
    if (acceptWord("PRIMARY")) {
        expectWord("KEY", "after PRIMARY");
        if (sqlServer() && !acceptWord("CLUSTERED")) acceptWord("NONCLUSTERED");
        return column.primaryKey = true;
    }
    for (const std::string_view word : {"REFERENCES", "CHECK", "FOREIGN"}) {
        if (peek().isWord(word)) refuse(peek(), "this constraint is not kept by the document");
    }
    return false;
}

TypeUse Parser::typeUse()
{
    TypeUse use;
    use.at = peek();
    if (use.at.kind != TokenKind::word && use.at.kind != TokenKind::delimited) {
        unexpected("a type");
    }
    use.type = findTypeName(dialect_, nameOf(take()));
    if (!use.type) {
        refuse(use.at, std::string(dialectName(dialect_)) + " columns have the types " +
                           typeNames(dialect_));
    }
    use.unlimited = use.type->longText;
    if (use.type->length == TypeName::Length::none) {
        if (peek().isSymbol("(")) refuse(peek(), "this type has no length");
        return use;
    }
    expectSymbol("(", "and a length after the type");
    if (use.type->length == TypeName::Length::requiredOrMax && acceptWord("MAX")) {
        use.unlimited = true;
    } else {
        use.length = fixedInteger("a length");
        if (use.length < 1 || use.length > use.type->maximum) {
            refuse(use.at, "the length lies between 1 and " + std::to_string(use.type->maximum));
        }
    }
    expectSymbol(")", "after the length");
    return use;
}

CreateIndex Parser::createIndex(bool unique)
{
    CreateIndex result;
    result.unique = unique;
    result.name = name("an index");
    expectWord("ON", "after the index");
    result.table = name("a table");
    expectSymbol("(", "before the columns");
    do {
        IndexColumn column{name("a column")};
        column.descending = acceptWord("DESC");
        if (!column.descending) acceptWord("ASC");
        result.columns.push_back(column);
    } while (acceptSymbol(","));
    expectSymbol(")", "after the columns");
    if (!sqlServer() && acceptWord("WITH")) {
        expectWord("PRIMARY", "after WITH");
        result.primary = true;
    }
    return result;
}

CreateView Parser::createView()
{
    CreateView result;
    result.name = name("a query");
    if (peek().isSymbol("(")) refuse(peek(), "the columns are named in the query itself");
    expectWord("AS", "after the name");
    result.query = query();
    return result;
}

AlterTable Parser::alterTable()
{
    AlterTable result;
    expectWord("TABLE", "after ALTER");
    result.table = name("a table");
    if (acceptWord("ADD")) {
        if (peek().isWord("COLUMN")) {
            if (sqlServer()) refuse(peek(), "SQL Server adds with ADD name type");
            take();
        }
        do {
            result.added.push_back(columnDefinition());
        } while (acceptSymbol(","));
    } else if (acceptWord("ALTER")) {
        expectWord("COLUMN", "after ALTER");
        result.changed = columnDefinition();
    } else {
        unexpected("ADD or ALTER COLUMN");
    }
    return result;
}

Drop Parser::drop()
{
    struct Word {
        std::string_view word;
        ObjectKind kind;
    };
    static constexpr Word words[] = {{"TABLE", ObjectKind::table},
                                     {"VIEW", ObjectKind::view},
                                     {"PROCEDURE", ObjectKind::procedure},
                                     {"INDEX", ObjectKind::index}};
    Drop result;
    if (peek().isWord(sqlServer() ? "PROCEDURE" : "VIEW")) unexpected("another kind of object");
    for (const Word& word : words) {
        if (!acceptWord(word.word)) continue;
        result.kind = word.kind;
        result.name = name("a name");
        if (word.kind == ObjectKind::index) {
            expectWord("ON", "after the index");
            result.table = name("a table");
        }
        return result;
    }
    unexpected("TABLE, VIEW, PROCEDURE or INDEX after DROP");
}

} // namespace refhost
