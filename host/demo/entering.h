#pragma once

#include <string_view>
#include <vector>

#include "automation/date.h"
#include "host/script/script_engine.h"

namespace refhost::demo {

/// The script that enters what belongs to events, run by the host. `entering.vbs` has its
/// procedures.
class Entering {
public:
    /// `app` is what scripts call App.
    explicit Entering(const qmevents::Ref<qmevents::Object>& app);

    /// Calls a procedure of the script. Throws Error when the add-in refuses what it enters.
    qmevents::Value call(std::string_view procedure, std::vector<qmevents::Value> arguments);
    /// What is entered from now on is entered in the forenoon of `day`.
    static void on(qmevents::Date day);

private:
    ScriptEngine engine_;
};

} // namespace refhost::demo
