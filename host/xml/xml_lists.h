#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/xml/xml_node.h"

namespace refhost {

/// Nodes in document order: those that a path selected, or the children of a node as they are at
/// the moment. Positions count from 0.
class XmlNodeList : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "XmlNodeList";
    const Members& members() const override;

    explicit XmlNodeList(std::vector<Ref<Object>> selected) : selected_(std::move(selected)) {}
    explicit XmlNodeList(Ref<XmlNode> parent) : parent_(std::move(parent)) {}

    // The late-bound face.
    std::int32_t length() const;
    Ref<Object> item(std::int32_t index) const; ///< Nothing outside the list.
    Ref<qmevents::Enumerator> newEnum();

private:
    Ref<XmlNode> parent_; // whose children these are, or nothing
    std::vector<Ref<Object>> selected_;
};

/// One attribute of an element.
class XmlAttribute : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "XmlAttribute";
    const Members& members() const override;

    XmlAttribute(Ref<XmlNode> element, std::string name)
        : element_(std::move(element)), name_(std::move(name))
    {
    }
    std::string nodeName() const { return name_; }
    std::string text() const;
    void setText(const std::string& value) { element_->setAttribute(name_, value); }

private:
    Ref<XmlNode> element_;
    std::string name_;
};

/// The attributes of an element in the order of its text. Positions count from 0.
class XmlAttributes : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "XmlAttributes";
    const Members& members() const override;

    explicit XmlAttributes(Ref<XmlNode> element) : element_(std::move(element)) {}
    std::int32_t length() const;
    Ref<XmlAttribute> item(std::int32_t index) const; ///< Nothing outside the list.
    Ref<XmlAttribute> getNamedItem(const std::string& name) const;
    Ref<qmevents::Enumerator> newEnum();

private:
    Ref<XmlNode> element_;
};

} // namespace refhost
