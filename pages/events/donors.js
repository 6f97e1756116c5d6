// Donors of the host, read many at a time.

import { App, list, release, write } from "../lib/app.js";

const columns = ["Id", "Display", "FirstName", "LastName", "EntityType", "City"];
const manage = () => App.Modules.donor.DonorManage;

/**
 * The donors that satisfy `criteria` ({ SearchString, CustomWhere, CustomOrderBy, MaxRows }), each
 * with the properties called `wanted`.
 */
export async function findDonors(criteria, wanted = columns) {
    const made = await manage().GetNewDonorCriteria();
    await write(made, criteria);
    const { rows } = await list(manage().GetDonorsBySearch(made), wanted, { count: 1000000 });
    release(made);
    return rows;
}

/** The donors who have a row for an event in a table of the add-in, by their ids. */
export async function donorsOfEvent(table, eventId) {
    const CustomWhere =
        `id IN (SELECT FKDonorId FROM ${table} WHERE FKEventId = ${Number(eventId)})`;
    const donors = await findDonors({ CustomWhere });
    return new Map(donors.map((donor) => [donor.Id, donor]));
}

/** By what a donor stands in a list: the last name, then the first. */
export function listName({ LastName, FirstName, Display }) {
    return [LastName || Display, FirstName].filter(Boolean).join(", ");
}

/** The address of a donor's own page. */
export function donorAddress(id) {
    return `/donor/details-donor?id=${id}`;
}
