// A widget's options as fields of a form.

const kinds = { choice: "pick", yesno: "flag" };

/** The field for an option, { Key, Caption, Kind }. What its module refuses it says itself. */
export function fieldOf({ Key, Caption, Kind }) {
    return { name: Key, label: Caption, kind: kinds[Kind] ?? "text" };
}

/** "name=By name|date=By date" as [{ id, name }]; a caption may hold further equal signs. */
export function choicesOf(text) {
    return String(text ?? "")
        .split("|")
        .filter(Boolean)
        .map((choice) => {
            const [id, ...name] = choice.split("=");
            return { id, name: name.join("=") || id };
        });
}
