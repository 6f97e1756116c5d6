// Markup that modules give as a text, shown without trusting it: its words, lines, cells and the
// commands that its links run. Nothing else of it reaches the page.

const call =
    /^\s*javascript:\s*App\.Modules\.Events\.Objects\(\s*'Workflow'\s*\)\.Events\.(\w+)\((.*)\)\s*;?\s*$/i;
const argument = /\s*(?:'((?:[^'\\]|\\.)*)'|(-?\d+(?:\.\d+)?))\s*(?:,|$)/y;

/** The command that a link runs: { name, args }; undefined for any other link. */
export function commandOf(link) {
    const found = call.exec(link ?? "");
    if (!found) return undefined;
    const args = [];
    const text = found[2];
    argument.lastIndex = 0;
    while (argument.lastIndex < text.length) {
        const part = argument.exec(text);
        if (!part) return undefined;
        args.push(part[1] === undefined ? Number(part[2]) : part[1].replace(/\\(.)/g, "$1"));
    }
    return { name: found[1], args };
}

/** `markup` without inline styles: the pages' policy takes none and reports each that is parsed. */
export function withoutStyles(markup) {
    const style = /\sstyle\s*=\s*(?:"[^"]*"|'[^']*'|[^\s>]+)/gi;
    return markup.replace(/<[a-z][^<>]*>/gi, (tag) => tag.replace(style, ""));
}

/** What `markup` shows, as nodes; `run(command)` carries out what its links ask for. */
export function nodesOf(markup, run) {
    const plain = withoutStyles(String(markup ?? ""));
    const { body } = new DOMParser().parseFromString(plain, "text/html");
    return [...body.childNodes].flatMap((node) => shown(node, run));
}

const left = new Set(["SCRIPT", "STYLE", "TEMPLATE", "IFRAME", "OBJECT"]);

function shown(node, run) {
    if (node.nodeType === Node.TEXT_NODE) return [document.createTextNode(node.data)];
    if (node.nodeType !== Node.ELEMENT_NODE || left.has(node.tagName)) return [];
    const inner = [...node.childNodes].flatMap((child) => shown(child, run));
    switch (node.tagName) {
        case "BR":
            return [document.createElement("br")];
        case "TR":
            return [holder("div", "markup-row", inner)];
        case "TD":
        case "TH":
            return [holder("span", "markup-cell", inner)];
        case "STRONG":
        case "SMALL":
            return [holder(node.tagName, "", inner)];
        case "METER":
            return [meterOf(node, inner)];
        case "A":
            return [linkOf(node, inner, run)];
        default:
            return inner;
    }
}

function holder(tag, className, inner) {
    const element = document.createElement(tag);
    element.className = className;
    element.append(...inner);
    return element;
}

/** A bar between two numbers, which is called by its words. */
function meterOf(node, inner) {
    const meter = holder("meter", "", inner);
    const [min, max, value] = ["min", "max", "value"].map((name) => Number(node.getAttribute(name)));
    if (!(max > min) || Number.isNaN(value)) return holder("span", "", inner);
    Object.assign(meter, { min, max, value });
    meter.setAttribute("aria-label", meter.textContent);
    return meter;
}

function linkOf(node, inner, run) {
    const command = commandOf(node.getAttribute("href"));
    if (!command) return holder("span", "", inner);
    const button = holder("button", "row-link", inner);
    button.type = "button";
    button.addEventListener("click", () => run(command));
    return button;
}
