#include "host/reports/reservation_answers.h"

#include <cstring>

#include "automation/locale.h"
#include "automation/text.h"
#include "host/xml/xml_parser.h"

namespace refhost::reporting {
namespace {

constexpr std::string_view dateType = "4";
constexpr std::string_view checkBoxType = "6";

// What stands under `name`, as an attribute or as an element: writers differ.
std::string partOf(pugi::xml_node field, const char* name)
{
    for (const pugi::xml_attribute attribute : field.attributes()) {
        if (qmevents::text::sameName(attribute.name(), name)) return attribute.value();
    }
    std::string text;
    for (const pugi::xml_node child : field.children()) {
        if (!qmevents::text::sameName(child.name(), name)) continue;
        // A text that holds "]]>" is split into several sections.
        for (const pugi::xml_node piece : child.children()) text += piece.value();
    }
    return text;
}

std::string shown(std::string value, std::string_view type)
{
    if (type == checkBoxType) {
        const bool no = value.empty() || value == "0" || qmevents::text::sameName(value, "false");
        return no ? "No" : "Yes";
    }
    if (type == dateType) {
        if (const auto day = qmevents::Date::parseIso(value))
            return qmevents::Locale::current().text(*day);
    }
    return value;
}

} // namespace

std::optional<std::vector<ReservationField>> readFields(std::string_view document)
{
    std::vector<ReservationField> fields;
    if (qmevents::text::trim(document).empty()) return fields;
    pugi::xml_document xml;
    if (parseXml(document, XmlSource::text, xml).code != 0) return std::nullopt;
    for (const pugi::xml_node field : xml.document_element().children()) {
        if (!qmevents::text::sameName(field.name(), "field")) continue;
        fields.push_back(
            {partOf(field, "name"), shown(partOf(field, "value"), partOf(field, "type"))});
    }
    return fields;
}

std::string asOneText(const std::vector<ReservationField>& fields)
{
    std::string text;
    for (const auto& [name, value] : fields) {
        if (value.empty()) continue;
        if (!text.empty()) text += "; ";
        text += name + ": " + value;
    }
    return text;
}

} // namespace refhost::reporting
