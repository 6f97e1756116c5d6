#include "host/xml/xml_node.h"

#include <sstream>

#include "automation/describe.h"
#include "host/xml/describe_node.h"
#include "host/xml/xml_parser.h"

namespace refhost {

using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;

namespace {

bool isNameStart(unsigned char c)
{
    return c >= 0x80 || c == '_' || c == ':' || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

int elementsAbove(pugi::xml_node node)
{
    int count = 0;
    for (; node; node = node.parent()) count += node.type() == pugi::node_element ? 1 : 0;
    return count;
}

bool isWithin(pugi::xml_node node, pugi::xml_node other)
{
    for (; node; node = node.parent()) {
        if (node == other) return true;
    }
    return false;
}

[[noreturn]] void refuse(const std::string& why)
{
    throw Error::with(ErrorNumber::invalidCall, why);
}

pugi::xpath_node_set select(pugi::xml_node node, const std::string& path)
{
    try {
        pugi::xpath_node_set found = pugi::xpath_query(path.c_str()).evaluate_node_set(node);
        found.sort();
        return found;
    } catch (const pugi::xpath_exception& failure) {
        refuse("the path \"" + path + "\" is no XPath: " + failure.what() + " at character " +
               std::to_string(failure.result().offset + 1));
    }
}

} // namespace

void requireXmlName(const std::string& name)
{
    bool valid = !name.empty() && isNameStart(static_cast<unsigned char>(name[0]));
    for (const char c : name) {
        const bool digit = c >= '0' && c <= '9';
        valid =
            valid && (isNameStart(static_cast<unsigned char>(c)) || digit || c == '-' || c == '.');
    }
    if (!valid) refuse("\"" + name + "\" is no XML name");
}

void requireXmlText(const std::string& content)
{
    for (const char c : content) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 && c != '\t' && c != '\n' && c != '\r') {
            refuse("a text in a document cannot hold the control character " +
                   std::to_string(byte));
        }
    }
}

const Members& XmlNode::members() const
{
    static const Members table = describe<XmlNode>("An element or a text of an XML document.")
                                     .with(describeNode<qmevents::Describe<XmlNode>>);
    return table;
}

XmlNode::XmlNode(std::shared_ptr<XmlTree> tree, pugi::xml_node node)
{
    attach(std::move(tree), node);
}

XmlNode::~XmlNode() { tree_->objects.erase(node_.internal_object()); }

void XmlNode::attach(std::shared_ptr<XmlTree> tree, pugi::xml_node node)
{
    if (tree_) tree_->objects.erase(node_.internal_object());
    tree_ = std::move(tree);
    node_ = node;
    if (node_) tree_->objects[node_.internal_object()] = this;
}

Ref<XmlNode> XmlNode::of(const std::shared_ptr<XmlTree>& tree, pugi::xml_node node)
{
    if (!node) return {};
    const auto known = tree->objects.find(node.internal_object());
    return Ref<XmlNode>(known != tree->objects.end() ? known->second : new XmlNode(tree, node));
}

Ref<XmlNode> XmlNode::create(pugi::xml_node_type type, const std::string& name,
                             const std::string& content)
{
    requireXmlText(content);
    const auto piece = std::make_shared<XmlTree>();
    pugi::xml_node node = piece->nodes.append_child(type);
    if (!name.empty()) node.set_name(name.c_str());
    if (!content.empty()) node.set_value(content.c_str());
    return of(piece, node);
}

std::string XmlNode::nodeName() const
{
    switch (node_.type()) {
    case pugi::node_document:
        return "#document";
    case pugi::node_pcdata:
        return "#text";
    case pugi::node_cdata:
        return "#cdata-section";
    default:
        return node_.name();
    }
}

std::int32_t XmlNode::nodeType() const
{
    switch (node_.type()) {
    case pugi::node_document:
        return 9;
    case pugi::node_pcdata:
        return 3;
    case pugi::node_cdata:
        return 4;
    default:
        return 1;
    }
}

std::string XmlNode::text() const
{
    std::string result;
    for (pugi::xml_node node = node_; node; node = nextXmlNode(node, node_)) {
        result += node.value(); // elements have none
    }
    return result;
}

