#pragma once

#include <memory>
#include <optional>
#include <string>

#include "automation/date.h"
#include "host/document/database.h"
#include "host/document/dialect.h"
#include "host/web/backend.h"

namespace refhost {

/// The sessions of the reference host on one database, each with an add-in of its own.
class HostBackend : public Backend {
public:
    struct Options {
        std::shared_ptr<Database> database;
        Dialect dialect = Dialect::sqlServer;
        std::string addInPath;
        std::optional<qmevents::Date> now; ///< Where each session's clock stands; running without.
    };
    /// Creates the host's tables where they are absent.
    explicit HostBackend(Options options);

    std::optional<std::string> authenticate(const std::string& user,
                                            const std::string& password) override;
    std::unique_ptr<SignedIn> signIn(const std::string& user, FrontEnd& frontEnd,
                                     std::function<void()> doEvents) override;

private:
    Options options_;
};

} // namespace refhost
