#include "host/lists/list_periods.h"

#include "automation/clock.h"
#include "host/document/objects/document.h"
#include "host/document/objects/sql_literal.h"
#include "host/modules/settings.h"

namespace refhost {
namespace {

using qmevents::Date;

struct Span {
    Date first, last;
};

Span yearFrom(Date first) { return {first, first.plusMonths(12).plusSeconds(-1)}; }

Span userPeriod(const Document& document, int period)
{
    const auto first = Date::parseIso(document.setting(periodStartSetting(period)));
    const auto last = Date::parseIso(document.setting(periodEndSetting(period)));
    if (!first || !last) return {Date::of(9999, 1, 1), Date::of(1900, 1, 1)};
    return {first->datePart(), last->datePart().plusDays(1).plusSeconds(-1)};
}

std::string settingOf(int period, const char* end)
{
    return "list-period-" + std::to_string(period) + end;
}

} // namespace

std::string periodStartSetting(int period) { return settingOf(period, "-start"); }

std::string periodEndSetting(int period) { return settingOf(period, "-end"); }

ListPeriods::ListPeriods(const SharedContext& context)
{
    const Document document(context);
    const auto add = [&](const std::string& name, const Span& span) {
        const auto literal = [&](Date date) {
            return sqlLiteral(context->sql().dialect(), Value(date), LiteralKind::date);
        };
        literals_.emplace_back("{" + name + "START}", literal(span.first));
        literals_.emplace_back("{" + name + "END}", literal(span.last));
    };
    const Date today = qmevents::Clock::today();
    const Date year = Date::of(today.civil().year, 1, 1);
    const Date fiscal = fiscalYearStart(context);
    add("CURRENTYEAR", yearFrom(year));
    add("PREVIOUSYEAR", yearFrom(year.plusMonths(-12)));
    add("CURRENTFISCALYEAR", yearFrom(fiscal));
    add("PREVIOUSFISCALYEAR", yearFrom(fiscal.plusMonths(-12)));
    for (int period = 1; period <= listPeriods; ++period) {
        add("PERIOD" + std::to_string(period), userPeriod(document, period));
    }
}

std::string ListPeriods::in(std::string expression) const
{
    for (const auto& [placeholder, literal] : literals_) {
        expression = qmevents::text::replaceAll(expression, placeholder, literal);
    }
    return expression;
}

} // namespace refhost
