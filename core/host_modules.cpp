#include "core/host_modules.h"

#include <vector>

namespace qmevents {

Ref<Object> DonationModule::donationsWhere(const std::string& where,
                                           const std::string& orderBy) const
{
    const auto all = donations();
    const auto criteria = toObject(qmevents::call(all, "GetNewDonationCriteria"));
    qmevents::put(criteria, "CustomWhere", where);
    qmevents::put(criteria, "CustomOrderBy", orderBy);
    return toObject(qmevents::call(all, "GetDonationsBySearch", criteria));
}

void ActionsModule::addNote(std::int32_t donorId, const std::string& group,
                            const std::string& reference, const std::string& markup) const
{
    const auto note = toObject(call("NewNote"));
    qmevents::put(note, "DonorId", donorId);
    qmevents::put(note, "Group", group);
    qmevents::put(note, "Reference", reference);
    qmevents::put(note, "Text", markup);
    qmevents::call(note, "Save");
}

void ActionsModule::deleteAssignmentsOf(const std::string& entityType, std::int32_t entityId) const
{
    const auto criteria = toObject(call("NewActionCriteria"));
    qmevents::put(criteria, "EntityType", entityType);
    qmevents::put(criteria, "EntityId", entityId);
    const auto assignments = toObject(call("GetAssignments", criteria));
    if (!assignments) return;
    // Gathered first: deleting may change the collection that is being walked.
    std::vector<std::int32_t> ids;
    Value item;
    for (const auto walk = assignments->enumerate(); walk->next(item);) {
        ids.push_back(toInt32(qmevents::get(toObject(item), "Id")));
    }
    for (const std::int32_t id : ids) call("DeleteAssignment", id);
}

} // namespace qmevents
