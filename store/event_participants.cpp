// Participants: columns, rules, messages, and how they are saved and deleted.
#include <map>
#include <set>

#include "store/child_story.h"
#include "store/child_tables.h"
#include "store/event_table.h"
#include "store/events_manage.h"
#include "store/history_note.h"
#include "store/list_manage.h"

namespace qmevents {
namespace {
using C = cEventParticipant;
}

const Table<cEventParticipant>& participantTable()
{
    static const auto table =
        audited<C>("events_event_participants", {
                                                    column("FKEventId", Kind::key, &C::FKEventId),
                                                    column("FKDonorId", Kind::key, &C::FKdonorId),
                                                    column("Status", Kind::number, &C::Status),
                                                    column("Notes", Kind::text, &C::Notes),
                                                    column("Attended", Kind::yesNo, &C::Attended),
                                                });
    return table;
}

const Table<cEventParticipantGroup>& participantGroupTable()
{
    using G = cEventParticipantGroup;
    static const Table<G> table{
        "events_event_participants_groups",
        {
            column("FKEventId", Kind::key, &G::FKEventId),
            column("FKDonorId", Kind::key, &G::FKdonorId),
            column("FKInvitationGroupId", Kind::key, &G::FKInvitationGroupId),
        }};
    return table;
}

namespace {

constexpr Rule<C> rules[] = {
    {[](const C& one) {
         return one.FKdonorId < 1 || !host().modules().donor().donor(one.FKdonorId);
     },
     "A valid donor id is required."},
    {lacksEvent, eventRequired},
};

std::vector<std::string> cascade(const std::string& id)
{
    const std::string groups =
        "FROM events_event_participants_groups LEFT JOIN events_event_participants "
        "ON events_event_participants_groups.FKDonorId = events_event_participants.FKDonorId "
        "AND events_event_participants_groups.FKEventId = events_event_participants.FKEventId "
        "WHERE events_event_participants.Id = " +
        id;
    const DialectText deleteGroups{.sqlServer = "DELETE events_event_participants_groups " + groups,
                                   .jet = "DELETE DISTINCTROW events_event_participants_groups.* " +
                                          groups};
    return {deleteGroups.forDocument(), "DELETE FROM events_event_participants WHERE Id = " + id};
}

// The messages carry an older name of the operation on purpose.
constexpr ChildNames names{.updateMethod = "EditEventParticipant",
                           .thing = "event participant",
                           .idName = "participantid",
                           .cascade = cascade};

// One saving of participants of an event, however many. What they have in common is read once.
class ParticipantSaving {
public:
    ChildStory<C> story()
    {
        return {names,
                participantTable,
                [](const C& participant) { return rulesHold(rules, participant); },
                [](const C& participant) {
                    return isGivenTo(participant.FKdonorId >= 1, names.updateMethod, "donor id");
                },
                [this](C& participant, bool wasNew) { return replaceGroups(participant, wasNew); },
                [this](const C& participant) { tell(participant); }};
    }

private:
    bool groupExists(std::int32_t groupId)
    {
        const auto [known, isNew] = groups_.emplace(groupId, false);
        if (isNew) known->second = static_cast<bool>(findInvitationGroup(groupId));
        return known->second;
    }

    // The groups that still exist, each once: event, donor and group are the key of their table.
    std::vector<Ref<cEventParticipantGroup>> toWrite(const cEventParticipantGroups& memberships)
    {
        std::vector<Ref<cEventParticipantGroup>> kept;
        std::set<std::int32_t> seen;
        memberships.each([&](const Ref<cEventParticipantGroup>& membership) {
            const std::int32_t group = membership->FKInvitationGroupId;
            if (seen.insert(group).second && groupExists(group)) kept.push_back(membership);
        });
        return kept;
    }

