#include "core/xml.h"

#include "core/host.h"

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
    const Value value = call("getAttribute", name);
    return value.isNull() ? std::string() : toText(value);
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
