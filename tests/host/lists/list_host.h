#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/host/session/fixture.h"
#include "tests/support/temp_folder.h"

namespace refhost {

using qmevents::toInt32;

/// The members of a collection's items, each followed by ";".
inline std::string column(const Ref<Object>& items, const char* member)
{
    std::string result;
    Value item;
    for (const auto walk = items->enumerate(); walk->next(item);) {
        result += toText(*member ? get(toObject(item), member) : item) + ";";
    }
    return result;
}

inline Value textsAsArray(const std::vector<std::string>& texts)
{
    return {qmevents::Array::list({texts.begin(), texts.end()})};
}

/// Donors and gifts, and a module with a file of fields of its own.
class ListHost {
public:
    explicit ListHost(Dialect dialect = Dialect::sqlServer,
                      const std::shared_ptr<Database>& shared = {},
                      std::optional<std::vector<std::string>> rights = {},
                      const std::string& user = "Ann Admin");
    ~ListHost();
    ListHost(const ListHost&) = delete;

    void writeFile(const std::string& text) const { std::ofstream(file()) << text; }
    std::string file() const { return (folder / "builder.xml").string(); }
    void execute(const std::string& sql) const
    {
        call(getObject(session->app(), "Document"), "Execute", sql);
    }
    Value cell(const std::string& sql) const;
    Ref<Object> lists() const
    {
        return getObject(getObject(getObject(session->app(), "Modules"), "Quillmere"),
                         "Smartlists");
    }
    Ref<Object> newList(const char* type = "donors") const
    {
        return toObject(call(lists(), "GetNewList", type));
    }
    Ref<Object> run(const Ref<Object>& list) const { return toObject(call(lists(), "Run", list)); }
    /// The keys of the records that a list with one filter holds; its fault when it has one.
    std::string held(const char* key, const char* operation,
                     const std::vector<std::string>& values) const;

