#pragma once

#include <string>

#include "automation/conversions.h"
#include "automation/error.h"
#include "host/script/script_engine.h"

namespace refhost {

/// An engine whose scripts print, and what they printed.
struct Runner {
    Runner()
    {
        engine.addFunction("Print", [this](std::span<qmevents::Value> values) {
            for (const auto& value : values) {
                printed += (printed.empty() || printed.back() == '\n' ? "" : " ");
                printed += value.isNull()                          ? "Null"
                           : value.isObject() || value.isMissing() ? typeName(value)
                                                                   : qmevents::toText(value);
            }
            printed += '\n';
            return qmevents::Value();
        });
    }

    /// What the script printed; a failure follows as "line number: description".
    std::string run(const std::string& text)
    {
        printed.clear();
        try {
            engine.addCode(text);
        } catch (const qmevents::Error& error) {
            EXPECT_EQ(engine.error().number, error.number());
            EXPECT_EQ(engine.error().description, error.description());
            printed += std::to_string(engine.error().line) + " " + std::to_string(error.number()) +
                       ": " + error.description();
        }
        return printed;
    }

    ScriptEngine engine;
    std::string printed;
};

inline std::string outputOf(const std::string& text) { return Runner().run(text); }

} // namespace refhost
