#include "host/app/session.h"

#include <exception>

#include "core/root_objects.h"
#include "host/app/app.h"
#include "host/app/file_finder.h"
#include "host/app/host_event.h"
#include "host/document/host_schema.h"

namespace refhost {

using qmevents::Error;
using qmevents::makeRef;

namespace {

/// The add-in's root objects in the order in which they are initialised: the others look the first
/// one up.
constexpr const char* rootObjects[] = {"Events", "Workflow", "Handler", "Security"};

/// The add-in keeps its App for each thread, so a thread serves one session at a time.
thread_local bool threadHasAddIn = false;

SessionParts linkedAddIn()
{
    if (threadHasAddIn) {
        throw Error::with(qmevents::ErrorNumber::invalidCall, "this thread serves another session");
    }
    return {.makeRootObject =
                [](std::string_view progId) {
                    threadHasAddIn = true;
                    return qmevents::createRootObject(progId);
                },
            .releaseAddIn =
                [] {
                    qmevents::releaseAddIn();
                    threadHasAddIn = false;
                }};
}

/// Shows a failure that nobody else would show.
void reportTo(Shell& shell, const std::string& text, const std::optional<Value>& number = {})
{
    try {
        shell.ErrorUnexpected(text, number);
    } catch (const std::exception&) {
        // The front end itself fails: there is nobody left to tell.
    }
}

void checkOptions(const SessionOptions& options)
{
    const auto require = [](bool given, const char* what) {
        if (!given) {
            throw Error::with(qmevents::ErrorNumber::objectNotSet,
                              std::string("a session needs ") + what);
        }
    };
    require(options.database != nullptr, "a database");
    require(options.frontEnd != nullptr, "a front end");
}

/// The user who signs in, made with all rights when there is none of this name.
User userOf(SqlSession& sql, const std::string& name)
{
    UserStore users(sql);
    if (const auto known = users.find(name)) return *known;
    const User created = users.create(name);
    users.grantAll(created.id);
    return created;
}

} // namespace

class Session::Implementation {
public:
    explicit Implementation(SessionOptions options);
    ~Implementation();

    void raise(const std::string& key, Value data);
    void raiseReported(const std::string& key);

    SharedContext context = std::make_shared<SessionContext>();
    Ref<App> app;

private:
    void makeRootObjects();
    void end();

    SessionParts parts_;
    Ref<Object> handler_;
};

Session::Implementation::Implementation(SessionOptions options) : parts_(std::move(options.parts))
{
    checkOptions(options);
    if (!parts_.makeRootObject) parts_ = linkedAddIn();

    createHostTables(options.database);
    auto sql = std::make_unique<SqlSession>(options.database, options.dialect);
    context->user = userOf(*sql, options.userName);
    context->rights = std::move(options.rights);
    context->locks = LockManager::of(options.database->address());
    context->lockSession = context->locks->newSession();
    context->addInPath = withSeparator(options.addInPath);
    sql->onStatement = std::move(options.onStatement);
    context->begin(
        {.sql = std::move(sql),
         .frontEnd = options.frontEnd,
         .shell = makeShell(*options.frontEnd),
         .raise = [this](const std::string& key, Value data) { raise(key, std::move(data)); },
         .doEvents = std::move(options.onDoEvents),
         .app = [this] { return Ref<Object>(app); }});
    app = makeRef<App>(context);
    try {
        makeRootObjects();
    } catch (...) {
        end();
        throw;
    }
    raiseReported("application-modules-initialized");
    raiseReported("application-signin");
}

Session::Implementation::~Implementation()
{
    raiseReported("application-signout");
    end();
}

void Session::Implementation::makeRootObjects()
{
    for (const std::string name : rootObjects) {
        const Ref<Object> object = parts_.makeRootObject("QMEvents." + name);
        if (!object) {
            throw Error::with(qmevents::ErrorNumber::objectNotSet,
                              "the add-in has no object called QMEvents." + name);
        }
        app->modules()->events->registerObject(name, object);
    }
    for (const std::string name : rootObjects) {
        call(app->modules()->events->rootObject(name), "OnInitialize", app);
    }
    handler_ = app->modules()->events->rootObject("Handler");
}

void Session::Implementation::end()
{
    // Objects first, the add-in's hold on App next, the database last: what is dropped may still
    // let go of a lock or close a record set.
    handler_ = {};
    app->forgetSessionValues();
    context->shell()->dialogEngine().reset();
    app->modules()->events->forgetObjects();
    parts_.releaseAddIn();
    context->end();
}

void Session::Implementation::raise(const std::string& key, Value data)
{
    // Events nest: a handler may run a command that raises another.
    struct Restored {
        LoaderModule& loader;
        Ref<Object> outer;
        ~Restored() { loader.currentEvent = outer; }
    };
    const auto event = makeRef<HostEvent>(key, std::move(data));
    LoaderModule& loader = *app->modules()->loader;
    const Restored restored{loader, std::exchange(loader.currentEvent, event)};
    call(handler_, "EventHandler", event);
}

void Session::Implementation::raiseReported(const std::string& key)
{
    try {
        raise(key, {});
    } catch (const Error& error) {
        reportTo(*context->shell(), error.description(), Value(error.number()));
    } catch (const std::exception& error) {
        reportTo(*context->shell(), error.what());
    }
}

Session::Session(SessionOptions options)
    : implementation_(std::make_unique<Implementation>(std::move(options)))
{
}

Session::~Session() = default;

Ref<Object> Session::app() { return implementation_->app; }

App& Session::application() { return *implementation_->app; }

SqlSession& Session::sql() { return implementation_->context->sql(); }

void Session::raise(const std::string& key, Value data)
{
    implementation_->raise(key, std::move(data));
}

} // namespace refhost
