#pragma once

#include "automation/describe.h"
#include "host/xml/xml_lists.h"
#include "host/xml/xml_node.h"

namespace refhost {

/// Adds the members that documents, elements and texts share.
template <typename Table>
void describeNode(Table& table)
{
    using qmevents::arg;
    table.readOnly("nodeName", &XmlNode::nodeName, "\"#document\", \"#text\" or an element's name.")
        .readOnly("nodeType", &XmlNode::nodeType, "1 element, 3 text, 4 CDATA section, 9 document.")
        .property("text", &XmlNode::text, &XmlNode::setText,
                  "All texts within; assigning replaces what the element holds.")
        .readOnly("xml", &XmlNode::xml, "The node as XML text.")
        .readOnly("childNodes", &XmlNode::childNodes, "The elements and texts directly within.")
        .readOnly("attributes", &XmlNode::attributes, "The attributes of an element.")
        .method("getAttribute", &XmlNode::getAttribute, {arg("Name")},
                "An attribute's value; Null when there is none.")
        .method("setAttribute", &XmlNode::setAttribute, {arg("Name"), arg("Value")},
                "Sets or adds an attribute.")
        .method("appendChild", &XmlNode::appendChild, {arg("Child")},
                "Puts a node at the end of this one and gives it back.")
        .method("removeChild", &XmlNode::removeChild, {arg("Child")},
                "Takes a direct child out and gives it back.")
        .method("selectSingleNode", &XmlNode::selectSingleNode, {arg("Path")},
                "The first node that an XPath selects, or Nothing.")
        .method("selectNodes", &XmlNode::selectNodes, {arg("Path")},
                "The nodes that an XPath selects, in document order.");
}

} // namespace refhost
