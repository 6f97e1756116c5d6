#pragma once

#include <string>
#include <string_view>

#include "core/host_part.h"

namespace qmevents {

/// A node of a host XML document (an element, or the document itself).
class XmlNode : public HostPart {
public:
    using HostPart::HostPart;

    /// The text of the element, without white space at its ends.
    std::string text() const;
    /// The text of the element as it stands.
    std::string wholeText() const { return toText(get("text")); }
    /// The attribute's text, empty when there is none.
    std::string attribute(const std::string& name) const;
    void setAttribute(const std::string& name, const std::string& value) const
    {
        call("setAttribute", name, value);
    }
    /// The first node that `path`, an XPath, selects; may be nothing.
    XmlNode first(const std::string& path) const
    {
        return XmlNode(toObject(call("selectSingleNode", path)));
    }
    /// Calls `visit` for each node that `path` selects, in document order.
    template <typename Visit>
    void each(const std::string& path, Visit visit) const
    {
        const auto nodes = toObject(call("selectNodes", path));
        const auto count = toInt32(qmevents::get(nodes, "length"));
        for (std::int32_t i = 0; i < count; ++i) {
            visit(XmlNode(toObject(qmevents::call(nodes, "item", i))));
        }
    }
};

/// Builds one of the host's XML documents.
class XmlWriter {
public:
    /// Starts a document whose top element is called `name`.
    explicit XmlWriter(const std::string& name);
    XmlNode top() const;
    /// A new element at the end of `parent`.
    XmlNode append(const XmlNode& parent, const std::string& name) const;
    /// A new element with `text` in it, which may hold anything that `textFault` lets pass.
    void append(const XmlNode& parent, const std::string& name, const std::string& text) const;
    /// The document as text.
    std::string text() const;

private:
    Ref<Object> document_;
};

/// Why no XML document can hold `text`, as words about it; empty when one can.
std::string textFault(std::string_view text);

/// A new XML document of the host that selects by XPath and loads synchronously.
Ref<Object> newXmlDocument();
/// The parser's message, empty when `document` was parsed.
std::string parseFailure(const Ref<Object>& document);
XmlNode documentElement(const Ref<Object>& document);

} // namespace qmevents
