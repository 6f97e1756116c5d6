#include "core/reference_repair.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/progress_dialog.h"
#include "core/record_reader.h"
#include "core/reporting.h"

namespace qmevents {
namespace {

/// Records of the host that ours refer to. Donors stay in their table, marked as deleted.
struct Target {
    const char* table = "";
    bool marksDeleted = false;
};
constexpr Target donors{"donor_donors", true};
constexpr Target funds{"donor_funds"};
constexpr Target campaigns{"donor_campaigns"};
constexpr Target appeals{"donor_list_gifts_sources"};
constexpr Target assignees{"donor_list_assignedto"};

enum class Remedy {
    clearKey,          ///< 0 in place of the key.
    deleteRow,         ///< The row is nothing without what it refers to.
    deleteReservation, ///< The row, its lines, and the links of gifts to it.
};

/// A column of ours that holds keys of the host's records.
struct Reference {
    const char* what = ""; ///< As the user reads it while it is repaired.
    const char* table = "";
    const char* column = "";
    Target target;
    Remedy remedy = Remedy::clearKey;
};
constexpr Reference references[] = {
    {"Coordinators of events", "events_event_info", "FKCoordinatorId", donors, Remedy::clearKey},
    {"List of coordinators", "events_list_eventcoordinators", "FKDonorId", donors,
     Remedy::deleteRow},
    {"Invitation groups of participants", "events_event_participants_groups", "FKDonorId", donors,
     Remedy::deleteRow},
    {"Participants", "events_event_participants", "FKDonorId", donors, Remedy::deleteRow},
    {"Reservations", "events_event_reservations", "FKDonorId", donors, Remedy::deleteReservation},
    {"Funds of events", "events_event_info", "FKFundId", funds, Remedy::clearKey},
    {"Campaigns of events", "events_event_info", "FKCampaignId", campaigns, Remedy::clearKey},
    {"Appeals of events", "events_event_info", "FKAppealId", appeals, Remedy::clearKey},
    {"Funds of activities", "events_event_activities", "FKFundId", funds, Remedy::clearKey},
    {"Campaigns of activities", "events_event_activities", "FKCampaignId", campaigns,
     Remedy::clearKey},
    {"Appeals of activities", "events_event_activities", "FKAppealId", appeals, Remedy::clearKey},
    {"Assignees of tasks", "events_event_tasks", "FKAssignedToId", assignees, Remedy::clearKey},
};

// That a row refers to a record which is not there any more. 0 stands for none. A mark that is
// missing does not mean deleted: what might be in use is left alone.
std::string isBroken(const Reference& reference)
{
    const std::string column = std::string(reference.table) + "." + reference.column;
    return column + " > 0 AND NOT EXISTS (SELECT k.id FROM " + reference.target.table +
           " k WHERE k.id = " + column +
           (reference.target.marksDeleted ? " AND (k.deleted = 0 OR k.deleted IS NULL))" : ")");
}

std::vector<std::string> remedyOf(const Reference& reference)
{
    const std::string table = reference.table;
    const std::string where = " WHERE " + isBroken(reference);
    switch (reference.remedy) {
    case Remedy::clearKey:
        return {"UPDATE " + table + " SET " + reference.column + " = 0" + where};
    case Remedy::deleteRow:
        return {"DELETE FROM " + table + where};
    case Remedy::deleteReservation:
        break;
    }
    const std::string ofThese =
        " WHERE FKReservationId IN (SELECT " + table + ".Id FROM " + table + where + ")";
    return {"UPDATE donor_gifts SET FKReservationId = 0" + ofThese,
            "DELETE FROM events_event_reservations_activities" + ofThese,
            "DELETE FROM " + table + where};
}

struct Broken {
    const Reference* reference;
    std::int64_t rows;
};

// How many rows of each kind are broken; one statement, which reads indexes only.
std::vector<Broken> findBroken()
{
    std::string sql;
    for (std::size_t i = 0; i < std::size(references); ++i) {
        sql += (i == 0 ? "SELECT " : " UNION ALL SELECT ") + std::to_string(i) +
               " AS Place, COUNT(*) AS Broken FROM " + references[i].table + " WHERE " +
               isBroken(references[i]);
    }
    std::vector<Broken> broken;
    RecordReader rows(sql);
    if (rows.atEnd()) return broken;
    const auto place = rows.column("Place");
    const auto count = rows.column("Broken");
    for (; !rows.atEnd(); rows.next()) {
        const std::int32_t found = toInt32(count.value());
        if (found > 0) broken.push_back({&references[toInt32(place.value())], found});
    }
    return broken;
}

void repair(const std::vector<Broken>& broken)
{
    std::int64_t total = 0;
    for (const auto& one : broken) total += one.rows;
    const ProgressDialog progress("Repair Events", "Repairing Events",
                                  "Some events refer to donors, funds, campaigns, appeals or "
                                  "assignees that have been deleted.");
    const Document document = host().document();
    Transaction transaction(document);
    std::int64_t done = 0;
    for (const auto& one : broken) {
        for (const auto& statement : remedyOf(*one.reference)) {
            progress.show(one.reference->what, done, total);
            if (progress.isCancelled()) return;
            document.execute(statement);
        }
        done += one.rows;
    }
    progress.show("Finishing", done, total);
    if (progress.isCancelled()) return;
    transaction.commit();
    document.forceUpdate();
}

} // namespace

void repairReferences()
{
    reported([] {
        const auto broken = findBroken();
        if (!broken.empty()) repair(broken);
    });
}

} // namespace qmevents
