#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "automation/object.h"
#include "host/web/held_objects.h"

namespace refhost {

/// Calls, reads and assignments recorded by a page, each on the result of the one before, as in
/// App.Modules.Events.Objects("Workflow").Events.EditEvent(12).
class Chain {
public:
    /// Reads the steps. BadRequest when they are malformed or too many; Error when one names an
    /// object that is no longer held.
    Chain(const nlohmann::json& steps, const HeldObjects& held);

    /// Carries the steps out from `app`, or from the held object that the first one names.
    qmevents::Value run(const qmevents::Ref<qmevents::Object>& app);
    /// The same for a chain whose result must be an object; 424 when it is none.
    qmevents::Ref<qmevents::Object> runToObject(const qmevents::Ref<qmevents::Object>& app);

    /// The last step's arguments as the call left them; none for an assignment.
    const std::vector<qmevents::Value>& arguments() const { return arguments_; }
    /// Whether argument `index` is an object and still the one that was passed.
    bool isUnchangedObject(std::size_t index) const;

private:
    struct Step {
        std::string name;
        qmevents::CallKind kind = qmevents::CallKind::get;
        std::vector<qmevents::Value> arguments; ///< For an assignment the new value is the last.
    };
    static Step stepFrom(const nlohmann::json& json, const HeldObjects& held);

    qmevents::Ref<qmevents::Object> start_;
    std::vector<Step> steps_;
    std::vector<qmevents::Value> given_;
    std::vector<qmevents::Value> arguments_;
};

} // namespace refhost
