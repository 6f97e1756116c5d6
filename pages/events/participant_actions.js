// What is done with the participants chosen in a list, beside changing them.

import { all, App, ask } from "../lib/app.js";
import { manage } from "./addin.js";

const pieceSize = 200;

/** The participants with `ids`, as they are stored now, in a collection that the host holds. */
export async function selectionOf(eventId, ids) {
    const collection = await manage().GetNewEventParticipants();
    for (let at = 0; at < ids.length; at += pieceSize) {
        const piece = ids.slice(at, at + pieceSize);
        const held = await all(piece.map((id) => ask.call(manage().GetEventParticipant(id))));
        await all(
            held.flatMap((one, index) => one ? [ask.call(collection.Add(one, piece[index]))] : []),
        );
    }
    return collection;
}

/** Starts a mailing to `donorIds`; the host then shows the list. */
export async function mailTo(donorIds) {
    const mailings = App.Modules.donor.MailingManage;
    const key = `{${crypto.randomUUID().toUpperCase()}}`;
    await mailings.OpenMailingDialog();
    try {
        for (let at = 0; at < donorIds.length; at += pieceSize) {
            const piece = donorIds.slice(at, at + pieceSize);
            await all(piece.map((id) => ask.call(mailings.AddToMailingList(key, id))));
        }
    } finally {
        await mailings.CloseMailingDialog();
    }
    await mailings.StartMailingProcess("Event", key);
}
