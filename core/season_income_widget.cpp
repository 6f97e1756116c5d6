// What the events of a season have brought in against what they were meant to.
#include <algorithm>
#include <string>
#include <vector>

#include "automation/locale.h"
#include "core/fiscal_year.h"
#include "core/host.h"
#include "core/record_reader.h"
#include "core/widget.h"
#include "core/widget_markup.h"

namespace qmevents {
namespace {

constexpr WidgetOption options[] = {
    {"season", "Season", WidgetOption::Kind::choice, "current", 0, 0,
     "current=This season|previous=Last season"},
    {"rows", "Number of events", WidgetOption::Kind::number, "5", 0, 50},
    {"goalsonly", "Only events with a goal", WidgetOption::Kind::yesNo, "0"},
};

struct Income {
    std::int32_t eventId = 0;
    std::string name;
    Currency received;
    Currency goal;
};

// A season is a fiscal year of the host; an event belongs to the one in which it starts.
std::string queryFor(const WidgetSettings& settings)
{
    const std::string year =
        settings.text("season") == "previous" ? "PREVIOUSFISCALYEAR" : "CURRENTFISCALYEAR";
    std::string text = "SELECT ei.Id, ei.Name, ei.RevenueGoal, v.ActualRevenue, v.DonationsTotal "
                       "FROM events_event_info ei INNER JOIN vw_events_events v ON ei.Id = v.Id "
                       "WHERE ei.StartDateTime >= {" +
                       year + "START} AND ei.StartDateTime <= {" + year + "END}";
    if (settings.isOn("goalsonly")) text += " AND ei.RevenueGoal > 0";
    const Document document = host().document();
    return withFiscalYears(text, document.setting("fiscal-year-month"),
                           document.setting("fiscal-year-day"));
}

std::vector<Income> readIncome(const WidgetSettings& settings)
{
    std::vector<Income> events;
    RecordReader rows(queryFor(settings));
    if (rows.atEnd()) return events;
    const auto id = rows.column("Id");
    const auto name = rows.column("Name");
    const auto goal = rows.column("RevenueGoal");
    const auto actual = rows.column("ActualRevenue");
    const auto donations = rows.column("DonationsTotal");
    for (; !rows.atEnd(); rows.next()) {
        events.push_back({toInt32(id.value()), name.valueOr<std::string>(""),
                          actual.valueOr(Currency()) + donations.valueOr(Currency()),
                          goal.valueOr(Currency())});
    }
    return events;
}

std::vector<std::string> against(const Currency& received, const Currency& goal)
{
    const Locale& locale = Locale::current();
    if (goal <= Currency()) return {"", locale.money(received)};
    return {markup::meter(received, goal),
            markup::words(locale.money(received) + " of " + locale.money(goal)) + " " +
                markup::small(markup::percent(received, goal))};
}

void addRow(markup::Table& table, const std::string& name, const Income& income)
{
    std::vector<std::string> cells{name};
    for (auto& cell : against(income.received, income.goal)) cells.push_back(std::move(cell));
    table.row(cells);
}

std::string content(const WidgetSettings& settings)
{
    markup::Table table;
    auto events = readIncome(settings);
    if (events.empty()) return table.text("No events in this season");
    Income all;
    for (const auto& one : events) {
        all.received += one.received;
        all.goal += one.goal;
    }
    const bool isLast = settings.text("season") == "previous";
    addRow(table, markup::strong(isLast ? "Last season" : "This season"), all);
    // Those that bring in most.
    std::sort(events.begin(), events.end(), [](const Income& a, const Income& b) {
        return a.received != b.received ? a.received > b.received : a.eventId < b.eventId;
    });
    const auto shown = std::min(events.size(), static_cast<std::size_t>(settings.number("rows")));
    for (std::size_t i = 0; i < shown; ++i) {
        addRow(table, markup::eventLink(events[i].eventId, "events_overview", events[i].name),
               events[i]);
    }
    return table.text("");
}

} // namespace

constexpr WidgetDescription seasonIncomeWidget{
    "events-season-income",
    "Season Income",
    "What a season's events have brought in, against their goals.",
    "donations/view",
    options,
    content};

} // namespace qmevents
