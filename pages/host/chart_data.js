// The figures of a chart, made ready for drawing.

import { Currency } from "../lib/values.js";

/**
 * { kind, title, categories, series: [{ name, values }], marks, isMoney }: plain numbers, `null`
 * where there is none. A mark is one figure, { at, one, category, name, value }: of the category
 * `at` and the series `one`.
 */
export function chartData({ kind, title, categories, series }) {
    const isMoney = series.some(({ values }) => values.some((one) => one instanceof Currency));
    const names = categories.map((name) => String(name ?? ""));
    const figures = series.map(({ name, values }) => ({
        name,
        values: values.map(plain),
    }));
    const marks = figures.flatMap(({ name, values }, one) =>
        values.map((value, at) => ({ at, one, category: names[at], name, value })));
    return {
        kind,
        title,
        isMoney,
        categories: names,
        series: figures,
        marks: marks.filter(({ value }) => value !== null),
    };
}

function plain(value) {
    if (value instanceof Currency) return Number(value.toString());
    return typeof value === "number" ? value : null;
}

/** The least and the greatest figure, 0 always among them; never one and the same. */
export function extent(marks) {
    const all = marks.map(({ value }) => value);
    const low = Math.min(0, ...all);
    const high = Math.max(0, ...all);
    return low === high ? [0, 1] : [low, high];
}

/** A figure on an axis: "$12,000", "1.5"; money without its cents where there are none. */
export function figureWords(value, isMoney, format) {
    if (!isMoney) return format.number(value);
    const cents = BigInt(Math.round(value * 100));
    return format.money(new Currency(cents * 100n)).replace(/[.,]00(?!\d)/, "");
}

/** `text` in at most `most` characters. */
export function shortened(text, most) {
    return text.length <= most ? text : `${text.slice(0, Math.max(most - 1, 1)).trimEnd()}…`;
}

/** Which of `count` labels stand below an axis that has room for `room`: every n-th. */
export function labelStep(count, room) {
    return Math.max(1, Math.ceil(count / Math.max(room, 1)));
}

/** What the chart is, in words, for those who do not see it. */
export function chartWords({ kind, title, categories, series }) {
    const what = kind === "line" ? "Line chart" : "Bar chart";
    const names = series.map(({ name }) => name).filter(Boolean).join(" and ");
    const count = categories.length === 1 ? "1 entry" : `${categories.length} entries`;
    return `${what}${title && `: ${title}`}. ${names ? `${names} for ` : ""}${count}. ` +
        "The table below has the figures.";
}
