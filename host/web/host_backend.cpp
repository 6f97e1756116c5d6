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
        std::vector<std::string> held;
        for (const auto right : knownRights()) {
            std::string name(right);
            if (session_.application().security()->IsAllowed(name)) held.push_back(std::move(name));
        }
        return held;
    }

private:
    Session session_;
};

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
