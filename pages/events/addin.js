// The add-in's objects by short names. Each is a new chain, sent when something is asked of it.

import { App } from "../lib/app.js";

const root = () => App.Modules.Events.Objects("Events");

/** The event store. */
export const manage = () => root().EventsManage;

/** The lookup lists. */
export const lists = () => root().ListManage;

/** The model of the details page. */
export const detailsPage = () => root().DetailsPage;

/** The user's commands. */
export const commands = () => App.Modules.Events.Objects("Workflow").Events;
