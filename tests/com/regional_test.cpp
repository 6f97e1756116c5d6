#include "com/regional.h"

#include "tests/com/client.h"

namespace qmevents::com::testing {
namespace {

/// One of the user's regional settings, changed for the time of a test.
class Changed {
public:
    Changed(LCTYPE type, const wchar_t* value) : type_(type)
    {
        GetLocaleInfoW(LOCALE_USER_DEFAULT, type, before_, 80);
        SetLocaleInfoW(LOCALE_USER_DEFAULT, type, value);
    }
    Changed(const Changed&) = delete;
    Changed& operator=(const Changed&) = delete;
    ~Changed() { SetLocaleInfoW(LOCALE_USER_DEFAULT, type_, before_); }

private:
    LCTYPE type_;
    wchar_t before_[80] = {};
};

TEST(RegionalSettings, DecideHowDatesAndAmountsAreWrittenAndRead)
{
    const Date evening = Date::of(2026, 3, 7, 18, 5);
    const Currency amount = toCurrency(Value(1234.5));
    EXPECT_EQ(userLocale().text(evening), "3/7/2026 6:05:00 PM");
    EXPECT_EQ(userLocale().money(amount), "$1,234.50");

    const Changed settings[] = {
        {LOCALE_SSHORTDATE, L"dd.MM.yyyy"}, {LOCALE_STIMEFORMAT, L"HH:mm:ss"},
        {LOCALE_SCURRENCY, L"kr"},          {LOCALE_ICURRENCY, L"3"},
        {LOCALE_SMONDECIMALSEP, L","},      {LOCALE_SMONTHOUSANDSEP, L"."},
        {LOCALE_ICURRDIGITS, L"1"}};
    const Locale locale = userLocale();
    EXPECT_EQ(locale.text(evening), "7.3.2026 18:05:00");
    EXPECT_EQ(locale.money(amount), "1.234,5 kr");
    EXPECT_EQ(locale.parseDate("7.3.2026"), Date::of(2026, 3, 7));
}

} // namespace
} // namespace qmevents::com::testing
