#include "host/app/host_event.h"

#include "automation/describe.h"

namespace refhost {

using qmevents::arg;
using qmevents::describe;
using qmevents::makeRef;

const Members& HostEvent::members() const
{
    static const Members table =
        describe<HostEvent>("An event of the host.")
            .readOnly("Key", &HostEvent::Key, "The event's name.")
            .readOnly("Data", &HostEvent::Data, "The payload; its members depend on the event.");
    return table;
}

const Members& DeletionPayload::members() const
{
    static const Members table =
        describe<DeletionPayload>("What is about to be deleted.")
            .readOnly("EntityId", &DeletionPayload::EntityId, "The record's key.")
            .readOnly("EntityType", &DeletionPayload::EntityType,
                      "\"donors\", or the table of an attribute.")
            .readOnly("DeleteType", &DeletionPayload::DeleteType, "How it is deleted.")
            .readOnly("Userdata", &DeletionPayload::Userdata,
                      "Of a list: what follows \"SELECT Id FROM \".")
            .readOnly("ConfirmationMessages", &DeletionPayload::ConfirmationMessages,
                      "What modules want the user to know before.")
            .method("AddConfirmationMessage", &DeletionPayload::AddConfirmationMessage,
                    {arg("Text")}, "Adds a text that the user confirms before.");
    return table;
}

void DeletionPayload::AddConfirmationMessage(const std::string& text) const
{
    ConfirmationMessages->append(Value(text));
}

const Members& MenuItem::members() const
{
    static const Members table =
        describe<MenuItem>("One entry of a context menu.")
            .readOnly("Flags", &MenuItem::Flags, "How the entry looks.")
            .readOnly("Text", &MenuItem::Text, "What the user sees.")
            .readOnly("Command", &MenuItem::Command, "The number that comes back when chosen.");
    return table;
}

const Members& ContextMenu::members() const
{
    static const Members table =
        describe<ContextMenu>("A context menu that modules append to.")
            .method("AppendItem", &ContextMenu::AppendItem,
                    {arg("Flags"), arg("Text"), arg("Command")}, "Appends an entry.")
            .readOnly("Items", &ContextMenu::Items, "The entries in their order.");
    return table;
}

void ContextMenu::AppendItem(std::int32_t flags, const std::string& text,
                             std::int32_t command) const
{
    const auto item = makeRef<MenuItem>();
    item->Flags = flags;
    item->Text = text;
    item->Command = command;
    Items->append(Value(item));
}

const Members& InteractionPayload::members() const
{
    static const Members table =
        describe<InteractionPayload>("An entry of a donor's history and its context menu.")
            .readOnly("Interaction", &InteractionPayload::interaction, "The entry.")
            .readOnly("ContextMenu", &InteractionPayload::contextMenu, "Its menu.")
            .readOnly("Command", &InteractionPayload::Command, "The menu entry chosen.");
    return table;
}

} // namespace refhost
