#include <gtest/gtest.h>

#include <span>

#include "automation/clock.h"
#include "sql_testing.h"

namespace refhost::testing {
namespace {

using qmevents::Date;

struct Case {
    const char* sql;
    const char* rows;
};

void check(SqlSession& session, std::span<const Case> cases)
{
    for (const Case& item : cases) {
        SCOPED_TRACE(item.sql);
        std::string found;
        EXPECT_NO_THROW(found = rows(session, item.sql));
        EXPECT_EQ(found, item.rows);
    }
}

TEST(Query, GivesTheSameRowsInBothDialects)
{
    static constexpr Case cases[] = {
        {"SELECT Id, Name, City, Born, Member FROM donors ORDER BY Id",
         "1|Ann|Bonn|1980-02-29 00:00:00|True; 2|bob|Ulm|Null|False; 3|Cyd|Null|Null|True"},
        // Case is ignored in comparisons, order and patterns; Null comes first.
        {"SELECT Name FROM donors ORDER BY Name DESC", "Cyd; bob; Ann"},
        {"SELECT City FROM donors ORDER BY City", "Null; Bonn; Ulm"},
        {"SELECT Id FROM donors WHERE Name = 'BOB' OR City IN ('bonn', 'x')", "1; 2"},
        {"SELECT Id FROM donors WHERE Name LIKE '%N%'", "1"},
        {"SELECT Id FROM donors WHERE Name LIKE 'b_b' OR Name LIKE '[a-c]nn'", "1; 2"},
        {"SELECT Id FROM donors WHERE Name NOT LIKE 'a%' AND Name BETWEEN 'B' AND 'c'", "2"},
        {"SELECT Name FROM donors WHERE City IS NULL AND NOT Id = 1", "Cyd"},
        {"SELECT Name FROM donors WHERE City NOT IN ('x')", "Ann; bob"},
        // Joins
        {"SELECT d.Name, g.Amount FROM donors d INNER JOIN gifts g ON d.Id = g.DonorId "
         "ORDER BY g.Amount DESC",
         "Ann|20.25; Ann|10.5; bob|5"},
        {"SELECT d.Name, g.Id FROM donors d LEFT JOIN gifts g ON d.Id = g.DonorId "
         "ORDER BY d.Id, g.Id",
         "Ann|1; Ann|2; bob|3; Cyd|Null"},
        {"SELECT d.Name, g.Id FROM donors d RIGHT JOIN gifts g ON d.Id = g.DonorId ORDER BY g.Id",
         "Ann|1; Ann|2; bob|3; Null|4"},
        {"SELECT d.Name, g.Id, c.Code FROM (donors d LEFT JOIN gifts g ON d.Id = g.DonorId) "
         "LEFT JOIN codes c ON d.Name = c.Code WHERE g.Id = 3",
         "bob|3|Null"},
        {"SELECT d.Name, s.Total FROM donors d LEFT JOIN (SELECT DonorId, SUM(Amount) AS Total "
         "FROM gifts GROUP BY DonorId) s ON d.Id = s.DonorId ORDER BY d.Id",
         "Ann|30.75; bob|5; Cyd|Null"},
        // The right side of a join may be a join.
        {"SELECT d.Name, b.Id FROM donors d LEFT JOIN (gifts g LEFT JOIN bigGifts b "
         "ON g.Id = b.Id) ON d.Id = g.DonorId WHERE d.Id < 3 ORDER BY d.Id, b.Id",
         "Ann|1; Ann|2; bob|Null"},
        // Groups
        {"SELECT DonorId, COUNT(*) AS n, SUM(Amount) AS s, MIN(GivenOn) AS f FROM gifts "
         "GROUP BY DonorId HAVING COUNT(*) > 1 OR MAX(Amount) IS NULL ORDER BY DonorId",
         "1|2|30.75|2026-01-31 10:00:00; 9|1|Null|Null"},
        {"SELECT COUNT(*) AS a, COUNT(Amount) AS b, AVG(Amount) AS c, MAX(Share) AS d FROM gifts",
         "4|3|11.9167|1.5"},
        {"SELECT Year(GivenOn) AS y, Month(GivenOn) AS m, COUNT(*) AS n FROM gifts "
         "WHERE GivenOn IS NOT NULL GROUP BY Year(GivenOn), Month(GivenOn) "
         "ORDER BY Month(GivenOn) DESC",
         "2026|3|1; 2026|2|1; 2026|1|1"},
        {"SELECT DISTINCT DonorId FROM gifts ORDER BY DonorId", "1; 2; 9"},
        {"SELECT COUNT(*) AS n FROM donors WHERE Id > 100", "0"},
        // Inner queries
        {"SELECT Name FROM donors WHERE Id IN (SELECT DonorId FROM gifts WHERE Amount > 6)", "Ann"},
        {"SELECT Name FROM donors d WHERE NOT EXISTS (SELECT * FROM gifts g "
         "WHERE g.DonorId = d.Id)",
         "Cyd"},
        {"SELECT Name, (SELECT g.Amount FROM gifts g WHERE g.DonorId = d.Id AND g.Id > 1) AS n "
         "FROM donors d ORDER BY d.Id",
         "Ann|20.25; bob|5; Cyd|Null"},
        {"SELECT Name, (SELECT COUNT(*) FROM gifts g WHERE g.DonorId = d.Id) AS n FROM donors d "
         "ORDER BY d.Id",
         "Ann|2; bob|1; Cyd|0"},
        {"SELECT Id FROM donors WHERE Id = (SELECT MAX(DonorId) FROM gifts WHERE DonorId < 3)",
         "2"},
        {"SELECT Id FROM donors UNION SELECT DonorId FROM gifts ORDER BY Id DESC", "9; 3; 2; 1"},
        {"SELECT COUNT(*) AS n FROM (SELECT Name FROM donors WHERE Id = 1 "
         "UNION SELECT 'ANN' FROM donors) s",
         "1"},
        {"SELECT Id FROM donors WHERE Id < 2 UNION ALL SELECT Id FROM donors WHERE Id < 3 "
         "ORDER BY 1",
         "1; 1; 2"},
        {"SELECT Total, Gifts FROM donorTotals WHERE DonorId = 1", "30.75|2"},
        {"SELECT TOP 2 Id FROM donors ORDER BY Id DESC", "3; 2"},
        // Numbers
        {"SELECT Amount * 2 AS a, Amount + 0.25 AS b, -Amount AS c, Amount - 1 - 1 AS d "
         "FROM gifts WHERE Id = 1",
         "21|10.75|-10.5|8.5"},
        {"SELECT 2 + 3 * 4 AS a, (2 + 3) * 4 AS b, 10 - 4 - 3 AS c, 1 - -1 AS d FROM gifts "
         "WHERE Id = 1",
         "14|20|3|2"},
        {"SELECT Abs(-3) AS a, Left(Name, 2) AS b, Right(Name, 9) AS c, Len(Name) AS d "
         "FROM donors WHERE Id = 1",
         "3|An|Ann|3"},
    };
    GiftDatabase data;
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        SCOPED_TRACE(dialectName(dialect));
        check(data.in(dialect), cases);
    }
}

TEST(Query, SpeaksSqlServer)
{
    static constexpr Case cases[] = {
        {"SELECT Id FROM donors WHERE Id BETWEEN 3 AND 2 OR Name BETWEEN 'c' AND 'B'", ""},
        {"SELECT 7 / 2 AS a, -7 / 2 AS b, 7 / 2.0 AS c, 7 % 4 AS d", "3|-3|3.5|3"},
        {"SELECT Amount / 4 AS a, Id / 2 AS b FROM gifts WHERE Id = 1", "2.625|0"},
        {"SELECT AVG(Id) AS a, AVG(Share) AS b FROM gifts", "2|1"},
        {"SELECT Name + ' of ' + City AS a FROM donors ORDER BY Id",
         "Ann of Bonn; bob of Ulm; Null"},
        {"SELECT Id FROM donors WHERE Name = 'Ann   '", "1"},
        {"SELECT Id FROM donors WHERE Member = 1 ORDER BY Id", "1; 3"},
        {"SELECT IsNull(City, '?') AS a, IsNull(Rank, 0) AS b FROM donors WHERE Id = 3", "?|0"},
        {"SELECT IsNull(SUM(Amount), 0) AS a FROM gifts WHERE Id > 99", "0"},
        {"SELECT COALESCE(NULL, Rank, 7) AS a, NULLIF(Name, 'ANN') AS b FROM donors ORDER BY Id",
         "1|Null; 2|bob; 7|Cyd"},
        {"SELECT CASE WHEN NOT IsDate(Born) = 0 THEN 1 ELSE 0 END AS a FROM donors ORDER BY Id",
         "1; 0; 0"},
        {"SELECT CASE City WHEN 'ULM' THEN 'u' WHEN 'Bonn' THEN 'b' END AS a FROM donors "
         "ORDER BY Id",
         "b; u; Null"},
        {"SELECT IsDate('2026-02-30') AS a, IsDate('20260228') AS b, IsDate('x') AS c", "0|1|0"},
        {"SELECT DATEADD(month, 1, GivenOn) AS a, DATEADD(day, -1, GivenOn) AS b, "
         "DATEDIFF(day, GivenOn, '2026-02-02T00:00:00') AS c, DATEDIFF(yy, Born, GivenOn) AS d "
         "FROM gifts, donors WHERE gifts.Id = 1 AND donors.Id = 1",
         "2026-02-28 10:00:00|2026-01-30 10:00:00|2|46"},
        {"SELECT DATEDIFF(month, '20260131', '20260201') AS a, "
         "DATEDIFF(hour, '20260101', '2026-01-02T01:59:00') AS b, DATEPART(qq, '20260801') AS c",
         "1|25|3"},
        {"SELECT CONVERT(NVARCHAR(10), GivenOn, 103) AS a, CONVERT(NVARCHAR(30), GivenOn, 120) "
         "AS b, CONVERT(NVARCHAR(8), GivenOn, 112) AS c, CONVERT(NVARCHAR(30), GivenOn) AS d "
         "FROM gifts WHERE Id = 2",
         "28/02/2026|2026-02-28 23:59:59|20260228|Feb 28 2026 11:59PM"},
        {"SELECT CONVERT(DATETIME, '28/02/2026', 103) AS a, CAST('12' AS INT) + 1 AS b, "
         "CAST(2.9 AS INT) AS c, CAST('abcdef' AS NVARCHAR(3)) AS d, CAST(1.23456 AS MONEY) AS e",
         "2026-02-28 00:00:00|13|2|abc|1.2346"},
        {"SELECT Id FROM gifts WHERE GivenOn >= '20260228' AND GivenOn < '2026-03-01T00:00:00'",
         "2"},
        {"SELECT Id FROM gifts WHERE GivenOn IN ('2026-01-31T10:00:00')", "1"},
        {"SELECT SUBSTRING('abcdef', 2, 3) AS a, SUBSTRING('abc', 0, 2) AS b, UPPER('\xC3\xA4') "
         "AS c, LTRIM('  x ') AS d, LEN('ab  ') AS e, REPLACE('AbaB', 'b', '-') AS f, "
         "CHARINDEX('D', 'abcd') AS g",
         "bcd|a|\xC3\x84|x |2|A-a-|4"},
        {"SELECT ROUND(2.345, 2) AS a, ROUND(-2.5, 0) AS b, FLOOR(-1.5) AS c, CEILING(1.2) AS d",
         "2.35|-3|-2|2"},
        {"SELECT COUNT(DISTINCT DonorId) AS a FROM gifts", "3"},
        {"SELECT TOP 1 Id FROM gifts ORDER BY Amount", "4"},
    };
    GiftDatabase data;
    check(data.sqlServer, cases);
    EXPECT_NE(refusal(data.sqlServer, "SELECT 1 / 0 AS x").find("Division by zero"),
              std::string::npos);
    EXPECT_NE(refusal(data.sqlServer, "SELECT Id FROM donors WHERE Id = (SELECT Id FROM gifts)")
                  .find("several rows"),
              std::string::npos);
}

TEST(Query, SpeaksJet)
{
    static constexpr Case cases[] = {
        {"SELECT Id FROM donors WHERE Id BETWEEN 3 AND 2", "2; 3"},
        {"SELECT Id FROM donors WHERE Name BETWEEN 'c' AND 'B'", "2"},
        {"SELECT Id FROM donors WHERE Born NOT BETWEEN #1990-01-01# AND #1980-01-01#", ""},
        {"SELECT Id FROM donors WHERE Id BETWEEN Null AND 2", ""},
        {"SELECT 7 / 2 AS a, 7 \\ 2 AS b, 7 Mod 4 AS c, 2 ^ 3 AS d, -2 ^ 2 AS e FROM codes "
         "UNION ALL SELECT 7 / 2, 7 \\ 2, 7 Mod 4, 2 ^ 3, -2 ^ 2 FROM donors WHERE Id = 1",
         "3.5|3|3|8|-4"},
        {"SELECT Name & ' of ' & City & Rank AS a, Name + City AS b FROM donors ORDER BY Id",
         "Ann of Bonn1|AnnBonn; bob of Ulm2|bobUlm; Cyd of |Null"},
        {"SELECT Id FROM donors WHERE Member = True", "1; 3"},
        {"SELECT Id FROM donors WHERE Member AND NOT IsNull(City)", "1"},
        {"SELECT IIf(IsNull(City), '?', City) AS a, IIf(Member, 'y', 'n') AS b FROM donors "
         "ORDER BY Id",
         "Bonn|y; Ulm|n; ?|y"},
        {"SELECT IIf(IsDate(Born), True, 0) AS a, IsDate(Name) AS b FROM donors ORDER BY Id",
         "-1|False; 0|False; 0|False"},
        {"SELECT SUM(Member) AS a, SUM(Id > 1) AS b FROM donors", "-2|-2"},
        {"SELECT DateAdd('m', 1, GivenOn) AS a, DateDiff('d', GivenOn, #2026-02-02#) AS b, "
         "GivenOn + 1 AS c, #2026-02-02 10:00:00# - GivenOn AS d FROM gifts WHERE Id = 1",
         "2026-02-28 10:00:00|2|2026-02-01 10:00:00|2"},
        {"SELECT DateSerial(2026, 14, 0) AS a, DatePart('ww', #2026-01-04#) AS b, "
         "DateDiff('ww', #2026-01-03#, #2026-01-04#) AS c FROM donors WHERE Id = 1",
         "2027-01-31 00:00:00|2|1"},
        {"SELECT Id FROM gifts WHERE GivenOn = #1/31/2026 10:00:00 AM#", "1"},
        {"SELECT Format(GivenOn, 'yyyy-mm-dd hh:nn') AS a, Format(GivenOn, 'mmm d, h:nn AM/PM') "
         "AS b, Format(Amount, '#,##0.00') AS c, Format(1234567.5, 'Standard') AS d, "
         "Format(0.256, '0%') AS e FROM gifts WHERE Id = 2",
         "2026-02-28 23:59|Feb 28, 11:59 PM|20.25|1,234,567.50|26%"},
        {"SELECT CLng(2.5) AS a, CCur('1.23456') AS b, CStr(1.5) AS c, Round(2.5) AS d, "
         "Round(2.345, 2) AS e, Int(-1.5) AS f, Fix(-1.5) AS g FROM donors WHERE Id = 1",
         "2|1.2346|1.5|2|2.34|-2|-1"},
        {"SELECT Mid('abcdef', 3) AS a, UCase('\xC3\xA4') AS b, Trim('  x ') AS c, "
         "InStr('abcd', 'C') AS d, Len('ab  ') AS e FROM donors WHERE Id = 1",
         "cdef|\xC3\x84|x|3|4"},
        // TOP takes every row that ties with the last one.
        {"SELECT TOP 2 DonorId FROM gifts ORDER BY DonorId", "1; 1"},
        {"SELECT TOP 1 DonorId FROM gifts ORDER BY DonorId", "1; 1"},
        {"SELECT DISTINCT TOP 2 DonorId FROM gifts ORDER BY DonorId DESC", "9; 2"},
        {"SELECT TOP 1 DonorId, COUNT(*) AS n FROM gifts GROUP BY DonorId ORDER BY COUNT(*)",
         "2|1; 9|1"},
        // Rows that differ only in a table without a selected column are dropped.
        {"SELECT DISTINCTROW d.Name FROM donors d INNER JOIN gifts g ON d.Id = g.DonorId "
         "ORDER BY d.Name",
         "Ann; bob"},
        {"SELECT DISTINCTROW d.Name, g.Id FROM donors d INNER JOIN gifts g ON d.Id = g.DonorId "
         "ORDER BY g.Id",
         "Ann|1; Ann|2; bob|3"},
    };
    GiftDatabase data;
    check(data.jet, cases);
    EXPECT_EQ(rows(data.jet, "SELECT Id FROM donors WHERE Name = 'Ann '"), "");
    EXPECT_NE(refusal(data.jet, "SELECT CLng(Rank) AS x FROM donors").find("Invalid use of Null"),
              std::string::npos);
}

TEST(Query, IgnoresCaseOfLettersBeyondAscii)
{
    GiftDatabase data;
    data.sqlServer.execute("INSERT INTO codes (Code, Meaning) VALUES (N'\xC3\x84rger', 'latin')");
    data.sqlServer.execute(
        "INSERT INTO codes (Code, Meaning) VALUES (N'\xCE\x91\xCE\xB8', 'greek')");
    data.sqlServer.execute("INSERT INTO codes (Code, Meaning) VALUES (N'\xD0\x96\xD1\x83', 'cyr')");
    EXPECT_EQ(rows(data.jet, "SELECT Meaning FROM codes WHERE Code = '\xC3\xA4RGER'"), "latin");
    EXPECT_EQ(rows(data.jet, "SELECT Meaning FROM codes WHERE Code LIKE '\xCE\xB1_'"), "greek");
    EXPECT_EQ(rows(data.sqlServer, "SELECT Meaning FROM codes WHERE Code IN (N'\xD0\xB6\xD0\xA3')"),
              "cyr");
}

TEST(Query, ReadsTheClockOfTheAddIn)
{
    const qmevents::PinnedClock clock(Date::of(2026, 5, 4, 3, 2, 1));
    GiftDatabase data;
    EXPECT_EQ(rows(data.sqlServer, "SELECT GETDATE() AS x"), "2026-05-04 03:02:01");
    EXPECT_EQ(rows(data.jet, "SELECT Now() AS x, Date() AS y FROM donors WHERE Id = 1"),
              "2026-05-04 03:02:01|2026-05-04 00:00:00");
    EXPECT_EQ(rows(data.jet, "SELECT Id FROM gifts WHERE GivenOn > Date() - 64"), "3");
}

TEST(Query, TypesEachColumn)
{
    struct {
        Dialect dialect;
        const char *sql, *kinds;
    } const cases[] = {
        {Dialect::sqlServer, "SELECT Id, Name, Born, Member, Rank, City FROM donors",
         "Long|String|Date|Boolean|Integer|String"},
        {Dialect::sqlServer,
         "SELECT MAX(GivenOn), SUM(Amount), SUM(Id), COUNT(*), MIN(Share), "
         "AVG(Amount) FROM gifts",
         "Date|Currency|Long|Long|Double|Currency"},
        {Dialect::sqlServer,
         "SELECT Amount + 1, Amount * Share, Id * 2, 1.5 * Id, Amount / Id, "
         "IsNull(Amount, 0) FROM gifts WHERE Id = 1",
         "Currency|Double|Long|Double|Currency|Currency"},
        {Dialect::sqlServer,
         "SELECT CASE WHEN Id = 1 THEN 0 ELSE Amount END, "
         "DATEADD(day, 1, GivenOn), YEAR(GivenOn), NULL FROM gifts",
         "Currency|Date|Long|Null"},
        {Dialect::sqlServer,
         "SELECT s.b, s.n, v.Total FROM (SELECT MAX(Member + 0) AS n, "
         "MAX(Born) AS b FROM donors) s, donorTotals v",
         "Date|Long|Currency"},
        {Dialect::jet,
         "SELECT SUM(Id), SUM(Amount), COUNT(*), 7 / 2, IIf(Id, Amount, 0) "
         "FROM gifts GROUP BY Id, Amount",
         "Double|Currency|Long|Double|Currency"},
        {Dialect::jet,
         "SELECT Member, IIf(Member, True, False), Id = 1, Name & Id, CCur(Id), "
         "Born + 1 FROM donors",
         "Boolean|Boolean|Boolean|String|Currency|Date"},
        {Dialect::jet, "SELECT Total, Gifts FROM donorTotals", "Currency|Long"},
        {Dialect::jet, "SELECT Amount FROM gifts UNION ALL SELECT 1 FROM donors", "Currency"},
    };
    GiftDatabase data;
    for (const auto& item : cases) {
        SCOPED_TRACE(item.sql);
        EXPECT_EQ(kinds(data.in(item.dialect), item.sql), item.kinds);
    }
}

TEST(Query, NamesColumnsAsTheEngineDoes)
{
    GiftDatabase data;
    const char* const shared = "SELECT d.*, g.Id, g.Id AS gift, Amount * 2 FROM donors d "
                               "INNER JOIN gifts g ON d.Id = g.DonorId";
    EXPECT_EQ(columnNames(data.sqlServer, shared),
              "Id|Name|City|Born|Member|Rank|Notes|Diary|Id|gift|");
    EXPECT_EQ(columnNames(data.jet, shared),
              "d.Id|Name|City|Born|Member|Rank|Notes|Diary|g.Id|gift|Expr1010");
    EXPECT_EQ(columnNames(data.jet, "SELECT d.*, d.Id AS Id FROM donors d").substr(0, 9),
              "d.Id|Name");
    EXPECT_EQ(columnNames(data.jet, "SELECT @@IDENTITY"), "Expr1000");
    const auto cursor = data.sqlServer.query("SELECT Id AS Number, Name FROM donors");
    EXPECT_EQ(cursor->columnIndex("NUMBER"), 0U);
    EXPECT_EQ(cursor->columnIndex("name"), 1U);
    EXPECT_FALSE(cursor->columnIndex("Id").has_value());
}

// A database may have been made by one dialect and be opened by the other.
TEST(Query, ReadsYesAndNoOfEitherDialect)
{
    GiftDatabase data;
    data.jet.execute("INSERT INTO donors (Name, Member) VALUES ('Jet', True)");
    for (const auto& [dialect, sql] : {
             std::pair{Dialect::sqlServer, "SELECT Name FROM donors WHERE Member = 1"},
             std::pair{Dialect::sqlServer, "SELECT Name FROM donors WHERE Member <> 0"},
             std::pair{Dialect::jet, "SELECT Name FROM donors WHERE Member = True"},
             std::pair{Dialect::jet, "SELECT Name FROM donors WHERE Member <> 0"},
             std::pair{Dialect::jet, "SELECT Name FROM donors WHERE Member"},
         }) {
        SCOPED_TRACE(sql);
        EXPECT_EQ(rows(data.in(dialect), sql), "Ann; Cyd; Jet");
    }
    EXPECT_EQ(rows(data.sqlServer, "SELECT DISTINCT Member FROM donors"), "True; False");
    EXPECT_EQ(rows(data.sqlServer, "SELECT COUNT(*) AS n FROM donors GROUP BY Member"), "1; 3");
}

} // namespace
} // namespace refhost::testing
