#include "tests/data/builder_file.h"

#include <stdexcept>

#include <pugixml.hpp>

#include "automation/text.h"

namespace refhost::test {
namespace {

using qmevents::text::replaceAll;

struct Span {
    const char *name, *start, *end;
};
constexpr Span spans[] = {
    {"CURRENTYEAR", "2026-01-01 00:00:00", "2026-12-31 23:59:59"},
    {"PREVIOUSYEAR", "2025-01-01 00:00:00", "2025-12-31 23:59:59"},
    {"CURRENTFISCALYEAR", "2026-07-01 00:00:00", "2027-06-30 23:59:59"},
    {"PREVIOUSFISCALYEAR", "2025-07-01 00:00:00", "2026-06-30 23:59:59"},
    {"PERIOD1", "2025-05-05 00:00:00", "2025-05-05 23:59:59"},
    {"PERIOD2", "2024-03-01 00:00:00", "2026-02-28 23:59:59"},
    {"PERIOD3", "2026-12-01 00:00:00", "2026-12-31 23:59:59"},
    {"PERIOD4", "9999-01-01 00:00:00", "1900-01-01 00:00:00"},
};

std::string literal(Dialect dialect, std::string moment)
{
    if (dialect == Dialect::jet) return "#" + moment + "#";
    moment[10] = 'T';
    return "'" + moment + "'";
}

std::string filled(Dialect dialect, std::string text)
{
    for (const Span& span : spans) {
        const std::string name = "{" + std::string(span.name);
        text = replaceAll(text, name + "START}", literal(dialect, span.start));
        text = replaceAll(text, name + "END}", literal(dialect, span.end));
    }
    return replaceAll(text, "{id}", "d.id");
}

std::string declared(const pugi::xml_node& node, std::initializer_list<const char*> attributes)
{
    std::string line;
    for (const char* attribute : attributes) {
        const std::string value = node.attribute(attribute).as_string();
        if (!value.empty()) line += (line.empty() ? "" : "|") + value;
    }
    return line;
}

} // namespace

BuilderFile::BuilderFile(Dialect dialect, const std::string& type)
    : table(type == "donors" ? "donor_donors" : "donor_gifts"), from(table + " AS d")
{
    const std::string path = SOURCE_FOLDER "cache/lists/builder-" + type +
                             (dialect == Dialect::sqlServer ? "-sql.xml" : ".xml");
    pugi::xml_document file;
    if (const auto read = file.load_file(path.c_str()); !read) {
        throw std::runtime_error(path + ": " + read.description());
    }
    const auto root = file.document_element();
    std::vector<std::string> sources;
    for (const auto& found : root.select_nodes("source")) {
        const std::string key = sources.emplace_back(found.node().attribute("key").as_string());
        from = "(" + from + " LEFT JOIN (" + filled(dialect, found.node().text().as_string()) +
               ") AS " + key + " ON d.id = " + key + ".RecordId)";
    }
    // No parentheses around the whole.
    if (from.starts_with('(')) from = from.substr(1, from.size() - 2);
    for (const auto& found : root.select_nodes("field")) {
        const auto field = found.node();
        std::string value = filled(dialect, field.child("value").text().as_string());
        for (const std::string& key : sources) value = replaceAll(value, "{" + key + "}", key);
        fields.push_back({field.attribute("name").as_string(),
                          declared(field, {"name", "caption", "kind", "group", "operation"}),
                          std::move(value)});
    }
    for (const auto& found : root.select_nodes(".//filter")) {
        const auto filter = found.node();
        const auto choices =
            root.find_child_by_attribute("choices", "key", filter.attribute("choices").as_string());
        if (!choices) throw std::runtime_error(path + ": a filter names no choices");
        filters.push_back(
            {filter.attribute("key").as_string(),
             declared(filter, {"key", "caption", "group", "kind", "choices", "operation"}),
             choices.child("choice") ? "" : choices.text().as_string(),
             filled(dialect, filter.child("condition").text().as_string())});
    }
}

std::string BuilderFile::statement(const std::string& where) const
{
    std::string text = "SELECT d.id AS Id";
    for (const BuilderField& field : fields) text += ", " + field.value + " AS " + field.name;
    return text + " FROM " + from + " WHERE d.deleted = 0" +
           (where.empty() ? "" : " AND (" + replaceAll(where, "{id}", "d.id") + ")");
}

} // namespace refhost::test
