#pragma once

#include <string>
#include <string_view>

#include <pugixml.hpp>

namespace refhost {

/// Elements nest no deeper than this, so that no walk over a document can exhaust the stack.
constexpr int deepestXml = 256;

/// Why a text is no document; `code` 0 when it is one.
struct XmlFault {
    int code = 0;
    std::string reason;
    int line = 0;   ///< From 1; 0 when the fault has no place.
    int column = 0; ///< From 1, in characters.
};

/// Where the bytes of a document come from: a text is UTF-8 whatever its declaration says.
enum class XmlSource { text, file };

/// Reads `text` into `document`, which is empty when there is a fault. A document type declaration
/// is refused, hence no entities but the five of XML; comments, instructions and blanks between
/// elements are dropped.
XmlFault parseXml(std::string_view text, XmlSource source, pugi::xml_document& document);

/// How deep elements nest in `node`, itself counted.
int xmlHeight(pugi::xml_node node);

/// The node after `node` in document order within `top`; none at the end.
pugi::xml_node nextXmlNode(pugi::xml_node node, pugi::xml_node top);

} // namespace refhost
