// Short notices that come and go, and words for screen readers alone.

const laterKey = "notice";
const shownFor = 6000;

/** Says `text` to screen readers without showing it. */
export function announce(text) {
    const region = regionOf("announcements", "visually-hidden");
    region.textContent = "";
    // Setting the same words again is not announced unless the region was empty for a moment.
    setTimeout(() => {
        region.textContent = text;
    }, 50);
}

/** Shows `text` for a while; a fault stays until it is dismissed. */
export function notice(text, { fault = false } = {}) {
    const item = document.createElement("div");
    item.className = fault ? "notice fault" : "notice";
    const words = document.createElement("span");
    words.textContent = text;
    const close = document.createElement("button");
    close.type = "button";
    close.className = "quiet";
    close.textContent = "Dismiss";
    close.addEventListener("click", () => item.remove());
    item.append(words, close);
    regionOf("notices", "notices").append(item);
    if (!fault) setTimeout(() => item.remove(), shownFor);
}

/** Shows `text` on the next page instead of this one. */
export function noticeLater(text) {
    sessionStorage.setItem(laterKey, text);
}

/** Shows what the page before left. */
export function showLeftNotice() {
    const text = sessionStorage.getItem(laterKey);
    sessionStorage.removeItem(laterKey);
    if (text) notice(text);
}

/** A failure that no page part has a better place for. */
export function reportFailure(error) {
    if (error.name !== "HostError") console.warn(error);
    notice(error.message, { fault: true });
}

function regionOf(id, className) {
    const existing = document.getElementById(id);
    if (existing) return existing;
    const region = document.createElement("div");
    region.id = id;
    region.className = className;
    region.setAttribute("role", "status");
    region.setAttribute("aria-live", "polite");
    document.body.append(region);
    return region;
}
