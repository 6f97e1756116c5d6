// One lookup list on the settings page.

import { App, read, release, set, write } from "../lib/app.js";
import { changesBetween } from "../lib/conflicts.js";
import { itemPanel } from "../lib/item_list.js";
import { confirmBox } from "../lib/message_box.js";
import { announce, notice } from "../lib/notice.js";
import { deletionText } from "./lookup_lists.js";
import {
    addItem,
    countUses,
    deleteItem,
    heldItem,
    heldList,
    moveItem,
    readItems,
    saveItem,
    showItem,
} from "./lookup_store.js";

const dialogs = () => App.Modules.Events.Objects("Events").Dialogs;
const donorDialogs = () => App.Modules.donor.Dialogs;

/** Sets up a list in `panel`; gives a function that reads and shows it anew. */
export function lookupPanel(panel, description, { format, mayEdit }) {
    const { thing, title } = description;

    const offers = (item, place, count) =>
        !mayEdit
            ? []
            : [
                  { label: "Up", isOff: place === 0, run: () => move(item, -1) },
                  { label: "Down", isOff: place === count - 1, run: () => move(item, 1) },
                  { label: item.visible ? "Hide" : "Offer", run: () => toggle(item) },
                  ...(description.properties ? [{ label: "Edit", run: () => edit(item) }] : []),
                  { label: "Delete", run: () => remove(item) },
              ];

    async function move({ id, name }, step) {
        const moved = await moveItem(description, id, step);
        if (moved) announce(`${name} moved to place ${moved.place} of ${moved.count}`);
    }

    async function toggle({ id, name, visible }) {
        if (!(await showItem(description, id, !visible))) return tellGone(name);
        announce(visible ? `${name} is not offered any more` : `${name} is offered again`);
    }

    function tellGone(name) {
        notice(`“${name}” no longer exists. It may have been deleted by another user.`, {
            fault: true,
        });
    }

    async function remove({ id, name }) {
        const uses = await countUses(description, id);
        const answer = await confirmBox({
            title: `Delete ${thing}`,
            text: deletionText(description, name, uses, format),
            buttons: [
                ["delete", "Delete"],
                ["keep", "Cancel"],
            ],
            danger: true,
        });
        if (answer === "delete") await deleteItem(description, id);
    }

    function add() {
        return description.properties ? addWithDialog() : addCoordinator();
    }

    async function addWithDialog() {
        const entered = await askFor("add");
        if (!entered) return;
        await addItem(description, entered);
        announce(`${entered.Name} added`);
    }

    /** A coordinator is a donor, so one is chosen instead of a name being entered. */
    async function addCoordinator() {
        const dialog = await donorDialogs().NewDialog("getdonor");
        await write(dialog, {
            Title: "Add a Coordinator",
            Heading: "Find the Donor Who Coordinates",
            AllowNew: true,
            AllowAdvanced: true,
        });
        const isChosen = await dialog.Create();
        const donor = isChosen ? await dialog.DonorId : 0;
        release(dialog);
        if (!donor) return;
        const items = await readItems(description);
        const known = items.find(({ id }) => id === donor);
        if (known) return notice(`${known.name} is a coordinator already.`);
        await addItem(description, { FKdonorId: donor, Visible: true });
    }

    /** Shows what the item is now, lets it be changed, and stores what was changed. */
    async function edit({ id, name }) {
        const before = await readItem(id);
        if (!before) return tellGone(name);
        const entered = await askFor("edit", before, id);
        if (!entered) return;
        const mine = changed(before, entered);
        const now = await readItem(id);
        if (!now) return askToAddAgain(entered);
        const conflicts = changesBetween(before, now, mine).filter(
            ({ isMineChanged }) => isMineChanged,
        );
        if (conflicts.length > 0 && !(await askToOverwrite(conflicts, now))) return;
        const item = await heldItem(description, id);
        await write(item, mine);
        await saveItem(description, item);
        release(item);
        announce(`${entered.Name} saved`);
    }

    async function readItem(id) {
        const item = await heldItem(description, id);
        if (!item) return undefined;
        const values = await read(item, description.properties);
        release(item);
        return values;
    }

    /** The dialog for an item with `values`; gives what was entered, or nothing when cancelled. */
    async function askFor(action, values = {}, id) {
        const { one, all, properties } = description;
        const dialog = await dialogs().NewDialog(`edit${one.toLowerCase()}`);
        const held = await heldList(description);
        await write(dialog, { ...values, Action: action, ...(id && { EditId: id }) });
        await set(dialog[all], held);
        const isConfirmed = await dialog.Create();
        const entered = isConfirmed ? await read(dialog, properties) : undefined;
        release(dialog, held);
        return entered;
    }

    function changed(before, entered) {
        const names = description.properties.filter((name) => entered[name] !== before[name]);
        return Object.fromEntries(names.map((name) => [name, entered[name]]));
    }

    async function askToOverwrite(conflicts, now) {
        const lines = conflicts.map(
            ({ name, mine, theirs }) => `${name}: “${theirs}” now, “${mine}” yours`,
        );
        const answer = await confirmBox({
            title: "Changed by someone else",
            text: `“${now.Name}” was changed after you opened it.\n${lines.join("\n")}`,
            buttons: [
                ["mine", "Save mine"],
                ["theirs", "Keep theirs"],
            ],
        });
        return answer === "mine";
    }

    async function askToAddAgain(entered) {
        const answer = await confirmBox({
            title: "No longer there",
            text: `“${entered.Name}” was deleted by another user meanwhile.`,
            buttons: [
                ["add", "Add it again"],
                ["leave", "Leave it deleted"],
            ],
        });
        if (answer === "add") await addItem(description, entered);
    }

    return itemPanel(panel, {
        thing, title, read: () => readItems(description), add: mayEdit ? add : undefined, offers, format,
    });
}
