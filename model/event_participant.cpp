#include "model/event_participant.h"

#include "automation/error.h"
#include "model/event_source.h"

namespace qmevents {

const Members& cEventParticipantGroup::members() const
{
    using C = cEventParticipantGroup;
    static const Members table =
        describe<C>("A participant's membership in one invitation group.")
            .stored("ObjectType", &C::ObjectType, leavesClean, "Type tag of the record.")
            .readOnly("Id", &C::Id, "Key in its collection.")
            .storeOnly()
            .stored("FKEventId", &C::FKEventId, marksDirty, "Key of the event.")
            .stored("FKdonorId", &C::FKdonorId, marksDirty, "Donor who participates.")
            .stored("FKInvitationGroupId", &C::FKInvitationGroupId, marksDirty,
                    "Key of the invitation group.")
            .stored("Name", &C::Name, marksDirty, "The group's name.");
    return table;
}

const Members& cEventParticipantGroups::members() const
{
    using C = cEventParticipantGroups;
    static const Members table = describe<C>("Memberships in invitation groups.")
                                     .with(collectionMembers<C>)
                                     .with(joinsNames<C>)
                                     .method("Contains", &C::Contains, {arg("GroupId")},
                                             "Whether any membership is in the group.");
    return table;
}

const Members& cEventParticipant::members() const
{
    using C = cEventParticipant;
    static const Members table =
        describe<C>("A donor linked to an event.")
            .with(entityMarks<C>)
            .property("Id", &C::Id, &C::setId, "Key of the participant.", marksDirty)
            .stored("FKEventId", &C::FKEventId, leavesClean, "Key of the event.")
            .stored("FKdonorId", &C::FKdonorId, marksDirty, "Key of the donor.")
            .stored("Status", &C::Status, marksDirty,
                    "0 not invited, 1 invited, 2 accepted, 3 declined.")
            .readOnly("StatusText", &C::StatusText, "The status in words.")
            .stored("Notes", &C::Notes, leavesClean, "Free notes.")
            .stored("Attended", &C::Attended, marksDirty, "Whether the donor came.")
            .readOnly("InvitationGroupsLoaded", &C::InvitationGroupsLoaded,
                      "Whether InvitationGroups has been fetched.")
            .readOnly("InvitationGroups", &C::InvitationGroups,
                      "The memberships in invitation groups, fetched on the first read.")
            .stored("InvitationGroupsString", &C::InvitationGroupsString, leavesClean,
                    "The names of the groups as one text, filled for lists.")
            .readOnly("ParticipantName", &C::ParticipantName, "The donor's display name.")
            .storeOnly()
            .stored("IsSelected", &C::IsSelected, marksDirty, "Selection mark of the lists.")
            .with(auditFields<C>)
            .method("AddInvitationGroup", &C::AddInvitationGroup,
                    {arg("InvitationGroupId"), optional("Name", "")},
                    "Adds a membership in an invitation group.");
    return table;
}

const Members& cEventParticipants::members() const
{
    using C = cEventParticipants;
    static const Members table =
        describe<C>("Participants of events.")
            .with(collectionMembers<C>)
            .with(joinsNames<C>)
            .readOnly("TotalAttended", &C::TotalAttended, "Participants who came.")
            .readOnly("TotalInvited", &C::TotalInvited,
                      "Participants who were invited, whatever they answered.")
            .readOnly("TotalDeclined", &C::TotalDeclined, "Participants who declined.")
            .readOnly("TotalAccepted", &C::TotalAccepted, "Participants who accepted.");
    return table;
}

bool cEventParticipantGroups::Contains(std::int32_t groupId) const
{
    return countIf([groupId](const cEventParticipantGroup& membership) {
               return membership.FKInvitationGroupId == groupId;
           }) > 0;
}

void cEventParticipantGroups::add(const Ref<cEventParticipantGroup>& membership)
{
    Value key = membership->Id();
    Add(membership, &key);
    membership->assignId(toInt32(key));
}

void cEventParticipant::setId(std::int32_t id)
{
    assignId(id);
    markDirty();
}

std::string statusText(std::int16_t status)
{
    switch (status) {
    case participantStatus::invited:
        return "Invited";
    case participantStatus::accepted:
        return "Accepted";
    case participantStatus::declined:
        return "Declined";
    default:
        return "Not Invited";
    }
}

std::string cEventParticipant::StatusText() const { return statusText(Status); }

std::string cEventParticipant::ParticipantName() const { return name_.of(FKdonorId); }

Ref<cEventParticipantGroups> cEventParticipant::InvitationGroups()
{
    if (!groups_) {
        groups_ =
            EventSource::ofRoot().GetEventParticipantInvitationGroups(FKEventId, FKdonorId.get());
    }
    return groups_;
}

void cEventParticipant::AddInvitationGroup(std::int32_t invitationGroupId, const std::string& name)
{
    auto membership = makeRef<cEventParticipantGroup>();
    membership->FKEventId = FKEventId;
    membership->FKdonorId = FKdonorId.get();
    membership->FKInvitationGroupId = invitationGroupId;
    membership->Name = name;
    const auto groups = InvitationGroups();
    if (!groups) {
        throw Error::with(ErrorNumber::objectNotSet, "the participant's groups were not read");
    }
    groups->add(membership);
}

std::int32_t cEventParticipants::TotalAttended() const
{
    return countIf([](const cEventParticipant& one) { return one.Attended.get(); });
}

std::int32_t cEventParticipants::TotalInvited() const
{
    return countIf([](const cEventParticipant& one) {
        return one.Status >= participantStatus::invited &&
               one.Status <= participantStatus::declined;
    });
}

std::int32_t cEventParticipants::TotalAccepted() const
{
    return countIf([](const auto& one) { return one.Status == participantStatus::accepted; });
}

std::int32_t cEventParticipants::TotalDeclined() const
{
    return countIf([](const auto& one) { return one.Status == participantStatus::declined; });
}

} // namespace qmevents
