#include "host/app/app.h"

#include "automation/describe.h"
#include "host/script/script_control.h"

namespace refhost {

using qmevents::arg;
using qmevents::describe;
using qmevents::makeRef;

const Members& App::members() const
{
    static const Members table =
        describe<App>("The host.")
            .readOnly("Document", &App::document_, "The open database.")
            .readOnly("Provider", &App::provider_, "How values are written for the database.")
            .readOnly("Shell", &App::shell, "Messages, questions, navigation and dialogs.")
            .readOnly("Security", &App::security_, "Who is signed in, and their rights.")
            .readOnly("Modules", &App::modules_, "The modules of the host.")
            .readOnly("Utils", &App::utils_, "Helpers.")
            .property("Session", &App::sessionValue, &App::setSessionValue, {arg("Key")},
                      "A value kept until the user signs out.")
            .method("CreateObject", &App::CreateObject, {arg("ClassId")},
                    "A helper object: \"OBFSL.FileSystemLib\" or \"ScriptControl\".")
            .method("IsModuleLoaded", &App::IsModuleLoaded, {arg("Name")},
                    "Whether the host has a module of this name.");
    return table;
}

App::App(SharedContext context)
    : context_(std::move(context)), document_(makeRef<Document>(context_)),
      utils_(makeRef<Utils>(context_)), provider_(makeRef<Provider>(context_, document_, utils_)),
      security_(makeRef<Security>(context_)), modules_(makeRef<Modules>(context_))
{
}

Value App::sessionValue(const std::string& key) const
{
    const auto kept = sessionValues_.find(key);
    return kept == sessionValues_.end() ? Value() : kept->second;
}

void App::setSessionValue(const std::string& key, const Value& value)
{
    sessionValues_.insert_or_assign(key, value);
}

Ref<Object> App::CreateObject(const std::string& classId) const
{
    struct Class {
        const char* id;
        Ref<Object> (*make)();
    };
    constexpr Class classes[] = {
        {"OBFSL.FileSystemLib", []() -> Ref<Object> { return makeRef<FileSystem>(); }},
        {"ScriptControl", makeScriptControl},
    };
    for (const auto& [id, make] : classes) {
        if (qmevents::text::sameName(id, classId)) return make();
    }
    constexpr int cannotCreate = 429;
    throw qmevents::Error(cannotCreate, "App.CreateObject",
                          "The host cannot create an object of the class \"" + classId + "\".");
}

} // namespace refhost
