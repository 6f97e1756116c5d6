// Searching donors by what the user types: the advanced fields as a condition in SQL.

/** The kinds of donors. */
export const kinds = ["Person", "Household", "Organization"];

/**
 * The condition for `fields`, { lastName, city, kind, number }; blank ones count for nothing.
 * `literal(text)` writes a text for the open database. A number that is none finds nobody.
 */
export async function advancedCondition({ lastName, city, kind, number }, literal) {
    const parts = [];
    if (lastName) parts.push(`lastname LIKE ${await literal(`${meaningItself(lastName)}%`)}`);
    if (city) parts.push(`city LIKE ${await literal(`%${meaningItself(city)}%`)}`);
    if (kind) parts.push(`entitytype = ${await literal(kind)}`);
    if (number) parts.push(`id = ${/^\d{1,9}$/.test(number) ? Number(number) : 0}`);
    return parts.join(" AND ");
}

/** The engines read these characters as wildcards unless they stand in brackets. */
function meaningItself(text) {
    return text.replace(/[%_[]/g, "[$&]");
}
