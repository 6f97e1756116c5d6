// What a page shows instead of an event that is not there.

/** Replaces the content of the page by `reason` and a way back to the list. */
export function showMissing(reason) {
    document.title = "Event not found - Quillmere";
    const heading = document.createElement("h1");
    heading.textContent = "Event not found";
    heading.tabIndex = -1;
    const text = document.createElement("p");
    text.textContent = `${reason} It may have been deleted by another user.`;
    const link = document.createElement("a");
    link.className = "button primary";
    link.href = "/events/events-view";
    link.textContent = "Back to the events";
    const box = document.createElement("div");
    box.className = "empty-page";
    box.append(heading, text, link);
    document.querySelector("main").replaceChildren(box);
    heading.focus();
}
