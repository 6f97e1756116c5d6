// What the copy of an event starts with: the next year's name and dates.

import { shifted } from "../lib/days.js";

const weeks = 52;

/** Days by which a copy lies after its event at first: a year that keeps the day of the week. */
export const usualShift = weeks * 7;

/** A name for the copy: the year in it goes on with the start's; a name without one says "Copy". */
export function copyName(name, start) {
    const year = Number(start.date.slice(0, 4));
    const next = shifted(start, usualShift).date.slice(0, 4);
    const pattern = new RegExp(`\\b${year}\\b`);
    return year && pattern.test(name) ? name.replace(pattern, next) : `Copy of ${name}`;
}

/** "3 activities, 1 task and 12 participants" of [[count, one, several], ...]; blank for none. */
export function countsText(counts, format) {
    const counted = ([count, one, several]) =>
        count === 1 ? `1 ${one}` : `${format.whole(count)} ${several}`;
    const parts = counts.filter(([count]) => count > 0).map(counted);
    return parts.length > 1 ? `${parts.slice(0, -1).join(", ")} and ${parts.at(-1)}` : parts.join();
}
