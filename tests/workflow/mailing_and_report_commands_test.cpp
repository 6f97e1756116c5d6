#include "tests/workflow/commands.h"

namespace qmevents {
namespace {

using testing::Commands;
using testing::hint;
using testing::Log;

class MailingCommands : public Commands {
protected:
    const Log eventSearch =
        search("Send Event Mailing", "Select an Event for the Mailing",
               hint + " The event you choose will be used to generate a mailing list of donors "
                      "participating in the event.");
    const Log choosing =
        dialog("sendeventmailing", {"title = ", "heading = ", "action = ", "eventid = 5"});
    const Log opening{"SELECT * FROM events_event_info WHERE Id = <2:5>", "OpenMailingDialog"};
    const Log starting{"CloseMailingDialog", "StartMailingProcess Event {1}"};
};

TEST_F(MailingCommands, SearchAnEventAndStartNothingWhenCancelled)
{
    EXPECT_EQ(run("SendEventMailing"), eventSearch);
    EXPECT_EQ(run("SendEventMailing", 5), choosing);
    confirmWith({{"eventid", 5}}); // a page that chooses nobody
    EXPECT_EQ(run("SendEventMailing"), joined({eventSearch, choosing, opening, starting}));
}

TEST_F(MailingCommands, PassTheChoiceToTheStore)
{
    host.answer("WHERE eer.FKEventId=<2:5>", lineRows(4, {{31, 8, 1}}));
    const auto adds = [&](const std::map<std::string, Value>& values) {
        confirmWith(values);
        const Log log = run("SendEventMailing", 5);
        return std::count(log.begin(), log.end(), "AddToMailingList {1} 9") == 1;
    };
    EXPECT_TRUE(adds({{"choice", 2}, {"activityids", "~4~"}}));
    EXPECT_FALSE(adds({{"choice", 2}, {"activityids", "~5~"}}));
    EXPECT_TRUE(adds({{"choice", "3"}, {"reservationsponsorship", true}}));
    EXPECT_FALSE(adds({{"choice", "3"}, {"reservationnonsponsorship", "True"}}));
    for (const Value& unused : {Value(""), Value(Null{})}) {
        EXPECT_TRUE(adds({{"choice", 2},
                          {"activityids", "~4~"},
                          {"participantstatuses", unused},
                          {"invitationgroups", unused},
                          {"reservationsponsorship", unused}}));
    }
    confirmWith({{"choice", "4"}, {"invitationgroups", "70"}});
    EXPECT_EQ(run("SendEventMailing", 5),
              joined({choosing,
                      {"ErrorUnexpected: Object required (String): InvitationGroups of "
                       "SendEventMailingDialog"}}));
}

class ReportCommands : public Commands {};

TEST_F(ReportCommands, SearchTheirEventAndShowItsReport)
{
    const struct {
        const char *command, *title, *key;
    } cases[] = {
        {"ShowParticipantReport", "Show Event Participant List", "events-event-participant-list"},
        {"ShowReservationByActivityReport", "Show Event Reservation List By Activity",
         "events-event-reservation-list-by-activity"},
        {"ShowReservationReport", "Show Event Reservation List", "events-event-reservation-list"},
        {"ShowActivityReservationReport", "Show Event Reservations For Activity List",
         "events-event-activity-reservation-list"},
        {"ShowActivitySummaryReport", "Show Event Activity Summary",
         "events-event-activity-summary"},
        {"ShowSummaryReport", "Show Event Summary", "events-event-summary"}};
    for (const auto& [command, title, key] : cases) {
        SCOPED_TRACE(command);
        const Log shows{"Navigate: report:C:\\Events\\Cache\\Reports|" + std::string(key) + "|5"};
        const Log search = this->search(title, "", "");
        EXPECT_EQ(run(command), search);
        EXPECT_EQ(run(command, 5), shows);
        confirmWith({{"eventid", 5}});
        EXPECT_EQ(run(command, 0), joined({search, shows}));
        cancel();
    }
}

} // namespace
} // namespace qmevents
