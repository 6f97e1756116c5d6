#include "host/demo/event_children.h"

#include <algorithm>

#include "automation/conversions.h"

namespace refhost::demo {
namespace {

using qmevents::Currency;
using qmevents::Date;
using qmevents::toInt32;
using qmevents::Value;

enum Status { notInvited = 0, invited = 1, accepted = 2, declined = 3 };

constexpr int daysBeforeInvitation = 75;

constexpr std::string_view guestNotes[] = {"Brings a guest.", "Comes late, after eight.",
                                           "Needs a seat near the door.", "Prefers to be called.",
                                           "Asked to sit with the Quay Street neighbours."};
constexpr std::string_view lineNotes[] = {"Paid at the door.", "Name on the list: see e-mail.",
                                          "Two seats together, please."};

} // namespace

ChildMaker::ChildMaker(Entering& entering, const Urn& urn,
                       const std::map<std::string, std::int32_t>& groups,
                       const std::vector<std::int32_t>& assignees, Random random, Date today)
    : entering_(entering), urn_(urn), groups_(groups), assignees_(assignees), random_(random),
      today_(today)
{
}

void ChildMaker::fill(MadeEvent& event)
{
    makeActivities(event);
    makeParticipants(event);
    if (!event.cancelled) makeReservations(event);
    makeExpenses(event);
    makeTasks(event);
}

void ChildMaker::makeActivities(const MadeEvent& event)
{
    activities_.clear();
    Entering::on(std::min(event.start.datePart().plusDays(-150), today_));
    for (const ActivityPlan& plan : event.series->activities) {
        const int available = plan.sponsorship
                                  ? plan.available
                                  : plan.available * timesAsMany(*event.series, event.crowd);
        const Value activity = entering_.call(
            "NewActivity",
            {event.id, plan.name, plan.description, Currency::fromUnits(plan.price),
             Currency::fromUnits(plan.cost), available, plan.sponsorship, plan.unlimited});
        for (const QuestionPlan& question : plan.questions) {
            entering_.call("AskFor",
                           {activity, question.fieldType, question.name, question.description,
                            question.defaultValue, question.isList() ? question.choices : ""});
        }
        const std::int32_t id = toInt32(entering_.call("SaveActivity", {activity}));
        activities_.push_back({&plan, id, plan.unlimited ? 1 << 20 : available});
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

// Positions of different donors who are known on the day when the list is made.
std::vector<std::size_t> ChildMaker::chooseParticipants(const MadeEvent& event, Date listed)
{
    std::vector<std::size_t> chosen;
    if (event.crowd > 0) { // everybody, then as many as there shall be
        for (std::size_t donor = 0; donor < urn_.donors().size(); ++donor) {
            if (urn_.donors()[donor].since <= listed) chosen.push_back(donor);
        }
        for (std::size_t at = chosen.size(); at > 1; --at) {
            std::swap(chosen[at - 1], chosen[random_.below(static_cast<std::uint32_t>(at))]);
        }
        chosen.resize(std::min(chosen.size(), static_cast<std::size_t>(event.crowd)));
        return chosen;
    }
    int wanted = event.series->guests.listed * random_.between(75, 110) / 100;
    const bool invitationsSent = event.start.plusDays(-daysBeforeInvitation) < today_;
    if (event.start >= today_ && !invitationsSent) wanted /= 4;
    for (int index = 0; index < wanted; ++index) {
        const auto donor = urn_.draw(random_, listed);
        if (!donor || std::find(chosen.begin(), chosen.end(), *donor) != chosen.end()) continue;
        chosen.push_back(*donor);
    }
    return chosen;
}

void ChildMaker::makeParticipants(MadeEvent& event)
{
    const Date listed = std::min(event.start.datePart().plusDays(-100), today_.plusDays(-2));
    const bool past = event.start < today_;
    const bool invitationsSent = event.start.plusDays(-daysBeforeInvitation) < today_;
    Entering::on(listed);
    const Value participants = entering_.call("NewParticipants", {});
    for (const std::size_t donor : chooseParticipants(event, listed)) {
        const int status = drawStatus(past, invitationsSent);
        const int coming = status == accepted ? 88 : status == invited ? 6 : 0;
        const bool came = past && !event.cancelled && random_.chance(coming);
        if (came || status == accepted) event.guests.push_back(donor);
        const std::string_view note = random_.chance(7) ? random_.pick(guestNotes) : "";
        joinGroups(event,
                   entering_.call("AddParticipant", {participants, event.id,
                                                     urn_.donors()[donor].id, status, came, note}));
    }
    entering_.call("SaveParticipants", {event.id, participants});
}

void ChildMaker::joinGroups(const MadeEvent& event, const Value& participant)
{
    for (const auto& [name, id] : groups_) {
        const int percent = name == event.series->guests.group ? 45 : 7;
        if (random_.chance(percent)) entering_.call("JoinGroup", {participant, id, name});
    }
}

void ChildMaker::makeReservations(MadeEvent& event)
{
    if (event.crowd == 0) {
        for (const std::size_t guest : event.guests) {
            if (!random_.chance(event.series->guests.reserving)) continue;
            makeReservation(event, guest, random_.chance(30) ? 2 : 1);
        }
        return;
    }
    // A quarter of the crowd reserves, five lines in two reservations.
    const std::size_t wanted = static_cast<std::size_t>(event.crowd) * 6 / 25;
    for (std::size_t guest = 0; guest < std::min(wanted, event.guests.size()); ++guest) {
        makeReservation(event, event.guests[guest], guest % 2 == 0 ? 2 : 3);
    }
}

// Firms and the most generous sponsor; everybody else reserves what is left.
ChildMaker::Activity* ChildMaker::chooseActivity(const Donor& donor, const std::vector<Line>& taken)
{
    const bool maySponsor = donor.kind == Donor::Kind::organisation || donor.generosity >= 7;
    std::vector<Activity*> offered;
    for (Activity& activity : activities_) {
        if (activity.left <= 0 || (activity.plan->sponsorship && !maySponsor)) continue;
        if (std::any_of(taken.begin(), taken.end(),
                        [&](const Line& line) { return line.activity == &activity; })) {
            continue;
        }
        const int weight = activity.plan->demand * (activity.plan->sponsorship ? 6 : 1);
        offered.insert(offered.end(), static_cast<std::size_t>(weight), &activity);
    }
    return offered.empty() ? nullptr : random_.pick(offered);
}

std::vector<ChildMaker::Line> ChildMaker::chooseLines(const Donor& donor, int count)
{
    std::vector<Line> lines;
    while (lines.size() < static_cast<std::size_t>(count)) {
        Activity* const activity = chooseActivity(donor, lines);
        if (!activity) break;
        const ActivityPlan& plan = *activity->plan;
        const int most = plan.price >= 300 ? 1 : 4;
        const int quantity = std::min(random_.between(1, most), activity->left);
        activity->left -= quantity;
        Currency price = Currency::fromUnits(plan.price);
        if (random_.chance(6)) price = price.dividedBy(2);
        lines.push_back({activity, quantity, price});
    }
    return lines;
}

std::string ChildMaker::answerTo(const QuestionPlan& question)
{
    switch (question.fieldType) {
    case fieldKind::date:
        return Date::of(random_.between(2012, 2024), random_.between(1, 12), 1).iso().substr(0, 10);
    case fieldKind::checkBox:
        return random_.chance(70) ? "1" : "0";
    case fieldKind::listOrText:
        if (random_.chance(25)) return "As last year, with the O'Haras & friends";
        [[fallthrough]];
    default:
        return random_.pick(question.eachChoice());
    }
}

void ChildMaker::addLine(const Value& reservation, const Line& line)
{
    const std::string_view note = random_.chance(8) ? random_.pick(lineNotes) : "";
    const Value entered = entering_.call(
        "AddLine", {reservation, line.activity->id, line.quantity, line.price, note});
    for (const QuestionPlan& question : line.activity->plan->questions) {
        entering_.call("Answer", {entered, question.fieldType, question.name, answerTo(question)});
    }
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

void ChildMaker::makeReservation(MadeEvent& event, std::size_t guest, int lineCount)
{
    const Donor& donor = urn_.donors()[guest];
    const std::vector<Line> lines = chooseLines(donor, lineCount);
    if (lines.empty()) return;
    const Date date =
        std::min(event.start.datePart().plusDays(-random_.between(3, 60)), today_.plusDays(-1));
    Currency total;
    for (const Line& line : lines) total += line.price * line.quantity;
    bool byGift = false;
    const Currency paid = paidAtOnce(total, event.start < today_, byGift);

    Entering::on(date);
    const std::string_view description = random_.chance(12) ? "Reserved by telephone." : "";
    const Value reservation =
        entering_.call("NewReservation", {event.id, donor.id, date, description, paid});
    for (const Line& line : lines) addLine(reservation, line);
    const std::int32_t id = toInt32(entering_.call("SaveReservation", {reservation}));
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
        Entering::on(day);
        entering_.call("AddExpense", {event.id, day, plan.description, amount});
    }
}

void ChildMaker::makeTasks(const MadeEvent& event)
{
    for (const TaskPlan& plan : event.series->tasks) {
        const Date due = event.start.datePart().plusDays(-plan.daysBefore).plusSeconds(17LL * 3600);
        const bool done = due < today_ && !random_.chance(due > today_.plusDays(-30) ? 35 : 2);
        Entering::on(std::min(due.plusDays(-40), today_));
        entering_.call("AddTask",
                       {event.id, plan.name, plan.notes, due, done, random_.pick(assignees_)});
    }
}

} // namespace refhost::demo
