#include <gtest/gtest.h>

#include "automation/clock.h"
#include "sql_testing.h"

namespace refhost::testing {
namespace {

TEST(Insert, ConvertsValuesToTheirColumns)
{
    GiftDatabase data;
    SqlSession& sql = data.sqlServer;
    SqlSession& jet = data.jet;
    sql.execute("INSERT INTO gifts (DonorId, Amount, GivenOn, Share, [Order]) "
                "VALUES (2.9, 1.23456, '20260704', 3, '12')");
    jet.execute("INSERT INTO gifts (DonorId, Amount, GivenOn, Share, [Order]) "
                "VALUES (2.5, '7.5', #2026-07-04 08:09:10#, '0.25', Null)");
    sql.execute("INSERT INTO gifts (DonorId, GivenOn) VALUES ('', '')");
    EXPECT_EQ(rows(sql, "SELECT DonorId, Amount, GivenOn, Share, [Order] FROM gifts WHERE Id > 4"),
              "2|1.2346|2026-07-04 00:00:00|3|12; "
              "2|7.5|2026-07-04 08:09:10|0.25|Null; "
              "0|Null|1900-01-01 00:00:00|Null|Null");
    EXPECT_EQ(kinds(sql, "SELECT Amount, Share FROM gifts WHERE Id = 5"), "Currency|Double");
}

TEST(Insert, ChecksWhatAnotherQueryGives)
{
    GiftDatabase data;
    EXPECT_EQ(data.jet.execute("INSERT INTO codes (Code, Meaning) "
                               "SELECT Name, Amount FROM donors INNER JOIN gifts "
                               "ON donors.Id = gifts.DonorId"),
              3);
    EXPECT_EQ(rows(data.jet, "SELECT Code, Meaning FROM codes ORDER BY Code, Meaning"),
              "Ann|10.5; Ann|20.25; bob|5");
    EXPECT_NE(refusal(data.jet, "INSERT INTO gifts (DonorId) SELECT Name FROM donors")
                  .find("'Ann' is no integer"),
              std::string::npos);
    EXPECT_EQ(rows(data.jet, "SELECT COUNT(*) AS n FROM gifts"), "4");
}

TEST(Insert, KeepsTextsExactly)
{
    GiftDatabase data;
    data.sqlServer.execute(
        "INSERT INTO codes (Code, Meaning) VALUES ('it''s', N'\"\xE2\x82\xAC''%')");
    data.jet.execute("INSERT INTO codes (Code, Meaning) VALUES (\"a\"\"b\", 'x\r\ny')");
    EXPECT_EQ(rows(data.jet, "SELECT Code, Meaning FROM codes"),
              "it's|\"\xE2\x82\xAC'%; a\"b|x\r\ny");
    // A character outside the basic plane counts twice, as the engines store it.
    EXPECT_EQ(refusal(data.jet, "INSERT INTO codes (Code) VALUES ('12345678\xF0\x9F\x98\x80')"),
              "");
    EXPECT_NE(refusal(data.jet, "INSERT INTO codes (Code) VALUES ('123456789\xF0\x9F\x98\x80')"),
              "");
}

TEST(Insert, TellsTheNewIdentity)
{
    GiftDatabase data;
    SqlSession sql(data.database, Dialect::sqlServer);
    SqlSession jet(data.database, Dialect::jet);
    EXPECT_EQ(rows(sql, "SELECT @@IDENTITY"), "Null");
    EXPECT_EQ(rows(jet, "SELECT @@IDENTITY"), "0");
    for (SqlSession* const session : {&sql, &jet}) {
        session->execute("INSERT INTO donors (Name) VALUES ('new')");
    }
    EXPECT_EQ(rows(sql, "SELECT @@IDENTITY"), "4");
    EXPECT_EQ(rows(jet, "SELECT @@IDENTITY"), "5");
    // A table that numbers no rows ends SQL Server's identity; Jet remembers the last one.
    for (SqlSession* const session : {&sql, &jet}) {
        session->execute("INSERT INTO codes (Code) VALUES ('x')");
    }
    EXPECT_EQ(rows(sql, "SELECT @@IDENTITY"), "Null");
    EXPECT_EQ(rows(jet, "SELECT @@IDENTITY"), "5");
    // A number is never given twice.
    sql.execute("DELETE FROM donors WHERE Id = 5");
    sql.execute("INSERT INTO donors (Name) VALUES ('newer')");
    EXPECT_EQ(rows(sql, "SELECT MAX(Id) AS x FROM donors"), "6");
}

TEST(Update, ChangesATableByAJoin)
{
    struct {
        Dialect dialect;
        const char* sql;
        int changed;
        const char* amounts;
    } const cases[] = {
        {Dialect::sqlServer,
         "UPDATE gifts SET Amount = 0 FROM gifts INNER JOIN donors "
         "ON gifts.DonorId = donors.Id WHERE donors.Name = 'Ann'",
         2, "0; 0; 5; Null"},
        {Dialect::jet,
         "UPDATE gifts INNER JOIN donors ON gifts.DonorId = donors.Id "
         "SET Amount = 0 WHERE donors.Name = 'Ann'",
         2, "0; 0; 5; Null"},
        {Dialect::sqlServer,
         "UPDATE g SET g.Amount = g.Amount + d.Id, [Order] = 1 FROM gifts g "
         "LEFT JOIN donors d ON g.DonorId = d.Id",
         4, "11.5; 21.25; 7; Null"},
        {Dialect::jet, "UPDATE gifts AS g SET g.Amount = g.Amount * 2 WHERE g.Id < 3", 2,
         "21; 40.5; 5; Null"},
        {Dialect::sqlServer, "UPDATE gifts SET Amount = [Order], [Order] = Amount WHERE Id = 2", 1,
         "10.5; 1; 5; Null"},
        {Dialect::sqlServer, "UPDATE gifts SET Amount = (SELECT MAX(Id) FROM donors)", 4,
         "3; 3; 3; 3"},
        {Dialect::jet, "UPDATE gifts SET Amount = Null WHERE Id = 77", 0, "10.5; 20.25; 5; Null"},
    };
    GiftDatabase data;
    for (const auto& item : cases) {
        SCOPED_TRACE(item.sql);
        SqlSession& session = data.in(item.dialect);
        const Undone undone(session);
        EXPECT_EQ(session.execute(item.sql), item.changed);
        EXPECT_EQ(rows(session, "SELECT Amount FROM gifts ORDER BY Id"), item.amounts);
    }
}

TEST(Delete, TakesRowsOfOneTableOfAJoin)
{
    struct {
        Dialect dialect;
        const char* sql;
        int changed;
        const char* left;
    } const cases[] = {
        {Dialect::sqlServer,
         "DELETE gifts FROM gifts LEFT JOIN donors "
         "ON gifts.DonorId = donors.Id WHERE donors.Id IS NULL",
         1, "1; 2; 3"},
        {Dialect::jet,
         "DELETE DISTINCTROW gifts.* FROM gifts LEFT JOIN donors "
         "ON gifts.DonorId = donors.Id WHERE donors.Name = 'Ann'",
         2, "3; 4"},
        {Dialect::sqlServer, "DELETE g FROM gifts AS g INNER JOIN bigGifts b ON g.Id = b.Id", 2,
         "3; 4"},
        {Dialect::jet, "DELETE * FROM gifts WHERE Amount > 5", 2, "3; 4"},
        {Dialect::sqlServer, "DELETE FROM gifts WHERE GivenOn < '20260201'", 1, "2; 3; 4"},
    };
    GiftDatabase data;
    for (const auto& item : cases) {
        SCOPED_TRACE(item.sql);
        SqlSession& session = data.in(item.dialect);
        const Undone undone(session);
        EXPECT_EQ(session.execute(item.sql), item.changed);
        EXPECT_EQ(rows(session, "SELECT Id FROM gifts ORDER BY Id"), item.left);
    }
}

TEST(Schema, KeepsUniqueAndPrimaryKeys)
{
    GiftDatabase data;
    SqlSession& sql = data.sqlServer;
    sql.execute("CREATE TABLE pairs (a INT, b NVARCHAR(10), Id INT IDENTITY, "
                "CONSTRAINT pk PRIMARY KEY (a, b))");
    sql.execute("CREATE UNIQUE INDEX u ON codes (Code)");
    sql.execute("INSERT INTO pairs (a, b) VALUES (1, 'x')");
    sql.execute("INSERT INTO codes (Code) VALUES ('x')");
    const char* const repeated[] = {"INSERT INTO pairs (a, b) VALUES (1, 'X ')",
                                    "INSERT INTO codes (Code) VALUES ('X')"};
    for (const char* const statement : repeated) {
        SCOPED_TRACE(statement);
        try {
            sql.execute(statement);
            ADD_FAILURE();
        } catch (const qmevents::Error& error) {
            EXPECT_EQ(error.number(), -2147217873);
            EXPECT_NE(error.description().find("duplicate"), std::string::npos);
        }
    }
    // Index names belong to their table.
    EXPECT_EQ(refusal(sql, "CREATE INDEX u ON gifts (DonorId)"), "");
    EXPECT_EQ(refusal(sql, "DROP INDEX u ON codes"), "");
    EXPECT_EQ(refusal(sql, "INSERT INTO codes (Code) VALUES ('X')"), "");
}

TEST(Schema, FillsDefaults)
{
    const qmevents::PinnedClock clock(qmevents::Date::of(2026, 5, 4, 3, 2, 1));
    GiftDatabase data;
    data.jet.execute("CREATE TABLE t (Id COUNTER, a LONG DEFAULT 7, b TEXT(5) DEFAULT 'x', "
                     "c DATETIME DEFAULT Now(), d YESNO, e CURRENCY DEFAULT 1.5, "
                     "f DATETIME DEFAULT #2026-01-02#)");
    data.jet.execute("INSERT INTO t (a) VALUES (1)");
    data.jet.execute("INSERT INTO t (b, d) VALUES ('y', Null)");
    EXPECT_EQ(rows(data.jet, "SELECT * FROM t"),
              "1|1|x|2026-05-04 03:02:01|False|1.5|2026-01-02 00:00:00; "
              "2|7|y|2026-05-04 03:02:01|False|1.5|2026-01-02 00:00:00");
}

TEST(Schema, ChangesAColumnWithItsRowsKeysAndIndexes)
{
    GiftDatabase data;
    SqlSession& sql = data.sqlServer;
    sql.execute("CREATE UNIQUE INDEX u ON gifts (Amount, DonorId)");
    sql.execute("DELETE FROM gifts WHERE Id = 4");
    sql.execute("ALTER TABLE gifts ALTER COLUMN Amount INT NULL");
    EXPECT_EQ(rows(sql, "SELECT * FROM gifts"),
              "1|1|11|2026-01-31 10:00:00|0.5|3; 2|1|20|2026-02-28 23:59:59|1.5|1; "
              "3|2|5|2026-03-01 18:30:00|Null|2");
    EXPECT_EQ(rows(sql, "SELECT Total FROM donorTotals WHERE DonorId = 1"), "31");
    EXPECT_NE(refusal(sql, "INSERT INTO gifts (DonorId, Amount) VALUES (2, 5)"), "");
    sql.execute("INSERT INTO gifts (DonorId, Amount) VALUES (3, 6)");
    EXPECT_GT(std::stoi(rows(sql, "SELECT @@IDENTITY")), 4);
    // What does not fit leaves the table as it was.
    EXPECT_NE(refusal(sql, "ALTER TABLE donors ALTER COLUMN Name NVARCHAR(2) NOT NULL"), "");
    EXPECT_NE(refusal(sql, "ALTER TABLE donors ALTER COLUMN City NVARCHAR(20) NOT NULL"), "");
    EXPECT_EQ(rows(sql, "SELECT Name, City FROM donors"), "Ann|Bonn; bob|Ulm; Cyd|Null");
    EXPECT_EQ(rows(data.jet, "SELECT Name FROM donors WHERE City = 'ULM'"), "bob");
}

TEST(Schema, IsSeenAtOnceByEverySession)
{
    GiftDatabase data;
    EXPECT_EQ(rows(data.jet, "SELECT * FROM codes"), "");
    data.sqlServer.execute("ALTER TABLE codes ADD Weight MONEY");
    data.sqlServer.execute("INSERT INTO codes (Code, Weight) VALUES ('x', 1.5)");
    EXPECT_EQ(rows(data.jet, "SELECT * FROM codes"), "x|Null|1.5");
    EXPECT_EQ(kinds(data.jet, "SELECT * FROM codes"), "String|Null|Currency");
    data.jet.execute("DROP TABLE codes");
    EXPECT_NE(refusal(data.sqlServer, "SELECT * FROM codes"), "");
}

TEST(Schema, IsRolledBackWithItsTransaction)
{
    GiftDatabase data;
    SqlSession& sql = data.sqlServer;
    sql.begin();
    sql.execute("CREATE TABLE t (a INT)");
    sql.execute("INSERT INTO t (a) VALUES (1)");
    EXPECT_EQ(rows(sql, "SELECT a FROM t"), "1");
    sql.rollback();
    EXPECT_NE(refusal(sql, "SELECT a FROM t"), "");
}

TEST(HostTables, AreOutOfReachOfStatements)
{
    GiftDatabase data;
    data.jet.hostExecute("CREATE TABLE host_secrets (name TEXT, number INTEGER)");
    EXPECT_EQ(data.jet.hostExecute("INSERT INTO host_secrets VALUES (?, ?)",
                                   {std::string("a'b"), std::int64_t{5}}),
              1);
    const auto found =
        data.sqlServer.hostQuery("SELECT * FROM host_secrets WHERE number = ?", {std::int64_t{5}});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(std::get<std::string>(found[0][0]), "a'b");
    for (const char* const sql : {"SELECT * FROM host_secrets",
                                  "SELECT Id FROM donors WHERE Id IN "
                                  "(SELECT number FROM [HOST_Secrets])",
                                  "DELETE FROM host_secrets", "DROP TABLE host_secrets"}) {
        SCOPED_TRACE(sql);
        EXPECT_NE(refusal(data.jet, sql), "");
    }
}

} // namespace
} // namespace refhost::testing
