#pragma once

#include <string>

#include "automation/collection.h"
#include "host/app/session_context.h"

namespace refhost {

/// What the dispatcher of an add-in is handed: an event's name and its payload.
class HostEvent : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "HostEvent";
    const Members& members() const override;

    HostEvent(std::string key, Value data) : Key(std::move(key)), Data(std::move(data)) {}
    std::string Key;
    Value Data;
};

/// Payload of the "donor-delete..." events and of "attribute-delete".
class DeletionPayload : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "DeletionPayload";
    const Members& members() const override;

    std::int32_t EntityId = 0; ///< What is deleted, when it is one record.
    std::string EntityType;    ///< "donors", or the table of an attribute.
    std::int32_t DeleteType = 0;
    std::string Userdata; ///< Of a list: what follows "SELECT Id FROM ".
    /// What modules want the user to know before the deletion, in their order.
    Ref<qmevents::Collection> ConfirmationMessages = qmevents::makeRef<qmevents::Collection>();
    void AddConfirmationMessage(const std::string& text) const;
};

/// One entry of a context menu.
class MenuItem : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "MenuItem";
    const Members& members() const override;

    std::int32_t Flags = 0;
    std::string Text;
    std::int32_t Command = 0;
};

/// A context menu that modules append to.
class ContextMenu : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "ContextMenu";
    const Members& members() const override;

    Ref<qmevents::Collection> Items = qmevents::makeRef<qmevents::Collection>();
    void AppendItem(std::int32_t flags, const std::string& text, std::int32_t command) const;
};

/// Payload of "interaction-menu" and "interaction-command".
class InteractionPayload : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "InteractionPayload";
    const Members& members() const override;

    explicit InteractionPayload(Ref<Object> entry, std::int32_t command = 0)
        : interaction(std::move(entry)), Command(command)
    {
    }
    Ref<Object> interaction; ///< An entry of a donor's history, with `group` and `Reference`.
    Ref<ContextMenu> contextMenu = qmevents::makeRef<ContextMenu>();
    std::int32_t Command = 0; ///< Of the menu entry chosen.
};

} // namespace refhost
