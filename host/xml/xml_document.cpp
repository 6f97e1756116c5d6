#include "host/xml/xml_document.h"

#include <fstream>
#include <iterator>

#include "automation/describe.h"
#include "host/app/file_finder.h"
#include "host/xml/describe_node.h"

namespace refhost {

using qmevents::arg;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;
using qmevents::text::sameName;

namespace {

constexpr int noSuchFile = 200;
constexpr int unreadableFile = 201;

} // namespace

const Members& XmlParseError::members() const
{
    static const Members table =
        describe<XmlParseError>("What the last reading of a document met.")
            .readOnly("errorCode", &XmlParseError::errorCode, "0 when the reading succeeded.")
            .asDefault()
            .readOnly("reason", &XmlParseError::reason, "What is wrong.")
            .readOnly("line", &XmlParseError::line, "Line of the fault from 1, or 0.")
            .readOnly("linepos", &XmlParseError::linepos, "Place in the line from 1, or 0.");
    return table;
}

const Members& XmlDocument::members() const
{
    static const Members table =
        describe<XmlDocument>("An XML document with XPath.")
            .with(describeNode<qmevents::Describe<XmlDocument>>)
            .property("async", &XmlDocument::async, "Kept, but reading always waits.")
            .method("setProperty", &XmlDocument::setProperty, {arg("Name"), arg("Value")},
                    "\"SelectionLanguage\" must be \"XPath\"; there are no other properties.")
            .method("Load", &XmlDocument::Load, {arg("Path")},
                    "Reads a file; False when it is no document, with the reason in parseError.")
            .method("loadXML", &XmlDocument::loadXML, {arg("Text")},
                    "Reads a text; False when it is no document, with the reason in parseError.")
            .readOnly("parseError", &XmlDocument::parseError, "What the last reading met.")
            .readOnly("documentElement", &XmlDocument::documentElement,
                      "The top level element, or Nothing.")
            .method("createElement", &XmlDocument::createElement, {arg("Name")},
                    "A new element, to be appended.")
            .method("createTextNode", &XmlDocument::createTextNode, {arg("Content")},
                    "A new text, to be appended.")
            .method("createCDATASection", &XmlDocument::createCDATASection, {arg("Content")},
                    "A new CDATA section, to be appended.");
    return table;
}

XmlDocument::XmlDocument() : XmlNode(std::make_shared<XmlTree>(), {})
{
    attach(tree(), tree()->nodes);
}

bool XmlDocument::Load(const std::string& path)
{
    const auto file = findFile(path);
    if (!file) {
        loadXML({});
        fault_ = {noSuchFile, "The file " + path + " was not found.", 0, 0};
        return false;
    }
    std::ifstream in(*file, std::ios::binary);
    const std::string content((std::istreambuf_iterator<char>(in)), {});
    if (!in) {
        loadXML({});
        fault_ = {unreadableFile, "The file " + path + " could not be read.", 0, 0};
        return false;
    }
    return read(content, XmlSource::file);
}

bool XmlDocument::loadXML(const std::string& text) { return read(text, XmlSource::text); }

bool XmlDocument::read(std::string_view text, XmlSource source)
{
    // A new tree: nodes that scripts still hold stay as they are.
    auto fresh = std::make_shared<XmlTree>();
    fault_ = parseXml(text, source, fresh->nodes);
    attach(fresh, fresh->nodes);
    return fault_.code == 0;
}

Ref<XmlParseError> XmlDocument::parseError() const { return makeRef<XmlParseError>(fault_); }

Ref<XmlNode> XmlDocument::documentElement() const
{
    return XmlNode::of(tree(), tree()->nodes.document_element());
}

void XmlDocument::setProperty(const std::string& name, const std::string& value)
{
    if (sameName(name, "SelectionLanguage") && sameName(value, "XPath")) return;
    throw Error::with(ErrorNumber::invalidCall,
                      "a document has no property " + name + " with the value " + value);
}

Ref<XmlNode> XmlDocument::createElement(const std::string& name) const
{
    requireXmlName(name);
    return XmlNode::create(pugi::node_element, name, {});
}

Ref<XmlNode> XmlDocument::createTextNode(const std::string& content) const
{
    return XmlNode::create(pugi::node_pcdata, {}, content);
}

Ref<XmlNode> XmlDocument::createCDATASection(const std::string& content) const
{
    return XmlNode::create(pugi::node_cdata, {}, content);
}

} // namespace refhost
