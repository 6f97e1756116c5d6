#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/object.h"
#include "host/document/database.h"
#include "host/document/dialect.h"
#include "host/document/sql_session.h"
#include "host/shell/front_end.h"

namespace refhost {

using qmevents::Object;
using qmevents::Ref;
using qmevents::Value;

class App;

/// Where a session gets the add-in's root objects from. What is left empty means the add-in that is
/// linked in.
struct SessionParts {
    std::function<Ref<Object>(std::string_view progId)> makeRootObject = {};
    std::function<void()> releaseAddIn = {}; ///< Called once the root objects are dropped.
};

struct SessionOptions {
    std::shared_ptr<Database> database = {};
    Dialect dialect = Dialect::sqlServer;
    std::string userName = "admin"; ///< Created with all rights when there is no such user.
    std::optional<std::vector<std::string>> rights = {}; ///< Restricts to exactly these, if given.
    FrontEnd* frontEnd = nullptr;                        ///< Outlives the session.
    std::string addInPath = {}; ///< The folder that holds data/, cache/, pages/.
    std::function<void(const Traced&)> onStatement =
        {}; ///< Every statement sent through App.Document.
    std::function<void()> onDoEvents =
        {}; ///< Lets pending input run: what App.Utils.DoEvents calls.
    SessionParts parts = {};
};

/// One signed-in user, on the thread that made it: the host's object model with the add-in in it.
/// Ending the session ends the objects that it gave out, too: their calls then fail.
class Session {
public:
    /// Creates the host's tables when they are absent, makes the add-in's root objects, hands them
    /// App and raises "application-modules-initialized" and "application-signin". An error of a
    /// handler of these is shown to the user; any other failure is thrown.
    explicit Session(SessionOptions options);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    /// Raises "application-signout", rolls back what is not committed and drops everything.
    ~Session();

    Ref<Object> app(); ///< What scripts call App.
    App& application();
    SqlSession& sql();

    /// Sends a host event to the add-in's dispatcher: an object with `Key` and `Data`. What the
    /// handler throws comes back to the caller.
    void raise(const std::string& key, Value data = {});

private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace refhost
