#include <gtest/gtest.h>

#include "automation/clock.h"
#include "automation/conversions.h"
#include "automation/error.h"
#include "automation/locale.h"
#include "automation/text.h"

namespace qmevents {
namespace {

int errorOf(const std::function<void()>& act)
{
    try {
        act();
    } catch (const Error& error) {
        return error.number();
    }
    return 0;
}

TEST(Conversion, FollowsTheRulesOfAutomation)
{
    EXPECT_EQ(toInt32(Value(2.5)), 2);
    EXPECT_EQ(toInt32(Value(3.5)), 4);
    EXPECT_EQ(toInt32(Value(-2.5)), -2);
    EXPECT_EQ(toInt32(Value(" 12 ")), 12);
    EXPECT_EQ(toInt32(Value("1e3")), 1000);
    EXPECT_EQ(toInt32(Value("&HFFFF")), -1);
    EXPECT_EQ(toInt32(Value(true)), -1);
    EXPECT_EQ(toInt32(Value()), 0);
    EXPECT_EQ(toText(Value(Currency::fromDouble(12.5))), "12.5");
    EXPECT_EQ(toText(Value(0.1)), "0.1");
    EXPECT_EQ(toText(Value(1e20)), "1E+20");
    EXPECT_EQ(toText(Value(true)), "True");
    EXPECT_TRUE(toBool(Value("TRUE")));
    EXPECT_EQ(toCurrency(Value("0.00005")).scaled(), 0);
    EXPECT_EQ(toCurrency(Value("0.00015")).scaled(), 2);
    EXPECT_EQ(toCurrency(Value("922337203685477.5807")).scaled(), 9223372036854775807);
}

TEST(Conversion, RefusesWhatCannotBeConverted)
{
    EXPECT_EQ(errorOf([] { toText(Value(Null{})); }), 94);
    EXPECT_EQ(errorOf([] { toInt32(Value(Null{})); }), 94);
    for (const char* text : {"", " ", "ten", "1,000", "12abc", "0x10", "inf", "nan", "1e", "--1"}) {
        EXPECT_EQ(errorOf([&] { toInt32(Value(text)); }), 13) << text;
    }
    EXPECT_EQ(errorOf([] { toInt16(Value(32768)); }), 6);
    EXPECT_EQ(errorOf([] { toInt32(Value(2147483647.5)); }), 6);
    EXPECT_EQ(errorOf([] { toInt32(Value("1e999")); }), 6);
    EXPECT_EQ(errorOf([] { toCurrency(Value("922337203685477.5808")); }), 6);
    EXPECT_EQ(errorOf([] { toDate(Value("31 February 2026")); }), 13);
    EXPECT_EQ(errorOf([] { toDate(Value(1e9)); }), 6);
    EXPECT_EQ(errorOf([] { toObject(Value(1)); }), 424);
    EXPECT_EQ(errorOf([] { toText(Value::nothing()); }), 91);
    EXPECT_EQ(errorOf([] { toText(Value(Array::list({}))); }), 13);
}

TEST(Currency, IsExactAndRaisesOverflow)
{
    const Currency price = Currency::fromDouble(19.99);
    EXPECT_EQ((price * 3).toString(), "59.97");
    EXPECT_EQ((Currency::fromDouble(0.1) + Currency::fromDouble(0.2)).toString(), "0.3");
    EXPECT_EQ((Currency::fromDouble(-1.5) * Currency::fromDouble(1.5)).toString(), "-2.25");
    EXPECT_EQ(Currency::fromScaled(-9223372036854775807 - 1).toString(), "-922337203685477.5808");
    EXPECT_EQ(Currency::fromScaled(-1).toString(), "-0.0001");
    const Currency most = Currency::fromScaled(9223372036854775807);
    EXPECT_EQ(errorOf([&] { static_cast<void>(most + Currency::fromScaled(1)); }), 6);
    EXPECT_EQ(errorOf([&] { static_cast<void>(most * 2); }), 6);
    EXPECT_EQ(errorOf([&] { static_cast<void>(most * most); }), 6);
    EXPECT_EQ(errorOf([&] { static_cast<void>(Currency::fromDouble(1e15)); }), 6);
    EXPECT_EQ(Currency::fromUnits(10).dividedBy(3).toString(), "3.3333");
}

TEST(Date, CountsDaysFromTheZeroDate)
{
    EXPECT_EQ(Date().iso(), "1899-12-30 00:00:00");
    EXPECT_EQ(Date::of(1900, 1, 1).serial(), 2);
    EXPECT_EQ(Date::of(2026, 3, 7, 18).serial(), 46088.75);
    EXPECT_EQ(Date::of(1899, 12, 29, 6).serial(), -1.25);
    EXPECT_EQ(Date::fromSerial(-1.25).iso(), "1899-12-29 06:00:00");
    EXPECT_EQ(Date::fromSerial(-1.25).timePart().serial(), 0.25);
    EXPECT_EQ(Date::of(100, 1, 1).serial(), -657434);
    EXPECT_EQ(Date::of(9999, 12, 31).serial(), 2958465);
    EXPECT_LT(Date::of(1899, 12, 28, 23), Date::of(1899, 12, 29, 1));
    EXPECT_EQ(Date::of(2026, 11, 21).weekday(), 7);
    EXPECT_EQ(Date::of(2026, 3, 7).plusSeconds(-1).iso(), "2026-03-06 23:59:59");
    EXPECT_EQ(Date::of(2024, 1, 31).plusMonths(1).iso(), "2024-02-29 00:00:00");
    EXPECT_EQ(Date::carried(2026, 13, 0).iso(), "2026-12-31 00:00:00");
    // A fraction that a database rounded still means the nearest second.
    EXPECT_EQ(Date::fromSerial(46088.749999).iso(), "2026-03-07 18:00:00");
    EXPECT_EQ(errorOf([] { Date::of(99, 12, 31); }), 6);
    EXPECT_EQ(errorOf([] { Date::of(2026, 2, 29); }), 5);
    EXPECT_EQ(errorOf([] { static_cast<void>(Date::of(9999, 12, 31).plusDays(1)); }), 6);
}

TEST(Date, EveryDaySplitsIntoTheDayItWasMadeOf)
{
    for (int year : {100, 399, 400, 1600, 1899, 1900, 2000, 2023, 2024, 9999}) {
        for (int month = 1; month <= 12; ++month) {
            for (int day = 1; day <= 31; ++day) {
                if (!Date::isValidDay(year, month, day)) continue;
                const CivilTime made{year, month, day, 23, 59, 59};
                ASSERT_EQ(Date::fromCivil(made).civil(), made) << Date::fromCivil(made).iso();
            }
        }
    }
}

TEST(Locale, WritesAndReadsWhatPeopleType)
{
    const PinnedClock clock(Date::of(2026, 11, 21));
    Locale locale;
    EXPECT_EQ(locale.text(Date::of(2026, 3, 7, 15, 45)), "3/7/2026 3:45:00 PM");
    EXPECT_EQ(locale.text(Date::of(2026, 3, 7)), "3/7/2026");
    EXPECT_EQ(locale.text(Date()), "12:00:00 AM");
    EXPECT_EQ(locale.longTime(Date::of(2026, 3, 7, 0, 5, 9)), "12:05:09 AM");
    EXPECT_EQ(locale.money(Currency::fromDouble(1234567.895)), "$1,234,567.90");
    EXPECT_EQ(locale.money(Currency::fromDouble(-0.004)), "$0.00");
    EXPECT_EQ(locale.money(Currency::fromScaled(-9223372036854775807 - 1)),
              "-$922,337,203,685,477.58");
    locale.moneyDecimals = 0;
    EXPECT_EQ(locale.money(Currency::fromDouble(1234.5)), "$1,235");
    struct {
        const char *typed, *read;
    } const cases[] = {{"3/7/26", "2026-03-07 00:00:00"},
                       {"3/7", "2026-03-07 00:00:00"},
                       {"12/31/1999 11:59:59 pm", "1999-12-31 23:59:59"},
                       {"2026-03-07T14:05", "2026-03-07 14:05:00"},
                       {"7 March 2026", "2026-03-07 00:00:00"},
                       {"Mar 7, 2026 2:05 PM", "2026-03-07 14:05:00"},
                       {"14:05", "1899-12-30 14:05:00"},
                       {"12 AM", "1899-12-30 00:00:00"}};
    for (const auto& [typed, read] : cases) {
        const auto date = locale.parseDate(typed);
        ASSERT_TRUE(date) << typed;
        EXPECT_EQ(date->iso(), read) << typed;
    }
    for (const char* typed : {"", "2/31/2026", "13/1/2026", "25:00", "1:60", "3/7/26/1", "soon",
                              "2026-02-30", "13 PM", "99999/1/1", "2026-03-07T14:05x"}) {
        EXPECT_FALSE(locale.parseDate(typed)) << typed;
    }
    locale.order = Locale::DateOrder::dayMonthYear;
    EXPECT_EQ(locale.parseDate("3/7/26")->iso(), "2026-07-03 00:00:00");
}

TEST(Text, ChangesTheCaseOfLettersBeyondAscii)
{
    EXPECT_EQ(text::upper("straße é ñ ω я ž"), "STRAßE É Ñ Ω Я Ž");
    EXPECT_EQ(text::lower("ÉÑΩЯŽ"), "éñωяž");
    EXPECT_EQ(text::upper("\xff\xc3"), "\xff\xc3"); // no valid UTF-8: unchanged
    EXPECT_EQ(text::length("é😀a"), 3U);
    EXPECT_EQ(text::replaceAll("a--b--", "--", "-"), "a-b-");
}

} // namespace
} // namespace qmevents
