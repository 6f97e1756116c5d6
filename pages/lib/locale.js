// Dates, times, money and numbers as the signed-in user reads and types them.

import { Currency } from "./values.js";

const months = [
    "January",
    "February",
    "March",
    "April",
    "May",
    "June",
    "July",
    "August",
    "September",
    "October",
    "November",
    "December",
];
const weekdays = ["Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"];
const largestWhole = 2147483647;

/**
 * Formats and parsers for `locale`, as /api/session describes it. Parsers give undefined for what
 * they cannot read: the host may still be able to.
 */
export function localeFormats(locale) {
    const order = partOrder(locale.order);

    /** "3/7/2026"; blank without a date. */
    function date(value) {
        const parts = dateParts(value);
        if (!parts) return "";
        const texts = { d: parts.day, m: parts.month, y: String(parts.year).padStart(4, "0") };
        if (order === "ymd") {
            texts.m = twoDigits(parts.month);
            texts.d = twoDigits(parts.day);
        }
        return [...order].map((part) => texts[part]).join(locale.dateSeparator);
    }

    /** "Sat, Mar 7, 2026"; blank without a date. */
    function longDate(value) {
        const parts = dateParts(value);
        if (!parts) return "";
        const { year, month, day } = parts;
        const weekday = weekdays[new Date(Date.UTC(year, month - 1, day)).getUTCDay()];
        const name = monthName(month);
        if (order === "dmy") return `${weekday} ${day} ${name} ${year}`;
        return order === "ymd"
            ? `${date(value)} ${weekday}`
            : `${weekday}, ${name} ${day}, ${year}`;
    }

    /** "Mar". */
    function monthName(month) {
        return months[month - 1]?.slice(0, 3) ?? "";
    }

    /** "6:30 PM", with seconds where there are any; blank without a time. */
    function time(value) {
        if (!value.time) return "";
        const [hour, minute, second] = value.time.split(":");
        const seconds = second === "00" ? "" : `:${second}`;
        if (!locale.twelveHours) return `${hour}:${minute}${seconds}`;
        const half = Number(hour) < 12 ? "AM" : "PM";
        return `${Number(hour) % 12 || 12}:${minute}${seconds} ${half}`;
    }

    /** Date and time in one text; what was not entered is left out. */
    function dateTime(value, dateFormat = date) {
        return [dateFormat(value), time(value)].filter(Boolean).join(", ");
    }

    /** "$1,234.50". */
    function money(amount) {
        const { whole, decimals } = amount.parts();
        const digits = `${grouped(whole)}${locale.decimalMark}${decimals}`;
        const text = locale.symbolLeads
            ? `${locale.currencySymbol}${digits}`
            : `${digits} ${locale.currencySymbol}`;
        return amount.isNegative ? `-${text}` : text;
    }

    /** "1,234". */
    function whole(value) {
        return value < 0 ? `-${grouped(String(-value))}` : grouped(String(value));
    }

    /** "1,234.5": with at most `most` decimals, and `least` of them even where they are 0. */
    function number(value, most = 2, least = 0) {
        const [size, decimals = ""] = Math.abs(value).toFixed(most).split(".");
        const fraction = decimals.slice(0, least) + decimals.slice(least).replace(/0+$/, "");
        const text = grouped(size) + (fraction && `${locale.decimalMark}${fraction}`);
        return value < 0 && /[1-9]/.test(text) ? `-${text}` : text;
    }

    function grouped(digits) {
        return digits.replace(/\B(?=(\d{3})+$)/g, locale.groupMark);
    }

    /** `text` with a point as decimal mark and no group marks; undefined if they stand wrongly. */
    function plainNumber(text) {
        const mark = escaped(locale.groupMark);
        const decimal = escaped(locale.decimalMark);
        const number = new RegExp(`^[-+]?(\\d+|\\d{1,3}(${mark}\\d{3})+)?(${decimal}\\d*)?$`);
        const trimmed = text.trim();
        if (!number.test(trimmed)) return undefined;
        return trimmed.replaceAll(locale.groupMark, "").replace(locale.decimalMark, ".");
    }

    /** A typed amount, with or without the currency symbol. */
    function parseMoney(text) {
        const bare = text.replace(locale.currencySymbol, "").trim();
        const plain = plainNumber(bare);
        return plain === undefined ? undefined : Currency.parse(plain);
    }

    /** A typed whole number that the host can hold. */
    function parseWhole(text) {
        const plain = plainNumber(text);
        if (plain === undefined || !/^[-+]?\d+$/.test(plain)) return undefined;
        const value = Number(plain);
        return value > largestWhole || value < -largestWhole - 1 ? undefined : value;
    }

    /** A typed date as "2026-03-07": in the locale's order, year first, or with a month's name. */
    function parseDate(text) {
        const typed = text.trim();
        const iso = /^(\d{4})[-/.](\d{1,2})[-/.](\d{1,2})$/.exec(typed);
        if (iso) return isoDate(iso[1], iso[2], iso[3]);
        const numbers = /^(\d{1,4})[-/. ]+(\d{1,2})[-/. ]+(\d{4}|\d{2})\.?$/.exec(typed);
        if (numbers) {
            const part = (name) => numbers[1 + order.indexOf(name)];
            return isoDate(part("y"), part("m"), part("d"));
        }
        const named = /^(?:(\d{1,2})\.? )?([a-z]{3,})\.?(?: (\d{1,2}),?)?,? (\d{4}|\d{2})$/i.exec(
            typed,
        );
        if (!named || Boolean(named[1]) === Boolean(named[3])) return undefined;
        const month = months.findIndex((name) =>
            [name, name.slice(0, 3)].some((one) => one.toLowerCase() === named[2].toLowerCase()),
        );
        return month < 0 ? undefined : isoDate(named[4], month + 1, named[1] ?? named[3]);
    }

    return {
        date,
        longDate,
        monthName,
        time,
        dateTime,
        money,
        whole,
        number,
        parseMoney,
        parseWhole,
        parseDate,
        parseTime,
        dateHint: dateHint(order, locale.dateSeparator),
        timeHint: locale.twelveHours ? "6:30 PM" : "18:30",
    };
}

