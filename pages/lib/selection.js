// Which rows of a list are chosen: by keys, so that a choice outlives the rows shown.

/** Keys that are chosen. `onChange(selection)` hears of every change. */
export function createSelection(onChange = () => {}) {
    const keys = new Set();
    let last;
    const changed = () => onChange(selection);
    const put = (key, isChosen) => (isChosen ? keys.add(key) : keys.delete(key));

    const selection = {
        get size() {
            return keys.size;
        },
        get keys() {
            return [...keys];
        },
        has: (key) => keys.has(key),

        /**
         * Chooses `key` or lets it go; with `extend` all from the key used last to this one, in the
         * order of `shown`.
         */
        pick(key, isChosen, { extend = false, shown = [] } = {}) {
            const [from, to] = [shown.indexOf(last), shown.indexOf(key)];
            const range =
                extend && from >= 0 && to >= 0
                    ? shown.slice(Math.min(from, to), Math.max(from, to) + 1)
                    : [key];
            for (const one of range) put(one, isChosen);
            last = key;
            changed();
        },

        /** Chooses all of `some`, or lets them go. */
        pickAll(some, isChosen) {
            for (const key of some) put(key, isChosen);
            changed();
        },

        clear() {
            keys.clear();
            last = undefined;
            changed();
        },

        /** Lets go of what is no longer in `existing`. */
        keepOnly(existing) {
            const still = new Set(existing);
            const gone = [...keys].filter((key) => !still.has(key));
            for (const key of gone) keys.delete(key);
            if (gone.length > 0) changed();
        },
    };
    return selection;
}

/**
 * Ties a table's check boxes to `selection`: one box a row (class "pick", in a row with a numeric
 * data-id) and `all`, which stands for the rows shown. Gives a function that shows what is chosen,
 * to be called after the rows or the selection changed.
 */
export function checkBoxes(body, all, selection) {
    const rowKey = (box) => Number(box.closest("tr").dataset.id);
    const boxes = () => [...body.querySelectorAll("input.pick")];
    let shiftIsDown = false;

    body.addEventListener("click", (event) => {
        shiftIsDown = event.shiftKey;
    });
    body.addEventListener("change", ({ target }) => {
        if (!target.matches("input.pick")) return;
        const shown = boxes().map(rowKey);
        selection.pick(rowKey(target), target.checked, { extend: shiftIsDown, shown });
        update();
    });
    all.addEventListener("change", () => {
        selection.pickAll(boxes().map(rowKey), all.checked);
        update();
    });

    function update() {
        const shown = boxes();
        for (const box of shown) {
            box.checked = selection.has(rowKey(box));
            box.closest("tr").classList.toggle("chosen", box.checked);
        }
        const chosen = shown.filter((box) => box.checked).length;
        all.checked = chosen > 0 && chosen === shown.length;
        all.indeterminate = chosen > 0 && chosen < shown.length;
    }
    return update;
}
