#include "sql_testing.h"

#include <gtest/gtest.h>

#include "automation/conversions.h"

namespace refhost::testing {
namespace {

constexpr const char* setUp[] = {
    "CREATE TABLE donors (Id INT IDENTITY(1,1) PRIMARY KEY, Name NVARCHAR(20) NOT NULL, "
    "City NVARCHAR(20) NULL, Born DATETIME NULL, Member BIT NOT NULL DEFAULT 0, "
    "Rank SMALLINT NULL, Notes NTEXT NULL, Diary NVARCHAR(MAX) NULL)",
    "CREATE TABLE gifts (Id INT IDENTITY(1,1) PRIMARY KEY, DonorId INT NOT NULL, "
    "Amount MONEY NULL, GivenOn DATETIME NULL, Share FLOAT NULL, [Order] INT NULL)",
    "CREATE TABLE codes (Code NVARCHAR(10), Meaning NVARCHAR(20))",
    "CREATE VIEW bigGifts AS SELECT Id, DonorId, Amount, GivenOn FROM gifts WHERE Amount > 10",
    "CREATE VIEW donorTotals AS SELECT DonorId, SUM(Amount) AS Total, COUNT(*) AS Gifts "
    "FROM gifts GROUP BY DonorId",
    "INSERT INTO donors (Name, City, Born, Member, Rank) "
    "VALUES ('Ann', 'Bonn', '1980-02-29T00:00:00', 1, 1)",
    "INSERT INTO donors (Name, City, Member, Rank) VALUES ('bob', 'Ulm', 0, 2)",
    "INSERT INTO donors (Name, Member, Notes) VALUES ('Cyd', 1, 'long text')",
    "INSERT INTO gifts (DonorId, Amount, GivenOn, Share, [Order]) "
    "VALUES (1, 10.5, '2026-01-31T10:00:00', 0.5, 3)",
    "INSERT INTO gifts (DonorId, Amount, GivenOn, Share, [Order]) "
    "VALUES (1, 20.25, '2026-02-28T23:59:59', 1.5, 1)",
    "INSERT INTO gifts (DonorId, Amount, GivenOn, [Order]) "
    "VALUES (2, 5, '2026-03-01T18:30:00', 2)",
    "INSERT INTO gifts (DonorId, Amount) VALUES (9, NULL)",
};

} // namespace

GiftDatabase::GiftDatabase(const std::shared_ptr<Database>& shared)
    : database(shared), sqlServer(shared, Dialect::sqlServer), jet(shared, Dialect::jet)
{
    for (const char* const statement : setUp) sqlServer.execute(statement);
}

std::string shown(const qmevents::Value& value)
{
    if (value.isNull()) return "Null";
    if (value.is(qmevents::ValueKind::date)) return value.as<qmevents::Date>().iso();
    return qmevents::toText(value);
}

std::string row(const Cursor& cursor)
{
    std::string cells;
    for (std::size_t i = 0; i < cursor.columnCount(); ++i) {
        cells += (i > 0 ? "|" : "") + shown(cursor.value(i));
    }
    return cells;
}

std::string rows(SqlSession& session, std::string_view sql)
{
    std::string all;
    for (const auto cursor = session.query(sql); !cursor->eof(); cursor->next()) {
        all += (all.empty() ? "" : "; ") + row(*cursor);
    }
    return all;
}

std::string kinds(SqlSession& session, std::string_view sql)
{
    const auto cursor = session.query(sql);
    std::string all;
    for (std::size_t i = 0; i < cursor->columnCount(); ++i) {
        all += (i > 0 ? "|" : "") + qmevents::typeName(cursor->value(i));
    }
    return all;
}

std::string columnNames(SqlSession& session, std::string_view sql)
{
    const auto cursor = session.query(sql);
    std::string all;
    for (std::size_t i = 0; i < cursor->columnCount(); ++i) {
        all += (i > 0 ? "|" : "") + cursor->columnName(i);
    }
    return all;
}

void run(SqlSession& session, std::string_view sql)
{
    const std::size_t start = sql.find_first_not_of(" (");
    if (start != std::string_view::npos && sql.substr(start, 6) == "SELECT") {
        rows(session, sql);
    } else {
        session.execute(sql);
    }
}

std::string refusal(SqlSession& session, std::string_view sql)
{
    try {
        run(session, sql);
    } catch (const qmevents::Error& error) {
        EXPECT_EQ(error.source(), "Document");
        return error.description();
    }
    return "";
}

} // namespace refhost::testing
