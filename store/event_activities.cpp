// Activities: columns, rules, messages and everything that is done with them.
#include "automation/text.h"
#include "model/reservation_fields.h"
#include "store/child_story.h"
#include "store/child_tables.h"
#include "store/events_manage.h"
#include "store/field_column.h"
#include "store/record_loader.h"
#include "store/reservation_field_xml.h"

namespace qmevents {
namespace {

using C = cEventActivity;

const Table<C>& activityTable()
{
    static const auto table =
        audited<C>("events_event_activities",
                   {
                       column("FKEventId", Kind::key, &C::FKEventId),
                       // Bracketed in updates only.
                       column<C>("Name", Kind::text, &C::Name, Written::onInsert),
                       column<C>("[Name]", Kind::text, &C::Name, Written::onUpdate),
                       column("Description", Kind::text, &C::Description),
                       column("ListPrice", Kind::number, &C::ListPrice),
                       column("Cost", Kind::number, &C::Cost),
                       column("QuantityAvailable", Kind::number, &C::QuantityAvailable),
                       column("Sponsorship", Kind::yesNo, &C::Sponsorship),
                       fieldColumn<C>(readReservationFields, writeReservationFields),
                       column("QuantityType", Kind::number, &C::QuantityType),
                       column("FKFundId", Kind::key, &C::FKFundId),
                       column("FKCampaignId", Kind::key, &C::FKCampaignId),
                       column("FKAppealId", Kind::key, &C::FKAppealId),
                   });
    return table;
}

constexpr Rule<C> ownRules[] = {
    {lacksEvent, eventRequired},
    {[](const C& activity) { return text::trim(activity.Name.get()).empty(); },
     "A valid activity name is required."},
};

// Asked anew: what the activity has read of its reservations may be old. Activities that are only
// counted may have any number.
bool coversWhatIsReserved(const C& activity)
{
    if (activity.IsNew() || activity.QuantityType != activityQuantity::limited) return true;
    const std::int32_t reserved =
        findLinesOfActivity(activity.Id())->units([](const auto&) { return true; });
    if (activity.QuantityAvailable >= reserved) return true;
    refuse("The # available cannot be changed to less than the quantity already reserved (" +
           std::to_string(reserved) + ").");
    return false;
}

const ChildStory<C>& story()
{
    static const ChildStory<C> story{
        {.updateMethod = "UpdateEventActivity",
         .thing = "event activity",
         .idName = "Activityid",
         .cascade =
             [](const std::string& id) {
                 return std::vector{
                     "DELETE FROM events_event_reservations_activities WHERE FKActivityId = " + id,
                     "DELETE FROM events_event_activities WHERE Id = " + id};
             }},
        activityTable,
        [](const C& activity) {
            return rulesHold(ownRules, activity) && coversWhatIsReserved(activity) &&
                   codesExist(activity.FKFundId, activity.FKCampaignId, activity.FKAppealId);
        }};
    return story;
}

} // namespace

Ref<cEventActivities> EventsManage::GetEventActivities(std::int32_t EventId)
{
    return reported([&] {
        return readAll<cEventActivities>("SELECT * FROM events_event_activities WHERE FKEventId=" +
                                             literal(EventId, Kind::key) + " ORDER BY Name ",
                                         activityTable());
    });
}

Ref<cEventActivity> findActivity(std::int32_t id)
{
    return readOne("SELECT * FROM events_event_activities eea WHERE eea.Id = " +
                       literal(id, Kind::number),
                   activityTable());
}

Ref<cEventActivity> EventsManage::findActivity(std::int32_t activityId)
{
    return qmevents::findActivity(activityId);
}

Ref<cEventActivity> EventsManage::GetEventActivity(std::int32_t EventActivityId)
{
    return reported([&] { return findActivity(EventActivityId); });
}

Ref<cEventActivity> EventsManage::GetNewEventActivity(std::int32_t EventId)
{
    return newChild<C>(EventId);
}

Ref<cEventActivityReservationField> EventsManage::GetNewEventActivityReservationField()
{
    return makeRef<cEventActivityReservationField>();
}

bool EventsManage::UpdateEventActivity(const Ref<cEventActivity>& EventActivity, bool Validate)
{
    return updateChild(story(), EventActivity, Validate);
}

bool EventsManage::ValidateEventActivity(const Ref<cEventActivity>& EventActivity)
{
    return validateChild(story(), EventActivity);
}

bool EventsManage::DeleteEventActivity(std::int32_t EventId, std::int32_t EventActivityId)
{
    return deleteChild(story(), EventId, EventActivityId);
}

bool EventsManage::EventActivityInUse(std::int32_t, std::int32_t EventActivityId)
{
    const auto lines = GetEventActivityReservations(EventActivityId);
    // Unknown counts as in use: what it is asked for cannot be undone.
    return !lines || lines->Count() > 0;
}

} // namespace qmevents
