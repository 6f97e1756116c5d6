#pragma once

#include "model/donor_name.h"
#include "model/entity.h"
#include "model/typed_collection.h"

namespace qmevents {

/// The invitation statuses of a participant. Any other number counts as not invited.
namespace participantStatus {
constexpr std::int16_t invited = 1;
constexpr std::int16_t accepted = 2;
constexpr std::int16_t declined = 3;
} // namespace participantStatus

/// A participant's status in words.
std::string statusText(std::int16_t status);

/// A participant's membership in one invitation group. The store alone sees its flags.
class cEventParticipantGroup : public Entity {
public:
    static constexpr std::string_view ClassName = "cEventParticipantGroup";
    const Members& members() const override;

    std::string ObjectType;
    Tracked<std::int32_t> FKEventId{*this};
    Tracked<std::int32_t> FKdonorId{*this};
    Tracked<std::int32_t> FKInvitationGroupId{*this};
    Tracked<std::string> Name{*this}; ///< The group's, for display.

    std::string displayName() const { return Name; }

private:
    friend class cEventParticipantGroups;
};

/// Memberships in invitation groups.
class cEventParticipantGroups : public TypedCollection<cEventParticipantGroup> {
public:
    static constexpr std::string_view ClassName = "cEventParticipantGroups";
    const Members& members() const override;

    bool Contains(std::int32_t groupId) const; ///< Whether any membership is in this group.
    /// Adds a membership. Their table has no key, so it takes the collection's temporary one.
    void add(const Ref<cEventParticipantGroup>& membership);
};

/// A donor linked to an event.
class cEventParticipant : public Entity, public AuditFields {
public:
    static constexpr std::string_view ClassName = "cEventParticipant";
    const Members& members() const override;

    /// Anyone may assign the key, which marks the participant dirty.
    void setId(std::int32_t id);

    std::int32_t FKEventId = 0;
    Tracked<std::int32_t> FKdonorId{*this};
    Tracked<std::int16_t> Status{*this};
    std::string Notes;
    Tracked<bool> Attended{*this};
    std::string InvitationGroupsString; ///< The groups' names, filled by the store for lists.
    Tracked<bool> IsSelected{*this};    ///< Selection mark of the lists.

    std::string StatusText() const;
    /// The donor's display name; asked of the host when the store has not filled it in.
    std::string ParticipantName() const;

    /// The memberships in invitation groups, fetched on the first read. Nothing after a failure,
    /// which has been reported.
    Ref<cEventParticipantGroups> InvitationGroups();
    bool InvitationGroupsLoaded() const { return static_cast<bool>(groups_); }
    void AddInvitationGroup(std::int32_t invitationGroupId, const std::string& name = {});

    std::string displayName() const { return ParticipantName(); }

private:
    friend class StoreAccess;
    DonorName name_;
    Ref<cEventParticipantGroups> groups_;
};

/// Participants under their keys.
class cEventParticipants : public TypedCollection<cEventParticipant> {
public:
    static constexpr std::string_view ClassName = "cEventParticipants";
    const Members& members() const override;

    std::int32_t TotalAttended() const;
    std::int32_t TotalInvited() const; ///< Those who answered were invited too.
    std::int32_t TotalAccepted() const;
    std::int32_t TotalDeclined() const;
};

} // namespace qmevents
