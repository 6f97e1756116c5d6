#include "tests/data/events_database.h"

#include "automation/conversions.h"
#include "automation/error.h"
#include "host/document/host_schema.h"
#include "tests/data/schema_file.h"

namespace refhost::test {
namespace {

std::string printed(const qmevents::Value& value)
{
    if (value.isNull()) return "Null";
    if (value.is(qmevents::ValueKind::date)) return value.as<qmevents::Date>().iso();
    return qmevents::toText(value);
}

std::string number(int value) { return std::to_string(value); }
std::string number(bool value) { return value ? "1" : "0"; }

} // namespace

EventsDatabase::EventsDatabase(Dialect dialect)
    : database_(Database::inMemory()), sql_(database_, dialect)
{
    createHostTables(database_);
}

void EventsDatabase::run(int version, const std::string& section)
{
    for (const std::string& statement : schemaStatements(sql_.dialect(), version, section)) {
        sql_.execute(statement);
    }
}

int EventsDatabase::insert(const std::string& table,
                           const std::vector<std::pair<std::string, std::string>>& cells)
{
    std::string columns, values;
    for (const auto& [column, value] : cells) {
        columns += (columns.empty() ? "" : ", ") + column;
        values += (values.empty() ? "" : ", ") + value;
    }
    sql_.execute("INSERT INTO " + table + " (" + columns + ") VALUES (" + values + ")");
    return qmevents::toInt32(sql_.query("SELECT @@IDENTITY")->value(0));
}

std::string EventsDatabase::day(const std::string& day) const
{
    if (day.empty()) return "NULL";
    if (sql_.dialect() == Dialect::jet) return "#" + day + "#";
    return "'" + day.substr(0, 10) + "T" + (day.size() > 10 ? day.substr(11) : "00:00:00") + "'";
}

std::string EventsDatabase::text(const std::string& value) const
{
    return (sql_.dialect() == Dialect::sqlServer ? "N'" : "'") + value + "'";
}

int EventsDatabase::donor(const std::string& display)
{
    return insert("donor_donors", {{"display", text(display)}});
}

int EventsDatabase::event(const std::string& name, const std::string& start, int category)
{
    return insert(
        "events_event_info",
        {{"Name", text(name)}, {"StartDateTime", day(start)}, {"FKCategoryId", number(category)}});
}

int EventsDatabase::activity(int event, int price, int available, bool sponsorship)
{
    return insert("events_event_activities", {{"FKEventId", number(event)},
                                              {"Name", text("Activity")},
                                              {"ListPrice", number(price)},
                                              {"QuantityAvailable", number(available)},
                                              {"Sponsorship", number(sponsorship)}});
}

int EventsDatabase::reservation(int event, int donor, const std::string& on, int paid)
{
    return insert("events_event_reservations", {{"FKEventId", number(event)},
                                                {"FKDonorId", number(donor)},
                                                {"ReservationDate", day(on)},
                                                {"AmountPaid", number(paid)}});
}

int EventsDatabase::line(int reservation, int activity, int quantity, int price)
{
    return insert("events_event_reservations_activities", {{"FKReservationId", number(reservation)},
                                                           {"FKActivityId", number(activity)},
                                                           {"Quantity", number(quantity)},
                                                           {"Price", number(price)}});
}

int EventsDatabase::participant(int event, int donor, int status, bool attended)
{
    return insert("events_event_participants", {{"FKEventId", number(event)},
                                                {"FKDonorId", number(donor)},
                                                {"Status", number(status)},
                                                {"Attended", number(attended)}});
}

int EventsDatabase::expense(int event, const std::string& amount)
{
    return insert("events_event_expenses", {{"FKEventId", number(event)}, {"Amount", amount}});
}

int EventsDatabase::gift(const GiftRow& row)
{
    return insert("donor_gifts", {{"donorId", number(row.donor)},
                                  {"FKEventId", number(row.event)},
                                  {"FKReservationId", number(row.reservation)},
                                  {"pledge", number(row.pledge)},
                                  {"deleted", number(row.deleted)}});
}

void EventsDatabase::payment(int gift, int expected, const std::string& receivedOn, int received)
{
    insert("donor_gifts_payments", {{"giftId", number(gift)},
                                    {"expectedAmount", number(expected)},
                                    {"actualDate", day(receivedOn)},
                                    {"actualAmount", number(received)}});
}

Row EventsDatabase::row(const std::string& select)
{
    const auto cursor = sql_.query(select);
    Row result;
    for (std::size_t column = 0; !cursor->eof() && column < cursor->columnCount(); ++column) {
        result[cursor->columnName(column)] = printed(cursor->value(column));
    }
    return result;
}

int failureOf(SqlSession& sql, const std::string& statement)
{
    try {
        sql.execute(statement);
    } catch (const qmevents::Error& error) {
        return error.number();
    }
    return 0;
}

void expectColumns(const Row& actual, const Row& expected)
{
    for (const auto& [column, value] : expected) {
        const auto found = actual.find(column);
        EXPECT_EQ(found == actual.end() ? "no such column" : found->second, value) << column;
    }
}

std::string dialectTestName(const ::testing::TestParamInfo<Dialect>& info)
{
    return info.param == Dialect::sqlServer ? "SqlServer" : "Jet";
}

} // namespace refhost::test