void XmlNode::setText(const std::string& content)
{
    requireXmlText(content);
    if (node_.type() == pugi::node_pcdata || node_.type() == pugi::node_cdata) {
        node_.set_value(content.c_str());
        return;
    }
    requireElement("text");
    while (const pugi::xml_node child = node_.first_child()) removeChild(of(tree_, child));
    if (!content.empty()) node_.append_child(pugi::node_pcdata).set_value(content.c_str());
}

std::string XmlNode::xml() const
{
    std::ostringstream out;
    node_.print(out, "", pugi::format_raw | pugi::format_no_declaration);
    return out.str();
}

void XmlNode::requireElement(const char* member) const
{
    if (node_.type() != pugi::node_element) {
        refuse(std::string(member) + " of " + nodeName() + ", which is no element");
    }
}

Value XmlNode::getAttribute(const std::string& name) const
{
    requireElement("getAttribute");
    const auto attribute = node_.attribute(name.c_str());
    return attribute ? Value(attribute.value()) : Value(qmevents::Null{});
}

void XmlNode::setAttribute(const std::string& name, const std::string& value)
{
    requireElement("setAttribute");
    requireXmlName(name);
    requireXmlText(value);
    auto attribute = node_.attribute(name.c_str());
    if (!attribute) attribute = node_.append_attribute(name.c_str());
    attribute.set_value(value.c_str());
}

Ref<XmlNodeList> XmlNode::childNodes() const { return makeRef<XmlNodeList>(of(tree_, node_)); }

Ref<XmlAttributes> XmlNode::attributes() const { return makeRef<XmlAttributes>(of(tree_, node_)); }

Ref<XmlNode> XmlNode::appendChild(const Ref<XmlNode>& child)
{
    if (!child) refuse("there is no node to append");
    const pugi::xml_node node = child->node();
    if (node.type() == pugi::node_document) refuse("a document cannot stand in another node");
    if (isWithin(node_, node)) refuse("a node cannot stand within itself");
    if (node_.type() == pugi::node_document) {
        const auto root = tree_->nodes.document_element();
        if (node.type() != pugi::node_element || (root && root != node)) {
            refuse("a document holds one element and nothing else");
        }
    } else {
        requireElement("appendChild");
    }
    if (elementsAbove(node_) + xmlHeight(node) > deepestXml) {
        refuse("elements would nest deeper than " + std::to_string(deepestXml) + " levels");
    }
    child->moveTo(tree_, node_);
    return child;
}

Ref<XmlNode> XmlNode::removeChild(const Ref<XmlNode>& child)
{
    if (!child || child->node().parent() != node_) refuse("the node is no child of this one");
    const auto piece = std::make_shared<XmlTree>();
    child->moveTo(piece, piece->nodes);
    return child;
}

void XmlNode::moveTo(const std::shared_ptr<XmlTree>& tree, pugi::xml_node parent)
{
    const std::shared_ptr<XmlTree> oldTree = tree_;
    const pugi::xml_node old = node_;
    if (tree == oldTree) {
        parent.append_move(old);
        return;
    }
    // The parser's nodes cannot change their document: copies take their place.
    const pugi::xml_node copy = parent.append_copy(old);
    pugi::xml_node from = old;
    pugi::xml_node to = copy;
    while (from && !oldTree->objects.empty()) {
        const auto known = oldTree->objects.find(from.internal_object());
        if (known != oldTree->objects.end()) known->second->attach(tree, to);
        from = nextXmlNode(from, old);
        to = nextXmlNode(to, copy);
    }
    old.parent().remove_child(old);
}

Ref<Object> XmlNode::objectFor(const pugi::xpath_node& found) const
{
    if (!found.attribute()) return of(tree_, found.node());
    return makeRef<XmlAttribute>(of(tree_, found.parent()), found.attribute().name());
}

Ref<Object> XmlNode::selectSingleNode(const std::string& path) const
{
    return objectFor(select(node_, path).first());
}

Ref<XmlNodeList> XmlNode::selectNodes(const std::string& path) const
{
    std::vector<Ref<Object>> nodes;
    for (const pugi::xpath_node& found : select(node_, path)) nodes.push_back(objectFor(found));
    return makeRef<XmlNodeList>(std::move(nodes));
}

} // namespace refhost
