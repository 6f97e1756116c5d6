#pragma once

#include <span>
#include <string>
#include <vector>

#include "automation/collection.h"
#include "host/app/session_context.h"
#include "host/modules/field_schema.h"

namespace refhost {

/// A field that letters can hold.
class MailingField : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "MailingField";
    const Members& members() const override;

    std::string Name, Caption;
    std::string Kind; ///< "text", "date", "money" or "number".
    std::string Group;
};

/// A field of the host's own: what a column of its donors holds.
struct OwnMailingField {
    const char *name, *caption, *column;
};
std::span<const OwnMailingField> ownMailingFields();

/// Payload of "mailing-fields": a mailing that begins, or none in particular.
class MailingSetup : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "MailingSetup";
    const Members& members() const override;

    explicit MailingSetup(std::string listKey) : ListKey(std::move(listKey)) {}
    std::string ListKey;     ///< Empty when fields are asked for in general.
    std::string Reference;   ///< What the module wants to be told with the list; the host keeps it.
    std::string MailingType; ///< The module's kind of mailing, where its fields differ by kinds.
};

/// `App.Modules.Quillmere.Mailings`.
class Mailings : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Mailings";
    const Members& members() const override;

    explicit Mailings(SharedContext context) : context_(std::move(context)) {}
    Ref<FieldSchema> fieldSchema = qmevents::makeRef<FieldSchema>("mailings");

    /// Asks the modules for their fields, anew. One whose file cannot be read is told to the user,
    /// and its fields are left out.
    Ref<MailingSetup> setUp(const std::string& listKey) const;
    void LoadFields() const { setUp(""); }
    /// The host's own fields and those that modules have appended; of these only those for
    /// mailings of `type`, where it is known.
    std::vector<Ref<MailingField>> fieldsFor(const std::string& type) const;

private:
    SharedContext context_;
};

} // namespace refhost
