// The public face of events: one line a member.
#include "model/event.h"

namespace qmevents {
namespace {

// An event whose members read a figure, a statistic or a child collection each; the members differ
// in which one only.
template <auto figure>
auto figureOf(cEvent& event)
{
    return event.figures().*figure;
}
template <auto statistic>
auto statisticOf(cEvent& event)
{
    return event.donations().*statistic;
}

template <EventChild child>
Ref<Object> childrenOf(cEvent& event)
{
    return event.children(child);
}
template <EventChild child>
Ref<Object> reloadableChildrenOf(cEvent& event, bool reload)
{
    return event.children(child, reload);
}
template <EventChild child>
bool areLoaded(cEvent& event)
{
    return event.childrenLoaded(child);
}

void describeStored(Describe<cEvent>& table)
{
    table.stored("Name", &cEvent::Name, marksDirty, "Event name.")
        .stored("Description", &cEvent::Description, marksDirty, "Free description.")
        .stored("FKLocationId", &cEvent::FKLocationId, marksDirty, "Location, 0 for none.")
        .stored("StartDateTime", &cEvent::StartDateTime, marksDirty, "Start of the event.")
        .stored("EndDateTime", &cEvent::EndDateTime, marksDirty, "End of the event.")
        .stored("RSVPDateTime", &cEvent::RSVPDateTime, marksDirty, "Reply-by date and time.")
        .stored("MaxCapacity", &cEvent::MaxCapacity, marksDirty, "Largest number of attendees.")
        .stored("MinCapacity", &cEvent::MinCapacity, marksDirty, "Smallest number of attendees.")
        .stored("FKCategoryId", &cEvent::FKCategoryId, marksDirty, "Category, 0 for none.")
        .stored("FKStatusId", &cEvent::FKStatusId, marksDirty,
                "Status from the list of statuses, 0 for none; unrelated to State.")
        .stored("FKCoordinatorId", &cEvent::FKCoordinatorId, marksDirty,
                "Donor id of the coordinator, 0 for none.")
        .stored("RevenueGoal", &cEvent::RevenueGoal, marksDirty, "Revenue target.")
        .stored("AttendanceGoal", &cEvent::AttendanceGoal, marksDirty, "Attendance target.")
        .stored("FKFundId", &cEvent::FKFundId, marksDirty,
                "Fund that gifts for this event default to, 0 for none.")
        .stored("FKCampaignId", &cEvent::FKCampaignId, marksDirty, "Campaign, 0 for none.")
        .stored("FKAppealId", &cEvent::FKAppealId, marksDirty, "Appeal, 0 for none.")
        .stored("Notes", &cEvent::Notes, marksDirty, "Free notes.")
        .with(auditFields<cEvent>);
}

void describeDateParts(Describe<cEvent>& table)
{
    constexpr const char* date = "Its day; Empty on the zero date.";
    constexpr const char* time = "Its time of day; Empty at midnight.";
    constexpr const char* hour = "Its hour on a 12-hour clock, two digits; blank at midnight.";
    constexpr const char* minute = "Its minute, two digits; blank at midnight.";
    constexpr const char* half = "\"AM\" or \"PM\"; blank at midnight.";
    table.readOnly("StartDate", &cEvent::StartDate, date)
        .readOnly("StartTime", &cEvent::StartTime, time)
        .readOnly("StartHour", &cEvent::StartHour, hour)
        .readOnly("StartMinute", &cEvent::StartMinute, minute)
        .readOnly("StartAMPM", &cEvent::StartAMPM, half)
        .readOnly("EndDate", &cEvent::EndDate, date)
        .readOnly("EndTime", &cEvent::EndTime, time)
        .readOnly("EndHour", &cEvent::EndHour, hour)
        .readOnly("EndMinute", &cEvent::EndMinute, minute)
        .readOnly("EndAMPM", &cEvent::EndAMPM, half)
        .readOnly("RSVPDate", &cEvent::RSVPDate, date)
        .readOnly("RSVPTime", &cEvent::RSVPTime, time)
        .readOnly("RSVPHour", &cEvent::RSVPHour, hour)
        .readOnly("RSVPMinute", &cEvent::RSVPMinute, minute)
        .readOnly("RSVPAMPM", &cEvent::RSVPAMPM, half);
}

template <EventChild child>
void childMembers(Describe<cEvent>& table, const std::string& name, const std::string& className,
                  const std::string& what)
{
    table.readOnlyBy(name + "Loaded", &areLoaded<child>, "Whether " + name + " has been fetched.")
        .readOnlyBy(name, &childrenOf<child>, what + ", fetched on the first read.")
        .givesObject(className);
}
template <EventChild child>
void reloadableChildMembers(Describe<cEvent>& table, const std::string& name,
                            const std::string& className, const std::string& what)
{
    table.readOnlyBy(name + "Loaded", &areLoaded<child>, "Whether " + name + " has been fetched.")
        .readOnlyBy(name, &reloadableChildrenOf<child>, {optional("Reload", false)},
                    what + ", fetched on the first read and whenever Reload is True.")
        .givesObject(className);
}

void describeChildren(Describe<cEvent>& table)
{
    childMembers<EventChild::activities>(table, "Activities", "cEventActivities",
                                         "What can be reserved");
    reloadableChildMembers<EventChild::participants>(table, "Participants", "cEventParticipants",
                                                     "The donors invited or attending");
    reloadableChildMembers<EventChild::participantInvitationGroups>(
        table, "ParticipantInvitationGroups", "cEventParticipantGroups",
        "The participants' memberships in invitation groups");
    childMembers<EventChild::expenses>(table, "Expenses", "cEventExpenses", "The costs");
    childMembers<EventChild::reservations>(table, "Reservations", "cEventReservations",
                                           "The reservations");
    childMembers<EventChild::reservationActivities>(table, "ReservationActivities",
                                                    "cEventReservationActivities",
                                                    "The lines of all reservations");
    childMembers<EventChild::sponsorships>(table, "Sponsorships", "cEventReservationActivities",
                                           "The reservation lines of sponsorship activities");
    childMembers<EventChild::tasks>(table, "Tasks", "cEventTasks", "The tasks");
}

template <auto figure>
void figureMember(Describe<cEvent>& table, const char* name, const char* what)
{
    table.readOnlyBy(name, &figureOf<figure>, what);
}

void describeFigures(Describe<cEvent>& table)
{
    using F = EventFigures;
    table.property("AggregatesLoaded", &cEvent::AggregatesLoaded, &cEvent::setAggregatesLoaded,
                   "Whether the totals have been read; False has them read again.");
    figureMember<&F::PotentialRevenue>(table, "PotentialRevenue",
                                       "List price times quantity available.");
    figureMember<&F::ExpectedRevenue>(table, "ExpectedRevenue",
                                      "Price times quantity over the reservation lines.");
    figureMember<&F::PledgesExpected>(table, "PledgesExpected", "Expected payments of pledges.");
    figureMember<&F::PledgesReceived>(table, "PledgesReceived", "Received payments of pledges.");
    figureMember<&F::PledgesOutstanding>(table, "PledgesOutstanding",
                                         "Expected less received payments of pledges.");
    figureMember<&F::TotalExpected>(table, "TotalExpected",
                                    "Expected from reservations and pledges.");
    figureMember<&F::ReservationsRevenue>(table, "ReservationsRevenue",
                                          "Received for reservations, directly and by gifts.");
    figureMember<&F::CurrentRevenue>(table, "CurrentRevenue",
                                     "Received for reservations and by donations.");
    figureMember<&F::DonationsRevenue>(table, "DonationsRevenue",
                                       "Received by gifts that belong to no reservation.");
    figureMember<&F::OutstandingRevenue>(table, "OutstandingRevenue",
                                         "Due on reservations, overpaid ones counting zero.");
    figureMember<&F::TotalExpenses>(table, "TotalExpenses", "Sum of the expenses.");
    figureMember<&F::NetRevenue>(table, "NetRevenue", "Current revenue less expenses.");
    figureMember<&F::NumberSponsorshipsReserved>(table, "NumberSponsorshipsReserved",
                                                 "Units reserved of sponsorships.");
    figureMember<&F::SponsorshipsRevenue>(table, "SponsorshipsRevenue",
                                          "Price times quantity of sponsorship lines.");
    figureMember<&F::NumberReservations>(table, "NumberReservations", "Reservations.");
    figureMember<&F::NumberActivities>(table, "NumberActivities", "Activities.");
    figureMember<&F::NumberSponsorships>(table, "NumberSponsorships", "Sponsorship activities.");
    figureMember<&F::NumberParticipants>(table, "NumberParticipants", "Participants.");
    figureMember<&F::NumberInvited>(table, "NumberInvited",
                                    "Participants invited, accepted or declined.");
    figureMember<&F::NumberAccepted>(table, "NumberAccepted", "Participants who accepted.");
    figureMember<&F::NumberDeclined>(table, "NumberDeclined", "Participants who declined.");
    figureMember<&F::NumberAttended>(table, "NumberAttended", "Participants who came.");
    figureMember<&F::NumberReservationActivities>(table, "NumberReservationActivities",
                                                  "Distinct activities reserved.");
}

template <auto statistic>
void statisticMember(Describe<cEvent>& table, const char* name, const char* what)
{
    table.readOnlyBy(name, &statisticOf<statistic>, what);
}

// These names begin with a lower-case letter, unlike all others; scripts know them so.
void describeStatistics(Describe<cEvent>& table)
{
    using S = DonationStatistics;
    statisticMember<&S::hasDonations>(table, "hasDonations", "Whether any gift is linked to it.");
    statisticMember<&S::receivedAmount>(table, "receivedAmount", "Sum of received payments.");
    statisticMember<&S::numberDonations>(table, "numberDonations", "Number of received payments.");
    statisticMember<&S::averageDonation>(table, "averageDonation", "Average received payment.");
    statisticMember<&S::largestDonation>(table, "largestDonation", "Largest received payment.");
    statisticMember<&S::totalPledged>(table, "totalPledged", "Sum pledged.");
    statisticMember<&S::numberPledges>(table, "numberPledges", "Number of pledges.");
    statisticMember<&S::averagePledge>(table, "averagePledge", "Average pledge.");
    statisticMember<&S::largestPledge>(table, "largestPledge", "Largest pledge.");
    statisticMember<&S::donationRecordSet>(table, "donationRecordSet",
                                           "The gift payments behind these statistics.");
}

} // namespace

const Members& cEvent::members() const
{
    static const Members table =
        describe<cEvent>("One event with its figures, statistics and children.")
            .with(entityFlags<cEvent>)
            .with(describeStored)
            .property("State", &cEvent::State, &cEvent::setState,
                      "Open (1) or closed (8); always 1 for a new event.", leavesClean)
            .readOnly("StateString", &cEvent::StateString, "\"Open\", \"Closed\" or nothing.")
            .with(describeDateParts)
            .with(describeChildren)
            .with(describeFigures)
            .with(describeStatistics);
    return table;
}

const Members& cEvents::members() const
{
    static const Members table = describe<cEvents>("Events.").with(collectionMembers<cEvents>);
    return table;
}

} // namespace qmevents
