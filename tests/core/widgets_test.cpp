#include <gtest/gtest.h>

#include "automation/clock.h"
#include "core/widget_markup.h"
#include "tests/support/scripted_host.h"

namespace qmevents {
namespace {

using testing::Log;
using testing::Puppet;
using testing::puppet;
using testing::ScriptedHost;

TEST(Percent, IsRoundedDownExactlyHoweverLargeTheAmounts)
{
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    const struct {
        std::int64_t part, whole; // in ten-thousandths
        const char* percent;
    } cases[] = {{0, 1, "0%"},
                 {7, 7, "100%"},
                 {2'900, 10'000, "29%"},
                 {11'499, 5'000, "229%"},
                 {-1, 1'000'000, "-1%"},
                 {most, most, "100%"},
                 {most - 1, most, "99%"},
                 {most, 10'000, "92233720368547758%"}};
    for (const auto& [part, whole, percent] : cases) {
        EXPECT_EQ(markup::percent(Currency::fromScaled(part), Currency::fromScaled(whole)),
                  percent);
    }
}

class HomePageWidgets : public ::testing::Test {
protected:
    HomePageWidgets()
    {
        for (const char* name :
             {"ModuleId", "Key", "Title", "Description", "Operation", "Content", "Problem"}) {
            widget->holds(name, "");
        }
        widget->on("AddOption", [this](std::span<Value> a) {
            for (const auto& one : a) said += toText(one) + ";";
            said += "\n";
            return Value();
        });
        widget->on("OptionValue", [this](std::span<Value> a) {
            const auto found = sent.find(toText(a[0]));
            return found == sent.end() ? Value() : Value(found->second);
        });
    }
    void raise(const std::string& key, const Value& about)
    {
        auto list = puppet("Widgets");
        list->on("Add", [this](std::span<Value> a) {
            for (const char* member : {"ModuleId", "Key", "Operation"}) {
                said += toText(get(a[0].object(), member)) + " ";
            }
            said += toText(a[1]) + "\n";
            return Value();
        });
        auto data = puppet("Data");
        data->holds("widget", about).holds("Widgets", list);
        data->on("GetNewWidget", [this](std::span<Value>) { return Value(widget); });
        auto event = puppet("Event");
        event->holds("Key", key).holds("Data", data);
        auto loader = puppet("Loader");
        loader->holds("CurrentEvent", event);
        refCast<Puppet>(getObject(host.app(), "Modules"))->holds("Loader", loader);
        call(host.root("Handler"), "EventHandler", event);
    }
    void raiseFor(const std::string& key, const char* widgetKey)
    {
        put(Ref<Object>(widget), "Key", widgetKey);
        put(Ref<Object>(widget), "Problem", "");
        raise(key, widget);
    }

    PinnedClock clock_{Date::of(2026, 11, 21, 12)};
    ScriptedHost host;
    Ref<Puppet> widget = puppet("Widget");
    std::map<std::string, std::string> sent;
    std::string said;
};

TEST_F(HomePageWidgets, AreRegisteredWithTheRightsThatTheyNeed)
{
    raise("widgets-load", Value::nothing());
    EXPECT_EQ(said, "events events-upcoming events/view events-upcoming\n"
                    "events events-my-tasks events/view events-my-tasks\n"
                    "events events-season-income donations/view events-season-income\n"
                    "events events-recent-reservations events/view events-recent-reservations\n");
}

TEST_F(HomePageWidgets, ReadWithOneStatementInTheWordsOfTheDatabase)
{
    const auto tasks = [](const std::string& undatedLast) {
        return "SELECT TOP 10 t.Id, t.Name, t.DueDateTime, t.FKEventId, ei.Name AS EventName FROM "
               "(events_event_tasks t INNER JOIN donor_list_assignedto la ON t.FKAssignedToId = "
               "la.Id) INNER JOIN events_event_info ei ON t.FKEventId = ei.Id WHERE la.FKuserId = "
               "<3:5> AND t.Completed = 0 AND (t.DueDateTime < <1:2026-12-22 00:00:00> OR "
               "t.DueDateTime IS NULL) ORDER BY " +
               undatedLast + ", t.DueDateTime, t.Id";
    };
    const struct {
        const char* key;
        std::int32_t documentType;
        std::string statement;
    } cases[] = {
        {"events-upcoming", 1,
         "SELECT TOP 5 ei.Id, ei.Name, ei.StartDateTime, ei.MaxCapacity, ei.AttendanceGoal, "
         "el.Name "
         "AS PlaceName, (SELECT COUNT(*) FROM events_event_participants ep WHERE ep.FKEventId = "
         "ei.Id AND ep.Status = <3:2>) AS Accepted, (SELECT SUM(l.Quantity) FROM "
         "(events_event_reservations_activities l INNER JOIN events_event_reservations r ON "
         "l.FKReservationId = r.Id) INNER JOIN events_event_activities a ON l.FKActivityId = a.Id "
         "WHERE r.FKEventId = ei.Id AND a.Sponsorship = 0) AS Reserved FROM events_event_info ei "
         "LEFT JOIN events_list_eventlocations el ON ei.FKLocationId = el.Id WHERE "
         "ei.StartDateTime >= <1:2026-11-21 00:00:00> AND ei.StartDateTime < <1:2027-02-20 "
         "00:00:00> ORDER BY ei.StartDateTime, ei.Id"},
        {"events-my-tasks", 1, tasks("CASE WHEN t.DueDateTime IS NULL THEN 1 ELSE 0 END")},
        {"events-my-tasks", 2, tasks("IIf(t.DueDateTime IS NULL,1,0)")},
        {"events-season-income", 0,
         "SELECT ei.Id, ei.Name, ei.RevenueGoal, v.ActualRevenue, v.DonationsTotal FROM "
         "events_event_info ei INNER JOIN vw_events_events v ON ei.Id = v.Id WHERE "
         "ei.StartDateTime >= <1:2026-01-01 00:00:00> AND ei.StartDateTime <= <1:2026-12-31 "
         "23:59:59>"},
        {"events-recent-reservations", 0,
         "SELECT TOP 5 r.Id, r.FKEventId, r.ReservationDate, ei.Name AS EventName, dd.Display FROM "
         "(events_event_reservations r INNER JOIN events_event_info ei ON r.FKEventId = ei.Id) "
         "INNER JOIN donor_donors dd ON r.FKDonorId = dd.Id WHERE r.ReservationDate >= "
         "<1:2026-08-23 00:00:00> ORDER BY r.ReservationDate DESC, r.Id DESC"},
    };
    for (const auto& [key, documentType, statement] : cases) {
        host.documentType = documentType;
        raiseFor("widgets-content", key);
        EXPECT_EQ(host.takeLog(), Log{statement});
    }
}

TEST_F(HomePageWidgets, KeepWhatAUserSetsAndNameWhatTheyRefuse)
{
    const struct {
        std::map<std::string, std::string> values;
        const char* problem;
    } cases[] = {
        {{{"rows", "x"}}, "\"Number of events\" must be a whole number from 0 to 50, not \"x\"."},
        {{{"rows", "51"}}, "\"Number of events\" must be a whole number from 0 to 50, not \"51\"."},
        {{{"rows", ""}}, "\"Number of events\" must be a whole number from 0 to 50, not \"\"."},
        {{{"rows", "3"}, {"season", "This season"}},
         "\"Season\" must be one of the choices, not \"This season\"."},
        {{{"goalsonly", "maybe"}}, "\"Only events with a goal\" must be yes or no, not \"maybe\"."},
        {{{"season", "previous"}, {"goalsonly", "True"}}, ""},
    };
    for (const auto& [values, problem] : cases) {
        sent = values;
        raiseFor("widgets-options-action", "events-season-income");
        EXPECT_EQ(toText(get(Ref<Object>(widget), "Problem")), problem);
    }
    EXPECT_EQ(host.preferences.size(), 2U) << "a refused value keeps the others out, too";
    host.preferences["events/widget-events-season-income-rows"] = "no number";
    raiseFor("widgets-options", "events-season-income");
    EXPECT_EQ(said, "season;Season;choice;previous;current=This season|previous=Last season;\n"
                    "rows;Number of events;number;5;;\n"
                    "goalsonly;Only events with a goal;yesno;1;;\n");
}

} // namespace
} // namespace qmevents
