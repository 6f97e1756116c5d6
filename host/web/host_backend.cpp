#include "host/web/host_backend.h"

#include <utility>

#include "automation/clock.h"
#include "host/app/app.h"
#include "host/app/session.h"
#include "host/document/host_schema.h"

namespace refhost {

namespace {

class HostSession : public SignedIn {
public:
    explicit HostSession(SessionOptions options) : session_(std::move(options)) {}

    qmevents::Ref<qmevents::Object> app() override { return session_.app(); }
    std::vector<std::string> rights() override
    {
        return session_.application().security()->heldRights();
    }
    qmevents::Date fiscalYearStart() override
    {
        return session_.application().modules()->quillmere->settings->yearStart();
    }
    bool mayOpen(const std::string& path) override;

private:
    Session session_;
};

constexpr std::string_view addInFolder = "/events/";

struct GuardedPage {
    std::string_view path;
    const char* right;
};
constexpr GuardedPage guardedPages[] = {
    {"/host/rights", rightToGiveRights},
    {"/host/codes", "settings/edit"},
};

bool HostSession::mayOpen(const std::string& path)
{
    for (const auto& [guarded, right] : guardedPages) {
        if (path == guarded) return session_.application().security()->IsAllowed(right);
    }
    if (!path.starts_with(addInFolder)) return true;
    const std::string item = path.substr(addInFolder.size());
    const auto security = session_.application().modules()->events->rootObject("Security");
    return toBool(call(security, "IsPageItemAllowed", item));
}

} // namespace

HostBackend::HostBackend(Options options) : options_(std::move(options))
{
    createHostTables(options_.database);
}

std::optional<std::string> HostBackend::authenticate(const std::string& user,
                                                     const std::string& password)
{
    SqlSession sql(options_.database, options_.dialect);
    const auto known = UserStore(sql).signIn(user, password);
    return known ? std::optional(known->name) : std::nullopt;
}

std::unique_ptr<SignedIn> HostBackend::signIn(const std::string& user, FrontEnd& frontEnd,
                                              std::function<void()> doEvents)
{
    if (options_.now) qmevents::Clock::pin(options_.now);
    return std::make_unique<HostSession>(SessionOptions{.database = options_.database,
                                                        .dialect = options_.dialect,
                                                        .userName = user,
                                                        .frontEnd = &frontEnd,
                                                        .addInPath = options_.addInPath,
                                                        .onDoEvents = std::move(doEvents)});
}

} // namespace refhost
