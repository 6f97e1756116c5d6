// The home page's widgets over a real database: what they show and what users set about them.
#include <map>

#include "tests/host/addin/full_event.h"
#include "tests/support/puppet.h"

namespace refhost {
namespace {

using qmevents::Date;
using qmevents::toText;
using qmevents::testing::puppet;

const std::string cells = "</td><td>";
const std::string rows = "</td></tr><tr><td>";

std::string link(int event, const std::string& tab, const std::string& name)
{
    return "<a href=\"javascript:App.Modules.Events.Objects('Workflow').Events.ViewEvent(" +
           std::to_string(event) + ",'events_" + tab + "');\">" + name + "</a>";
}

std::string table(const std::string& inner)
{
    return "<table><tr><td>" + inner + "</td></tr></table>";
}

class Widgets : public InBothDialects {
protected:
    Widgets() { EventFiller(host).prepare(); }

    std::string day(Date date) const
    {
        return toText(call(getObject(host.session->app(), "Provider"), "VToSQL", date, 1));
    }
    void insert(const std::string& table, const std::string& columns, const std::string& values)
    {
        host.execute("INSERT INTO " + table + " (" + columns + ") VALUES (" + values + ")");
    }
    void event(const std::string& name, Date start, int capacity, int goal, int revenueGoal)
    {
        insert("events_event_info", "Name, StartDateTime, MaxCapacity, AttendanceGoal, RevenueGoal",
               "'" + name + "', " + day(start) + ", " + std::to_string(capacity) + ", " +
                   std::to_string(goal) + ", " + std::to_string(revenueGoal));
    }
    /// One line of `activity`, paid in part.
    void reservation(int event, int donor, Date date, int activity, int quantity, int price)
    {
        insert("events_event_reservations", "FKEventId, FKDonorId, ReservationDate, AmountPaid",
               std::to_string(event) + ", " + std::to_string(donor) + ", " + day(date) + ", 40");
        insert("events_event_reservations_activities",
               "FKReservationId, FKActivityId, Quantity, Price",
               host.cell("SELECT MAX(Id) FROM events_event_reservations") + ", " +
                   std::to_string(activity) + ", " + std::to_string(quantity) + ", " +
                   std::to_string(price));
    }

    /// Raises `event` about the widget; what is set stands in `sent`.
    void raise(const char* event, const char* key)
    {
        auto widget = puppet("Widget");
        widget->holds("Key", key).holds("Content", "").holds("Problem", "");
        widget->on("OptionValue", [this](std::span<Value> a) {
            const auto found = sent.find(toText(a[0]));
            return found == sent.end() ? Value() : Value(found->second);
        });
        auto data = puppet("Data");
        data->holds("widget", widget);
        host.statements.clear();
        host.session->raise(event, data);
        content = toText(get(Ref<Object>(widget), "Content"));
        problem = toText(get(Ref<Object>(widget), "Problem"));
    }
    std::string shown(const char* key)
    {
        raise("widgets-content", key);
        EXPECT_LE(host.statements.size(), 2U);
        return content;
    }
    std::string set(const char* key, std::map<std::string, std::string> values)
    {
        sent = std::move(values);
        raise("widgets-options-action", key);
        return problem;
    }

