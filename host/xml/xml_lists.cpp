#include "host/xml/xml_lists.h"

#include <iterator>

#include "automation/describe.h"

namespace refhost {

using qmevents::arg;
using qmevents::describe;
using qmevents::Enumerator;
using qmevents::makeRef;

namespace {

class ListWalk : public Enumerator {
public:
    explicit ListWalk(std::vector<Ref<Object>> items) : items_(std::move(items)) {}
    bool next(Value& item) override
    {
        if (position_ == items_.size()) return false;
        item = Value(items_[position_++]);
        return true;
    }

private:
    std::vector<Ref<Object>> items_;
    std::size_t position_ = 0;
};

} // namespace

const Members& XmlNodeList::members() const
{
    static const Members table =
        describe<XmlNodeList>("Nodes in document order.")
            .readOnly("item", &XmlNodeList::item, {arg("Index")},
                      "The node at a position from 0; Nothing outside the list.")
            .asDefault()
            .readOnly("length", &XmlNodeList::length, "Number of nodes.")
            .enumerator("_newEnum", &XmlNodeList::newEnum);
    return table;
}

std::int32_t XmlNodeList::length() const
{
    if (!parent_) return static_cast<std::int32_t>(selected_.size());
    const auto children = parent_->node().children();
    return static_cast<std::int32_t>(std::distance(children.begin(), children.end()));
}

Ref<Object> XmlNodeList::item(std::int32_t index) const
{
    if (index < 0) return {};
    if (!parent_) {
        const auto position = static_cast<std::size_t>(index);
        return position < selected_.size() ? selected_[position] : Ref<Object>();
    }
    for (const auto child : parent_->node().children()) {
        if (index-- == 0) return XmlNode::of(parent_->tree(), child);
    }
    return {};
}

Ref<Enumerator> XmlNodeList::newEnum()
{
    if (!parent_) return makeRef<ListWalk>(selected_);
    std::vector<Ref<Object>> children;
    for (const auto child : parent_->node().children()) {
        children.emplace_back(XmlNode::of(parent_->tree(), child));
    }
    return makeRef<ListWalk>(std::move(children));
}

const Members& XmlAttribute::members() const
{
    static const Members table =
        describe<XmlAttribute>("One attribute of an element.")
            .property("text", &XmlAttribute::text, &XmlAttribute::setText, "The value.")
            .asDefault()
            .property("value", &XmlAttribute::text, &XmlAttribute::setText, "The value.")
            .readOnly("nodeName", &XmlAttribute::nodeName, "The name.");
    return table;
}

std::string XmlAttribute::text() const { return element_->node().attribute(name_.c_str()).value(); }

const Members& XmlAttributes::members() const
{
    static const Members table =
        describe<XmlAttributes>("The attributes of an element.")
            .readOnly("item", &XmlAttributes::item, {arg("Index")},
                      "The attribute at a position from 0; Nothing outside the list.")
            .asDefault()
            .readOnly("length", &XmlAttributes::length, "Number of attributes.")
            .method("getNamedItem", &XmlAttributes::getNamedItem, {arg("Name")},
                    "The attribute of this name, or Nothing.")
            .enumerator("_newEnum", &XmlAttributes::newEnum);
    return table;
}

std::int32_t XmlAttributes::length() const
{
    const auto attributes = element_->node().attributes();
    return static_cast<std::int32_t>(std::distance(attributes.begin(), attributes.end()));
}

Ref<XmlAttribute> XmlAttributes::item(std::int32_t index) const
{
    if (index < 0) return {};
    for (const auto attribute : element_->node().attributes()) {
        if (index-- == 0) return makeRef<XmlAttribute>(element_, attribute.name());
    }
    return {};
}

Ref<XmlAttribute> XmlAttributes::getNamedItem(const std::string& name) const
{
    if (!element_->node().attribute(name.c_str())) return {};
    return makeRef<XmlAttribute>(element_, name);
}

Ref<Enumerator> XmlAttributes::newEnum()
{
    std::vector<Ref<Object>> all;
    for (const auto attribute : element_->node().attributes()) {
        all.emplace_back(makeRef<XmlAttribute>(element_, attribute.name()));
    }
    return makeRef<ListWalk>(std::move(all));
}

} // namespace refhost