    const qmevents::testing::TempFolder folder;
    RecordingAddIn addIn;
    ScriptedFrontEnd frontEnd;
    std::shared_ptr<Database> database;
    std::unique_ptr<Session> session;

private:
    void answer(const Ref<Object>& event) const;
    void fill(Dialect dialect) const;
};

/// The first column of all rows, each followed by a blank.
inline std::string keysOf(const Ref<Object>& result, std::size_t wanted = 0)
{
    const Value rows = call(result, "Rows", 0, 5000);
    const auto width = static_cast<std::size_t>(rows.array()->dimensions[1].count);
    std::string keys;
    for (std::size_t cell = wanted; cell < rows.array()->items.size(); cell += width) {
        const Value& value = rows.array()->items[cell];
        keys += (value.isNull() ? "null" : toText(value)) + " ";
    }
    return keys;
}

inline ListHost::ListHost(Dialect dialect, const std::shared_ptr<Database>& shared,
                          std::optional<std::vector<std::string>> rights, const std::string& user)
    : database(shared ? shared : Database::inMemory())
{
    writeFile(R"(<listbuilder type="donors">
 <choices key="sizes"><choice id="50">Middle</choice><choice id="100">Large</choice></choices>
 <field name="gifts" caption="Number of gifts" kind="number" group="Module">
  <value>(SELECT COUNT(*) FROM donor_gifts g WHERE g.donorId = {id} AND g.created &gt;=
   {PERIOD1START} AND g.created &lt;= {PERIOD1END})</value>
  <filter kind="choice" caption="Gave for event">
   <choices>SELECT g.FKEventId AS Id, g.FKEventId AS Name FROM donor_gifts g</choices>
   <condition>{id} IN (SELECT g.donorId FROM donor_gifts g WHERE g.FKEventId IN ({values}))</condition>
  </filter>
 </field>
 <field name="largest" caption="Largest" kind="money" group="Module" operation="donations/view">
  <value>(SELECT MAX(p.actualAmount) FROM donor_gifts g INNER JOIN donor_gifts_payments p
   ON p.giftId = g.id WHERE g.donorId = {id})</value>
  <filter key="reached" kind="choice" caption="Reached" choices="sizes">
   <condition>EXISTS (SELECT g.id FROM donor_gifts g INNER JOIN donor_gifts_payments p
    ON p.giftId = g.id WHERE g.donorId = {id} AND p.actualAmount IN ({values}))</condition>
  </filter>
 </field>
</listbuilder>)");
    addIn.onEvent = [this](const Ref<Object>& event) { answer(event); };
    session = std::make_unique<Session>(SessionOptions{.database = database,
                                                       .dialect = dialect,
                                                       .userName = user,
                                                       .rights = std::move(rights),
                                                       .frontEnd = &frontEnd,
                                                       .addInPath = folder.string(),
                                                       .parts = addIn.parts()});
    if (!shared) fill(dialect);
}

inline ListHost::~ListHost()
{
    addIn.onEvent = nullptr;
    session.reset();
}

inline void ListHost::answer(const Ref<Object>& event) const
{
    const std::string key = toText(get(event, "Key"));
    if (key == "smartlist-modifytypes") {
        call(getObject(lists(), "types", "donors"), "AppendSchema", "M", "m", file());
    } else if (key == "smartlist-columns") {
        const auto data = getObject(event, "Data");
        if (toText(get(data, "ListType")) != "donors") return;
        for (const char* field : {"gifts", "largest"}) {
            const auto added = toObject(call(data, "GetNewColumn"));
            put(added, "Caption", "Col " + std::string(field));
            put(added, "DataField", field);
            put(added, "Visible", false);
            call(getObject(data, "Columns"), "Add", added, field);
        }
    }
}

inline void ListHost::fill(Dialect dialect) const
{
    const bool isJet = dialect == Dialect::jet;
    const auto day = [&](const std::string& text) {
        return isJet ? "#" + text + "#" : "'" + qmevents::text::replaceAll(text, " ", "T") + "'";
    };
    const auto donor = [&](const std::string& name, const std::string& city, const char* created) {
        execute("INSERT INTO donor_donors (display, city, created) VALUES ('" + name + "', " +
                (city == "NULL" ? city : "'" + city + "'") + ", " + day(created) + ")");
    };
    donor("Ann O''Hara", "100% [West]", "2026-01-31 18:00:00");
    donor("Bo", "Westend", "2026-02-01 00:00:00");
    donor("Cy", "", "2025-12-31 00:00:00");
    donor("Di", "NULL", "2026-02-01 09:30:00");
    execute("INSERT INTO donor_donors (display, deleted) VALUES ('Gone', 1)");
    const auto gift = [&](const std::string& values, const std::string& amount) {
        execute("INSERT INTO donor_gifts (donorId, FKEventId, pledge, created) VALUES (" + values +
                ", " + day("2026-01-15 00:00:00") + ")");
        execute("INSERT INTO donor_gifts_payments (giftId, actualAmount, actualDate) "
                "SELECT MAX(g.id) AS giftId, " +
                amount + " AS actualAmount, " + day("2026-01-15 00:00:00") +
                " AS actualDate FROM donor_gifts g");
    };
    gift("1, 7, 0", "9.5");
    gift("1, 8, 0", "100");
    gift("2, 7, 1", "20");
}

inline Value ListHost::cell(const std::string& sql) const
{
    const auto rows = toObject(call(getObject(session->app(), "Document"), "GetDataSet", sql));
    return get(toObject(get(rows, "Fields", 0)), "Value");
}

inline std::string ListHost::held(const char* key, const char* operation,
                                  const std::vector<std::string>& values) const
{
    const auto list = newList();
    put(list, "Sort", "");
    call(list, "AddFilter", key, operation, textsAsArray(values));
    const auto result = run(list);
    const std::string faults = column(getObject(result, "Faults"), "Text");
    return faults.empty() ? keysOf(result) : faults;
}

} // namespace refhost
