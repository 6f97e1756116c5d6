// The reservation fields of an activity: what is asked of whoever reserves it.

/** The types of a field: the host's number, its name, and the kind of control that enters it. */
export const fieldTypes = [
    { id: 1, name: "Text box", kind: "text" },
    { id: 2, name: "Drop-down list", kind: "oneOf", hasChoices: true },
    { id: 3, name: "Drop-down list or typed text", kind: "textOrOneOf", hasChoices: true },
    { id: 4, name: "Date", kind: "isoDate" },
    { id: 6, name: "Check box", kind: "flag" },
].map((type) => ({ ...type, visible: true }));

/** The type with a number; a text box for one that nobody knows. */
export function fieldType(number) {
    return fieldTypes.find(({ id }) => id === number) ?? fieldTypes[0];
}

/** `items` with the one at `from` at the place `to`. */
export function moved(items, from, to) {
    const others = items.filter((_, index) => index !== from);
    return [...others.slice(0, to), items[from], ...others.slice(to)];
}

/** What stands in the way of `fields` as a whole, in words; nothing when all is well. */
export function faultOfFields(fields) {
    const names = fields.map(({ name }) => name.trim().toLowerCase());
    const twice = fields.find((_, index) => names.indexOf(names[index]) < index);
    if (twice) return `Two reservation fields are called “${twice.name}”.`;
    const bare = fields.find(
        ({ type, choices }) => type === 2 && !choices.some(({ visible }) => visible),
    );
    return bare ? `The reservation field “${bare.name}” has no choices yet.` : "";
}

/** A field's default as people read it. */
export function defaultText({ type, defaultValue }, format) {
    if (type === 6) return defaultValue === "1" ? "Ticked" : "Not ticked";
    const day = type === 4 ? format.parseDate(defaultValue) : undefined;
    return day ? format.date({ date: day }) : defaultValue;
}

/** "Beef, Fish, Vegetarian (hidden)". */
export function choicesText(choices) {
    return choices.map(({ name, visible }) => (visible ? name : `${name} (hidden)`)).join(", ");
}

/** What is wrong with the choices of a field, { name, text }; nothing when all is well. */
export function choiceFault(choices) {
    const names = choices.map(({ name }) => name.toLowerCase());
    const twice = choices.find((_, index) => names.indexOf(names[index]) < index);
    if (twice) return { name: twice.name, text: `“${twice.name}” is there twice.` };
    if (choices.length === 0) return { text: "A list needs at least one choice." };
    return undefined;
}
