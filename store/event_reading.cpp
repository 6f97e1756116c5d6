// Reading and searching events.
#include "core/reporting.h"
#include "store/event_table.h"
#include "store/events_manage.h"
#include "store/record_loader.h"
#include "store/statement.h"

namespace qmevents {
namespace {

// An empty criterion is no filter; 0 is one.
bool isGiven(const Value& criterion)
{
    return !criterion.isEmpty() && !criterion.isNull() && !criterion.isMissing() &&
           !(criterion.isText() && criterion.text().empty());
}

std::string textOf(const Value& criterion)
{
    return isGiven(criterion) ? toText(criterion) : std::string();
}

struct KeyCriterion {
    const char* column;
    Kind kind;
    Value cEventsCriteria::*field;
};
// In the order in which the conditions are written.
constexpr KeyCriterion keyCriteria[] = {
    {"Id", Kind::key, &cEventsCriteria::EventId},
    {"FKLocationId", Kind::number, &cEventsCriteria::FKLocationId},
    {"FKCategoryId", Kind::number, &cEventsCriteria::FKCategoryId},
    {"FKStatusId", Kind::number, &cEventsCriteria::FKStatusId},
    {"FKCoordinatorId", Kind::number, &cEventsCriteria::FKCoordinatorId},
    {"FKFundId", Kind::key, &cEventsCriteria::FKFundId},
    {"FKCampaignId", Kind::key, &cEventsCriteria::FKCampaignId},
    {"FKAppealId", Kind::key, &cEventsCriteria::FKAppealId},
};

std::string searchText(const cEventsCriteria& criteria)
{
    Statement statement("SELECT");
    if (isGiven(criteria.MaxRows)) {
        const std::int32_t rows = toInt32(criteria.MaxRows);
        if (rows > 0) statement.add("TOP " + std::to_string(rows));
    }
    statement.add("* FROM events_event_info");
    for (const auto& [column, kind, field] : keyCriteria) {
        const Value& key = criteria.*field;
        if (isGiven(key)) statement.where(std::string(column) + " = " + literal(key, kind));
    }
    if (const std::string words = textOf(criteria.SearchString); !words.empty()) {
        // The first word, and somewhere behind it the next.
        const std::string pattern = "%" + text::replaceAll(words, " ", "%") + "%";
        statement.where("Name LIKE " + literal(pattern, Kind::text));
    }
    if (const std::string own = textOf(criteria.CustomWhere); !own.empty()) statement.where(own);
    if (const std::string order = textOf(criteria.CustomOrderBy); !order.empty()) {
        statement.add("ORDER BY " + order);
    }
    return statement.text();
}

Ref<cEvents> readEvents(const cEventsCriteria& criteria)
{
    return readAll<cEvents>(searchText(criteria), eventTable());
}

} // namespace

Ref<cEvent> findEvent(std::int32_t id)
{
    cEventsCriteria criteria;
    criteria.EventId = id;
    return readOne(searchText(criteria), eventTable());
}

Ref<cEventsCriteria> EventsManage::GetNewEventsCriteria() { return makeRef<cEventsCriteria>(); }

Ref<cEvent> EventsManage::GetNewEvent()
{
    auto event = makeRef<cEvent>();
    StoreAccess::markNew(*event);
    return event;
}

Ref<cEvent> EventsManage::GetEvent(std::int32_t EventId)
{
    return reported([&]() -> Ref<cEvent> {
        if (EventId < 1) {
            host().shell().errorUnexpected(
                "Could not retrieve event because event id is not valid (eventid=" +
                std::to_string(EventId) + ")");
            return {};
        }
        return findEvent(EventId);
    });
}

Ref<cEvents> EventsManage::GetEvents()
{
    return reported([&] { return readEvents(cEventsCriteria()); });
}

Ref<cEvents> EventsManage::GetEventsBySearch(const Ref<cEventsCriteria>& SearchClass)
{
    return reported([&]() -> Ref<cEvents> {
        if (!SearchClass) {
            host().shell().errorUnexpected(
                "The GetEventsBySearch method requires a valid search class");
            return {};
        }
        return readEvents(*SearchClass);
    });
}

std::int32_t EventsManage::GetEventReservationActivitiesCount(std::int32_t EventId)
{
    return reported([&] {
        const Value count =
            firstValue("SELECT COUNT(*) As ActivitiesCount FROM "
                       "(SELECT eera.FKActivityId "
                       "FROM events_event_reservations_activities eera "
                       "INNER JOIN events_event_reservations eer ON eera.FKReservationId = eer.id "
                       "WHERE eer.FKEventId=" +
                           literal(EventId, Kind::key) + " GROUP BY eera.FKActivityId) sq ",
                       "ActivitiesCount");
        return count.isNull() ? 0 : toInt32(count);
    });
}

} // namespace qmevents
