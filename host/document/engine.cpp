#include "host/document/engine.h"

#include <algorithm>

#include "automation/text.h"

namespace refhost {
namespace {

constexpr int busyMilliseconds = 5000;

unsigned char foldAscii(unsigned char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c + 32) : c;
}

// Case-insensitive order; the ASCII beginning is compared in place, letters beyond are lowered.
int compareTexts(std::string_view a, std::string_view b)
{
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        const auto left = static_cast<unsigned char>(a[i]);
        const auto right = static_cast<unsigned char>(b[i]);
        if ((left | right) >= 0x80) {
            const std::string lowerLeft = qmevents::text::lower(a.substr(i));
            return lowerLeft.compare(qmevents::text::lower(b.substr(i)));
        }
        const int difference = foldAscii(left) - foldAscii(right);
        if (difference != 0) return difference;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

std::string_view view(int size, const void* text)
{
    return {static_cast<const char*>(text), static_cast<std::size_t>(size)};
}

std::string_view withoutTrailingBlanks(std::string_view text)
{
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    return text;
}

int collateJet(void*, int sizeA, const void* a, int sizeB, const void* b)
{
    return compareTexts(view(sizeA, a), view(sizeB, b));
}

int collateSqlServer(void*, int sizeA, const void* a, int sizeB, const void* b)
{
    return compareTexts(withoutTrailingBlanks(view(sizeA, a)),
                        withoutTrailingBlanks(view(sizeB, b)));
}

SqlErrorNumber numberOf(int extendedCode)
{
    switch (extendedCode & 0xFF) {
    case SQLITE_CONSTRAINT:
        return SqlErrorNumber::integrity;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return SqlErrorNumber::busy;
    default:
        return SqlErrorNumber::statement;
    }
}

// The engine names columns as "table.column" after a colon.
std::string describe(int extendedCode, const std::string& message)
{
    const std::string columns = message.substr(std::min(message.find(": ") + 2, message.size()));
    switch (extendedCode) {
    case SQLITE_CONSTRAINT_NOTNULL:
        return "Column " + columns + " needs a value; it takes no Null";
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
        return "The change would create duplicate values in " + columns;
    default:
        if (numberOf(extendedCode) == SqlErrorNumber::busy) {
            return "The database is locked by another session that is writing";
        }
        if (message == "parser stack overflow") return "The statement is nested too deeply";
        return message;
    }
}

} // namespace

std::string_view collationName(Dialect dialect)
{
    return dialect == Dialect::sqlServer ? "HOST_SQLSERVER" : "HOST_JET";
}

void EngineStatement::bind(int index, const HostValue& value) const
{
    sqlite3_stmt* const statement = handle();
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        sqlite3_bind_int64(statement, index, *whole);
    } else if (const auto* number = std::get_if<double>(&value)) {
        sqlite3_bind_double(statement, index, *number);
    } else if (const auto* text = std::get_if<std::string>(&value)) {
        sqlite3_bind_text64(statement, index, text->data(), text->size(), SQLITE_TRANSIENT,
                            SQLITE_UTF8);
    } else {
        sqlite3_bind_null(statement, index);
    }
}

void EngineStatement::reset() const
{
    sqlite3_reset(handle());
    sqlite3_clear_bindings(handle());
}

HostValue EngineStatement::column(int index) const
{
    sqlite3_stmt* const statement = handle();
    switch (sqlite3_column_type(statement, index)) {
    case SQLITE_INTEGER:
        return sqlite3_column_int64(statement, index);
    case SQLITE_FLOAT:
        return sqlite3_column_double(statement, index);
    case SQLITE_NULL:
        return nullptr;
    default: {
        const void* const text = sqlite3_column_blob(statement, index);
        return std::string(view(sqlite3_column_bytes(statement, index), text ? text : ""));
    }
    }
}

Connection::Connection(const Database& database, Dialect dialect)
{
    context_.dialect = dialect;
    constexpr int flags =
        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX;
    if (sqlite3_open_v2(database.address().c_str(), &handle_, flags, nullptr) != SQLITE_OK) {
        const std::string reason = sqlite3_errmsg(handle_);
        sqlite3_close(handle_);
        throw sqlError(SqlErrorNumber::statement, "The database cannot be opened: " + reason);
    }
    try {
        sqlite3_extended_result_codes(handle_, 1);
        sqlite3_busy_timeout(handle_, busyMilliseconds);
        // A misspelt name is never taken for a text.
        sqlite3_db_config(handle_, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
        sqlite3_db_config(handle_, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
        for (const auto& [name, collate] : {std::pair{Dialect::sqlServer, &collateSqlServer},
                                            std::pair{Dialect::jet, &collateJet}}) {
            sqlite3_create_collation_v2(handle_, std::string(collationName(name)).c_str(),
                                        SQLITE_UTF8, nullptr, collate, nullptr);
        }
        registerFunctions(handle_, context_);
        if (!database.isInMemory()) run("PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL");
        run("PRAGMA cache_size = -16000; PRAGMA secure_delete = OFF");
    } catch (...) { // the destructor does not run for an unfinished object
        sqlite3_close(handle_);
        throw;
    }
}

Connection::~Connection() { sqlite3_close_v2(handle_); }

EngineStatement Connection::prepare(std::string_view sql)
{
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v3(handle_, sql.data(), static_cast<int>(sql.size()),
                                        SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    if (code != SQLITE_OK) fail();
    return {statement};
}

bool Connection::step(const EngineStatement& statement)
{
    switch (sqlite3_step(statement.handle())) {
    case SQLITE_ROW:
        return true;
    case SQLITE_DONE:
        return false;
    default:
        fail();
    }
}

void Connection::run(const std::string& sql)
{
    if (sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) fail();
}

EngineStatement Connection::bound(std::string_view sql, const std::vector<HostValue>& parameters)
{
    EngineStatement statement = prepare(sql);
    int index = 0;
    for (const HostValue& value : parameters) statement.bind(++index, value);
    return statement;
}

std::int64_t Connection::run(std::string_view sql, const std::vector<HostValue>& parameters)
{
    const EngineStatement statement = bound(sql, parameters);
    while (step(statement)) continue;
    return sqlite3_changes64(handle_);
}

std::vector<HostRow> Connection::rows(std::string_view sql,
                                      const std::vector<HostValue>& parameters)
{
    const EngineStatement statement = bound(sql, parameters);
    std::vector<HostRow> result;
    while (step(statement)) {
        HostRow row;
        for (int i = 0; i < sqlite3_column_count(statement.handle()); ++i) {
            row.push_back(statement.column(i));
        }
        result.push_back(std::move(row));
    }
    return result;
}

void Connection::fail()
{
    const int code = sqlite3_extended_errcode(handle_);
    const SqlErrorNumber number = context_.failure.value_or(numberOf(code));
    context_.failure.reset();
    throw sqlError(number, describe(code, sqlite3_errmsg(handle_)));
}

} // namespace refhost
