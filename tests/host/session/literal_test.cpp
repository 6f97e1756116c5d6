#include <gtest/gtest.h>

#include <limits>

#include "host/document/objects/sql_literal.h"
#include "tests/host/session/fixture.h"

namespace refhost {
namespace {

using qmevents::Currency;
using qmevents::Date;
using qmevents::Missing;
using qmevents::Null;

TEST(SqlLiteral, WritesEachKindInBothDialects)
{
    const Value time(Date::of(1899, 12, 30, 15, 0));
    const Value moment(Date::of(2026, 3, 7, 18, 5, 9));
    const double third = 1.0 / 3;
    struct {
        Value value;
        int kind;
        const char *sqlServer, *jet;
    } const cases[] = {
        {moment, 1, "'2026-03-07T18:05:09'", "#2026-03-07 18:05:09#"},
        {"3/7/2026 6:05 PM", 1, "'2026-03-07T18:05:00'", "#2026-03-07 18:05:00#"},
        {time, 1, "'1899-12-30T15:00:00'", "#1899-12-30 15:00:00#"},
        {Date(), 1, "NULL", "NULL"},
        {Value(), 1, "NULL", "NULL"},
        {" ", 1, "NULL", "NULL"},
        {Null{}, 1, "NULL", "NULL"},
        {12, 2, "12", "12"},
        {-12, 3, "-12", "-12"},
        {Value(), 2, "0", "0"},
        {"", 3, "0", "0"},
        {" 12.50 ", 3, "12.5", "12.5"},
        {Null{}, 2, "NULL", "NULL"},
        {Missing{}, 3, "NULL", "NULL"},
        {0.1, 3, "0.1", "0.1"},
        {third, 3, "0.3333333333333333", "0.3333333333333333"},
        {-0.0, 3, "0", "0"},
        {1e21, 3, "1E+21", "1E+21"},
        {Currency::fromScaled(9007199254740993), 3, "900719925474.0993", "900719925474.0993"},
        {true, 3, "1", "1"},
        {false, 2, "0", "0"},
        {"O'Neil's", 5, "N'O''Neil''s'", "'O''Neil''s'"},
        {"\xC3\xA9\r\n--", 6, "N'\xC3\xA9\r\n--'", "'\xC3\xA9\r\n--'"},
        {"", 5, "N''", "''"},
        {Value(), 5, "N''", "''"},
        {5, 6, "N'5'", "'5'"},
        {Null{}, 5, "NULL", "NULL"},
        {true, 7, "1", "True"},
        {Value(), 7, "0", "False"},
        {-1, 7, "1", "True"},
        {"False", 7, "0", "False"},
        {Missing{}, 7, "NULL", "NULL"},
    };
    for (const auto& [value, kind, sqlServer, jet] : cases) {
        SCOPED_TRACE(std::to_string(kind) + " " + jet);
        EXPECT_EQ(sqlLiteral(Dialect::sqlServer, value, static_cast<LiteralKind>(kind)), sqlServer);
        EXPECT_EQ(sqlLiteral(Dialect::jet, value, static_cast<LiteralKind>(kind)), jet);
    }
}

TEST(SqlLiteral, RefusesWhatIsNoneOfItsKind)
{
    struct {
        Value value;
        int kind;
        const char* number;
    } const cases[] = {
        {"tomorrow", 1, "13 "},
        {"1; DROP TABLE donor_donors", 3, "13 "},
        {"12 apples", 2, "13 "},
        {std::numeric_limits<double>::infinity(), 3, "6 "},
        {std::string("a\0b", 3), 5, "5 "},
        {"maybe", 7, "13 "},
        {1, 4, "5 "},
        {Null{}, 0, "5 "},
        {qmevents::Array::list({}), 5, "13 "},
    };
    for (const auto& [value, kind, number] : cases) {
        const auto failure = failureOf(
            [&, v = value, k = kind] { sqlLiteral(Dialect::jet, v, static_cast<LiteralKind>(k)); });
        EXPECT_EQ(failure.substr(0, std::string(number).size()), number) << kind << failure;
    }
}

TEST(SqlLiteral, ReadsBackUnchangedWhatItWrote)
{
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        const HostFixture host(dialect);
        const auto provider = getObject(host.app, "Provider");
        const auto literal = [&](const Value& value, int kind) {
            return toText(call(provider, "VToSQL", value, kind));
        };
        const std::string name = "O'Neil \xE2\x82\xAC [x] %_\" \r\n;--";
        const Value when(Date::of(2026, 3, 7, 18, 5, 9));
        const Value amount(Currency::fromScaled(-123456789));
        host.execute("INSERT INTO donor_donors (display, created, deleted) VALUES (" +
                     literal(name, 5) + ", " + literal(when, 1) + ", " + literal(true, 7) + ")");
        host.execute("INSERT INTO donor_gifts_payments (giftId, actualAmount) VALUES (" +
                     literal(1, 2) + ", " + literal(amount, 3) + ")");
        EXPECT_EQ(toText(host.cell("SELECT display FROM donor_donors")), name);
        EXPECT_EQ(host.cell("SELECT created FROM donor_donors").as<Date>(), when.as<Date>());
        EXPECT_TRUE(host.cell("SELECT deleted FROM donor_donors").as<bool>());
        EXPECT_EQ(host.cell("SELECT actualAmount FROM donor_gifts_payments").as<Currency>(),
                  amount.as<Currency>());
    }
}

} // namespace
} // namespace refhost
