// A list of events of which one can be chosen.

/** Gives a function that shows rows in `element`, or the text `nothing` where there are none. */
export function chooser(element, { format, choose }) {
    return (rows, { nothing, hasMore }) => {
        const list = document.createElement("ul");
        list.className = "chooser";
        list.append(
            ...rows.map(({ Id, Name, StartDateTime }) => {
                const button = document.createElement("button");
                button.type = "button";
                const name = document.createElement("span");
                name.textContent = Name;
                const when = document.createElement("span");
                when.className = "faint";
                when.textContent = format.longDate(StartDateTime);
                button.append(name, when);
                button.addEventListener("click", () => choose(Id));
                const item = document.createElement("li");
                item.append(button);
                return item;
            }),
        );
        const words = document.createElement("p");
        words.className = "hint";
        words.setAttribute("role", "status");
        words.textContent =
            rows.length === 0
                ? nothing
                : hasMore
                  ? "More match: type more of the name to narrow them down."
                  : "";
        element.replaceChildren(...(rows.length > 0 ? [list] : []), words);
    };
}
