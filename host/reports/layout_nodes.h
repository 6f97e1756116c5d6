#pragma once

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>

#include "automation/conversions.h"
#include "host/reports/layout.h"
#include "host/xml/xml_parser.h"

namespace refhost::reporting {

/// A word of the format and what it means.
template <typename T>
struct Word {
    const char* name;
    T value;
};

/// Reads the elements of a layout file and tells where one is not as the format wants it.
class LayoutNodes {
protected:
    using Names = std::initializer_list<std::string_view>;

    LayoutNodes(Layout& layout, std::string text) : layout_(layout), text_(std::move(text)) {}

    int lineOf(pugi::xml_node node) const
    {
        const auto offset = static_cast<std::ptrdiff_t>(node.offset_debug());
        return 1 + static_cast<int>(std::count(text_.begin(), text_.begin() + offset, '\n'));
    }

    [[noreturn]] void fail(pugi::xml_node node, const std::string& reason) const
    {
        failAt(layout_, lineOf(node), reason);
    }

    static std::string nameOf(pugi::xml_node node) { return '<' + std::string(node.name()) + '>'; }

    // A misspelt attribute or element is told, as it would silently do nothing.
    void allow(pugi::xml_node node, Names required, Names optional, Names children) const
    {
        const auto isIn = [](Names names, std::string_view name) {
            return std::find(names.begin(), names.end(), name) != names.end();
        };
        for (const std::string_view name : required) {
            if (!node.attribute(std::string(name).c_str()))
                fail(node, nameOf(node) + " needs the attribute " + std::string(name));
        }
        for (const pugi::xml_attribute attribute : node.attributes()) {
            if (!isIn(required, attribute.name()) && !isIn(optional, attribute.name()))
                fail(node, nameOf(node) + " has no attribute " + attribute.name());
        }
        for (const pugi::xml_node child : node.children()) {
            if (child.type() == pugi::node_element && !isIn(children, child.name()))
                fail(child, nameOf(child) + " cannot stand in " + nameOf(node));
        }
    }

    static std::string attribute(pugi::xml_node node, const char* name)
    {
        return node.attribute(name).value();
    }

    template <typename T, std::size_t size>
    T word(pugi::xml_node node, const char* name, const Word<T> (&words)[size], T fallback) const
    {
        const pugi::xml_attribute given = node.attribute(name);
        if (!given) return fallback;
        for (const Word<T>& known : words) {
            if (std::string_view(known.name) == given.value()) return known.value;
        }
        fail(node, "\"" + std::string(given.value()) + "\" is no value of " + name);
    }

    double number(pugi::xml_node node, const char* name, double fallback) const
    {
        const pugi::xml_attribute given = node.attribute(name);
        if (!given) return fallback;
        const auto value = qmevents::parseNumber(given.value());
        if (!value) fail(node, std::string(name) + " is a number");
        return *value;
    }

    Layout& layout_;
    std::string text_;
};

} // namespace refhost::reporting
