// Reading participants and their memberships in invitation groups.
#include "core/reporting.h"
#include "store/child_tables.h"
#include "store/events_manage.h"
#include "store/given_key.h"
#include "store/record_loader.h"
#include "store/statement.h"

namespace qmevents {
namespace {

const Table<cEventParticipant>& donorColumns()
{
    using C = cEventParticipant;
    static const Table<C> table{"donor_donors",
                                {joinedColumn<C>("display", [](C& participant, const Value& name) {
                                    StoreAccess::loadName(participant, toText(name));
                                })}};
    return table;
}

const Table<cEventParticipantGroup>& groupColumns()
{
    using C = cEventParticipantGroup;
    static const Table<C> table{"events_list_eventinvitationgroups",
                                {column("Name", Kind::listName, &C::Name)}};
    return table;
}

void appendName(std::string& names, const std::string& name)
{
    if (!names.empty()) names += ", ";
    names += name;
}

// A participant comes back once for each invitation group, in rows that follow each other.
Ref<cEventParticipants> readWithGroups(const std::string& sql)
{
    auto participants = makeRef<cEventParticipants>();
    RecordReader rows(sql);
    if (rows.atEnd()) return participants;
    const RecordLoader<cEventParticipant> loader(rows, participantTable(), &donorColumns());
    const auto groupName = rows.column("InvitationGroupName");
    Ref<cEventParticipant> current;
    for (; !rows.atEnd(); rows.next()) {
        if (!current || current->Id() != loader.currentId()) {
            current = loader.load();
            participants->add(current);
        }
        const Value name = groupName.value();
        if (!name.isNull()) appendName(current->InvitationGroupsString, toText(name));
    }
    return participants;
}

} // namespace

Ref<cEventParticipants>
EventsManage::GetEventParticipants(const std::optional<std::int32_t>& EventId,
                                   const std::optional<std::int32_t>& DonorId)
{
    return reported([&] {
        if (isGiven(DonorId) && !isGiven(EventId)) {
            return readAll<cEventParticipants>(
                "SELECT eep.*, dd.display FROM events_event_participants eep "
                "LEFT JOIN donor_donors dd ON eep.FKDonorId = dd.id WHERE eep.FKDonorId=" +
                    literal(*DonorId, Kind::key),
                participantTable(), &donorColumns());
        }
        return readWithGroups(
            "SELECT eep.*, dd.display, eligg.Name As InvitationGroupName "
            "FROM (((events_event_participants eep "
            "INNER JOIN donor_donors dd ON eep.FKDonorId = dd.id) "
            "LEFT JOIN events_event_participants_groups eepg "
            "ON (eep.FKDonorId = eepg.FKDonorId) AND (eep.FKEventId = eepg.FKEventId)) "
            "LEFT JOIN events_list_eventinvitationgroups eligg "
            "ON eepg.FKInvitationGroupId = eligg.Id) WHERE eep.FKEventId=" +
            literal(EventId.value_or(0), Kind::key) + " ORDER BY eep.Id, eepg.FKInvitationGroupId");
    });
}

Ref<cEventParticipant> findParticipant(std::int32_t id)
{
    return readOne("SELECT * FROM events_event_participants eep WHERE eep.Id = " +
                       literal(id, Kind::number),
                   participantTable());
}

Ref<cEventParticipant>
EventsManage::GetEventParticipant(const std::optional<std::int32_t>& EventParticipantId,
                                  const std::optional<std::int32_t>& EventId,
                                  const std::optional<std::int32_t>& DonorId)
{
    return reported([&] {
        if (isGiven(EventParticipantId) || !isGiven(EventId)) {
            return findParticipant(EventParticipantId.value_or(0));
        }
        return readOne("SELECT * FROM events_event_participants eep WHERE eep.FKEventId = " +
                           literal(*EventId, Kind::key) +
                           " AND eep.FKDonorId = " + literal(DonorId.value_or(0), Kind::key),
                       participantTable());
    });
}

Ref<cEventParticipantGroups>
EventsManage::GetEventParticipantInvitationGroups(std::int32_t EventId,
                                                  const std::optional<std::int32_t>& DonorId)
{
    return reported([&] {
        Statement statement(
            "SELECT eepg.FKEventId, eepg.FKDonorId, eepg.FKInvitationGroupId, el.Name "
            "FROM (events_event_participants_groups eepg "
            "INNER JOIN events_event_participants eep "
            "ON (eepg.FKDonorId = eep.FKDonorId) AND (eepg.FKEventId = eep.FKEventId)) "
            "INNER JOIN events_list_eventinvitationgroups el "
            "ON eepg.FKInvitationGroupId = el.Id");
        statement.where("eepg.FKEventId = " + literal(EventId, Kind::key));
        if (DonorId) statement.where("eepg.FKDonorId = " + literal(*DonorId, Kind::key));
        statement.add("ORDER BY el.[Order]");
        return readAll<cEventParticipantGroups>(statement.text(), participantGroupTable(),
                                                &groupColumns(), false);
    });
}

} // namespace qmevents
