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
    return {};
}

// A document that held such a character could not be read any more, and all of it would be lost.
const std::string& storable(const std::string& text, const std::string& field)
{
    const std::string fault = textFault(text);
    if (fault.empty()) return text;
    throw Error(ErrorNumber::invalidCall, "The reservation field \"" + field + "\" holds " + fault +
                                              ", which cannot be stored.");
}

std::string digit(bool yes) { return yes ? "1" : "0"; }

XmlNode appendField(const XmlWriter& writer, const std::string& name, std::int16_t type)
{
    XmlNode node = writer.append(writer.top(), "field");
    node.setAttribute("name", storable(name, name.substr(0, name.find('\0'))));
    node.setAttribute("type", std::to_string(type));
    return node;
}

void writeField(const XmlWriter& writer, const cEventActivityReservationField& field)
{
    const XmlNode node = appendField(writer, field.Name, field.FieldType);
    node.setAttribute("visible", digit(field.isVisible));
    writer.append(node, "description", storable(field.Description, field.Name));
    writer.append(node, "defaultvalue", storable(field.DefaultValue, field.Name));
    const XmlNode list = writer.append(node, "list");
    field.eachListItem([&](const cEventActivityReservationItem& item) {
        const XmlNode choice = writer.append(list, "listitem");
        choice.setAttribute("visible", digit(item.Visible));
        writer.append(choice, "value", storable(item.Name, field.Name));
    });
}

void writeValue(const XmlWriter& writer, const cEventReservationActivityField& value)
{
    writer.append(appendField(writer, value.Name, value.FieldType), "value",
                  storable(value.Value, value.Name));
}

// Nothing for no fields: the column of most records is empty.
template <typename T>
std::string writeFields(const Collection& fields, void (*write)(const XmlWriter&, const T&))
{
    if (fields.size() == 0) return {};
    const XmlWriter writer("fields");
    for (std::size_t i = 1; i <= fields.size(); ++i) {
        const Value& item = fields.at(i);
        if (!item.isObject()) continue; // put in by hand, and no field
        if (const auto field = refCast<T>(item.object())) write(writer, *field);
    }
    return writer.text();
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

std::string writeReservationFields(const Collection& fields)
{
    return writeFields(fields, writeField);
}

std::string writeReservationFieldValues(const Collection& values)
{
    return writeFields(values, writeValue);
}

} // namespace qmevents