/** A typed time as "18:30:00": "18:30", "6:30 pm", "6pm", "noon". */
export function parseTime(text) {
    const typed = text.trim().toLowerCase();
    if (typed === "noon") return "12:00:00";
    const parts = /^(\d{1,2})(?::(\d{2}))?(?::(\d{2}))? ?(?:([ap])\.?m?\.?)?$/.exec(typed);
    if (!parts) return undefined;
    const [, hours, minute = "00", second = "00", half] = parts;
    if (!half && parts[2] === undefined) return undefined;
    let hour = Number(hours);
    if (half && (hour < 1 || hour > 12)) return undefined;
    if (half) hour = (hour % 12) + (half === "p" ? 12 : 0);
    if (hour > 23 || Number(minute) > 59 || Number(second) > 59) return undefined;
    return `${twoDigits(hour)}:${minute}:${second}`;
}

/** "d", "m" and "y" in the order in which they stand, from "monthDayYear" or "mdy". */
function partOrder(order) {
    return { m: "mdy", d: "dmy", y: "ymd" }[order[0].toLowerCase()];
}

function dateParts(value) {
    if (!value.date) return undefined;
    const [year, month, day] = value.date.split("-").map(Number);
    return { year, month, day };
}

function isoDate(year, month, day) {
    // Two digits mean 2000 to 2029 and 1930 to 1999, as everywhere in the host.
    const century = Number(year) < 30 ? 2000 : 1900;
    const y = String(year).length <= 2 ? century + Number(year) : Number(year);
    const exact = new Date(Date.UTC(y, month - 1, day));
    const exists = exact.getUTCMonth() === month - 1 && exact.getUTCDate() === Number(day);
    if (!exists || y < 100) return undefined;
    return `${String(y).padStart(4, "0")}-${twoDigits(month)}-${twoDigits(day)}`;
}

function dateHint(order, separator) {
    const names = { d: "day", m: "month", y: "year" };
    return [...order].map((part) => names[part]).join(separator);
}

function twoDigits(number) {
    return String(number).padStart(2, "0");
}

function escaped(text) {
    return text.replace(/[.*+?^${}()|[\]\\]/g, "\\$&");
}
