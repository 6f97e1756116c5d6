// The overview tab of an event: what it is, how its money and its people stand.

import { nameIn } from "./lookups.js";

const facts = ["Name", "Description", "Notes", "StartDateTime", "EndDateTime", "RSVPDateTime",
    "FKCategoryId", "FKStatusId", "FKLocationId", "FKCoordinatorId", "FKFundId", "FKCampaignId",
    "FKAppealId", "MinCapacity", "MaxCapacity", "AttendanceGoal", "RevenueGoal"];

export const auditColumns = ["CreateUser", "CreateDate", "LastUpdateUser", "LastUpdateDate"];

const [amount, count, dateTime, choice, text, whole] =
    ["amount", "count", "dateTime", "choice", "text", "whole"];

/** Sections of rows: property, label, how it is written. What is blank is left out. */
const sections = [
    {
        key: "about", title: "About",
        rows: [
            ["Description", "Description", text],
            ["FKCategoryId", "Category", choice], ["FKStatusId", "Status", choice],
            ["FKLocationId", "Location", choice], ["FKCoordinatorId", "Coordinator", choice],
            ["EndDateTime", "Ends", dateTime], ["RSVPDateTime", "Reply by", dateTime],
            ["FKFundId", "Fund", choice], ["FKCampaignId", "Campaign", choice],
            ["FKAppealId", "Appeal", choice],
            ["Notes", "Notes", text],
        ],
    },
    {
        key: "revenue", title: "Revenue",
        rows: [
            ["PotentialRevenue", "Potential", amount], ["TotalExpected", "Expected", amount],
            ["CurrentRevenue", "Received", amount], ["OutstandingRevenue", "Outstanding", amount],
            ["TotalExpenses", "Expenses", amount], ["NetRevenue", "Net", amount],
            ["RevenueGoal", "Goal", amount],
        ],
    },
    {
        key: "people", title: "People",
        rows: [
            ["NumberParticipants", "Participants", count], ["NumberInvited", "Invited", count],
            ["NumberAccepted", "Accepted", count], ["NumberDeclined", "Declined", count],
            ["NumberAttended", "Attended", count], ["AttendanceGoal", "Attendance goal", whole],
            ["MinCapacity", "Fewest attendees", whole], ["MaxCapacity", "Most attendees", whole],
        ],
    },
    {
        key: "reservations", title: "Reservations",
        rows: [
            ["NumberReservations", "Reservations", count],
            ["ReservationsRevenue", "Received", amount], ["ExpectedRevenue", "Expected", amount],
            ["NumberActivities", "Activities", count],
            ["NumberReservationActivities", "Activities reserved", count],
            ["NumberSponsorships", "Sponsorships offered", count],
            ["NumberSponsorshipsReserved", "Sponsorships reserved", count],
            ["SponsorshipsRevenue", "From sponsorships", amount],
        ],
    },
    {
        key: "donations", title: "Donations and pledges",
        rows: [
            ["DonationsRevenue", "Donations", amount], ["receivedAmount", "Gifts received", amount],
            ["numberDonations", "Number of gifts", count],
            ["averageDonation", "Average gift", amount],
            ["largestDonation", "Largest gift", amount],
            ["totalPledged", "Pledged", amount], ["numberPledges", "Number of pledges", count],
            ["averagePledge", "Average pledge", amount],
            ["largestPledge", "Largest pledge", amount],
            ["PledgesReceived", "Pledges received", amount],
            ["PledgesOutstanding", "Pledges outstanding", amount],
        ],
    },
];

/** The overview's boxes, each { key, title }. */
export const overviewBoxes = sections.map(({ key, title }) => ({ key, title }));

const figures = sections.flatMap(({ rows }) => rows.map(([property]) => property));

/** All that the overview reads of an event. */
export const overviewColumns = [...new Set([...facts, ...figures])];

/** The overview's sections for the model (see details_model.js). */
export function overviewSections({ event, lookups, format }) {
    const writers = {
        [amount]: (value) => format.money(value.rounded()),
        [count]: (value) => format.whole(value),
        [whole]: (value) => (value ? format.whole(value) : ""),
        [dateTime]: (value) => format.dateTime(value, format.longDate),
        [choice]: (value, property) => nameIn(lookups[property], value),
        [text]: (value) => value,
    };
    return sections.map(({ key, title, rows }) => ({
        key,
        title,
        rows: rows
            .map(([property, name, how]) => ({
                id: property,
                name,
                value: writers[how](event[property], property),
                halfWidth: how !== text,
            }))
            .filter(({ value }) => value),
    }));
}
