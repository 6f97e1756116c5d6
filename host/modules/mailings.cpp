#include "host/modules/mailings.h"

#include "automation/describe.h"
#include "host/xml/xml_lists.h"

namespace refhost {

using qmevents::describe;
using qmevents::Error;
using qmevents::makeRef;

namespace {

constexpr OwnMailingField ownFields[] = {
    {"DonorName", "Name", "display"},
    {"DonorFirstName", "First name", "firstname"},
    {"DonorLastName", "Last name", "lastname"},
    {"DonorAddress", "Street and number", "address"},
    {"DonorPostalCode", "Postal code", "postalcode"},
    {"DonorCity", "City", "city"},
    {"DonorEmail", "E-mail", "email"},
    {"DonorPhone", "Telephone", "phone"},
};

Ref<MailingField> fieldOf(std::string name, std::string caption, std::string kind,
                          std::string group)
{
    auto field = makeRef<MailingField>();
    field->Name = std::move(name);
    field->Caption = std::move(caption);
    field->Kind = std::move(kind);
    field->Group = std::move(group);
    return field;
}

std::string attribute(const Ref<Object>& node, const char* name)
{
    const Value value = call(node, "getAttribute", name);
    return value.isText() ? value.text() : std::string();
}

/// Whether the numbers in `kinds`, separated by blanks, hold `type`. No kinds or no type is all.
bool isFor(const std::string& kinds, const std::string& type)
{
    const std::string spaced = " " + kinds + " ";
    return kinds.empty() || type.empty() || spaced.find(" " + type + " ") != std::string::npos;
}

} // namespace

std::span<const OwnMailingField> ownMailingFields() { return ownFields; }

const Members& MailingField::members() const
{
    static const Members table =
        describe<MailingField>("A field that letters can hold.")
            .readOnly("Name", &MailingField::Name, "Its name, as it stands in braces.")
            .readOnly("Caption", &MailingField::Caption, "What the user sees.")
            .readOnly("Kind", &MailingField::Kind, "\"text\", \"date\", \"money\" or \"number\".")
            .readOnly("Group", &MailingField::Group, "What it tells about.");
    return table;
}

const Members& MailingSetup::members() const
{
    static const Members table =
        describe<MailingSetup>("A mailing that begins, or none in particular.")
            .readOnly("ListKey", &MailingSetup::ListKey,
                      "The key of its list; empty when fields are asked for in general.")
            .property("Reference", &MailingSetup::Reference,
                      "What the module wants to be told with the list.")
            .property("MailingType", &MailingSetup::MailingType, "The module's kind of mailing.");
    return table;
}

const Members& Mailings::members() const
{
    static const Members table =
        describe<Mailings>("What mailings are made of.")
            .readOnly("FieldSchema", &Mailings::fieldSchema, "The fields that letters can hold.")
            .method("LoadFields", &Mailings::LoadFields, "Asks the modules for their fields.");
    return table;
}

Ref<MailingSetup> Mailings::setUp(const std::string& listKey) const
{
    auto setup = makeRef<MailingSetup>(listKey);
    fieldSchema->Schemas->clear();
    try {
        context_->raise("mailing-fields", Value(setup));
    } catch (const Error& error) {
        // Letters can be written without these fields, so the mailing goes on.
        context_->shell()->ErrorUnexpected(error.description(), Value(error.number()));
    }
    return setup;
}

std::vector<Ref<MailingField>> Mailings::fieldsFor(const std::string& type) const
{
    std::vector<Ref<MailingField>> fields;
    for (const OwnMailingField& own : ownFields) {
        fields.push_back(fieldOf(own.name, own.caption, "text", "Donor"));
    }
    Value item;
    for (const auto schemas = fieldSchema->Schemas->NewEnum(); schemas->next(item);) {
        const auto schema = qmevents::refCast<AppendedSchema>(item.object());
        const auto nodes = schema->Document->selectNodes("//field");
        for (std::int32_t i = 0; i < nodes->length(); ++i) {
            const auto node = nodes->item(i);
            if (!isFor(attribute(node, "mailings"), type)) continue;
            fields.push_back(fieldOf(attribute(node, "name"), attribute(node, "caption"),
                                     attribute(node, "kind"), attribute(node, "group")));
        }
    }
    return fields;
}

} // namespace refhost