    bool replaceGroups(C& participant, bool wasNew)
    {
        std::vector<Ref<cEventParticipantGroup>> kept;
        // Nothing can be stored yet for a new participant whose groups nobody has touched.
        if (!wasNew || participant.InvitationGroupsLoaded()) {
            const auto memberships = participant.InvitationGroups();
            if (!memberships) return false; // told, and what is stored stays
            kept = toWrite(*memberships);
        }
        const Document document = host().document();
        document.execute("DELETE FROM events_event_participants_groups WHERE FKEventId = " +
                         std::to_string(participant.FKEventId) +
                         " AND FKDonorId = " + std::to_string(participant.FKdonorId));
        for (const auto& membership : kept) {
            StoreAccess::load(membership->FKEventId, participant.FKEventId);
            StoreAccess::load(membership->FKdonorId, participant.FKdonorId.get());
            document.execute(participantGroupTable().insertText(*membership));
            StoreAccess::markStored(*membership);
        }
        return true;
    }

    void tell(const C& participant)
    {
        if (!event_) event_ = findEvent(participant.FKEventId);
        if (event_) {
            addHistoryNote(participantAdded, participant.FKdonorId, *event_, event_->StartDateTime);
        }
    }

    Ref<cEvent> event_;
    std::map<std::int32_t, bool> groups_;
};

} // namespace

Ref<cEventParticipants> EventsManage::GetNewEventParticipants()
{
    return makeRef<cEventParticipants>();
}

Ref<cEventParticipant> EventsManage::GetNewEventParticipant(std::int32_t EventId,
                                                            std::int32_t DonorId)
{
    auto participant = newChild<C>(EventId);
    StoreAccess::load(participant->FKdonorId, DonorId);
    return participant;
}

bool EventsManage::UpdateEventParticipant(const Ref<cEventParticipant>& EventParticipant)
{
    ParticipantSaving saving;
    return updateChild(saving.story(), EventParticipant, true);
}

bool EventsManage::ValidateEventParticipant(const Ref<cEventParticipant>& EventParticipant)
{
    ParticipantSaving saving;
    return validateChild(saving.story(), EventParticipant);
}

bool EventsManage::AddEventParticipants(std::int32_t EventId,
                                        const Ref<cEventParticipants>& EventParticipants)
{
    constexpr const char* method = "AddEventParticipants";
    return reported([&] {
        if (!mayUpdateEvents() ||
            !isGivenTo(bool(EventParticipants), method, "event participants class") ||
            !isGivenTo(EventId >= 1, method, "event id")) {
            return false;
        }
        const RecordLock lock = lockEvent(EventId);
        if (!eventStillExists(EventId)) return false;
        ParticipantSaving saving;
        const auto story = saving.story();
        bool allSaved = true;
        bool first = true;
        // Those already stored are passed over, so that a call repeated after a failure goes on
        // where it ended.
        EventParticipants->each([&](const Ref<C>& participant) {
            if (!allSaved || !(participant->IsNew() || participant->IsDirty())) return;
            if (!std::exchange(first, false)) host().yield();
            participant->FKEventId = EventId;
            allSaved = canBeSaved(story, participant) && isValidChild(story, participant) &&
                       saveChild(story, *participant);
        });
        return allSaved;
    });
}

bool EventsManage::DeleteEventParticipant(std::int32_t EventId, std::int32_t EventParticipantId,
                                          bool AddDeleteInteraction, bool LockEvent)
{
    Ref<C> removed;
    Deletion deletion{.lockEvent = LockEvent};
    if (AddDeleteInteraction) {
        deletion.before = [&] { removed = findParticipant(EventParticipantId); };
        deletion.after = [&] {
            const auto event = removed ? findEvent(EventId) : Ref<cEvent>();
            if (event) {
                addHistoryNote(participantRemoved, removed->FKdonorId, *event,
                               event->StartDateTime);
            }
        };
    }
    return deleteChild(names, EventId, EventParticipantId, deletion);
}

} // namespace qmevents
