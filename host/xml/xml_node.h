#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include <pugixml.hpp>

#include "automation/members.h"

namespace refhost {

using qmevents::Members;
using qmevents::Object;
using qmevents::Ref;
using qmevents::Value;

class XmlNode;
class XmlNodeList;
class XmlAttributes;

/// The nodes of a document, or of one piece that stands in no document, with the objects that
/// scripts hold for them: there is at most one object for a node.
struct XmlTree {
    pugi::xml_document nodes;
    std::unordered_map<pugi::xml_node_struct*, XmlNode*> objects;
};

/// A document, element or text of an XML document as scripts see it. It keeps its nodes alive. A
/// node that is moved to another place, taken out or put into another document stays the same
/// object, with all below it.
class XmlNode : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "XmlNode";
    const Members& members() const override;

    /// The object for `node` of `tree`; Nothing for no node.
    static Ref<XmlNode> of(const std::shared_ptr<XmlTree>& tree, pugi::xml_node node);
    /// A new node that stands in no document.
    static Ref<XmlNode> create(pugi::xml_node_type type, const std::string& name,
                               const std::string& content);
    ~XmlNode() override;

    pugi::xml_node node() const { return node_; }
    const std::shared_ptr<XmlTree>& tree() const { return tree_; }

    // The late-bound face.
    std::string nodeName() const;
    std::int32_t nodeType() const; ///< 1 element, 3 text, 4 CDATA section, 9 document.
    std::string text() const;
    void setText(const std::string& content);
    std::string xml() const;
    Value getAttribute(const std::string& name) const;
    void setAttribute(const std::string& name, const std::string& value);
    Ref<XmlNodeList> childNodes() const;
    Ref<XmlAttributes> attributes() const;
    Ref<XmlNode> appendChild(const Ref<XmlNode>& child);
    Ref<XmlNode> removeChild(const Ref<XmlNode>& child);
    Ref<Object> selectSingleNode(const std::string& path) const;
    Ref<XmlNodeList> selectNodes(const std::string& path) const;

protected:
    XmlNode(std::shared_ptr<XmlTree> tree, pugi::xml_node node);
    /// Stands for `node` of `tree` from now on.
    void attach(std::shared_ptr<XmlTree> tree, pugi::xml_node node);

private:
    void moveTo(const std::shared_ptr<XmlTree>& tree, pugi::xml_node parent);
    Ref<Object> objectFor(const pugi::xpath_node& found) const;
    void requireElement(const char* member) const;

    std::shared_ptr<XmlTree> tree_;
    pugi::xml_node node_;
};

/// Refuses (error 5) a name that no element or attribute can have.
void requireXmlName(const std::string& name);
/// Refuses (error 5) characters that no document can hold.
void requireXmlText(const std::string& content);

} // namespace refhost
