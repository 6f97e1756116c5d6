#include "host/demo/demo.h"

#include "automation/clock.h"
#include "automation/error.h"
#include "host/app/session.h"
#include "host/demo/database_file.h"
#include "host/demo/event_maker.h"
#include "host/demo/giving.h"
#include "host/demo/saved_lists.h"
#include "host/document/host_schema.h"
#include "host/security/user_store.h"

namespace refhost {
namespace {

using demo::ChildMaker;
using demo::Codes;
using demo::Donor;
using demo::Entering;
using demo::EventMaker;
using demo::MadeEvent;
using demo::makeCodes;
using demo::makeDonors;
using demo::makeGifts;
using demo::makeUsers;
using demo::Random;
using demo::RowWriter;
using demo::saveDatabase;
using demo::saveLists;
using demo::Urn;
using qmevents::Clock;
using qmevents::Date;
using qmevents::Error;

namespace fs = std::filesystem;

constexpr long long noon = 12LL * 3600;

enum Topic : std::uint64_t { donorTopic = 1, eventTopic, childTopic, giftTopic };

Error failure(const std::string& description) { return Error(0, "Demo", description); }

/// Nobody looks on: what the shell shows is a failure, what it asks is declined.
class NobodyThere : public FrontEnd {
public:
    void throwWhatWasShown() const
    {
        if (!shown_.empty()) throw failure(shown_);
    }

    void showMessage(const Message& message) override
    {
        if (shown_.empty()) shown_ = message.text;
    }
    Button ask(const Prompt&) override { return Button::no; }
    void navigate(const std::string&, bool) override {}
    void runDialog(const DialogWindow&, DialogEngine&) override {}
    void loadDialogPage(const DialogWindow&) override {}
    void refresh() override {}
    void setPageModified() override {}

private:
    std::string shown_;
};

/// All rows or none, and the engine's work at the end of a statement only once.
class Transaction {
public:
    explicit Transaction(SqlSession& sql) : sql_(sql) { sql_.begin(); }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction()
    {
        if (!done_) sql_.rollback();
    }
    void commit()
    {
        sql_.commit();
        done_ = true;
    }

private:
    SqlSession& sql_;
    bool done_ = false;
};

/// What the add-in told nobody says more than that a call of it failed.
template <typename Act>
auto watching(const NobodyThere& nobody, Act act)
{
    try {
        auto result = act();
        nobody.throwWhatWasShown();
        return result;
    } catch (const Error&) {
        nobody.throwWhatWasShown();
        throw;
    }
}

std::vector<MadeEvent> makeEvents(Session& session, const Urn& urn, const Codes& codes,
                                  const Random& random, int crowd)
{
    const Date today = demoDay();
    EventMaker maker(session.app(), codes, urn, random.branch(eventTopic), today, crowd);
    std::vector<MadeEvent> events = maker.make();
    Entering entering(session.app());
    ChildMaker children(entering, urn, maker.groups(), codes.assignees, random.branch(childTopic),
                        today);
    Transaction transaction(session.sql());
    for (MadeEvent& event : events) children.fill(event);
    transaction.commit();
    Clock::pin(today.plusSeconds(noon));
    return events;
}

DemoCounts fill(const std::shared_ptr<Database>& database, const DemoOptions& options)
{
    const Random random(options.seed);
    const Date today = demoDay();
    createHostTables(database);
    std::vector<Donor> donors;
    Codes codes;
    {
        SqlSession sql(database, options.dialect);
        RowWriter rows(sql);
        Transaction transaction(sql);
        makeUsers(sql);
        codes = makeCodes(rows);
        donors = makeDonors(rows, random.branch(donorTopic), options.donors, today);
        transaction.commit();
    }
    const Urn urn(donors);
    NobodyThere nobody;
    Session session({.database = database,
                     .dialect = options.dialect,
                     .userName = "anna",
                     .frontEnd = &nobody,
                     .addInPath = options.addInPath});
    nobody.throwWhatWasShown();
    const std::vector<MadeEvent> events =
        watching(nobody, [&] { return makeEvents(session, urn, codes, random, options.crowd); });
    DemoCounts counts{.donors = static_cast<int>(donors.size()),
                      .events = static_cast<int>(events.size())};
    for (const MadeEvent& event : events) {
        counts.reservations += static_cast<int>(event.reservations.size());
    }
    RowWriter rows(session.sql());
    Transaction transaction(session.sql());
    counts.gifts =
        makeGifts(rows, urn, codes, events, random.branch(giftTopic), options.gifts, today);
    transaction.commit();
    watching(nobody, [&] {
        const auto quillmere = getObject(getObject(session.app(), "Modules"), "Quillmere");
        call(getObject(quillmere, "Settings"), "SetFiscalYearStart", 7, 1); // seasons, not years
        saveLists(session.app());
        return true;
    });
    return counts;
}

} // namespace

void makeSmall(DemoOptions& options)
{
    options.donors = 2000;
    options.gifts = 5600;
    options.crowd = 0;
}

Date demoDay() { return Date::of(2026, 11, 21); }

DemoCounts makeDemo(const DemoOptions& options)
{
    if (!options.replaces && fs::exists(options.database)) {
        throw failure(options.database.string() + " is there already; --force replaces it");
    }
    const qmevents::PinnedClock clock(demoDay().plusSeconds(noon));
    const auto database = Database::inMemory();
    const DemoCounts counts = fill(database, options);
    SqlSession sql(database, options.dialect);
    saveDatabase(sql, options.database);
    return counts;
}

} // namespace refhost
