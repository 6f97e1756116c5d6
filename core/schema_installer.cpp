#include "core/schema_installer.h"

#include <algorithm>
#include <cmath>

#include "automation/error.h"
#include "automation/text.h"
#include "core/host.h"
#include "core/host_text.h"
#include "core/script_engine.h"
#include "core/xml.h"

namespace qmevents {
namespace {

constexpr const char* versionSetting = "events-addin-init";
constexpr std::int32_t fileErrorCode = 1717;

// The number that a text begins with, blanks ignored; 0 when it begins with none.
double leadingNumber(const std::string& text)
{
    const std::string trimmed(text::trim(text));
    const std::size_t sign = !trimmed.empty() && (trimmed[0] == '-' || trimmed[0] == '+') ? 1 : 0;
    std::size_t end = std::min(trimmed.find_first_not_of("0123456789.", sign), trimmed.size());
    for (; end > 0; --end) {
        if (const auto number = parseNumber(trimmed.substr(0, end))) return *number;
    }
    return 0;
}

bool readsAsTrue(const std::string& text)
{
    return text::sameName(text, "true") || (parseNumber(text) && *parseNumber(text) != 0);
}

void createViews(const XmlNode& section)
{
    const Host app = host();
    const std::string type = app.provider().isSqlServer() ? "VIEW" : "PROCEDURE";
    section.each("views/*", [&](const XmlNode& view) {
        const std::string name = view.attribute("name");
        if (readsAsTrue(view.attribute("dropfirst"))) {
            app.document().execute("DROP " + type + " " + name);
        }
        app.document().execute("CREATE " + type + " " + name + " AS " + view.text());
    });
}

// Runs one scriptlet; a failure is reported with its line. Assigning the language makes engines
// forget what the scriptlet before has left, App included.
void runScriptlet(const Ref<Object>& engine, const std::string& text)
{
    put(engine, "Language", "vbscript");
    call(engine, "AddObject", "App", host().object());
    std::string thrown;
    try {
        call(engine, "AddCode", text);
    } catch (const Error& error) {
        thrown = error.description(); // the scriptlets behind it run all the same
    }
    // Some engines only note a failure, and some only raise it.
    const auto failure = getObject(engine, "Error");
    if (toInt32(get(failure, "Number")) != 0) {
        host().shell().errorUnexpected(toText(get(failure, "Description")) +
                                       " Line: " + toText(get(failure, "Line")));
    } else if (!thrown.empty()) {
        host().shell().errorUnexpected(thrown);
    }
}

void runScripts(const XmlNode& section, const XmlNode& version)
{
    Ref<Object> engine;
    section.each("scripts/*", [&](const XmlNode& entry) {
        if (!engine) engine = newScriptEngine();
        const std::string name = entry.attribute("name");
        const XmlNode scriptlet = version.first("scripts/scriptlet[@name='" + name + "']");
        if (scriptlet) {
            runScriptlet(engine, scriptlet.text());
        } else {
            host().shell().errorUnexpected("The schema file has no scriptlet \"" + name + "\".");
        }
    });
}

} // namespace

bool checkSchema()
{
    const Host app = host();
    const auto required = toInt16(app.modules().events().configuration("schema"));
    // A double, because a newer add-in's version may be of any size.
    const double installed =
        std::nearbyint(leadingNumber(textOrNone(app.document().setting(versionSetting))));
    if (installed > required) {
        app.shell().errorUser(
            "This Addin cannot work with this database.  Please contact Corvane.");
        return false;
    }
    if (installed == required) return true;
    const std::string file =
        app.provider().isSqlServer() ? "data\\data-schema-sql.xml" : "data\\data-schema.xml";
    if (!createSchema(app.modules().events().path() + file, numberText(installed),
                      std::to_string(required))) {
        return false;
    }
    app.document().setSetting(versionSetting, required);
    return true;
}

bool createSchema(const std::string& path, const std::string& installedVersion,
                  const std::string& requiredVersion)
{
    const auto document = newXmlDocument();
    call(document, "Load", path);
    if (const std::string failure = parseFailure(document); !failure.empty()) {
        host().shell().errorUser("The template field file was unable to be loaded (" + path +
                                     "). The error received was: " + failure,
                                 fileErrorCode, false);
        return false;
    }
    // Only the target version's section runs: its upgrade brings any older version up in one step.
    const XmlNode version =
        documentElement(document).first("schema[@version=\"" + requiredVersion + "\"]");
    const char* sectionName = leadingNumber(installedVersion) == 0 ? "install" : "upgrade";
    const XmlNode section = version ? version.first(sectionName) : version;
    if (!section) {
        throw Error(fileErrorCode, "CreateSchema()", "The schemaFile did not load correctly");
    }
    for (const char* statements : {"tables/*", "indexes/*"}) {
        section.each(statements,
                     [](const XmlNode& statement) { host().document().execute(statement.text()); });
    }
    createViews(section);
    runScripts(section, version);
    return true;
}

} // namespace qmevents
