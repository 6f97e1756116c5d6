// Activities, which are edited on a page of their own, and their reservation fields, which are
// edited in memory on that page and saved with the activity.
#include "workflow/child_commands.h"
#include "workflow/workflow_events.h"

namespace qmevents {
namespace {

using Field = cEventActivityReservationField;

constexpr auto check = &EventsManage::IsValidEventActivityAction;
constexpr const char* editPage =
    "obsidian://events/eventactivity-fulledit?action=edit&persist=eventactivity";
constexpr const char* newPage =
    "obsidian://events/eventactivity-fulledit?action=new&persist=eventactivity";

// The page takes the activity from the session; a new one is stored when the user saves it there.
void openPage(const std::string& address, const Ref<cEventActivity>& activity)
{
    host().setSession("eventactivity", activity);
    host().shell().navigate(address);
}

void copyFields(const cEventActivity& from, cEventActivity& to)
{
    const auto fields = from.ReservationFields();
    for (std::size_t i = 1; i <= fields->size(); ++i) {
        const auto copy = makeRef<Field>();
        copy->CopyFrom(refCast<Field>(toObject(fields->at(i))));
        to.ReservationFields()->append(copy);
    }
}

Ref<cEventActivity> copyOf(const cEventActivity& source, std::int32_t eventId)
{
    auto copy = eventsManage()->GetNewEventActivity(eventId);
    copy->Name = "Copy of " + source.Name.get();
    copy->Description = source.Description.get();
    copy->ListPrice = source.ListPrice.get();
    copy->Cost = source.Cost.get();
    copy->QuantityAvailable = source.QuantityAvailable.get();
    copy->Sponsorship = source.Sponsorship.get();
    copy->QuantityType = source.QuantityType.get();
    copy->FKFundId = source.FKFundId.get();
    copy->FKCampaignId = source.FKCampaignId.get();
    copy->FKAppealId = source.FKAppealId.get();
    copyFields(source, *copy);
    return copy;
}

constexpr DeletedAfterAsking<cEventActivity> deleted{
    check,
    [](EventsManage& store, std::int32_t eventId, std::int32_t id) {
        return store.DeleteEventActivity(eventId, id);
    },
    "Delete Activity",
    [](const cEventActivity&) -> std::string {
        return "Are you sure you want to delete this event activity?";
    }};

bool mayChangeFields(const Ref<cEventActivity>& activity)
{
    return mayChangeParts(check, needed(activity, "EventActivity"),
                          EventsActions::EditReservationFields);
}

// Reserved lines hold answers under the fields, so a field can only go while there are none.
bool mayDeleteField(const Ref<cEventActivity>& activity)
{
    if (!mayChangeFields(activity)) return false;
    if (activity->IsNew()) return true;
    if (!eventsManage()->EventActivityInUse(activity->FKEventId, activity->Id())) return true;
    showRefusal("The event has reservations that include the activity.", RefusalEnding::sameLine);
    return false;
}

} // namespace

void WorkflowEvents::AddEventActivity(std::int32_t EventId, const std::string& TabName)
{
    reported([&] {
        openPage(newPage + ("&tabname=" + TabName), eventsManage()->GetNewEventActivity(EventId));
    });
}

void WorkflowEvents::EditEventActivity(std::int32_t EventId, std::int32_t ActivityId)
{
    reported([&] {
        RecordLock lock = lockEvent(EventId);
        const auto activity = allowed(check, ActivityId, EventsActions::Edit);
        if (!activity) return;
        lock.release();
        openPage(editPage, activity);
    });
}

void WorkflowEvents::DeleteEventActivity(std::int32_t EventId, std::int32_t ActivityId)
{
    reported([&] {
        if (deleteAfterAsking(deleted, EventId, ActivityId)) refresh();
    });
}

void WorkflowEvents::CopyEventActivity(std::int32_t EventId, std::int32_t ActivityId)
{
    reported([&] {
        RecordLock lock = lockEvent(EventId);
        const auto source = allowed(check, ActivityId, EventsActions::Copy);
        if (!source) return;
        const auto copy = copyOf(*source, EventId);
        lock.release();
        openPage(newPage, copy);
    });
}

void WorkflowEvents::AddEventActivityReservationField(const Ref<cEventActivity>& EventActivity)
{
    reported([&] {
        if (!mayChangeFields(EventActivity)) return;
        const auto dialog = newDialog("addeventactivityfield");
        dialog->set("Title", "");
        dialog->set("Heading", "");
        dialog->set("EventActivity", EventActivity);
        if (!confirmed(dialog)) return;
        const auto field = eventsManage()->GetNewEventActivityReservationField();
        field->FieldType = output(dialog, "FieldType", toInt16);
        field->Name = output(dialog, "Name", toText);
        field->Description = output(dialog, "FieldDescription", toText);
        field->DefaultValue = output(dialog, "DefaultValue", toText);
        EventActivity->ReservationFields()->append(field);
        refresh();
    });
}

void WorkflowEvents::EditEventActivityReservationField(
    const Ref<Field>& EventActivityReservationField)
{
    reported([&] {
        needed(EventActivityReservationField, "EventActivityReservationField");
        const auto dialog = newDialog("editeventactivityfield");
        dialog->set("Title", "");
        dialog->set("Heading", "");
        dialog->set("ReservationField", EventActivityReservationField);
        if (confirmed(dialog)) refresh();
    });
}

void WorkflowEvents::DeleteEventActivityReservationField(
    const Value& EventActivityReservationFieldId, const Ref<cEventActivity>& EventActivity)
{
    reported([&] {
        if (!mayDeleteField(EventActivity)) return;
        EventActivity->ReservationFields()->Remove(EventActivityReservationFieldId);
        refresh();
    });
}

void WorkflowEvents::EditEventActivityReservationFieldItems(
    const Ref<Field>& EventActivityReservationField, const Ref<cEventActivity>& EventActivity)
{
    reported([&] {
        needed(EventActivityReservationField, "EventActivityReservationField");
        if (!mayChangeFields(EventActivity)) return;
        const auto dialog = newDialog("editreservationfielditems");
        dialog->set("Title", "Change Reservation Field List");
        dialog->set("Heading", "Change Reservation Field List");
        dialog->set("ReservationField", EventActivityReservationField);
        if (confirmed(dialog)) refresh();
    });
}

} // namespace qmevents
