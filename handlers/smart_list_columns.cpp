#include "handlers/smart_list_columns.h"

#include <algorithm>
#include <optional>
#include <span>

namespace qmevents {
namespace {

// The host's codes for what a column shows; without one it keeps the host's own choice.
constexpr std::optional<std::int32_t> hostDefault;
constexpr std::int32_t wholeNumber = 3;
constexpr std::int32_t money = 6;
constexpr std::int32_t date = 7;
constexpr std::int32_t text = 8;

struct Column {
    const char *key = "", *caption = "", *dataField = "";
    std::int32_t width = 0;
    std::optional<std::int32_t> dataType;
};

constexpr Column donorColumns[] = {
    {"events_invited_value", "Invited to Event", "eventsinvitedvalue", 100, text},
    {"events_attended_value", "Attended Event", "eventsattendedvalue", 100, text},
    {"events_sponsored_value", "Sponsored Event", "eventssponsoredvalue", 100, text},
    {"events_latest_invited_name", "Most Recent Event Invited To", "eventslatestinvitedname", 200,
     hostDefault},
    {"events_latest_invited_date", "Most Recent Event Invited Date", "eventslatestinviteddate", 120,
     date},
    {"events_first_invited_name", "First Event Invited To", "eventsfirstinvitedname", 200,
     hostDefault},
    {"events_first_invited_date", "First Event Invited Date", "eventsfirstinviteddate", 120, date},
    {"events_latest_attended_name", "Most Recent Event Attended", "eventslatestattendedname", 200,
     hostDefault},
    {"events_latest_attended_date", "Most Recent Event Attended Date", "eventslatestattendeddate",
     120, date},
    {"events_first_attended_name", "First Event Attended", "eventsfirstattendedname", 200,
     hostDefault},
    {"events_first_attended_date", "First Event Attended Date", "eventsfirstattendeddate", 120,
     date},
    {"events_latest_sponsored_name", "Most Recent Event Sponsored", "eventslatestsponsoredname",
     200, hostDefault},
    {"events_latest_sponsored_date", "Most Recent Event Sponsored Date",
     "eventslatestsponsoreddate", 120, date},
    {"events_first_sponsored_name", "First Event Sponsored", "eventsfirstsponsoredname", 200,
     hostDefault},
    {"events_first_sponsored_date", "First Event Sponsored Date", "eventsfirstsponsoreddate", 120,
     date},
    {"events_amount_expected", "Event Reservations Expected Money", "eventsamountexpected", 110,
     money},
    {"events_amount_due", "Event Reservations Outstanding Money", "eventsamountdue", 110, money},
    {"events_amount", "Event Reservations Money", "eventsamount", 110, money},
    {"events_donation_amount", "Event Donations Money", "eventsdonationamount", 110, money},
    {"events_total_amount", "Event Total Money", "eventstotalamount", 110, money},
    {"events_pledged_amount", "Event Pledged Money", "eventspledgedamount", 110, money},
    {"events_pledged_amount_due", "Event Pledges Outstanding Money", "eventspledgedamountdue", 110,
     money},
    {"events_amount_current_year", "Current Year Event Money", "eventsamountcurrentyear", 110,
     money},
    {"events_amount_current_fiscalyear", "Current Fiscal Year Event Money",
     "eventsamountcurrentfiscalyear", 110, money},
    {"events_amount_previous_year", "Previous Year Event Money", "eventsamountpreviousyear", 110,
     money},
    {"events_amount_previous_fiscalyear", "Previous Fiscal Year Event Money",
     "eventsamountpreviousfiscalyear", 110, money},
    {"events_amount_period1", "Period 1 Event Money", "eventsamountperiod1", 110, money},
    {"events_amount_period2", "Period 2 Event Money", "eventsamountperiod2", 110, money},
    {"events_amount_period3", "Period 3 Event Money", "eventsamountperiod3", 110, money},
    {"events_amount_period4", "Period 4 Event Money", "eventsamountperiod4", 110, money},
    {"events_sponsorship_amount", "Event Sponsorship Money", "eventssponsorshipamount", 110, money},
    {"events_sponsorship_amount_current_year", "Current Year Event Sponsorship Money",
     "eventssponsorshipamountcurrentyear", 110, money},
    {"events_sponsorship_amount_current_fiscalyear", "Current Fiscal Year Event Sponsorship Money",
     "eventssponsorshipamountcurrentfiscalyear", 110, money},
    {"events_sponsorship_amount_previous_year", "Previous Year Event Sponsorship Money",
     "eventssponsorshipamountpreviousyear", 110, money},
    {"events_sponsorship_amount_previous_fiscalyear",
     "Previous Fiscal Year Event Sponsorship Money", "eventssponsorshipamountpreviousfiscalyear",
     110, money},
    {"events_sponsorship_amount_period1", "Period 1 Event Sponsorship Money",
     "eventssponsorshipamountperiod1", 110, money},
    {"events_sponsorship_amount_period2", "Period 2 Event Sponsorship Money",
     "eventssponsorshipamountperiod2", 110, money},
    {"events_sponsorship_amount_period3", "Period 3 Event Sponsorship Money",
     "eventssponsorshipamountperiod3", 110, money},
    {"events_sponsorship_amount_period4", "Period 4 Event Sponsorship Money",
     "eventssponsorshipamountperiod4", 110, money},
};

constexpr Column donationColumns[] = {
    {"donation_haseventorreservation_display", "Associated With Event/Reservation",
     "donationHasEventOrReservation", 175, hostDefault},
    {"donation_eventorreservationname", "Event/Reservation Name", "donationEventOrReservationName",
     200, hostDefault},
    {"donation_eventid", "Event Id", "donationFKEventId", 70, wholeNumber},
};

constexpr Column pledgeColumns[] = {
    {"donation_haseventYesNo", "Associated With Event", "donationHasEventValue", 70, hostDefault},
    {"donation_eventorreservationname", "Event Name", "donationEventOrReservationName", 200,
     hostDefault},
    {"donation_eventid", "Event Id", "donationFKEventId", 70, wholeNumber},
};

struct List {
    std::string_view type;
    std::span<const Column> columns;
};
constexpr List lists[] = {
    {"donors", donorColumns}, {"donations", donationColumns}, {"pledges", pledgeColumns}};

} // namespace

void addEventColumns(const SmartListColumns& list)
{
    const std::string type = list.listType();
    const auto* found = std::ranges::find(lists, type, &List::type);
    if (found == std::end(lists)) return;
    for (const Column& column : found->columns) {
        const auto added = list.newColumn();
        added.setModuleId("events");
        added.setKey(column.key);
        added.setCaption(column.caption);
        added.setVisible(false);
        added.setWidth(column.width);
        added.setDataField(column.dataField);
        if (column.dataType) added.setDataType(*column.dataType);
        if (column.dataType == money) added.setOperation("donations/view");
        list.add(added, column.key);
    }
}

} // namespace qmevents
