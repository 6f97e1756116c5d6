#include <gtest/gtest.h>

#include <chrono>
#include <random>

#include "sql_testing.h"

namespace refhost::testing {
namespace {

std::string repeated(std::string_view part, std::size_t count)
{
    std::string text;
    text.reserve(part.size() * count);
    for (std::size_t i = 0; i < count; ++i) text += part;
    return text;
}

TEST(HostileText, IsRefusedQuickly)
{
    const std::size_t many = 200000;
    const struct {
        const char* what;
        std::string sql;
    } cases[] = {
        {"open brackets", "SELECT " + repeated("(", many)},
        {"closed brackets", "SELECT " + repeated("(", many) + "1" + repeated(")", many)},
        {"open brackets of tables", "SELECT 1 AS x FROM " + repeated("(", many)},
        {"nested queries", repeated("SELECT 1 AS x FROM (", many / 10)},
        {"subqueries", "SELECT " + repeated("(SELECT ", many / 10)},
        {"signs", "SELECT " + repeated("- ", many) + "1"},
        {"NOT", "SELECT Id FROM donors WHERE " + repeated("NOT ", many) + "Id = 1"},
        {"CASE", "SELECT " + repeated("CASE WHEN 1 = 1 THEN ", many / 10)},
        {"a long sum", "SELECT 1" + repeated("+1", many)},
        {"many conditions", "SELECT Id FROM donors WHERE Id = 1" + repeated(" AND Id = 1", many)},
        {"many tables", "SELECT 1 AS x FROM donors" + repeated(", donors", many)},
        {"nested functions", "SELECT " + repeated("Abs(", many)},
        {"a huge number", "SELECT " + repeated("9", many)},
        {"a huge exponent", "SELECT 1e999999999 AS x"},
        {"a text without end", "SELECT 'abc" + repeated("''", many)},
        {"a name without end", "SELECT [abc"},
        {"a comment without end", "SELECT /* 1"},
        {"nested comments", "SELECT " + repeated("/*", many)},
        {"an empty name", "SELECT [] FROM donors"},
        {"invalid UTF-8", "SELECT '\xC3' AS x FROM donors"},
        {"an overlong form", "SELECT '\xC0\xAF' AS x FROM donors"},
        {"a surrogate", "SELECT '\xED\xA0\x80' AS x FROM donors"},
        {"a NUL character", std::string("SELECT '\0' AS x", 15)},
        {"too big a TOP", "SELECT TOP 99999999999 Id FROM donors"},
        {"a date that is none", "SELECT Id FROM donors WHERE Born > #99999999-99-99#"},
    };
    GiftDatabase data;
    for (const auto& item : cases) {
        for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
            SCOPED_TRACE(std::string(dialectName(dialect)) + ": " + item.what);
            const auto start = std::chrono::steady_clock::now();
            const std::string reason = refusal(data.in(dialect), item.sql);
            EXPECT_NE(reason, "");
            EXPECT_LT(reason.size(), 400U);
            EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
        }
    }
    EXPECT_EQ(rows(data.sqlServer, "SELECT COUNT(*) AS n FROM donors"), "3");
}

TEST(HostileText, OfEveryCutLengthIsRefusedOrRuns)
{
    const std::string texts[] = {
        "SELECT DISTINCT TOP 5 d.[Name], IsNull(SUM(g.Amount), 0) AS s FROM (donors d INNER JOIN "
        "gifts g ON d.Id = g.DonorId) LEFT JOIN codes c ON d.Name = c.Code WHERE d.Name LIKE "
        "'a%' AND NOT EXISTS (SELECT * FROM codes) GROUP BY d.[Name] ORDER BY d.[Name] DESC",
        "UPDATE gifts INNER JOIN donors ON gifts.DonorId = donors.Id SET Amount = IIf(Member, "
        "#2026-01-01# - GivenOn, -1.5e3) WHERE donors.Born BETWEEN #2026-01-01# AND Now()",
        "INSERT INTO donors (Name, Born, Member) VALUES (N'it''s', CONVERT(DATETIME, '01/02/2026', "
        "101), CASE WHEN 1 = 1 THEN 1 ELSE 0 END)",
        "CREATE TABLE t (Id INT IDENTITY(1,1) NOT NULL, a NVARCHAR(50) DEFAULT 'x', "
        "CONSTRAINT k PRIMARY KEY (Id))"};
    GiftDatabase data;
    for (const std::string& text : texts) {
        for (std::size_t length = 0; length < text.size(); ++length) {
            for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
                const Undone undone(data.in(dialect));
                EXPECT_NO_FATAL_FAILURE(refusal(data.in(dialect), text.substr(0, length)));
            }
        }
    }
}

