#include "tests/data/schema_file.h"

#include <stdexcept>

#include <pugixml.hpp>

namespace refhost::test {
namespace {

const pugi::xml_document& document(Dialect dialect)
{
    static const auto load = [](const char* name) {
        pugi::xml_document file;
        const auto result = file.load_file((std::string(SOURCE_FOLDER "data/") + name).c_str());
        if (!result) throw std::runtime_error(std::string(name) + ": " + result.description());
        return file;
    };
    static const pugi::xml_document sqlServer = load("data-schema-sql.xml");
    static const pugi::xml_document jet = load("data-schema.xml");
    return dialect == Dialect::sqlServer ? sqlServer : jet;
}

pugi::xml_node versionOf(Dialect dialect, int version)
{
    const std::string path = "schema[@version='" + std::to_string(version) + "']";
    return document(dialect).document_element().select_node(path.c_str()).node();
}

pugi::xml_node sectionOf(Dialect dialect, int version, const std::string& section)
{
    const pugi::xml_node node = versionOf(dialect, version).child(section.c_str());
    if (!node) throw std::runtime_error("there is no section " + section);
    return node;
}

} // namespace

std::vector<std::string> schemaStatements(Dialect dialect, int version, const std::string& section)
{
    std::vector<std::string> statements;
    const pugi::xml_node node = sectionOf(dialect, version, section);
    for (const char* group : {"tables", "indexes"}) {
        for (const pugi::xml_node child : node.child(group).children()) {
            statements.emplace_back(child.text().as_string());
        }
    }
    const std::string kind = dialect == Dialect::sqlServer ? "VIEW " : "PROCEDURE ";
    for (const pugi::xml_node view : node.child("views").children()) {
        const std::string name = view.attribute("name").as_string();
        if (view.attribute("dropfirst").as_bool()) statements.push_back("DROP " + kind + name);
        statements.push_back("CREATE " + kind + name + " AS " + view.text().as_string());
    }
    return statements;
}

std::vector<std::string> sectionScripts(Dialect dialect, int version, const std::string& section)
{
    std::vector<std::string> names;
    for (const pugi::xml_node script :
         sectionOf(dialect, version, section).child("scripts").children()) {
        names.emplace_back(script.attribute("name").as_string());
    }
    return names;
}

std::string scriptlet(Dialect dialect, int version, const std::string& name)
{
    return versionOf(dialect, version)
        .child("scripts")
        .find_child_by_attribute("scriptlet", "name", name.c_str())
        .text()
        .as_string();
}

} // namespace refhost::test
