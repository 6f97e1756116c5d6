#include "store/reservation_field_xml.h"

#include "automation/error.h"
#include "automation/text.h"
#include "core/host.h"
#include "core/xml.h"
#include "model/reservation_fields.h"

namespace qmevents {
namespace {

// What a node says under `name`: as an attribute or as an element of its own.
std::string saidOf(const XmlNode& node, const std::string& name)
{
    const std::string attribute = node.attribute(name);
    if (!attribute.empty()) return attribute;
    const XmlNode element = node.first(name);
    return element ? element.wholeText() : std::string();
}

// What is not marked as hidden is visible.
bool isVisible(const XmlNode& node)
{
    const std::string mark(text::trim(saidOf(node, "visible")));
    return mark.empty() || toBool(mark);
}

std::int16_t fieldType(const XmlNode& field)
{
    const std::string type(text::trim(saidOf(field, "type")));
    return type.empty() ? std::int16_t{0} : toInt16(type);
}

void addField(Collection& fields, const XmlNode& node)
{
    auto field = makeRef<cEventActivityReservationField>();
    field->FieldType = fieldType(node);
    field->Name = saidOf(node, "name");
    field->Description = saidOf(node, "description");
    field->DefaultValue = saidOf(node, "defaultvalue");
    field->isVisible = isVisible(node);
    node.each("list/listitem", [&](const XmlNode& item) {
        field->AddListItem(saidOf(item, "value"), isVisible(item));
    });
    fields.append(field);
}

void addValue(Collection& values, const XmlNode& node)
{
    auto value = makeRef<cEventReservationActivityField>();
    value->FieldType = fieldType(node);
    value->Name = saidOf(node, "name");
    value->Value = saidOf(node, "value");
    appendValue(values, value);
}

Ref<Collection> readFields(const std::string& text, const char* failureHeading,
                           void (*add)(Collection&, const XmlNode&))
{
    if (text::trim(text).empty()) return makeRef<Collection>();
    std::string failure;
    try {
        const auto document = newXmlDocument();
        call(document, "loadXML", text);
        failure = parseFailure(document);
        if (failure.empty()) {
            auto fields = makeRef<Collection>();
            documentElement(document).each("field",
                                           [&](const XmlNode& node) { add(*fields, node); });
            return fields;
        }
    } catch (const Error& error) {
        // One bad document must not keep the other records from being read.
        failure = error.description();
    }
    host().shell().errorUnexpected(failureHeading + failure);
    return makeRef<Collection>();
}

} // namespace

Ref<Collection> readReservationFields(const std::string& document)
{
    return readFields(document, "There was an error reading the reservation fields: ", addField);
}

Ref<Collection> readReservationFieldValues(const std::string& document)
{
    return readFields(document,
                      "There was an error reading the reservation field values: ", addValue);
}

} // namespace qmevents
