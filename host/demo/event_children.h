#pragma once

#include <map>
#include <string>
#include <vector>

#include "automation/currency.h"
#include "host/demo/entering.h"
#include "host/demo/event_series.h"
#include "host/demo/urn.h"

namespace refhost::demo {

struct MadeReservation {
    std::int32_t id = 0;
    std::size_t donor = 0; ///< Position among the donors.
    qmevents::Date date;
    qmevents::Currency dueByGift = {}; ///< What a gift to the reservation is to pay.
};

struct MadeEvent {
    std::int32_t id = 0;
    const EventSeries* series = nullptr;
    qmevents::Date start;
    bool cancelled = false;
    int crowd = 0;                        ///< Participants of the one event that everybody is at.
    std::vector<std::size_t> guests = {}; ///< Donors who came or will come.
    std::vector<MadeReservation> reservations = {};
};

/// Enters what belongs to an event: activities, participants with their groups, reservations with
/// their lines, expenses and tasks; as far as they would be known today.
class ChildMaker {
public:
    ChildMaker(Entering& entering, const Urn& urn,
               const std::map<std::string, std::int32_t>& groups,
               const std::vector<std::int32_t>& assignees, Random random, qmevents::Date today);

    /// Fills in the guests and reservations of `event`, too.
    void fill(MadeEvent& event);

private:
    struct Activity {
        const ActivityPlan* plan = nullptr;
        std::int32_t id = 0;
        int left = 0;
    };
    struct Line {
        const Activity* activity = nullptr;
        int quantity = 0;
        qmevents::Currency price;
    };

    void makeActivities(const MadeEvent& event);
    void makeParticipants(MadeEvent& event);
    std::vector<std::size_t> chooseParticipants(const MadeEvent& event, qmevents::Date listed);
    int drawStatus(bool past, bool invitationsSent);
    void joinGroups(const MadeEvent& event, const qmevents::Value& participant);
    void makeReservations(MadeEvent& event);
    void makeReservation(MadeEvent& event, std::size_t guest, int lineCount);
    std::vector<Line> chooseLines(const Donor& donor, int count);
    Activity* chooseActivity(const Donor& donor, const std::vector<Line>& taken);
    void addLine(const qmevents::Value& reservation, const Line& line);
    std::string answerTo(const QuestionPlan& question);
    qmevents::Currency paidAtOnce(qmevents::Currency total, bool past, bool& byGift);
    void makeExpenses(const MadeEvent& event);
    void makeTasks(const MadeEvent& event);

    Entering& entering_;
    const Urn& urn_;
    const std::map<std::string, std::int32_t>& groups_;
    const std::vector<std::int32_t>& assignees_;
    Random random_;
    qmevents::Date today_;
    std::vector<Activity> activities_; // of the event that is being filled
};

} // namespace refhost::demo
