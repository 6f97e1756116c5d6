// Messages and questions in a native modal dialog.

let boxes = 0;

/**
 * Asks with `buttons`, pairs of a value and a label, the first of which is the one suggested.
 * `text` is shown with its line breaks, or `content` in its place. Resolves to the value of the
 * button pressed; Escape gives `escape`, which is the last button's value unless named.
 */
export function confirmBox({ title, text, content, buttons, escape = buttons.at(-1)[0], danger }) {
    boxes += 1;
    const box = document.createElement("dialog");
    box.className = "box";
    box.setAttribute("aria-labelledby", `box-title-${boxes}`);
    const heading = document.createElement("h2");
    heading.id = `box-title-${boxes}`;
    heading.textContent = title;
    const body = content ?? document.createElement("p");
    if (!content) {
        body.className = "lines";
        body.id = `box-text-${boxes}`;
        body.textContent = text;
        box.setAttribute("aria-describedby", body.id);
    }
    const row = document.createElement("div");
    row.className = "actions";
    for (const [index, [value, label]] of buttons.entries()) {
        const button = document.createElement("button");
        button.type = "button";
        button.textContent = label;
        button.className = index > 0 ? "" : danger ? "danger" : "primary";
        button.addEventListener("click", () => box.close(String(value)));
        row.append(button);
    }
    box.append(heading, body, row);
    box.addEventListener("cancel", (event) => {
        event.preventDefault();
        box.close(String(escape));
    });
    document.body.append(box);
    const asker = document.activeElement;
    box.showModal();
    return new Promise((resolve) => {
        box.addEventListener("close", () => {
            box.remove();
            asker?.focus?.();
            resolve(buttons.find(([value]) => String(value) === box.returnValue)?.[0] ?? escape);
        });
    });
}
