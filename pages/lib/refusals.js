// Messages of the host about what is being saved, kept for the form instead of shown in a box.

/**
 * Runs `save` and gives { result, refusals }: its result and the texts of the errors that the host
 * reported to the user meanwhile. Other messages are shown as ever.
 */
export async function collectRefusals(save) {
    const refusals = [];
    const collect = (event) => {
        if (event.detail.kind !== "userError") return;
        event.preventDefault();
        refusals.push(event.detail.text);
    };
    document.addEventListener("hostmessage", collect);
    try {
        return { result: await save(), refusals };
    } finally {
        document.removeEventListener("hostmessage", collect);
    }
}
