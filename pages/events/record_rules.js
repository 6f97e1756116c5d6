// Which field of what belongs to an event a refusal of the store is about.

/** The beginnings of the store's messages, by kind of record. */
const rules = {
    activity: [
        ["A valid activity name is required.", "Name"],
        ["The # available cannot be changed", "QuantityAvailable"],
        ["The selected fund no longer exists.", "FKFundId"],
        ["The selected campaign no longer exists.", "FKCampaignId"],
        ["The selected appeal no longer exists.", "FKAppealId"],
    ],
    expense: [
        ["A valid expense date is required.", "ExpenseDate"],
        ["A valid expense amount is required.", "Amount"],
        ["A valid expense description is required.", "Description"],
    ],
    task: [
        ["A valid task name is required.", "Name"],
        ["A valid due date/time is required.", "DueDateTime"],
    ],
};

/** A function that names the field of a message; undefined for one about no field of its own. */
export function fieldOfRefusalOf(kind) {
    return (message) => rules[kind].find(([beginning]) => message.startsWith(beginning))?.[1];
}
