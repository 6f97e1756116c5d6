// What a page shows instead of an event that is not there.

export const deletedEvent =
    "This event no longer exists. It may have been deleted by another user.";

const toEvents = { href: "/events/events-view", text: "Back to the events" };

/** Replaces the content of the page by `reason` and a way back to the list. */
export function showMissing(reason, { title = "Event not found", back = toEvents } = {}) {
    document.title = `${title} - Quillmere`;
    const heading = document.createElement("h1");
    heading.textContent = title;
    heading.tabIndex = -1;
    const text = document.createElement("p");
    text.textContent = reason;
    const link = document.createElement("a");
    link.className = "button primary";
    link.href = back.href;
    link.textContent = back.text;
    const box = document.createElement("div");
    box.className = "empty-page";
    box.append(heading, text, link);
    document.querySelector("main").replaceChildren(box);
    heading.focus();
}
