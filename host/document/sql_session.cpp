#include "host/document/sql_session.h"

#include <algorithm>
#include <chrono>

#include "host/document/catalog.h"
#include "host/document/cursor_source.h"
#include "host/document/lexer.h"
#include "host/document/prepared_plan.h"

namespace refhost {

class SqlSession::Implementation {
public:
    Implementation(std::shared_ptr<Database> shared, Dialect dialect)
        : database_(std::move(shared)), connection_(*database_, dialect), catalog_(connection_),
          seenSchema_(database_->schemaChanges)
    {
        // Before the first numbered row SQL Server's identity is NULL, Jet's 0.
        if (dialect == Dialect::jet) connection_.context().identity = 0;
    }

    ~Implementation()
    {
        for (const auto& cursor : cursors_) {
            if (const auto source = cursor.lock()) source->abandon();
        }
    }

    Dialect dialect() { return connection_.context().dialect; }
    Connection& connection() { return connection_; }
    bool inTransaction() const { return sqlite3_get_autocommit(connection_.handle()) == 0; }

    std::shared_ptr<PreparedPlan> plan(std::string_view text)
    {
        refresh();
        tokenize(dialect(), text, tokens_);
        std::string shape = shapeOf(text, tokens_);
        if (auto known = cache_.find(shape, tokens_)) return known;
        auto made = std::make_shared<PreparedPlan>(makePlan(dialect(), catalog_, tokens_));
        constexpr std::size_t longestShape = 16384;
        const bool cached = made->plan.kind != Plan::Kind::schema && shape.size() <= longestShape;
        if (cached) cache_.add(std::move(shape), tokens_, made);
        return made;
    }

    std::shared_ptr<CursorSource> open(const std::shared_ptr<PreparedPlan>& plan)
    {
        if (plan->plan.kind != Plan::Kind::read) refuse(tokens_[0], "a SELECT is expected here");
        keepStaleCursors();
        auto source = std::make_shared<CursorSource>(connection_, plan, parameters(plan->plan),
                                                     database_->writes);
        // In memory a reader would keep every writer waiting.
        if (database_->isInMemory()) source->keepRows();
        cursors_.push_back(source);
        return source;
    }

    std::int64_t change(const std::shared_ptr<PreparedPlan>& plan)
    {
        if (plan->plan.kind == Plan::Kind::read) refuse(tokens_[0], "a SELECT changes nothing");
        keepCursors();
        if (plan->plan.kind == Plan::Kind::schema) return changeSchema(plan->plan);
        const std::vector<HostValue> values = parameters(plan->plan);
        EngineStatement statement = plan->acquire(connection_);
        int index = 0;
        for (const HostValue& value : values) statement.bind(++index, value);
        try {
            while (connection_.step(statement)) continue;
        } catch (...) { // the statement can be used again
            plan->release(std::move(statement));
            throw;
        }
        plan->release(std::move(statement));
        const std::int64_t rows = sqlite3_changes64(connection_.handle());
        if (rows > 0) noteIdentity(plan->plan.identity);
        ++database_->writes;
        return rows;
    }

    void begin()
    {
        if (inTransaction()) {
            throw sqlError(SqlErrorNumber::statement, "A transaction is open already");
        }
        keepCursors();
        connection_.run("BEGIN IMMEDIATE");
    }

    void end(const char* how)
    {
        if (!inTransaction()) throw sqlError(SqlErrorNumber::statement, "No transaction is open");
        keepCursors();
        connection_.run(how);
        ++database_->writes;
        if (schemaChanged_) ++database_->schemaChanges;
        schemaChanged_ = false;
    }

    void keepCursors()
    {
        for (const auto& cursor : cursors_) {
            if (const auto source = cursor.lock()) source->keepRows();
        }
        cursors_.clear();
    }

    void noteHostWrite()
    {
        ++database_->writes;
        ++database_->schemaChanges; // it may have been one
    }

private:
    void refresh()
    {
        const std::uint64_t changes = database_->schemaChanges;
        if (changes == seenSchema_) return;
        seenSchema_ = changes;
        cache_.clear();
        catalog_.forget();
    }

    // A cursor left open would show this session's new queries the database of its own time.
    void keepStaleCursors()
    {
        const std::uint64_t writes = database_->writes;
        std::erase_if(cursors_, [&](const std::weak_ptr<CursorSource>& cursor) {
            const auto source = cursor.lock();
            if (source && source->writesWhenOpened() != writes) source->keepRows();
            return !source || !source->isStreaming();
        });
    }

