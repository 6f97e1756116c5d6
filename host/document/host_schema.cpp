#include "host/document/host_schema.h"

#include <mutex>
#include <span>
#include <string>

#include "host/document/sql_session.h"

namespace refhost {
namespace {

struct HostTable {
    const char* name;
    const char* columns;
    std::span<const char* const> indexed = {}; ///< Columns with an index of their own.
};

constexpr const char* codeColumns = "id COUNTER PRIMARY KEY, [value] TEXT(100) NOT NULL, "
                                    "description TEXT(255), visible YESNO DEFAULT 1, "
                                    "[order] LONG DEFAULT 0";

constexpr const char* donorIndexes[] = {"display"};
constexpr const char* giftIndexes[] = {"donorId", "FKFund",    "FKCampaign",     "FKSource",
                                       "FKMatch", "FKEventId", "FKReservationId"};
constexpr const char* paymentIndexes[] = {"giftId", "FKFund", "FKMatch"};
constexpr const char* assigneeIndexes[] = {"FKuserId"};
constexpr const char* assignmentIndexes[] = {"entityid", "FKAssignedToId"};
constexpr const char* interactionIndexes[] = {"FKDonorId"};
constexpr const char* mailingListIndexes[] = {"listkey"};
constexpr const char* mailingDonorIndexes[] = {"FKListId", "FKDonorId"};
constexpr const char* listRecordIndexes[] = {"FKRunId"};
constexpr const char* reminderIndexes[] = {"entityid", "FKuserId"};

// The tables that both dialects reach, in the words of one of them: what is declared is the same.
constexpr HostTable documentTables[] = {
    {"donor_donors",
     "id COUNTER PRIMARY KEY, display TEXT(255) NOT NULL, firstname TEXT(100), lastname TEXT(100), "
     "entitytype TEXT(50), email TEXT(255), phone TEXT(50), address TEXT(255), city TEXT(100), "
     "postalcode TEXT(20), created DATETIME, deleted YESNO DEFAULT 0",
     donorIndexes},
    {"donor_gifts",
     "id COUNTER PRIMARY KEY, donorId LONG NOT NULL, created DATETIME, pledge YESNO DEFAULT 0, "
     "deleted YESNO DEFAULT 0, FKFund LONG DEFAULT 0, FKCampaign LONG DEFAULT 0, "
     "FKSource LONG DEFAULT 0, FKMatch LONG DEFAULT 0, FKEventId LONG DEFAULT 0, "
     "FKReservationId LONG DEFAULT 0, [note] MEMO",
     giftIndexes},
    {"donor_gifts_payments",
     "id COUNTER PRIMARY KEY, giftId LONG NOT NULL, expectedDate DATETIME, "
     "expectedAmount CURRENCY, actualDate DATETIME, actualAmount CURRENCY, FKFund LONG DEFAULT 0, "
     "FKMatch LONG DEFAULT 0",
     paymentIndexes},
    {"donor_funds", codeColumns},
    {"donor_campaigns", codeColumns},
    {"donor_list_gifts_sources", codeColumns},
    {"donor_list_assignedto",
     "id COUNTER PRIMARY KEY, [value] TEXT(100) NOT NULL, description TEXT(255), "
     "visible YESNO DEFAULT 1, [order] LONG DEFAULT 0, FKuserId LONG DEFAULT 0",
     assigneeIndexes},
    {"actions_assignments",
     "id COUNTER PRIMARY KEY, entitytype TEXT(50) NOT NULL, entityid LONG NOT NULL, "
     "subject TEXT(255), FKAssignedToId LONG DEFAULT 0, duedate DATETIME, "
     "completed YESNO DEFAULT 0",
     assignmentIndexes},
    {"actions_interactions",
     "id COUNTER PRIMARY KEY, FKDonorId LONG NOT NULL, grouping TEXT(50), reference TEXT(50), "
     "[note] MEMO, FKuserId LONG DEFAULT 0, created DATETIME",
     interactionIndexes},
    {"actions_reminders",
     "id COUNTER PRIMARY KEY, entitytype TEXT(50), entityid LONG DEFAULT 0, "
     "FKuserId LONG NOT NULL, subject TEXT(255), duedate DATETIME, created DATETIME",
     reminderIndexes},
    {"mailing_lists",
     "id COUNTER PRIMARY KEY, listkey TEXT(100) NOT NULL, source TEXT(100), "
     "FKuserId LONG DEFAULT 0, created DATETIME, reference MEMO, mailingtype TEXT(50), letter MEMO",
     mailingListIndexes},
    {"mailing_list_donors",
     "id COUNTER PRIMARY KEY, FKListId LONG NOT NULL, FKDonorId LONG NOT NULL",
     mailingDonorIndexes},
    {"smartlist_runs", "id COUNTER PRIMARY KEY, FKuserId LONG DEFAULT 0, created DATETIME"},
    {"smartlist_records", // id is the record's: statements read it as such
     "recordkey COUNTER PRIMARY KEY, FKRunId LONG NOT NULL, id LONG NOT NULL", listRecordIndexes},
};

/// Columns that tables of earlier databases lack.
struct AddedColumn {
    const char *table, *name, *type;
};
constexpr AddedColumn addedColumns[] = {
    {"mailing_lists", "reference", "MEMO"},
    {"mailing_lists", "mailingtype", "TEXT(50)"},
    {"mailing_lists", "letter", "MEMO"},
};

// What no statement of a script or add-in may touch.
constexpr const char* hostStatements[] = {
    "CREATE TABLE IF NOT EXISTS host_users (id INTEGER PRIMARY KEY AUTOINCREMENT, "
    "name TEXT NOT NULL UNIQUE COLLATE NOCASE, password TEXT)",
    "CREATE TABLE IF NOT EXISTS host_user_rights (user_id INTEGER NOT NULL, "
    "name TEXT NOT NULL COLLATE NOCASE, PRIMARY KEY (user_id, name)) WITHOUT ROWID",
    "CREATE TABLE IF NOT EXISTS host_settings (name TEXT NOT NULL PRIMARY KEY COLLATE NOCASE, "
    "value TEXT NOT NULL) WITHOUT ROWID",
    "CREATE TABLE IF NOT EXISTS host_preferences (user_id INTEGER NOT NULL, "
    "section TEXT NOT NULL COLLATE NOCASE, name TEXT NOT NULL COLLATE NOCASE, "
    "type TEXT NOT NULL, value TEXT NOT NULL, PRIMARY KEY (user_id, section, name)) "
    "WITHOUT ROWID",
    "CREATE TABLE IF NOT EXISTS host_lists (id INTEGER PRIMARY KEY AUTOINCREMENT, "
    "type TEXT NOT NULL COLLATE NOCASE, name TEXT NOT NULL COLLATE NOCASE, "
    "definition TEXT NOT NULL, owner_id INTEGER NOT NULL, changed_by INTEGER NOT NULL, "
    "changed TEXT NOT NULL, revision INTEGER NOT NULL, UNIQUE (type, name))",
    // In a database from before rights could be given, who may do all else may do this too.
    "INSERT OR IGNORE INTO host_user_rights (user_id, name) "
    "SELECT held.user_id, added.name FROM host_user_rights held, "
    "(SELECT 'security/edit' AS name UNION SELECT 'settings/edit') added "
    "WHERE NOT EXISTS (SELECT 1 FROM host_user_rights WHERE name = 'security/edit') "
    "AND held.name IN ('events/view', 'events/edit', 'events/delete', 'mailings/send', "
    "'donations/view', 'events/settings') GROUP BY held.user_id, added.name HAVING COUNT(*) = 6",
};

bool exists(SqlSession& sql, const std::string& table)
{
    return !sql.hostQuery("SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ? "
                          "COLLATE NOCASE",
                          {table})
                .empty();
}

bool hasColumn(SqlSession& sql, const std::string& table, const std::string& column)
{
    return !sql.hostQuery("SELECT 1 FROM pragma_table_info(?) WHERE name = ? COLLATE NOCASE",
                          {table, column})
                .empty();
}

void create(SqlSession& sql, const HostTable& table)
{
    const std::string name = table.name;
    sql.execute("CREATE TABLE " + name + " (" + table.columns + ")");
    for (const std::string column : table.indexed) {
        sql.execute("CREATE INDEX ix_" + name + "_" + column + " ON " + name + " (" + column + ")");
    }
}

} // namespace

void createHostTables(const std::shared_ptr<Database>& database)
{
    // Sessions of this process that begin at the same time shall not both create.
    static std::mutex mutex;
    const std::lock_guard guard(mutex);
    SqlSession sql(database, Dialect::jet);
    for (const char* statement : hostStatements) sql.hostExecute(statement);
    for (const HostTable& table : documentTables) {
        if (!exists(sql, table.name)) create(sql, table);
    }
    for (const auto& [table, name, type] : addedColumns) {
        if (hasColumn(sql, table, name)) continue;
        sql.execute(std::string("ALTER TABLE ") + table + " ADD COLUMN " + name + " " + type);
    }
}

} // namespace refhost
