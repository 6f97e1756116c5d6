#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "automation/clock.h"
#include "automation/error.h"
#include "automation/object.h"
#include "host/app/session.h"
#include "tests/host/shell/fakes.h"

namespace refhost {

struct PrintedLine {
    std::string kind, caption;
    int level = 0, link = 0;
    std::vector<Value> cells;
};

/// A report as a page shows it.
struct Printed {
    std::vector<std::string> keys; ///< Of the columns.
    std::vector<PrintedLine> lines;
    std::vector<std::string> notes;

    bool has(const std::string& key) const
    {
        return std::find(keys.begin(), keys.end(), key) != keys.end();
    }
    Value cell(const PrintedLine& line, const std::string& key) const
    {
        const auto at = std::find(keys.begin(), keys.end(), key);
        if (at != keys.end()) return line.cells[static_cast<std::size_t>(at - keys.begin())];
        ADD_FAILURE() << "no column " << key;
        return {};
    }
    /// The line as one text: "row 1|Ida|12.5||True".
    static std::string text(const PrintedLine& line)
    {
        std::string result = line.kind + " " + std::to_string(line.level);
        if (!line.caption.empty()) result += " " + line.caption;
        for (const Value& cell : line.cells)
            result += "|" + (cell.isNull() ? std::string() : qmevents::toText(cell));
        return result;
    }
    std::vector<std::string> texts() const
    {
        std::vector<std::string> result;
        for (const PrintedLine& line : lines) result.push_back(text(line));
        return result;
    }
};

/// A report that was opened.
struct OpenReport {
    Ref<Object> run;

    void set(const std::string& filter, const Value& value) const
    {
        qmevents::put(toObject(call(getObject(run, "Filters"), "Item", filter)), "Value", value);
    }
    std::string problem() const
    {
        const bool ran = qmevents::toBool(call(run, "Run"));
        const std::string text = toText(get(run, "Problem"));
        EXPECT_EQ(ran, text.empty());
        return text;
    }
    Printed print() const
    {
        Printed result;
        EXPECT_EQ(problem(), "");
        each("Columns",
             [&](const auto& column) { result.keys.push_back(toText(get(column, "Key"))); });
        each("Lines", [&](const auto& line) {
            const Value cells = get(line, "Cells");
            result.lines.push_back({toText(get(line, "Kind")), toText(get(line, "Caption")),
                                    qmevents::toInt32(get(line, "Level")),
                                    qmevents::toInt32(get(line, "Link")), cells.array()->items});
        });
        const Value notes = get(run, "Notes");
        for (const Value& note : notes.array()->items) result.notes.push_back(toText(note));
        return result;
    }
    void each(const char* list, const std::function<void(const Ref<Object>&)>& visit) const
    {
        const auto items = getObject(run, list)->enumerate();
        for (Value item; items->next(item);) visit(toObject(item));
    }
};

/// A user of the host, who opens reports.
struct ReportDesk {
    ReportDesk(Dialect dialect, std::shared_ptr<Database> shared,
               std::optional<std::vector<std::string>> rights = {},
               const std::string& path = SOURCE_FOLDER, SessionParts parts = {})
        : session({.database = std::move(shared),
                   .dialect = dialect,
                   .rights = std::move(rights),
                   .frontEnd = &frontEnd,
                   .addInPath = path,
                   .parts = std::move(parts)})
    {
    }
    Ref<Object> module(const char* name)
    {
        return getObject(getObject(session.app(), "Modules"), name);
    }
    Ref<Object> reports() { return getObject(module("Quillmere"), "Reports"); }
    OpenReport open(const std::string& key, const Value& event = 0, const Value& list = {})
    {
        return {toObject(call(reports(), "Open", "Cache\\Reports", key, event, list))};
    }
    /// "number description" of what opening fails with; empty when it succeeds.
    std::string failure(const std::function<void()>& act)
    {
        try {
            act();
        } catch (const qmevents::Error& error) {
            return std::to_string(error.number()) + " " + error.description();
        }
        return {};
    }
    void execute(const std::string& sql)
    {
        call(getObject(session.app(), "Document"), "Execute", sql);
    }
    Value cell(const std::string& sql)
    {
        const auto rows = toObject(call(getObject(session.app(), "Document"), "GetDataSet", sql));
        return get(toObject(get(rows, "Fields", 0)), "Value");
    }

    ScriptedFrontEnd frontEnd;
    Session session;
};

inline std::string nameOfDialect(const ::testing::TestParamInfo<Dialect>& info)
{
    return info.param == Dialect::sqlServer ? "SqlServer" : "Jet";
}

} // namespace refhost
