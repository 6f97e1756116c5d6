// Label sheets and how badges are laid out on them.

/** Common label sheets: paper, columns and rows, and the measures in millimetres. */
export const sheets = {
    a4x8: {
        label: "A4, 2 × 4 (90 × 60 mm)", paper: "A4", columns: 2, rows: 4,
        width: 90, height: 60, top: 28, left: 15, gapX: 0, gapY: 0,
    },
    a4x10: {
        label: "A4, 2 × 5 (85 × 54 mm)", paper: "A4", columns: 2, rows: 5,
        width: 85, height: 54, top: 13.5, left: 15, gapX: 10, gapY: 0,
    },
    letterx8: {
        label: "Letter, 2 × 4 (3⅜ × 2⅓ in)", paper: "letter", columns: 2, rows: 4,
        width: 85.7, height: 59.3, top: 14.7, left: 17.5, gapX: 9.5, gapY: 4.7,
    },
    letterx6: {
        label: "Letter, 2 × 3 (4 × 3 in)", paper: "letter", columns: 2, rows: 3,
        width: 101.6, height: 76.2, top: 25.4, left: 6.35, gapX: 0, gapY: 0,
    },
};

/** `badges` by pages of a sheet whose first `skipped` labels are used up. */
export function pagesOf(badges, { columns, rows }, skipped = 0) {
    const size = columns * rows;
    const places = [...Array(Math.min(Math.max(skipped, 0), size - 1)).fill(undefined), ...badges];
    const pages = [];
    for (let at = 0; at < places.length; at += size) pages.push(places.slice(at, at + size));
    return badges.length > 0 ? pages : [];
}