// Pieces of statements in any order: whatever comes out, the session works on.
TEST(HostileText, OfRandomPiecesLeavesTheSessionWhole)
{
    static constexpr const char* pieces[] = {
        "SELECT",   "FROM",      "donors",   "gifts d",      "WHERE",       "(",
        ")",        ",",         "Id",       "d.Amount",     "*",           "=",
        "'x'",      "1",         "-2.5",     "#2026-01-01#", "IN",          "NOT",
        "NULL",     "AND",       "GROUP BY", "ORDER BY",     "COUNT(*)",    "SUM(Amount)",
        "IIf(",     "CASE WHEN", "THEN",     "END",          "UNION",       "INNER JOIN",
        "ON",       "UPDATE",    "SET",      "DELETE",       "INSERT INTO", "VALUES",
        "TOP 2",    "AS x",      "[Name]",   "Like",         "BETWEEN",     "DateAdd('d', 1,",
        "DISTINCT", "HAVING",    "EXISTS (", "LEFT JOIN",    "&",           "+"};
    std::mt19937 random(20260301);
    GiftDatabase data;
    for (int i = 0; i < 20000; ++i) {
        std::string text = i % 2 == 0 ? "SELECT" : pieces[random() % std::size(pieces)];
        for (std::size_t n = random() % 12; n > 0; --n) {
            text += std::string(" ") + pieces[random() % std::size(pieces)];
        }
        const Dialect dialect = i % 3 == 0 ? Dialect::jet : Dialect::sqlServer;
        const Undone undone(data.in(dialect));
        const std::string reason = refusal(data.in(dialect), text);
        // Everything but the values of rows is checked before the embedded engine sees it.
        const bool ofValues = reason.find(" is no ") != std::string::npos ||
                              reason.find("range") != std::string::npos ||
                              reason.find("takes no Null") != std::string::npos;
        EXPECT_TRUE(reason.empty() || ofValues || reason.starts_with("Line ")) << text << "\n"
                                                                               << reason;
    }
    EXPECT_EQ(rows(data.jet, "SELECT COUNT(*) AS n FROM gifts"), "4");
}

TEST(HostileText, OfAllowedSizeIsTaken)
{
    GiftDatabase data;
    std::string list = "0";
    for (int i = 1; i < 10000; ++i) list += "," + std::to_string(i);
    EXPECT_EQ(rows(data.jet, "SELECT Id FROM donors WHERE Id IN (" + list + ")"), "1; 2; 3");
    EXPECT_EQ(
        rows(data.sqlServer, "SELECT Id FROM donors WHERE Id = 1" + repeated(" OR Id = 2", 300)),
        "1; 2");
    EXPECT_EQ(rows(data.jet, "SELECT Left('x'" + repeated(" & 'y'", 200) +
                                 ", 3) AS x "
                                 "FROM donors WHERE Id = 1"),
              "xyy");
    EXPECT_EQ(rows(data.jet, "SELECT " + repeated("IIf(Id = 9, 9, ", 60) + "Id" +
                                 repeated(")", 60) + " AS x FROM donors"),
              "1; 2; 3");
    EXPECT_EQ(rows(data.sqlServer, "SELECT 1" + repeated(" + 1", 300) + " AS x"), "301");
    EXPECT_NE(refusal(data.jet, "SELECT Id FROM donors" + repeated(" ", 64000)).find("64,000"),
              std::string::npos);
}

} // namespace
} // namespace refhost::testing
