// Which field of an event a refusal of the store is about.

/** The first lines of the store's messages. */
const fieldsByMessage = {
    "The event name is required.": "Name",
    "The event start date is required.": "StartDateTime",
    "The event end date is required if an end time is entered.": "EndDateTime",
    "The event end date cannot be before the event start date.": "EndDateTime",
    "The event RSVP date is required if an RSVP time is entered.": "RSVPDateTime",
    "The selected event location no longer exists.": "FKLocationId",
    "The selected event category no longer exists.": "FKCategoryId",
    "The selected event status no longer exists.": "FKStatusId",
    "The selected event coordinator no longer exists.": "FKCoordinatorId",
    "The selected fund no longer exists.": "FKFundId",
    "The selected campaign no longer exists.": "FKCampaignId",
    "The selected appeal no longer exists.": "FKAppealId",
};

/** The field's name; undefined for a message that is about no field of its own. */
export function fieldOfRefusal(message) {
    return fieldsByMessage[message.split(/\r?\n/)[0].trim()];
}
