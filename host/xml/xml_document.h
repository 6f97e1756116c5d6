#pragma once

#include <string>

#include "host/xml/xml_node.h"
#include "host/xml/xml_parser.h"

namespace refhost {

/// What the last reading of a document met; `errorCode` 0 when it succeeded.
class XmlParseError : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "XmlParseError";
    const Members& members() const override;

    explicit XmlParseError(XmlFault fault) : fault_(std::move(fault)) {}
    std::int32_t errorCode() const { return fault_.code; }
    std::string reason() const { return fault_.reason; }
    std::int32_t line() const { return fault_.line; }
    std::int32_t linepos() const { return fault_.column; }

private:
    XmlFault fault_;
};

/// An XML document with XPath. After a reading that failed it is empty.
class XmlDocument : public XmlNode {
public:
    static constexpr std::string_view ClassName = "XmlDocument";
    const Members& members() const override;

    XmlDocument();

    // The late-bound face.
    bool Load(const std::string& path);
    bool loadXML(const std::string& text);
    Ref<XmlParseError> parseError() const;
    Ref<XmlNode> documentElement() const;
    void setProperty(const std::string& name, const std::string& value);
    Ref<XmlNode> createElement(const std::string& name) const;
    Ref<XmlNode> createTextNode(const std::string& content) const;
    Ref<XmlNode> createCDATASection(const std::string& content) const;

    bool async = false; ///< Reading always waits, whatever is set here.

private:
    bool read(std::string_view text, XmlSource source);

    XmlFault fault_;
};

} // namespace refhost
