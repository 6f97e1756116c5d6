#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "automation/clock.h"
#include "automation/error.h"
#include "automation/object.h"
#include "host/app/session.h"
#include "tests/host/shell/fakes.h"

namespace refhost {

/// A user signed in to the host with the add-in in it.
struct WholeHost {
    explicit WholeHost(Dialect dialect, std::shared_ptr<Database> shared = Database::inMemory(),
                       const std::string& user = "anna", const std::string& path = SOURCE_FOLDER)
        : database(std::move(shared)),
          session(std::make_unique<Session>(SessionOptions{.database = database,
                                                           .dialect = dialect,
                                                           .userName = user,
                                                           .frontEnd = &frontEnd,
                                                           .addInPath = path,
                                                           .onStatement = [this](const Traced& t) {
                                                               statements.emplace_back(t.text);
                                                               if (afterStatement) afterStatement();
                                                           }}))
    {
    }
    Ref<Object> document() const { return getObject(session->app(), "Document"); }
    Ref<Object> root(const char* name) const
    {
        const auto module = getObject(getObject(session->app(), "Modules"), "Events");
        return toObject(call(module, "Objects", name));
    }
    Ref<Object> store() const { return getObject(root("Events"), "EventsManage"); }
    Ref<Object> lists() const { return getObject(root("Events"), "ListManage"); }
    Ref<Object> commands() const { return getObject(root("Workflow"), "Events"); }
    void execute(const std::string& sql) const { call(document(), "Execute", sql); }
    /// The first cell that `sql` gives, as text.
    std::string cell(const std::string& sql) const
    {
        const auto rows = toObject(call(document(), "GetDataSet", sql));
        return qmevents::toText(get(toObject(get(rows, "Fields", 0)), "Value"));
    }
    std::string setting() const
    {
        return qmevents::toText(get(document(), "Setting", "events-addin-init"));
    }

    ScriptedFrontEnd frontEnd;
    std::vector<std::string> statements;
    std::function<void()> afterStatement;
    std::shared_ptr<Database> database;
    std::unique_ptr<Session> session;
};

/// A test that runs in both dialects at a certain moment.
class InBothDialects : public ::testing::TestWithParam<Dialect> {
protected:
    qmevents::PinnedClock clock_{qmevents::Date::of(2026, 11, 21, 12)};
};

inline std::string testNameOf(const ::testing::TestParamInfo<Dialect>& info)
{
    return info.param == Dialect::sqlServer ? "SqlServer" : "Jet";
}

} // namespace refhost