    WholeHost host{GetParam()};
    std::string content, problem;
    std::map<std::string, std::string> sent;
};
INSTANTIATE_TEST_SUITE_P(Both, Widgets, ::testing::Values(Dialect::sqlServer, Dialect::jet),
                         testNameOf);

TEST_P(Widgets, ShowHowFullUpcomingEventsAre)
{
    EXPECT_EQ(shown("events-upcoming"), table("No upcoming events"));
    event("Past", Date::of(2026, 11, 20), 5, 5, 0);
    event("<b>\"Gala\" & Co</b>", Date::of(2026, 11, 21, 19), 4, 100, 0);
    event("Run", Date::of(2026, 12, 1), 0, 8, 0);
    event("Talk", Date::of(2026, 12, 2), 0, 0, 0);
    event("Too far", Date::of(2027, 2, 20), 5, 5, 0);
    insert("events_list_eventlocations", "Name", "'Hall & Yard'");
    host.execute("UPDATE events_event_info SET FKLocationId = 1 WHERE Id = 2");
    for (const char* activity : {"2, 'Seat', 0", "2, 'Banner', 1", "3, 'Start', 0"}) {
        insert("events_event_activities", "FKEventId, Name, Sponsorship", activity);
    }
    reservation(2, 1, Date::of(2026, 11, 1), 1, 3, 10);
    reservation(2, 2, Date::of(2026, 11, 1), 1, 1, 10);
    reservation(2, 2, Date::of(2026, 11, 1), 2, 9, 10); // a sponsorship takes no place
    reservation(3, 2, Date::of(2026, 11, 1), 3, 1, 10);
    for (const char* participant : {"2, 1, 2", "3, 1, 2", "3, 2, 2", "3, 1, 1"}) {
        insert("events_event_participants", "FKEventId, FKDonorId, Status", participant);
    }
    const std::string gala = "<small>Today 7:00 PM</small>" + cells +
                             link(2, "overview", "&lt;b&gt;&quot;Gala&quot; &amp; Co&lt;/b&gt;") +
                             " <small>Hall &amp; Yard</small>" + cells +
                             "<meter min=\"0\" max=\"4\" value=\"4\">100%</meter>" + cells +
                             "4 of 4 places <strong>Full</strong>";
    const std::string run = "<small>12/1/26</small>" + cells + link(3, "overview", "Run") + cells +
                            "<meter min=\"0\" max=\"8\" value=\"2\">25%</meter>" + cells +
                            "2 of 8 hoped for";
    const std::string talk =
        "<small>12/2/26</small>" + cells + link(4, "overview", "Talk") + cells + cells + "0 coming";
    EXPECT_EQ(shown("events-upcoming"), table(gala + rows + run + rows + talk));
    EXPECT_EQ(set("events-upcoming", {{"rows", " 1 "}, {"days", "3"}}), "");
    EXPECT_EQ(shown("events-upcoming"), table(gala));
}

TEST_P(Widgets, ShowTheUsersOpenTasksOverdueOnesFirst)
{
    event("Gala", Date::of(2026, 12, 1), 0, 0, 0);
    const std::string user =
        toText(get(getObject(getObject(host.session->app(), "Security"), "CurrentUser"), "Id"));
    insert("donor_list_assignedto", "[value], FKuserId", "'Anna', " + user);
    insert("donor_list_assignedto", "[value], FKuserId", "'Bert', 99");
    const struct {
        const char* name;
        std::string due;
        int assignee, completed;
    } tasks[] = {{"Later", day(Date::of(2026, 11, 25)), 1, 0},
                 {"Undated", "NULL", 1, 0},
                 {"Today", day(Date::of(2026, 11, 21)), 1, 0},
                 {"<Late>", day(Date::of(2026, 11, 21, 9)), 1, 0},
                 {"Done", day(Date::of(2026, 11, 20)), 1, 1},
                 {"Bert's", day(Date::of(2026, 11, 20)), 2, 0},
                 {"Far", day(Date::of(2027, 1, 20)), 1, 0}};
    for (const auto& task : tasks) {
        insert("events_event_tasks", "FKEventId, Name, DueDateTime, FKAssignedToId, Completed",
               "1, '" + qmevents::text::replaceAll(task.name, "'", "''") + "', " + task.due + ", " +
                   std::to_string(task.assignee) + ", " + std::to_string(task.completed));
    }
    const auto row = [](const std::string& due, int task, const std::string& name) {
        return due + cells + link(1, "tasks", name) + cells + "Gala" + cells +
               "<a href=\"javascript:App.Modules.Events.Objects('Workflow').Events."
               "CompleteEventTask(1," +
               std::to_string(task) + ");\">Complete</a>";
    };
    EXPECT_EQ(
        shown("events-my-tasks"),
        table(row("<strong>Overdue</strong> <small>Today 9:00 AM</small>", 4, "&lt;Late&gt;") +
              rows + row("<small>Today</small>", 3, "Today") + rows +
              row("<small>11/25/26</small>", 1, "Later") + rows + row("", 2, "Undated")));
    host.session->sql().hostExecute("DELETE FROM host_user_rights WHERE name = 'events/edit'");
    EXPECT_EQ(shown("events-my-tasks").find("Complete"), std::string::npos);
}

TEST_P(Widgets, SumTheSeasonsIncomeAsTheEventsDo)
{
    put(host.document(), "Setting", "fiscal-year-month", "7");
    put(host.document(), "Setting", "fiscal-year-day", "1");
    event("Before", Date::of(2026, 6, 30, 23), 0, 0, 500);
    event("First", Date::of(2026, 7, 1), 0, 0, 1000);
    event("Last", Date::of(2027, 6, 30, 23), 0, 0, 0);
    insert("events_event_activities", "FKEventId, Name", "2, 'Seat'");
    reservation(2, 1, Date::of(2026, 8, 1), 1, 1, 50);
    reservation(1, 1, Date::of(2026, 6, 1), 1, 1, 50);
    insert("donor_gifts", "donorId, FKEventId, deleted", "1, 3, 0");
    insert("donor_gifts_payments", "giftId, actualDate, actualAmount",
           "1, " + day(Date::of(2026, 9, 1)) + ", 210.5");
    EXPECT_EQ(shown("events-season-income"),
              table("<strong>This season</strong>" + cells +
                    "<meter min=\"0\" max=\"1000\" value=\"250.50\">25%</meter>" + cells +
                    "$250.50 of $1,000.00 <small>25%</small>" + rows + link(3, "overview", "Last") +
                    cells + cells + "$210.50" + rows + link(2, "overview", "First") + cells +
                    "<meter min=\"0\" max=\"1000\" value=\"40\">4%</meter>" + cells +
                    "$40.00 of $1,000.00 <small>4%</small>"));
    Value total = 0;
    for (const int id : {2, 3}) {
        const auto one = toObject(call(host.store(), "GetEvent", id));
        total = toCurrency(total) + toCurrency(get(one, "CurrentRevenue"));
    }
    EXPECT_EQ(toText(total), "250.5");
    EXPECT_EQ(set("events-season-income", {{"season", "previous"}, {"rows", "0"}}), "");
    EXPECT_EQ(shown("events-season-income"),
              table("<strong>Last season</strong>" + cells +
                    "<meter min=\"0\" max=\"500\" value=\"40\">8%</meter>" + cells +
                    "$40.00 of $500.00 <small>8%</small>"));
}

TEST_P(Widgets, ShowRecentReservationsWithAmountsForThoseWhoMaySeeThem)
{
    event("Gala", Date::of(2026, 12, 1), 0, 0, 0);
    insert("events_event_activities", "FKEventId, Name", "1, 'Seat'");
    reservation(1, 1, Date::of(2026, 11, 1), 1, 2, 50);
    reservation(1, 2, Date::of(2026, 11, 21), 1, 1, 75);
    reservation(1, 2, Date::of(2026, 1, 21), 1, 1, 75);
    const std::string newest = "<small>Today</small>" + cells + "Ode, Ann" + cells +
                               link(1, "reservations", "Gala") + cells;
    const std::string older = "<small>11/1/26</small>" + cells + "Lee, Kim" + cells +
                              link(1, "reservations", "Gala") + cells;
    EXPECT_EQ(shown("events-recent-reservations"),
              table(newest + "$75.00" + rows + older + "$100.00"));
    const auto revoke = [&](const std::string& right) {
        host.session->sql().hostExecute("DELETE FROM host_user_rights WHERE name = ?", {right});
    };
    revoke("donations/view");
    EXPECT_EQ(shown("events-recent-reservations"), table(newest + rows + older));
    EXPECT_EQ(host.statements.size(), 1U);
    EXPECT_EQ(shown("events-season-income"), "");
    revoke("events/view");
    for (const char* key : {"events-upcoming", "events-my-tasks", "events-recent-reservations"}) {
        EXPECT_EQ(shown(key), "") << key;
    }
}

} // namespace
} // namespace refhost
