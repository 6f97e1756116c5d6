#include <gtest/gtest.h>

#include "core/root_objects.h"
#include "model/details_page.h"
#include "model/event_activity.h"
#include "model/event_expense.h"
#include "model/event_participant.h"
#include "model/event_reservation.h"
#include "model/event_task.h"
#include "model/events_criteria.h"
#include "model/lookup_items.h"
#include "model/reservation_fields.h"

namespace qmevents {
namespace {

Value sampleOf(const MemberType& type)
{
    switch (type.tag) {
    case MemberType::Tag::boolean:
        return true;
    case MemberType::Tag::int16:
        return std::int16_t{12};
    case MemberType::Tag::int32:
        return 1234;
    case MemberType::Tag::real:
        return 1.5;
    case MemberType::Tag::currency:
        return Currency::fromDouble(12.34);
    case MemberType::Tag::date:
        return Date::of(2026, 3, 7, 18, 30);
    case MemberType::Tag::text:
        return "text";
    default:
        return {};
    }
}

// Each property that can be written reads back what was set, and marks its record dirty or not, as
// its line says.
template <typename T>
void walk()
{
    const Members& table = T().members();
    int written = 0;
    for (const auto& member : table.all()) {
        SCOPED_TRACE(table.className() + "." + member.name);
        EXPECT_EQ(table.id(text::upper(member.name)), member.id) << "two members of one name";
        EXPECT_FALSE(member.documentation.empty());
        const Value sample = sampleOf(member.type);
        if (member.isMethod || !member.put || sample.isEmpty() || member.name == "State") continue;
        const auto object = makeRef<T>();
        put(object, member.name, sample);
        EXPECT_EQ(toText(get(object, member.name)), toText(sample));
        if constexpr (std::is_base_of_v<Entity, T>) {
            EXPECT_EQ(object->IsDirty(), member.marking == Marking::marksDirty);
        }
        ++written;
    }
    EXPECT_GT(written, 0) << table.className();
}

TEST(MemberTables, ReadBackWhatWasSetAndMarkDirtyAsTheySay)
{
    walk<cEvent>();
    walk<cEventCategory>();
    walk<cEventStatus>();
    walk<cEventLocation>();
    walk<cEventCoordinator>();
    walk<cEventInvitationGroup>();
    walk<cAttributeValue>();
    walk<cEventActivity>();
    walk<cEventActivityReservationField>();
    walk<cEventActivityReservationItem>();
    walk<cEventReservationActivityField>();
    walk<cEventParticipant>();
    walk<cEventParticipantGroup>();
    walk<cEventReservation>();
    walk<cEventReservationActivity>();
    walk<cEventExpense>();
    walk<cEventTask>();
    walk<DetailsPageTab>();
    walk<DetailsPageSection>();
    walk<DetailsPageSectionRow>();
}

TEST(MemberTables, NameEveryPublicClassOnce)
{
    std::vector<std::string> names;
    for (const auto* table : publicClasses()) names.push_back(table->className());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
    EXPECT_GT(names.size(), 60U);
}

} // namespace
} // namespace qmevents
