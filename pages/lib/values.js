// Values as the host knows them that JavaScript lacks: exact money and date-times without a zone.

const scale = 10000n;
const largest = 2n ** 63n - 1n;

/** An exact amount of money with four decimals. */
export class Currency {
    /** `scaled` counts ten-thousandths of a unit: 15000n is 1.50. */
    constructor(scaled = 0n) {
        this.scaled = scaled;
    }

    /** Reads "-12.5"; undefined when `text` is no plain number in range with four decimals. */
    static parse(text) {
        const parts = /^([-+]?)(\d*)(?:\.(\d{0,4}))?$/.exec(text);
        if (!parts || !(parts[2] || parts[3])) return undefined;
        const [, sign, whole, decimals = ""] = parts;
        const scaled = BigInt(whole || "0") * scale + BigInt(decimals.padEnd(4, "0"));
        if (scaled > largest) return undefined;
        return new Currency(sign === "-" ? -scaled : scaled);
    }

    get isZero() {
        return this.scaled === 0n;
    }
    get isNegative() {
        return this.scaled < 0n;
    }
    plus(other) {
        return new Currency(this.scaled + other.scaled);
    }
    minus(other) {
        return new Currency(this.scaled - other.scaled);
    }

    /** To whole cents, halves away from zero, for amounts that were worked out. */
    rounded() {
        const cent = scale / 100n;
        const half = this.isNegative ? -cent / 2n : cent / 2n;
        return new Currency(((this.scaled + half) / cent) * cent);
    }

    /** The digits before and after the point; two decimals, or four where the last two say more. */
    parts() {
        const size = this.isNegative ? -this.scaled : this.scaled;
        const decimals = String(size % scale).padStart(4, "0");
        return { whole: String(size / scale), decimals: decimals.replace(/00$/, "") };
    }

    /** Plain text, a point as the decimal mark: "12.50", "-3.0001". */
    toString() {
        const { whole, decimals } = this.parts();
        return `${this.isNegative ? "-" : ""}${whole}.${decimals}`;
    }
}

const zeroDate = "1899-12-30";
const midnight = "00:00:00";

/**
 * A date-time without a time zone. Midnight stands for "no time entered" and 30 December 1899 for
 * "no date entered"; both parts absent is the zero date-time.
 */
export class DateTime {
    /** `text` as in "2026-03-07T18:00:00". */
    constructor(text = `${zeroDate}T${midnight}`) {
        this.text = text;
    }

    /** From "2026-03-07" and "18:00:00"; either may be blank. */
    static of(date, time) {
        return new DateTime(`${date || zeroDate}T${time || midnight}`);
    }

    /** "2026-03-07", blank when none was entered. */
    get date() {
        const date = this.text.split("T")[0];
        return date === zeroDate ? "" : date;
    }

    /** "18:00:00", blank when none was entered. */
    get time() {
        const time = this.text.split("T")[1] ?? "";
        return time === midnight ? "" : time;
    }

    get isZero() {
        return !this.date && !this.time;
    }
    toString() {
        return this.text;
    }
}

/** Whether two values of the host are the same, wrapped ones by what they hold. */
export function sameValue(one, other) {
    if (one instanceof Currency && other instanceof Currency) return one.scaled === other.scaled;
    if (one instanceof DateTime && other instanceof DateTime) return one.text === other.text;
    return (one ?? null) === (other ?? null);
}
