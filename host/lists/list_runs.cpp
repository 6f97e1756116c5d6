#include "host/lists/list_runs.h"

#include "automation/clock.h"
#include "host/document/objects/sql_literal.h"

namespace refhost {
namespace {

constexpr const char* recordsOfRun = "smartlist_records WHERE FKRunId = ";

std::string literal(const SharedContext& context, qmevents::Date date)
{
    return sqlLiteral(context->sql().dialect(), Value(date), LiteralKind::date);
}

void dropOldRuns(const SharedContext& context)
{
    const std::string old = "created < " + literal(context, qmevents::Clock::now().plusDays(-1));
    runStatement(context, "DELETE FROM smartlist_records WHERE FKRunId IN "
                          "(SELECT id FROM smartlist_runs WHERE " +
                              old + ")");
    runStatement(context, "DELETE FROM smartlist_runs WHERE " + old);
}

} // namespace

std::string keepRecords(const SharedContext& context, const std::vector<std::int32_t>& keys)
{
    Transaction transaction(context->sql());
    dropOldRuns(context);
    runStatement(context, "INSERT INTO smartlist_runs (FKuserId, created) VALUES (" +
                              std::to_string(context->user.id) + ", " +
                              literal(context, qmevents::Clock::now()) + ")");
    const std::string run = std::to_string(newKey(context));
    for (const std::int32_t key : keys) {
        runStatement(context, "INSERT INTO smartlist_records (FKRunId, id) VALUES (" + run + ", " +
                                  std::to_string(key) + ")");
    }
    transaction.commit();
    return recordsOfRun + run;
}

void forgetRecords(const SharedContext& context, const std::string& source)
{
    runStatement(context, "DELETE FROM " + source);
}

} // namespace refhost
