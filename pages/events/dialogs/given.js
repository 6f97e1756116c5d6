// What a dialog was handed over, whatever a script may have put there.

import { all, App, ask } from "../../lib/app.js";
import { heldRef } from "../../lib/chain.js";

const valueOf = async (name) => (await all([ask.call(App.Shell.Dialog(name))]))[0];

/** The key under `name`; 0 when there is none, or something else. */
export async function givenKey(name) {
    const value = await valueOf(name);
    return Number.isInteger(value) && value > 0 ? value : 0;
}

/** The object under `name` that has `member`; undefined when there is none, or something else. */
export async function givenObject(name, member) {
    const value = await valueOf(name);
    if (heldRef(value) === undefined) return undefined;
    const isRight = await all([ask.read(value, [member])]).then(
        () => true,
        () => false,
    );
    return isRight ? value : undefined;
}
