#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "automation/date.h"
#include "automation/object.h"
#include "host/shell/front_end.h"

namespace refhost {

/// A user who is signed in; made, used and ended on one thread.
class SignedIn {
public:
    virtual ~SignedIn() = default;
    virtual qmevents::Ref<qmevents::Object> app() = 0;
    virtual std::vector<std::string> rights() = 0;
    /// The first day of the fiscal year that holds today.
    virtual qmevents::Date fiscalYearStart() = 0;
    /// Whether the user may open the page at `path`, such as "/events/events-view".
    virtual bool mayOpen(const std::string& path) = 0;
};

/// The host behind the web server.
class Backend {
public:
    virtual ~Backend() = default;
    /// The user's name as the host writes it, when the password is right. Called on any thread.
    virtual std::optional<std::string> authenticate(const std::string& user,
                                                    const std::string& password) = 0;
    /// Begins a session of `user` on the calling thread. `doEvents` lets pending requests run.
    virtual std::unique_ptr<SignedIn> signIn(const std::string& user, FrontEnd& frontEnd,
                                             std::function<void()> doEvents) = 0;
};

} // namespace refhost
