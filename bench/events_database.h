#pragma once

#include <memory>
#include <string>

#include "host/app/session.h"
#include "host/shell/front_end.h"

struct sqlite3;

namespace bench {

/// A front end that nobody looks at: messages are dropped, questions answered No.
class NobodyThere : public refhost::FrontEnd {
public:
    void showMessage(const refhost::Message&) override {}
    refhost::Button ask(const refhost::Prompt&) override { return refhost::Button::no; }
    void navigate(const std::string&, bool) override {}
    void runDialog(const refhost::DialogWindow&, refhost::DialogEngine&) override {}
    void loadDialogPage(const refhost::DialogWindow&) override {}
    void refresh() override {}
    void setPageModified() override {}
};

/// A database file with `events` rows in events_event_info, a signed-in session on it, and a raw
/// connection to the same file. There are as many donors as `participants` of the first event,
/// each in two of five invitation groups, or in one.
class EventsDatabase {
public:
    explicit EventsDatabase(int events, int participants = 0);
    EventsDatabase(const EventsDatabase&) = delete;
    ~EventsDatabase();

    qmevents::Ref<qmevents::Object> store();
    refhost::Session& session() { return *session_; }
    sqlite3* raw() { return raw_; }
    bool holds(int events, int participants) const
    {
        return events == events_ && participants == participants_;
    }

private:
    int events_, participants_;
    NobodyThere frontEnd_;
    std::string file_;
    std::unique_ptr<refhost::Session> session_;
    sqlite3* raw_ = nullptr;
};

/// The database with this many events and participants. A thread serves one session, so there is
/// one at a time.
EventsDatabase& databaseOf(std::int64_t events, std::int64_t participants = 0);

} // namespace bench
