#include "host/demo/event_children.h"

#include <algorithm>

#include "host/demo/reservation_fields.h"

namespace refhost::demo {
namespace {

using qmevents::Currency;
using qmevents::Date;

enum Status { notInvited = 0, invited = 1, accepted = 2, declined = 3 };

constexpr int daysBeforeInvitation = 75;

constexpr std::string_view guestNotes[] = {"Brings a guest.", "Comes late, after eight.",
                                           "Needs a seat near the door.", "Prefers to be called.",
                                           "Asked to sit with the Quay Street neighbours."};
constexpr std::string_view lineNotes[] = {"Paid at the door.", "Name on the list: see e-mail.",
                                          "Two seats together, please."};

std::string answerTo(const QuestionPlan& question, Random& random)
{
    const std::vector<std::string> choices = choicesOf(question);
    if (!choices.empty()) return random.pick(choices);
    switch (question.fieldType) {
    case 4:
        return Date::of(random.between(2012, 2024), random.between(1, 12), 1).iso().substr(0, 10);
    case 6:
        return random.chance(70) ? "1" : "0";
    default:
        return std::to_string(random.between(4, 36));
    }
}

} // namespace

ChildMaker::ChildMaker(RowWriter& rows, const Urn& urn,
                       const std::map<std::string, std::int32_t>& groups,
                       const std::vector<std::int32_t>& assignees, std::int32_t user, Random random,
                       Date today)
    : rows_(rows), urn_(urn), groups_(groups), assignees_(assignees), user_(user), random_(random),
      today_(today)
{
}

void ChildMaker::fill(MadeEvent& event)
{
    makeActivities(event);
    makeParticipants(event);
    if (!event.cancelled) {
        for (const std::size_t guest : event.guests) {
            if (random_.chance(event.series->guests.reserving)) makeReservation(event, guest);
        }
    }
    makeExpenses(event);
    makeTasks(event);
}

void ChildMaker::makeActivities(const MadeEvent& event)
{
    activities_.clear();
    const Date entered = std::min(event.start.datePart().plusDays(-150), today_);
    for (const ActivityPlan& plan : event.series->activities) {
        const std::int32_t id = rows_.insert(
            "events_event_activities",
            {key("FKEventId", event.id), text("Name", plan.name),
             text("Description", plan.description),
             money("ListPrice", Currency::fromUnits(plan.price)),
             money("Cost", Currency::fromUnits(plan.cost)),
             key("QuantityAvailable", plan.available), yesNo("Sponsorship", plan.sponsorship),
             text("ReservationInfo", fieldDefinitions(plan.question)),
             key("QuantityType", plan.unlimited ? 1 : 0), by(), date("CreateDate", entered)});
        activities_.push_back({&plan, id, plan.unlimited ? 1 << 20 : plan.available});
    }
}

int ChildMaker::drawStatus(bool past, bool invitationsSent)
{
    if (!invitationsSent) return random_.chance(85) ? notInvited : invited;
    const int draw = random_.between(1, 100);
    if (draw <= 4) return notInvited;
    if (draw <= (past ? 26 : 58)) return invited;
    return draw <= (past ? 80 : 86) ? accepted : declined;
}

void ChildMaker::makeParticipants(MadeEvent& event)
{
    const Date listed = std::min(event.start.datePart().plusDays(-100), today_.plusDays(-2));
    const bool past = event.start < today_;
    const bool invitationsSent = event.start.plusDays(-daysBeforeInvitation) < today_;
    int wanted = event.series->guests.listed * random_.between(75, 110) / 100;
    if (!past && !invitationsSent) wanted /= 4;
    std::vector<std::size_t> chosen;
    for (int index = 0; index < wanted; ++index) {
        const auto donor = urn_.draw(random_, listed);
        if (!donor || std::find(chosen.begin(), chosen.end(), *donor) != chosen.end()) continue;
        chosen.push_back(*donor);
        const int status = drawStatus(past, invitationsSent);
        const bool came = past && !event.cancelled &&
                          random_.chance(status == accepted  ? 88
                                         : status == invited ? 6
                                                             : 0);
        if (came || status == accepted) event.guests.push_back(*donor);
        const std::int32_t donorId = urn_.donors()[*donor].id;
        const std::string_view note = random_.chance(7) ? random_.pick(guestNotes) : "";
        rows_.insert("events_event_participants",
                     {key("FKEventId", event.id), key("FKDonorId", donorId), key("Status", status),
                      text("Notes", note), yesNo("Attended", came), by(),
                      date("CreateDate", listed)});
        joinGroups(event, donorId);
    }
}

void ChildMaker::joinGroups(const MadeEvent& event, std::int32_t donorId)
{
    for (const auto& [name, id] : groups_) {
        const int percent = name == event.series->guests.group ? 45 : 7;
        if (!random_.chance(percent)) continue;
        rows_.add("events_event_participants_groups",
                  {key("FKEventId", event.id), key("FKDonorId", donorId),
                   key("FKInvitationGroupId", id)});
    }
}

// Firms and the most generous sponsor; everybody else reserves what is left.
ChildMaker::Activity* ChildMaker::chooseActivity(const Donor& donor)
{
    const bool maySponsor = donor.kind == Donor::Kind::organisation || donor.generosity >= 7;
    std::vector<Activity*> offered;
    for (Activity& activity : activities_) {
        if (activity.left <= 0 || (activity.plan->sponsorship && !maySponsor)) continue;
        const int weight = activity.plan->demand * (activity.plan->sponsorship ? 6 : 1);
        offered.insert(offered.end(), static_cast<std::size_t>(weight), &activity);
    }
    return offered.empty() ? nullptr : random_.pick(offered);
}

Currency ChildMaker::makeLine(std::int32_t reservation, Activity& activity, Date date)
{
    const ActivityPlan& plan = *activity.plan;
    const int most = plan.price >= 300 ? 1 : 4;
    const int quantity = std::min(random_.between(1, most), activity.left);
    activity.left -= quantity;
    Currency price = Currency::fromUnits(plan.price);
    if (random_.chance(6)) price = price.dividedBy(2);
    rows_.insert(
        "events_event_reservations_activities",
        {key("FKReservationId", reservation), key("FKActivityId", activity.id),
         key("Quantity", quantity), money("Price", price),
         text("Notes", random_.chance(8) ? random_.pick(lineNotes) : ""),
         text("ReservationInfo", fieldValues(plan.question, answerTo(plan.question, random_))),
         by(), demo::date("CreateDate", date)});
    return price * quantity;
}

// What was paid on the reservation itself; `byGift` tells whether the rest comes as a gift.
Currency ChildMaker::paidAtOnce(Currency total, bool past, bool& byGift)
{
    const int draw = random_.between(1, past ? 100 : 140);
    byGift = draw > 48 && draw <= 84;
    if (draw <= 45) return total;
    if (draw <= 48) return total + Currency::fromUnits(10); // rounded up
    if (draw <= 78) return {};
    if (draw <= 90) return total.dividedBy(2);
    return {};
}

void ChildMaker::makeReservation(MadeEvent& event, std::size_t guest)
{
    const Donor& donor = urn_.donors()[guest];
    Activity* first = chooseActivity(donor);
    if (!first) return;
    const Date date =
        std::min(event.start.datePart().plusDays(-random_.between(3, 60)), today_.plusDays(-1));
    const std::int32_t id =
        rows_.insert("events_event_reservations",
                     {key("FKEventId", event.id), key("FKDonorId", donor.id),
                      demo::date("ReservationDate", date),
                      text("Description", random_.chance(12) ? "Reserved by telephone." : ""), by(),
                      demo::date("CreateDate", date)});
    Currency total = makeLine(id, *first, date);
    Activity* second = random_.chance(30) ? chooseActivity(donor) : nullptr;
    if (second && second != first) total += makeLine(id, *second, date);

    bool byGift = false;
    const Currency paid = paidAtOnce(total, event.start < today_, byGift);
    rows_.update("events_event_reservations", id, money("AmountPaid", paid));
    MadeReservation made{.id = id, .donor = guest, .date = date};
    if (byGift && paid < total) made.dueByGift = total - paid;
    event.reservations.push_back(made);
}

void ChildMaker::makeExpenses(const MadeEvent& event)
{
    for (const ExpensePlan& plan : event.series->expenses) {
        const Date day = event.start.datePart().plusDays(-plan.daysBefore);
        if (day > today_ || (event.cancelled && plan.daysBefore < 30)) continue;
        const Currency amount = Currency::fromScaled(std::int64_t{plan.amount} *
                                                     random_.between(880, 1120) * 10 / 100 * 100);
        rows_.insert("events_event_expenses",
                     {key("FKEventId", event.id), date("ExpenseDate", day),
                      text("Description", plan.description), money("Amount", amount), by(),
                      date("CreateDate", day)});
    }
}

void ChildMaker::makeTasks(const MadeEvent& event)
{
    for (const TaskPlan& plan : event.series->tasks) {
        const Date due = event.start.datePart().plusDays(-plan.daysBefore).plusSeconds(17LL * 3600);
        const bool done = due < today_ && !random_.chance(due > today_.plusDays(-30) ? 35 : 2);
        rows_.insert("events_event_tasks",
                     {key("FKEventId", event.id), text("Name", plan.name),
                      text("Notes", plan.notes), date("DueDateTime", due), yesNo("Completed", done),
                      key("FKAssignedToId", random_.pick(assignees_)), by(),
                      date("CreateDate", std::min(due.plusDays(-40), today_))});
    }
}

} // namespace refhost::demo
