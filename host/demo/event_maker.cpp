#include "host/demo/event_maker.h"

#include <algorithm>

#include "automation/clock.h"
#include "automation/error.h"

namespace refhost::demo {
namespace {

using qmevents::call;
using qmevents::Clock;
using qmevents::Currency;
using qmevents::Date;
using qmevents::Error;
using qmevents::get;
using qmevents::getObject;
using qmevents::Object;
using qmevents::put;
using qmevents::Ref;
using qmevents::toBool;
using qmevents::toInt32;
using qmevents::toObject;
using qmevents::toText;

constexpr int yearsOfEvents = 4; // of which the last lies ahead
constexpr int daysOfPlanning = 160;

// The first `weekday` from that day on.
Date dayInYear(const EventSeries& series, int year)
{
    const Date about = Date::of(year, series.occasion.month, series.occasion.day);
    return about.plusDays((series.occasion.weekday - about.weekday() + 7) % 7);
}

Date atHour(Date day, double hour) { return day.plusSeconds(static_cast<long long>(hour * 3600)); }

void need(bool saved, const std::string& what)
{
    if (!saved) throw Error(0, "Demo", "the add-in did not save " + what);
}

} // namespace

EventMaker::EventMaker(const Ref<Object>& app, const Codes& codes, const Urn& urn, Random random,
                       Date today, int crowd)
    : codes_(codes), urn_(urn), random_(random), today_(today), crowd_(crowd)
{
    const Ref<Object> events = getObject(getObject(app, "Modules"), "Events");
    const Ref<Object> root = toObject(call(events, "Objects", "Events"));
    store_ = getObject(root, "EventsManage");
    lists_ = getObject(root, "ListManage");
}

std::vector<MadeEvent> EventMaker::make()
{
    fillLists();
    struct Planned {
        const EventSeries* series;
        Date day;
    };
    std::vector<Planned> planned;
    const Date last = today_.plusMonths(12);
    const Date first = last.plusMonths(-12 * yearsOfEvents);
    for (const EventSeries& series : eventSeries()) {
        for (int year = first.civil().year; year <= last.civil().year; ++year) {
            const Date day = dayInYear(series, year);
            if (first < day && day <= last) planned.push_back({&series, day});
        }
    }
    std::sort(planned.begin(), planned.end(),
              [](const Planned& a, const Planned& b) { return a.day < b.day; });
    std::vector<MadeEvent> made;
    made.reserve(planned.size());
    for (const Planned& plan : planned) made.push_back(save(*plan.series, plan.day));
    return made;
}

EventMaker::Keys EventMaker::keysOf(const char* plural) const
{
    Keys keys;
    const Ref<Object> items = toObject(call(lists_, plural, true));
    const std::int32_t count = toInt32(get(items, "Count"));
    for (std::int32_t index = 1; index <= count; ++index) {
        const Ref<Object> item = getObject(items, "Item", index);
        keys[toText(get(item, "Name"))] = toInt32(get(item, "Id"));
    }
    return keys;
}

void EventMaker::addMissing(const char* key, const char* plural, const char* update,
                            std::span<const std::string_view> names)
{
    const Keys present = keysOf(plural);
    auto order = static_cast<std::int16_t>(present.size());
    for (const std::string_view name : names) {
        if (present.contains(std::string(name))) continue;
        const Ref<Object> item = toObject(call(lists_, "GetNewItem", key));
        put(item, "Name", name);
        put(item, "Visible", true);
        put(item, "Order", ++order);
        need(toBool(call(lists_, update, item)), "the list item " + std::string(name));
    }
}

void EventMaker::fillLists()
{
    static constexpr std::string_view statuses[] = {"Planning", "Confirmed", "Completed",
                                                    "Cancelled"};
    std::vector<std::string_view> categories, groups;
    const auto addOnce = [](std::vector<std::string_view>& names, std::string_view name) {
        if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
    };
    for (const EventSeries& series : eventSeries()) {
        addOnce(categories, series.category);
        addOnce(groups, series.guests.group);
    }
    addMissing("eventcategory", "GetEventCategories", "UpdateEventCategory", categories);
    addMissing("eventstatus", "GetEventStatuses", "UpdateEventStatus", statuses);
    addMissing("eventinvitationgroup", "GetEventInvitationGroups", "UpdateEventInvitationGroup",
               groups);
    std::int16_t order = 0;
    for (const LocationPlan& plan : locations()) addLocation(plan, ++order);
    addCoordinators();
    categories_ = keysOf("GetEventCategories");
    statuses_ = keysOf("GetEventStatuses");
    groups_ = keysOf("GetEventInvitationGroups");
    locations_ = keysOf("GetEventLocations");
}

void EventMaker::addLocation(const LocationPlan& plan, std::int16_t order)
{
    const Ref<Object> item = toObject(call(lists_, "GetNewItem", "eventlocation"));
    put(item, "Name", plan.name);
    put(item, "Description", plan.description);
    put(item, "ContactName", plan.contact);
    put(item, "Address", plan.address);
    put(item, "Phone", plan.phone);
    put(item, "Email", plan.email);
    put(item, "Notes", plan.notes);
    put(item, "Visible", true);
    put(item, "Order", order);
    need(toBool(call(lists_, "UpdateEventLocation", item)),
         "the location " + std::string(plan.name));
}

// A few people who have been with the organisation for long.
void EventMaker::addCoordinators()
{
    constexpr std::size_t wanted = 5;
    for (const Donor& donor : urn_.donors()) {
        if (coordinators_.size() == wanted) break;
        if (donor.kind != Donor::Kind::person || donor.generosity < 3) continue;
        const Ref<Object> item = toObject(call(lists_, "GetNewItem", "eventcoordinator"));
        put(item, "FKdonorId", donor.id);
        put(item, "Visible", true);
        put(item, "Order", static_cast<std::int16_t>(coordinators_.size() + 1));
        need(toBool(call(lists_, "UpdateEventCoordinator", item)), "a coordinator");
        coordinators_.push_back(donor.id);
    }
}

std::string_view EventMaker::statusFor(Date day)
{
    if (day < today_) return random_.chance(8) ? "Cancelled" : "Completed";
    return day < today_.plusMonths(5) ? "Confirmed" : "Planning";
}

MadeEvent EventMaker::save(const EventSeries& series, Date day)
{
    MadeEvent made{.series = &series, .start = atHour(day, series.occasion.starts)};
    // What is far ahead was entered lately.
    Clock::pin(atHour(std::min(day.plusDays(-daysOfPlanning), today_.plusDays(-1)), 10.5));

    const int yearsAgo = today_.civil().year - day.civil().year;
    if (series.guests.drawsCrowd && yearsAgo == 0) made.crowd = crowd_;
    const int times = timesAsMany(series, made.crowd);
    const auto grown = [&](int amount) { return amount - amount * 6 * yearsAgo / 100; };
    const std::string name = std::string(series.name) + " " + std::to_string(day.civil().year);
    const std::string_view theme = random_.pick(themes());

    const Ref<Object> event = toObject(call(store_, "GetNewEvent"));
    put(event, "Name", name);
    put(event, "Description",
        std::string(series.description) + "\r\nThis year: " + std::string(theme) + ".");
    put(event, "Notes", series.notes);
    put(event, "StartDateTime", made.start);
    put(event, "EndDateTime",
        series.occasion.starts > 0 ? atHour(made.start, series.occasion.lasts)
                                   : made.start.datePart());
    if (series.occasion.replyDaysBefore > 0) {
        put(event, "RSVPDateTime", day.plusDays(-series.occasion.replyDaysBefore));
    }
    put(event, "MinCapacity", series.goals.minimum);
    put(event, "MaxCapacity", series.goals.maximum * times);
    put(event, "RevenueGoal",
        Currency::fromUnits(grown(series.goals.revenue) * times / 100 * 100LL));
    put(event, "AttendanceGoal", grown(series.goals.attendance) * times);
    put(event, "FKLocationId", locations_.at(std::string(series.location)));
    put(event, "FKCategoryId", categories_.at(std::string(series.category)));
    const std::string status(made.crowd > 0 ? "Completed" : statusFor(day));
    made.cancelled = status == "Cancelled";
    put(event, "FKStatusId", statuses_.at(status));
    if (!coordinators_.empty() && random_.chance(90)) {
        put(event, "FKCoordinatorId", random_.pick(coordinators_));
    }
    put(event, "FKFundId", random_.pick(codes_.funds));
    put(event, "FKCampaignId", codes_.campaigns.back());
    put(event, "FKAppealId", random_.pick(codes_.sources));
    need(toBool(call(store_, "UpdateEvent", event, true, false)), name);
    made.id = toInt32(get(event, "Id"));
    return made;
}

} // namespace refhost::demo
