// Letters as a file that browsers and word processors open: each begins a new page.

const style = `body { font: 12pt serif; margin: 2cm; }
.letter { white-space: pre-wrap; break-after: page; page-break-after: always; }
.letter:last-child { break-after: auto; page-break-after: auto; }`;

const references = { "&": "&amp;", "<": "&lt;", ">": "&gt;", '"': "&quot;" };

/** The file's text for `letters`, each { Text }. */
export function letterFile(letters) {
    const sheets = letters.map(({ Text }) => `<div class="letter">${escaped(Text)}</div>\n`);
    return (
        `<!DOCTYPE html>\n<html>\n<head><meta charset="utf-8"><title>Letters</title>\n` +
        `<style>${style}</style></head>\n<body>\n${sheets.join("")}</body>\n</html>\n`
    );
}

function escaped(text) {
    return text.replace(/[&<>"]/g, (mark) => references[mark]);
}
