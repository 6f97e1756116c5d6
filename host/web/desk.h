#pragma once

#include <memory>
#include <string>

#include <nlohmann/json.hpp>

#include "automation/error.h"
#include "host/shell/shell.h"
#include "host/web/held_objects.h"
#include "host/web/web_front_end.h"

namespace refhost {

/// Answers the requests of a session's pages, on the session's thread. Answers are JSON texts; what
/// the host refuses is {"error":{number,source,description}}.
class Desk {
public:
    Desk(qmevents::Ref<qmevents::Object> app, WebFrontEnd& frontEnd);
    ~Desk();

    /// Carries out the request `kind` ("call", "list", ...) of the page `view`. BadRequest when the
    /// body is not what it must be.
    std::string answer(const std::string& kind, const nlohmann::json& body,
                       const std::shared_ptr<View>& view);
    static bool knows(const std::string& kind);

    void releaseView(const std::string& view) { held_.releaseView(view); }

private:
    using Operation = void (Desk::*)(const nlohmann::json& body, std::string& out);
    struct Entry;
    static const Entry* find(const std::string& kind);
    /// Runs `operation`; an error becomes the answer. False when there was one.
    bool perform(Operation operation, const nlohmann::json& body, std::string& out);

    void call(const nlohmann::json& body, std::string& out);
    void list(const nlohmann::json& body, std::string& out);
    void read(const nlohmann::json& body, std::string& out);
    void write(const nlohmann::json& body, std::string& out);
    void batch(const nlohmann::json& body, std::string& out);
    void release(const nlohmann::json& body, std::string& out);
    void closeDialog(const nlohmann::json& body, std::string& out);
    void goBack(const nlohmann::json& body, std::string& out);

    DialogEngine& engine() const { return shell_->dialogEngine(); }

    qmevents::Ref<qmevents::Object> app_;
    qmevents::Ref<Shell> shell_;
    WebFrontEnd& frontEnd_;
    HeldObjects held_;
    HeldObjects::Holder holder_; ///< Who gets the objects of the request that runs.
};

/// Appends an error as an answer.
void appendError(std::string& out, const qmevents::Error& error);

} // namespace refhost
