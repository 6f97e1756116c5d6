#include <gtest/gtest.h>

#include <filesystem>
#include <thread>
#include <vector>

#include "sql_testing.h"
#include "tests/support/temp_folder.h"

namespace refhost::testing {
namespace {

/// A database in a file that is gone with the test.
class FileDatabase : public ::testing::Test {
protected:
    std::filesystem::path file() const { return folder_ / "gifts.db"; }

private:
    const qmevents::testing::TempFolder folder_;
};

using CursorOfFile = FileDatabase;
using SessionsOfFile = FileDatabase;

constexpr const char* allGifts = "SELECT Id, Amount FROM gifts ORDER BY Id";

std::string rest(Cursor& cursor)
{
    std::string ids;
    for (; !cursor.eof(); cursor.next()) ids += shown(cursor.value(0)) + " ";
    return ids;
}

TEST_F(CursorOfFile, StaysAsOpenedWhateverIsWritten)
{
    GiftDatabase data(Database::open(file()));
    SqlSession& sql = data.sqlServer;
    const auto fresh = sql.query(allGifts);
    const auto walked = sql.query(allGifts);
    walked->next();
    walked->next();
    EXPECT_EQ(sql.execute("DELETE FROM gifts WHERE Id <> 2"), 3);
    EXPECT_EQ(sql.execute("UPDATE gifts SET Amount = 99"), 1);
    EXPECT_EQ(row(*fresh), "1|10.5");
    EXPECT_EQ(rest(*fresh), "1 2 3 4 ");
    EXPECT_EQ(row(*walked), "3|5");
    EXPECT_EQ(walked->recordCount(), 4);
    EXPECT_EQ(row(*walked), "3|5");
    walked->moveFirst();
    EXPECT_EQ(row(*walked), "1|10.5");
    EXPECT_EQ(rows(sql, allGifts), "2|99");
}

TEST_F(CursorOfFile, SurvivesSchemaChangeAndRollback)
{
    GiftDatabase data(Database::open(file()));
    SqlSession& sql = data.sqlServer;
    sql.begin();
    sql.execute("INSERT INTO gifts (DonorId, Amount) VALUES (1, 7)");
    const auto inside = sql.query(allGifts);
    sql.rollback();
    EXPECT_EQ(rest(*inside), "1 2 3 4 5 ");
    const auto dropped = sql.query(allGifts);
    sql.execute("DROP TABLE gifts");
    EXPECT_EQ(rest(*dropped), "1 2 3 4 ");
}

TEST_F(CursorOfFile, NeverShowsASessionAnOldDatabase)
{
    GiftDatabase data(Database::open(file()));
    const auto left = data.jet.query(allGifts); // and never read to its end
    data.sqlServer.execute("UPDATE gifts SET Amount = 1 WHERE Id = 4");
    EXPECT_EQ(rows(data.jet, "SELECT Amount FROM gifts WHERE Id = 4"), "1");
    // Nor does it keep this session from writing after another one did.
    EXPECT_EQ(refusal(data.jet, "UPDATE gifts SET Amount = 2 WHERE Id = 4"), "");
    EXPECT_EQ(rest(*left), "1 2 3 4 ");
}

TEST_F(CursorOfFile, GoesBackToItsFirstRow)
{
    GiftDatabase data(Database::open(file()));
    for (const char* const sql : {allGifts, "SELECT Id FROM gifts WHERE Id > 99"}) {
        SCOPED_TRACE(sql);
        const auto cursor = data.jet.query(sql);
        const std::string once = rest(*cursor);
        cursor->moveFirst();
        EXPECT_EQ(rest(*cursor), once);
        EXPECT_EQ(cursor->recordCount(), once.empty() ? 0 : 4);
        EXPECT_TRUE(cursor->eof());
    }
    const auto cursor = data.jet.query(allGifts);
    cursor->next();
    cursor->moveFirst();
    EXPECT_EQ(row(*cursor), "1|10.5");
}

TEST_F(CursorOfFile, FailsClearlyWhereThereIsNoRow)
{
    GiftDatabase data(Database::open(file()));
    const auto cursor = data.jet.query("SELECT Id FROM gifts WHERE Id = 1");
    EXPECT_THROW(cursor->value(1), qmevents::Error);
    cursor->next();
    EXPECT_TRUE(cursor->eof());
    EXPECT_THROW(cursor->value(0), qmevents::Error);
    EXPECT_THROW(cursor->next(), qmevents::Error);
    const auto closed = data.jet.query(allGifts);
    closed->close();
    EXPECT_TRUE(closed->eof());
    EXPECT_EQ(closed->recordCount(), 0);
}

TEST_F(CursorOfFile, OutlivesItsSession)
{
    const auto database = Database::open(file());
    auto data = std::make_unique<GiftDatabase>(database);
    const auto streaming = data->jet.query(allGifts);
    const auto kept = data->jet.query(allGifts);
    EXPECT_EQ(kept->recordCount(), 4);
    data.reset();
    EXPECT_TRUE(streaming->eof());
    EXPECT_TRUE(kept->eof());
    EXPECT_THROW(streaming->value(0), qmevents::Error);
}

TEST_F(CursorOfFile, ReportsANumberThatIsTooBigWhenItIsRead)
{
    GiftDatabase data(Database::open(file()));
    data.sqlServer.execute("UPDATE gifts SET [Order] = 2000000000 WHERE Id < 3");
    EXPECT_NE(refusal(data.sqlServer, "SELECT SUM([Order]) AS s FROM gifts").find("overflow"),
              std::string::npos);
    EXPECT_EQ(rows(data.jet, "SELECT SUM([Order]) AS s FROM gifts"), "4000000002");
}

TEST_F(SessionsOfFile, SeeCommittedChangesOfEachOther)
{
    GiftDatabase data(Database::open(file()));
    data.sqlServer.begin();
    data.sqlServer.execute("DELETE FROM gifts");
    EXPECT_EQ(rows(data.jet, "SELECT COUNT(*) AS n FROM gifts"), "4");
    data.sqlServer.commit();
    EXPECT_EQ(rows(data.jet, "SELECT COUNT(*) AS n FROM gifts"), "0");
}

TEST_F(SessionsOfFile, WriteFromTheirThreadsAtOnce)
{
    const GiftDatabase data(Database::open(file()));
    const auto write = [&](Dialect dialect) {
        SqlSession session(data.database, dialect);
        for (int i = 0; i < 40; ++i) {
            session.begin();
            const int before = std::stoi(rows(session, "SELECT MAX([Order]) AS x FROM gifts"));
            session.execute("INSERT INTO gifts (DonorId, [Order]) VALUES (1, " +
                            std::to_string(before + 1) + ")");
            session.commit();
        }
    };
    std::thread other(write, Dialect::jet);
    write(Dialect::sqlServer);
    other.join();
    SqlSession session(data.database, Dialect::jet);
    EXPECT_EQ(rows(session, "SELECT MAX([Order]) AS x FROM gifts"), "83");
}

TEST_F(SessionsOfFile, FindTheDataAgainInTheFile)
{
    {
        const GiftDatabase data(Database::open(file()));
    }
    SqlSession jet(Database::open(file()), Dialect::jet);
    EXPECT_EQ(rows(jet, "SELECT DonorId, Total FROM donorTotals WHERE Total > 6"), "1|30.75");
    EXPECT_EQ(kinds(jet, "SELECT Born, Total FROM donors, donorTotals"), "Date|Currency");
}

TEST(Session, KeepsTransactionsInOrder)
{
    GiftDatabase data;
    SqlSession& sql = data.sqlServer;
    EXPECT_THROW(sql.commit(), qmevents::Error);
    EXPECT_THROW(sql.rollback(), qmevents::Error);
    sql.begin();
    EXPECT_TRUE(sql.inTransaction());
    EXPECT_THROW(sql.begin(), qmevents::Error);
    sql.execute("UPDATE gifts SET Amount = 1");
    // A statement that fails takes nothing else back.
    EXPECT_NE(refusal(sql, "UPDATE donors SET Name = NULL"), "");
    EXPECT_TRUE(sql.inTransaction());
    sql.commit();
    EXPECT_FALSE(sql.inTransaction());
    EXPECT_EQ(rows(sql, "SELECT DISTINCT Amount FROM gifts"), "1");
}

TEST(Session, TracesEveryStatement)
{
    GiftDatabase data;
    SqlSession& sql = data.sqlServer;
    std::vector<std::string> trace;
    sql.onStatement = [&](const Traced& traced) {
        trace.push_back(std::string(traced.kind == Traced::Kind::read ? "read " : "write ") +
                        std::to_string(traced.rows) + " " + std::string(traced.text) + " " +
                        traced.error);
    };
    sql.beforeStatement = [](std::string_view text) {
        if (text == "DELETE FROM donors") throw qmevents::Error(1, "test", "made to fail");
    };
    rows(sql, "SELECT Id FROM gifts");
    sql.execute("UPDATE gifts SET Amount = 1 WHERE Id < 3");
    EXPECT_THROW(sql.execute("DELETE FROM donors"), qmevents::Error);
    EXPECT_THROW(sql.execute("DELETE donor"), qmevents::Error);
    EXPECT_THROW(sql.execute("SELECT Id FROM gifts"), qmevents::Error);
    EXPECT_THROW(sql.query("DELETE FROM donors WHERE Id = 1"), qmevents::Error);
    ASSERT_EQ(trace.size(), 6U);
    EXPECT_EQ(trace[0], "read -1 SELECT Id FROM gifts ");
    EXPECT_EQ(trace[1], "write 2 UPDATE gifts SET Amount = 1 WHERE Id < 3 ");
    EXPECT_EQ(trace[2], "write 0 DELETE FROM donors made to fail");
    EXPECT_NE(trace[3].find("no table or query 'donor'"), std::string::npos);
    EXPECT_EQ(rows(sql, "SELECT COUNT(*) AS n FROM donors"), "3");
}

// Statements of one shape share a plan; none may see the values of another.
TEST(Session, TellsStatementsOfOneShapeApart)
{
    GiftDatabase data;
    SqlSession& sql = data.sqlServer;
    struct {
        const char *sql, *rows;
    } const cases[] = {
        {"SELECT Name FROM donors WHERE Id = 1", "Ann"},
        {"SELECT Name FROM donors WHERE Id = 2", "bob"},
        {"SELECT Name FROM donors WHERE Id = '3'", "Cyd"},
        {"SELECT Name FROM donors WHERE Id = 1.0", "Ann"},
        {"SELECT Name FROM donors WHERE Id = -1", ""},
        {"SELECT Name FROM donors WHERE Id = NULL", ""},
        {"SELECT TOP 1 Id FROM donors ORDER BY Id", "1"},
        {"SELECT TOP 2 Id FROM donors ORDER BY Id", "1; 2"},
        {"SELECT Id, Name FROM donors ORDER BY 1", "1|Ann; 2|bob; 3|Cyd"},
        {"SELECT Id, Name FROM donors ORDER BY 2", "1|Ann; 2|bob; 3|Cyd"},
        {"SELECT Name, Id FROM donors WHERE Id < 3 ORDER BY 2 DESC", "bob|2; Ann|1"},
        {"SELECT Name, Id FROM donors WHERE Id < 9 ORDER BY 1 DESC", "Cyd|3; bob|2; Ann|1"},
        {"SELECT Id + 1 AS x FROM donors GROUP BY Id + 1", "2; 3; 4"},
        {"SELECT Id + 5 AS x FROM donors GROUP BY Id + 5", "6; 7; 8"},
        {"SELECT CONVERT(NVARCHAR(4), Born, 112) AS x FROM donors WHERE Id = 1", "1980"},
        {"SELECT CONVERT(NVARCHAR(6), Born, 112) AS x FROM donors WHERE Id = 1", "198002"},
        {"SELECT CONVERT(NVARCHAR(4), Born, 103) AS x FROM donors WHERE Id = 1", "29/0"},
        {"SELECT 'a' AS x", "a"},
        {"SELECT 'b' AS x", "b"},
        {"SELECT 1 AS x", "1"},
        {"SELECT N'c' AS x", "c"},
    };
    for (int pass = 0; pass < 2; ++pass) {
        for (const auto& item : cases) {
            SCOPED_TRACE(item.sql);
            EXPECT_EQ(rows(sql, item.sql), item.rows);
        }
    }
    EXPECT_NE(refusal(sql, "SELECT Id + 1 AS x FROM donors GROUP BY Id + 2"), "");
    // A value that does not fit is found whenever the plan is used.
    EXPECT_EQ(refusal(sql, "SELECT Id FROM gifts WHERE GivenOn > '20260101'"), "");
    EXPECT_NE(refusal(sql, "SELECT Id FROM gifts WHERE GivenOn > '20261301'"), "");
    EXPECT_EQ(refusal(sql, "INSERT INTO codes (Code) VALUES ('short')"), "");
    EXPECT_NE(refusal(sql, "INSERT INTO codes (Code) VALUES ('much too long')"), "");
    EXPECT_EQ(kinds(sql, "SELECT 1.5 AS x"), "Double");
}

TEST(Session, RunsOneShapeWhileAnotherCursorIsOnIt)
{
    GiftDatabase data;
    std::string pairs;
    for (const auto outer = data.jet.query("SELECT Id FROM donors ORDER BY Id"); !outer->eof();
         outer->next()) {
        const auto inner = data.jet.query("SELECT Id FROM donors ORDER BY Id");
        pairs += shown(outer->value(0)) + ":" + rest(*inner) + "; ";
    }
    EXPECT_EQ(pairs, "1:1 2 3 ; 2:1 2 3 ; 3:1 2 3 ; ");
}

TEST(Session, ForgetsOldShapesWithoutHarm)
{
    GiftDatabase data;
    for (int i = 0; i < 900; ++i) {
        const std::string name = "x" + std::to_string(i % 600);
        EXPECT_EQ(rows(data.jet, "SELECT Id AS " + name +
                                     " FROM donors WHERE Id = " + std::to_string(i % 3 + 1)),
                  std::to_string(i % 3 + 1));
        EXPECT_EQ(rows(data.jet, "SELECT TOP " + std::to_string(i % 20 + 1) +
                                     " Id FROM donors "
                                     "WHERE Id = 2"),
                  "2");
    }
}

} // namespace
} // namespace refhost::testing
