// Searching events: what the user asks for, as the criteria of the event store.

import { literalSearch } from "../lib/search_text.js";
import { DateTime } from "../lib/values.js";

/** The orders that a list of events offers. The id comes last so that no two rows tie. */
const orders = {
    name: ["Name", "StartDateTime", "Id"],
    start: ["StartDateTime", "Name", "Id"],
    capacity: ["MaxCapacity", "StartDateTime", "Name", "Id"],
};

/** The spans of time that a list of events offers, and how each is ordered at first. */
export const spans = {
    upcoming: { label: "Upcoming", descending: false },
    past: { label: "Past", descending: true },
    season: { label: "This season", descending: false },
    all: { label: "All", descending: true },
};

/** What a list of events can be narrowed down by: the name in the address and the event's field. */
export const filterFields = {
    category: "FKCategoryId",
    status: "FKStatusId",
    location: "FKLocationId",
    coordinator: "FKCoordinatorId",
    fund: "FKFundId",
    campaign: "FKCampaignId",
    appeal: "FKAppealId",
};

export const sortKeys = Object.keys(orders);

/** "StartDateTime DESC, Name, Id"; the first column's direction is the user's. */
export function orderBy({ sort, descending }) {
    const [first, ...others] = orders[sort] ?? orders.start;
    return [descending ? `${first} DESC` : first, ...others].join(", ");
}

/**
 * The condition for a span of time, with `today` and `season`, the fiscal year that holds it, as
 * the session tells them. `literal` writes a date-time for the open database.
 */
export async function spanCondition(span, { today, season }, literal) {
    const from = async (day) => `StartDateTime >= ${await literal(DateTime.of(day))}`;
    const before = async (day) => `StartDateTime < ${await literal(DateTime.of(day))}`;
    switch (span) {
        case "upcoming":
            return from(today);
        case "past":
            return before(today);
        case "season":
            return `${await from(season.from)} AND ${await before(season.until)}`;
        default:
            return "";
    }
}

/**
 * The criteria of a search for `text` among the events that `filters` (ids by field) let through;
 * one row more than shown tells whether there are more.
 */
export function criteriaValues({ text, filters = {}, where, order, shown }) {
    const wanted = Object.values(filterFields).map((field) => [field, filters[field] ?? null]);
    return {
        ...Object.fromEntries(wanted),
        SearchString: literalSearch(text),
        CustomWhere: where,
        CustomOrderBy: order,
        MaxRows: shown + 1,
    };
}

/** A list's state from the address, and back; what is usual is left out. */
export function stateFromAddress(search, usualSpan = "upcoming") {
    const query = new URLSearchParams(search);
    const span = query.get("show") in spans ? query.get("show") : usualSpan;
    const [sort, direction] = (query.get("sort") ?? "").split("-");
    const known = sortKeys.includes(sort);
    return {
        text: query.get("q") ?? "",
        filters: filtersFrom(query),
        span,
        sort: known ? sort : "start",
        descending: known ? direction === "desc" : spans[span].descending,
        shown: Math.max(Number(query.get("rows")) || 0, pageSize),
    };
}

/** The filters that an address names by whole numbers; 0 stands for events without a choice. */
function filtersFrom(query) {
    const given = Object.entries(filterFields).map(([name, field]) => [field, query.get(name)]);
    return Object.fromEntries(
        given
            .filter(([, text]) => /^\d{1,9}$/.test(text ?? ""))
            .map(([field, text]) => [field, Number(text)]),
    );
}

export const pageSize = 50;

export function addressOfState({ text, filters, span, sort, descending, shown }, usualSpan = "upcoming") {
    const query = new URLSearchParams();
    if (text) query.set("q", text);
    for (const [name, field] of Object.entries(filterFields)) {
        if (filters[field] !== undefined) query.set(name, filters[field]);
    }
    if (span !== usualSpan) query.set("show", span);
    if (sort !== "start" || descending !== spans[span].descending) {
        query.set("sort", descending ? `${sort}-desc` : sort);
    }
    if (shown > pageSize) query.set("rows", shown);
    return String(query) && `?${query}`;
}
