#include "core/xml.h"

#include "core/host.h"
#include "core/host_text.h"

namespace qmevents {

std::string XmlNode::text() const
{
    const std::string whole = wholeText();
    constexpr const char* whiteSpace = " \t\r\n";
    const auto first = whole.find_first_not_of(whiteSpace);
    if (first == std::string::npos) return {};
    return whole.substr(first, whole.find_last_not_of(whiteSpace) - first + 1);
}

std::string XmlNode::attribute(const std::string& name) const
{
    return textOrNone(call("getAttribute", name));
}

XmlWriter::XmlWriter(const std::string& name) : document_(newXmlDocument())
{
    call(document_, "loadXML", "<" + name + "/>");
}

XmlNode XmlWriter::top() const { return documentElement(document_); }

XmlNode XmlWriter::append(const XmlNode& parent, const std::string& name) const
{
    const auto element = toObject(call(document_, "createElement", name));
    call(parent.object(), "appendChild", element);
    return XmlNode(element);
}

void XmlWriter::append(const XmlNode& parent, const std::string& name,
                       const std::string& text) const
{
    const XmlNode element = append(parent, name);
    // A section ends at its first "]]>", so a text that holds one goes into two sections.
    constexpr std::string_view end = "]]>";
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t found = text.find(end, from);
        const std::size_t to = found == std::string::npos ? text.size() : found + 2;
        call(element.object(), "appendChild",
             toObject(call(document_, "createCDATASection", text.substr(from, to - from))));
        from = to;
    }
}

std::string XmlWriter::text() const { return toText(get(top().object(), "xml")); }

std::string textFault(std::string_view text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r') {
            return "the control character " + std::to_string(byte);
        }
        const std::string_view rest = text.substr(i);
        if (rest.starts_with("\xEF\xBF\xBE") || rest.starts_with("\xEF\xBF\xBF") ||
            (byte == 0xED && rest.size() > 1 && static_cast<unsigned char>(rest[1]) >= 0xA0)) {
            return "a code that is no character";
        }
    }
    return {};
}

Ref<Object> newXmlDocument()
{
    auto document = host().newXmlDocument();
    call(document, "setProperty", "SelectionLanguage", "XPath");
    put(document, "async", false);
    return document;
}

std::string parseFailure(const Ref<Object>& document)
{
    const auto failure = getObject(document, "parseError");
    if (toInt32(get(failure, "errorCode")) == 0) return {};
    const std::string reason = toText(get(failure, "reason"));
    return reason.empty() ? "unknown error" : reason;
}

XmlNode documentElement(const Ref<Object>& document)
{
    return XmlNode(getObject(document, "documentElement"));
}

} // namespace qmevents
