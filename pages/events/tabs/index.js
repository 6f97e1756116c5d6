// The tabs of the event details page, in their order. A tab is
// - key: names it in the address ("&tab=expenses") and, after "events_", everywhere else;
// - title;
// - right: what a user needs to see it, "events/view" where it names none;
// - sections(context): what it adds to the details page's model, if anything;
// - show(panel, context): fills its panel when the tab is first chosen, and gives a function that
//   brings the panel up to date at any time. `context` is { eventId, event, format, allowed,
//   lookups, session, sections, refresh }: the event's values as they were last read, what the
//   model holds for the tab, and a way to have the whole page read again.

import { tab as activities } from "./activities.js";
import { tab as expenses } from "./expenses.js";
import { tab as gifts } from "./gifts.js";
import { tab as groups } from "./groups.js";
import { tab as overview } from "./overview.js";
import { tab as participants } from "./participants.js";
import { tab as reservations } from "./reservations.js";
import { tab as sponsorships } from "./sponsorships.js";
import { tab as tasks } from "./tasks.js";

export const tabs = [
    overview,
    activities,
    participants,
    groups,
    reservations,
    sponsorships,
    expenses,
    tasks,
    gifts,
];
