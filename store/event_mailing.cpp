// Turning a part of an event's people into a mailing of the host.
#include <set>

#include "automation/text.h"
#include "core/reporting.h"
#include "store/events_manage.h"
#include "store/refusals.h"

namespace qmevents {
namespace {

/// Whom a user wants to write to.
struct Choice {
    std::int32_t eventId;
    std::string statuses; ///< Codes, each between tildes.
    std::set<std::int32_t> groups;
    bool sponsorships;
    bool otherLines;
    std::string activityIds; ///< Each between tildes.
};

std::string marked(const std::string& item) { return "~" + item + "~"; }
bool holds(const std::string& list, std::int32_t item)
{
    return list.find(marked(std::to_string(item))) != std::string::npos;
}

// What the store cannot read it has reported; a mailing to a part of the people would pass for one
// to all of them.
template <typename Items>
const Items& readable(const Ref<Items>& items)
{
    if (!items) throw AlreadyReported();
    return *items;
}

using Donors = std::vector<std::int32_t>;

Donors participantsByStatus(EventsManage& store, const Choice& choice)
{
    Donors donors;
    readable(store.GetEventParticipants(choice.eventId)).each([&](const auto& participant) {
        if (holds(choice.statuses, participant->Status)) donors.push_back(participant->FKdonorId);
    });
    return donors;
}

template <typename Counts>
Donors donorsOfLines(EventsManage& store, const Choice& choice, Counts counts)
{
    Donors donors;
    readable(store.GetEventReservationActivities({}, choice.eventId)).each([&](const auto& line) {
        if (counts(*line)) donors.push_back(line->FKdonorId);
    });
    return donors;
}

Donors reservedActivities(EventsManage& store, const Choice& choice)
{
    return donorsOfLines(store, choice, [&](const cEventReservationActivity& line) {
        return holds(choice.activityIds, line.FKActivityId);
    });
}

Donors reservedKinds(EventsManage& store, const Choice& choice)
{
    return donorsOfLines(store, choice, [&](const cEventReservationActivity& line) {
        return line.Sponsorship() ? choice.sponsorships : choice.otherLines;
    });
}

Donors membersOfGroups(EventsManage& store, const Choice& choice)
{
    Donors donors;
    readable(store.GetEventParticipantInvitationGroups(choice.eventId))
        .each([&](const auto& membership) {
            if (choice.groups.contains(membership->FKInvitationGroupId)) {
                donors.push_back(membership->FKdonorId);
            }
        });
    return donors;
}

struct MailingType {
    const char* code;
    Donors (*donors)(EventsManage&, const Choice&);
};
constexpr MailingType mailingTypes[] = {{"1", participantsByStatus},
                                        {"2", reservedActivities},
                                        {"3", reservedKinds},
                                        {"4", membersOfGroups}};

std::set<std::int32_t> idsOf(const Ref<Object>& groups)
{
    std::set<std::int32_t> ids;
    if (!groups) return ids;
    Value group;
    for (const auto walk = groups->enumerate(); walk->next(group);) {
        ids.insert(toInt32(get(toObject(group), "Id")));
    }
    return ids;
}

/// The host's mailing dialog, which does not stay open when the collecting fails.
class MailingDialog {
public:
    explicit MailingDialog(const MailingManage& mailings) : mailings_(mailings)
    {
        mailings_.openDialog();
    }
    MailingDialog(const MailingDialog&) = delete;
    MailingDialog& operator=(const MailingDialog&) = delete;
    ~MailingDialog()
    {
        if (closed_) return;
        try {
            mailings_.closeDialog();
        } catch (const Error&) {
            // The failure that led here is the one to tell.
        }
    }
    void close()
    {
        closed_ = true;
        mailings_.closeDialog();
    }

private:
    const MailingManage& mailings_;
    bool closed_ = false;
};

} // namespace

bool EventsManage::StartEventMailingProcess(std::int32_t EventId,
                                            const std::string& EventMailingType,
                                            const std::string& ParticipantStatuses,
                                            const Ref<Object>& InvitationGroups,
                                            bool EventReservationSponsorship,
                                            bool EventReservationNonSponsorship,
                                            const std::string& EventActivityIds)
{
    return reported([&] {
        if (!maySendMailings() || !GetEvent(EventId)) return false;
        const Host app = host();
        const MailingManage mailings = app.modules().donor().mailings();
        MailingDialog dialog(mailings);
        const std::string listKey = app.newGuid();
        // Statuses come between tildes or with commas between them.
        const Choice choice{
            EventId,
            marked(text::replaceAll(text::replaceAll(ParticipantStatuses, " ", ""), ",", "~~")),
            idsOf(InvitationGroups),
            EventReservationSponsorship,
            EventReservationNonSponsorship,
            EventActivityIds};
        std::set<std::int32_t> added;
        for (const auto& type : mailingTypes) {
            if (EventMailingType != type.code) continue;
            for (const std::int32_t donor : type.donors(*this, choice)) {
                if (donor >= 1 && added.insert(donor).second) mailings.addToList(listKey, donor);
            }
        }
        dialog.close();
        // The host asks for the mailing's fields while it starts it.
        startedList_ = listKey;
        started_ = StartedMailing{EventId, EventMailingType, EventReservationSponsorship,
                                  EventReservationNonSponsorship, EventActivityIds};
        mailings.startProcess("Event", listKey);
        return true;
    });
}

} // namespace qmevents
