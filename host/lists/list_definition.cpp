#include "host/lists/list_definition.h"

#include <sstream>

#include "host/xml/xml_parser.h"

namespace refhost {

std::string written(const ListDefinition& definition)
{
    pugi::xml_document document;
    pugi::xml_node list = document.append_child("list");
    list.append_attribute("any") = definition.matchesAny;
    list.append_attribute("sort") = definition.sort.c_str();
    list.append_attribute("down") = definition.sortsDown;
    for (const auto& [name, caption] : definition.columns) {
        pugi::xml_node column = list.append_child("column");
        column.append_attribute("name") = name.c_str();
        column.append_attribute("caption") = caption.c_str();
    }
    for (const auto& [key, caption, operation, values] : definition.filters) {
        pugi::xml_node filter = list.append_child("filter");
        filter.append_attribute("key") = key.c_str();
        filter.append_attribute("caption") = caption.c_str();
        filter.append_attribute("operation") = operation.c_str();
        for (const std::string& value : values) {
            filter.append_child("value").append_attribute("is") = value.c_str();
        }
    }
    std::ostringstream text;
    document.save(text, "", pugi::format_raw | pugi::format_no_declaration);
    return text.str();
}

ListDefinition readDefinition(const std::string& type, const std::string& text)
{
    ListDefinition definition{.type = type};
    pugi::xml_document document;
    parseXml(text, XmlSource::text, document);
    const pugi::xml_node list = document.child("list");
    definition.matchesAny = list.attribute("any").as_bool();
    definition.sort = list.attribute("sort").value();
    definition.sortsDown = list.attribute("down").as_bool();
    for (const pugi::xml_node column : list.children("column")) {
        definition.columns.push_back(
            {column.attribute("name").value(), column.attribute("caption").value()});
    }
    for (const pugi::xml_node node : list.children("filter")) {
        ListDefinition::Filter filter{node.attribute("key").value(),
                                      node.attribute("caption").value(),
                                      node.attribute("operation").value(),
                                      {}};
        for (const pugi::xml_node value : node.children("value")) {
            filter.values.emplace_back(value.attribute("is").value());
        }
        definition.filters.push_back(std::move(filter));
    }
    return definition;
}

} // namespace refhost
