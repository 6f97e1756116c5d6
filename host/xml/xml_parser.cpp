#include "host/xml/xml_parser.h"

#include <algorithm>
#include <cctype>
#include <optional>

#include "automation/text.h"

namespace refhost {
namespace {

// Fault numbers of ours stand behind those of the parser.
constexpr int faultOfText = 100;

XmlFault faultAt(std::string_view text, std::ptrdiff_t offset, int code, std::string reason)
{
    XmlFault fault{code, std::move(reason), 0, 0};
    if (offset < 0) return fault;
    const auto before = text.substr(0, static_cast<std::size_t>(offset));
    const auto lineStart = before.rfind('\n') + 1; // npos + 1 is 0
    fault.line = 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
    fault.column = 1 + static_cast<int>(qmevents::text::length(before.substr(lineStart)));
    return fault;
}

// The length of the reference at the start of `text` ("&amp;", "&#233;"), or 0 when it is none.
std::size_t referenceLength(std::string_view text)
{
    const auto end = text.substr(0, 12).find(';');
    if (end == std::string_view::npos || end < 2) return 0;
    const std::string_view name = text.substr(1, end - 1);
    if (name[0] != '#') {
        for (const auto known : {"amp", "lt", "gt", "quot", "apos"}) {
            if (name == known) return end + 1;
        }
        return 0;
    }
    const bool hexadecimal = name.size() > 1 && name[1] == 'x';
    const std::string_view digits = name.substr(hexadecimal ? 2 : 1);
    const auto isDigit = [&](unsigned char c) {
        return hexadecimal ? std::isxdigit(c) != 0 : std::isdigit(c) != 0;
    };
    const bool nonZero = digits.find_first_not_of('0') != std::string_view::npos;
    return nonZero && std::all_of(digits.begin(), digits.end(), isDigit) ? end + 1 : 0;
}

// The parser is lenient: what it would let pass although it is no XML is found here.
std::optional<XmlFault> lexicalFault(std::string_view text)
{
    struct Skipped {
        std::string_view opening, closing;
    };
    constexpr Skipped literals[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto rest = text.substr(i);
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r') {
            return faultAt(text, static_cast<std::ptrdiff_t>(i), faultOfText,
                           "A control character cannot stand in a document.");
        }
        if (byte == '&') {
            const std::size_t length = referenceLength(rest);
            if (length == 0) {
                return faultAt(text, static_cast<std::ptrdiff_t>(i), faultOfText + 1,
                               "An ampersand must begin a known reference such as &amp;.");
            }
            i += length - 1;
        }
        if (byte != '<') continue;
        if (rest.starts_with("<!DOCTYPE")) {
            return faultAt(text, static_cast<std::ptrdiff_t>(i), faultOfText + 2,
                           "A document type declaration is not accepted.");
        }
        for (const auto& [opening, closing] : literals) {
            if (!rest.starts_with(opening)) continue;
            const auto end = rest.find(closing, opening.size());
            if (end == std::string_view::npos) return std::nullopt; // the parser says so
            const auto inside = rest.substr(opening.size(), end - opening.size());
            const auto nul = inside.find('\0');
            if (nul != std::string_view::npos) {
                return faultAt(text, static_cast<std::ptrdiff_t>(i + opening.size() + nul),
                               faultOfText, "A control character cannot stand in a document.");
            }
            i += end + closing.size() - 1;
            break;
        }
    }
    return std::nullopt;
}

std::optional<XmlFault> structuralFault(std::string_view text, const pugi::xml_document& document)
{
    int roots = 0;
    for (const pugi::xml_node child : document.children()) {
        if (child.type() == pugi::node_element && ++roots > 1) {
            return faultAt(text, child.offset_debug(), faultOfText + 3,
                           "A document has only one top level element.");
        }
        if (child.type() != pugi::node_element) {
            return faultAt(text, child.offset_debug(), faultOfText + 4,
                           "Text must stand inside the top level element.");
        }
    }
    if (roots == 0) {
        return faultAt(text, 0, faultOfText + 5, "The document has no top level element.");
    }
    int depth = 0;
    for (pugi::xml_node node = document.first_child(); node;) {
        if (depth >= deepestXml && node.type() == pugi::node_element) {
            return faultAt(text, node.offset_debug(), faultOfText + 6,
                           "Elements nest deeper than " + std::to_string(deepestXml) + " levels.");
        }
        if (node.first_child()) {
            node = node.first_child();
            ++depth;
            continue;
        }
        while (node && !node.next_sibling()) {
            node = node.parent();
            --depth;
        }
        if (node) node = node.next_sibling();
    }
    return std::nullopt;
}

bool isUtf16(std::string_view text)
{
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

} // namespace

XmlFault parseXml(std::string_view text, XmlSource source, pugi::xml_document& document)
{
    document.reset();
    std::optional<XmlFault> fault;
    if (source == XmlSource::text || !isUtf16(text)) fault = lexicalFault(text);
    if (!fault) {
        const auto encoding = source == XmlSource::text ? pugi::encoding_utf8 : pugi::encoding_auto;
        const auto flags = pugi::parse_default | pugi::parse_fragment;
        const auto result = document.load_buffer(text.data(), text.size(), flags, encoding);
        if (!result) fault = faultAt(text, result.offset, result.status, result.description());
    }
    if (!fault) fault = structuralFault(text, document);
    if (!fault) return {};
    document.reset();
    return *fault;
}

pugi::xml_node nextXmlNode(pugi::xml_node node, pugi::xml_node top)
{
    if (node.first_child()) return node.first_child();
    while (node != top && !node.next_sibling()) node = node.parent();
    return node == top ? pugi::xml_node() : node.next_sibling();
}

int xmlHeight(pugi::xml_node top)
{
    int highest = 0;
    int depth = 1;
    for (pugi::xml_node node = top;;) {
        if (node.type() == pugi::node_element) highest = std::max(highest, depth);
        if (node.first_child()) {
            node = node.first_child();
            ++depth;
            continue;
        }
        while (node != top && !node.next_sibling()) {
            node = node.parent();
            --depth;
        }
        if (node == top) return highest;
        node = node.next_sibling();
    }
}

} // namespace refhost
