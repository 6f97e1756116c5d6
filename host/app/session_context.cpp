#include "host/app/session_context.h"

#include "automation/error.h"

namespace refhost {

const SessionContext::Live& SessionContext::live() const
{
    if (live_) return *live_;
    throw qmevents::Error::with(qmevents::ErrorNumber::objectNotSet, "the session has ended");
}

void SessionContext::doEvents() const
{
    if (live().doEvents) live().doEvents();
}

Transaction::~Transaction()
{
    if (!begun_) return;
    try {
        sql_.rollback();
    } catch (const qmevents::Error&) {
        // The failure that led here is on its way to the user; a database that cannot even roll
        // back does so when its session ends.
    }
}

void Transaction::commit()
{
    if (begun_) sql_.commit();
    begun_ = false;
}

void readRows(const SharedContext& context, std::string_view text,
              const std::function<void(const Cursor&)>& row)
{
    const Untraced quiet(context->sql());
    for (const auto cursor = context->sql().query(text); !cursor->eof(); cursor->next()) {
        row(*cursor);
    }
}

std::int64_t runStatement(const SharedContext& context, std::string_view text)
{
    const Untraced quiet(context->sql());
    return context->sql().execute(text);
}

std::int32_t newKey(const SharedContext& context)
{
    std::int32_t key = 0;
    readRows(context, "SELECT @@IDENTITY",
             [&](const Cursor& row) { key = qmevents::toInt32(row.value(0)); });
    return key;
}

} // namespace refhost