    std::vector<HostValue> parameters(const Plan& plan)
    {
        std::vector<HostValue> values;
        values.reserve(plan.parameters.size());
        for (const Parameter& parameter : plan.parameters) {
            values.push_back(literalValue(tokens_[parameter.token], parameter, dialect()));
        }
        return values;
    }

    std::int64_t changeSchema(const Plan& plan)
    {
        connection_.run("SAVEPOINT host_change");
        try {
            for (const std::string& sql : plan.sql) connection_.run(sql);
        } catch (...) { // all of the change or nothing
            connection_.run("ROLLBACK TO host_change; RELEASE host_change; "
                            "PRAGMA legacy_alter_table = OFF");
            throw;
        }
        connection_.run("RELEASE host_change");
        schemaChanged_ = inTransaction();
        noteHostWrite();
        return 0;
    }

    void noteIdentity(Plan::Identity effect)
    {
        auto& identity = connection_.context().identity;
        if (effect == Plan::Identity::counted) {
            identity = sqlite3_last_insert_rowid(connection_.handle());
        } else if (effect == Plan::Identity::uncounted && dialect() == Dialect::sqlServer) {
            identity.reset();
        }
    }

    std::shared_ptr<Database> database_;
    Connection connection_;
    Catalog catalog_;
    PlanCache cache_;
    std::vector<Token> tokens_; // of the statement that is being run
    std::vector<std::weak_ptr<CursorSource>> cursors_;
    std::uint64_t seenSchema_;
    bool schemaChanged_ = false; // in the open transaction
};

namespace {

using Clock = std::chrono::steady_clock;

// Runs a statement between the session's two hooks.
template <typename Action>
auto traced(SqlSession& session, std::string_view text, Traced::Kind kind, Action action)
{
    Traced trace{.text = text, .kind = kind, .rows = -1};
    const auto start = Clock::now();
    const auto report = [&] {
        if (!session.onStatement) return;
        const auto spent = Clock::now() - start;
        trace.microseconds = std::chrono::duration_cast<std::chrono::microseconds>(spent).count();
        session.onStatement(trace);
    };
    const auto failed = [&](const qmevents::Error& error) {
        trace.rows = 0;
        trace.error = error.description();
        report();
    };
    try {
        if (session.beforeStatement) session.beforeStatement(text);
        auto result = action(trace);
        report();
        return result;
    } catch (const Refusal& refusal) { // becomes what the caller of a document sees
        failed(positioned(refusal, text));
        throw positioned(refusal, text);
    } catch (const qmevents::Error& error) { // goes on, once it is in the trace
        failed(error);
        throw;
    }
}

} // namespace

SqlSession::SqlSession(std::shared_ptr<Database> database, Dialect dialect)
    : implementation_(std::make_unique<Implementation>(std::move(database), dialect))
{
}

SqlSession::~SqlSession() = default;

Dialect SqlSession::dialect() const { return implementation_->dialect(); }

std::int64_t SqlSession::execute(std::string_view text)
{
    return traced(*this, text, Traced::Kind::write, [&](Traced& trace) {
        trace.rows = implementation_->change(implementation_->plan(text));
        return trace.rows;
    });
}

std::unique_ptr<Cursor> SqlSession::query(std::string_view text)
{
    return traced(*this, text, Traced::Kind::read, [&](Traced&) {
        return std::make_unique<Cursor>(implementation_->open(implementation_->plan(text)));
    });
}

void SqlSession::begin() { implementation_->begin(); }
void SqlSession::commit() { implementation_->end("COMMIT"); }
void SqlSession::rollback() { implementation_->end("ROLLBACK"); }
bool SqlSession::inTransaction() const { return implementation_->inTransaction(); }

std::int64_t SqlSession::hostExecute(std::string_view sql, const std::vector<HostValue>& parameters)
{
    implementation_->keepCursors();
    const std::int64_t rows = implementation_->connection().run(sql, parameters);
    implementation_->noteHostWrite();
    return rows;
}

std::vector<HostRow> SqlSession::hostQuery(std::string_view sql,
                                           const std::vector<HostValue>& parameters)
{
    return implementation_->connection().rows(sql, parameters);
}

} // namespace refhost
