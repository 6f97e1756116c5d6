// Keeps what was typed from being lost by a link, Back or closing.

import { confirmBox } from "./message_box.js";

/**
 * Asks before the page is left while `isChanged()`; gives a function that ends the asking, for when
 * all is saved.
 */
export function guardUnsaved(isChanged) {
    let marked = false;
    const changed = () => marked || isChanged();
    const onLeave = (event) => {
        if (changed()) event.preventDefault();
    };
    const onWindowClosing = (event) => {
        if (!changed()) return;
        event.preventDefault();
        askToDiscard();
    };
    const mark = () => {
        marked = true;
    };
    const end = () => {
        removeEventListener("beforeunload", onLeave);
        document.removeEventListener("windowclosing", onWindowClosing);
        document.removeEventListener("hostmodified", mark);
    };

    async function askToDiscard() {
        const answer = await confirmBox({
            title: "Discard what you entered?",
            text: "It has not been saved yet.",
            buttons: [
                ["keep", "Keep editing"],
                ["discard", "Discard"],
            ],
            escape: "keep",
        });
        if (answer === "keep") return;
        end();
        window.frameElement.dispatchEvent(new CustomEvent("windowcancel"));
    }

    addEventListener("beforeunload", onLeave);
    document.addEventListener("windowclosing", onWindowClosing);
    document.addEventListener("hostmodified", mark);
    return end;
}
