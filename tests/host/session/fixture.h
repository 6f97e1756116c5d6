#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "automation/describe.h"
#include "host/app/app.h"
#include "host/app/session.h"
#include "tests/host/shell/fakes.h"

namespace refhost {

/// An add-in whose root objects write down what the host does with them.
class RecordingAddIn {
public:
    std::vector<std::string> calls;
    std::function<void(const Ref<Object>& event)> onEvent;
    SessionParts parts();
};

/// One root object of it.
class RecordingRoot : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "RecordingRoot";
    const Members& members() const override
    {
        using qmevents::arg;
        static const Members table =
            qmevents::describe<RecordingRoot>("A root object.")
                .method("OnInitialize", &RecordingRoot::OnInitialize, {arg("App")}, "Begins.")
                .method("EventHandler", &RecordingRoot::EventHandler, {arg("Ev")}, "Answers.");
        return table;
    }

    RecordingRoot(RecordingAddIn& addIn, std::string name) : addIn_(addIn), name_(std::move(name))
    {
    }
    void OnInitialize(const Ref<Object>& app)
    {
        addIn_.calls.push_back(name_ + " " + std::string(app->className()));
    }
    void EventHandler(const Ref<Object>& event)
    {
        addIn_.calls.push_back(name_ + " " + toText(get(event, "Key")));
        if (addIn_.onEvent) addIn_.onEvent(event);
    }

private:
    RecordingAddIn& addIn_;
    std::string name_;
};

inline SessionParts RecordingAddIn::parts()
{
    return {.makeRootObject = [this](std::string_view progId) -> Ref<Object> {
                return qmevents::makeRef<RecordingRoot>(
                    *this, std::string(progId.substr(progId.find('.') + 1)));
            },
            .releaseAddIn = [this] { calls.emplace_back("released"); }};
}

/// A session over a new database with that add-in.
struct HostFixture {
    explicit HostFixture(Dialect dialect = Dialect::sqlServer,
                         std::shared_ptr<Database> shared = Database::inMemory(),
                         const std::string& userName = "Ann Admin")
        : database(std::move(shared)),
          session(std::make_unique<Session>(SessionOptions{
              .database = database,
              .dialect = dialect,
              .userName = userName,
              .frontEnd = &frontEnd,
              .addInPath = "addin/folder",
              .onStatement = [this](const Traced& traced) { statements.emplace_back(traced.text); },
              .parts = addIn.parts()})),
          app(session->app())
    {
    }
    Ref<Object> document() const { return getObject(app, "Document"); }
    Ref<Object> module(const char* name) const
    {
        return getObject(getObject(app, "Modules"), name);
    }
    void execute(const std::string& sql) const { call(document(), "Execute", sql); }
    /// The first cell that `sql` gives.
    Value cell(const std::string& sql) const
    {
        const auto rows = toObject(call(document(), "GetDataSet", sql));
        return get(toObject(get(rows, "Fields", 0)), "Value");
    }

    RecordingAddIn addIn;
    ScriptedFrontEnd frontEnd;
    std::vector<std::string> statements;
    std::shared_ptr<Database> database;
    std::unique_ptr<Session> session;
    Ref<Object> app;
};

/// What `act` fails with: its number, blank, its description; empty when it succeeds.
inline std::string failureOf(const std::function<void()>& act)
{
    try {
        act();
    } catch (const qmevents::Error& error) {
        return std::to_string(error.number()) + " " + error.description();
    }
    return {};
}

} // namespace refhost
