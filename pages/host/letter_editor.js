// The letter of a mailing list: its text, the fields that it can hold, and what it becomes.

import { all, ask, list } from "../lib/app.js";
import { build } from "../lib/build.js";
import { coalesced } from "../lib/coalesced.js";
import { notice, reportFailure } from "../lib/notice.js";
import { submitOnce } from "../lib/submit_once.js";
import { guardUnsaved } from "../lib/unsaved.js";

const restBeforePreview = 300;

/**
 * Sets up the editor in `section` for `held`, a mailing list of `count` donors that the host holds.
 * `allUrl` shows all its letters. `begin()` reads and shows it, `update()` draws the preview anew.
 */
export function letterEditor(section, held, { count, allUrl, format }) {
    const find = (id) => section.querySelector(`#${id}`);
    const text = find("letter-text");
    let saved = "";
    let place = 0;
    let timer;

    async function begin() {
        saved = await held.Letter;
        text.value = saved;
        const { rows } = await list(held.Fields, ["Name", "Caption", "Group"]);
        find("fields").replaceChildren(...groupsOf(rows).map(groupBox));
        guardUnsaved(() => text.value !== saved);
        section.hidden = false;
        await update();
    }

    function groupBox([name, fields]) {
        return build("div", { role: "group", "aria-label": name },
            build("h4", { text: name }),
            ...fields.map(({ Name, Caption }) => build("button", {
                type: "button",
                className: "quiet",
                text: Caption,
                title: `{${Name}}`,
                on: { click: () => insert(`{${Name}}`) },
            })));
    }

    function insert(words) {
        text.setRangeText(words, text.selectionStart, text.selectionEnd, "end");
        text.focus();
        text.dispatchEvent(new Event("input", { bubbles: true }));
    }

    // Previews follow each other: the one shown last is that of the text as it stands.
    const update = coalesced(async () => {
        const letter = text.value;
        const [unknown, { rows }] = await all([
            ask.call(held.UnknownFields(letter)),
            ask.list(held.Merge(letter, place, 1), ["DonorName", "Text"]),
        ]);
        find("letter-fault").textContent = unknown
            ? `This mailing has no field called ${unknown}. It stays in the letter as it is written.`
            : "";
        const [shown] = rows;
        find("preview").textContent = shown?.Text ?? "";
        find("preview-donor").textContent = shown
            ? `Letter ${format.whole(place + 1)} of ${format.whole(count)}, to ${shown.DonorName}`
            : "";
        find("preview-back").disabled = place === 0;
        find("preview-next").disabled = place >= count - 1;
    });

    function turn(step) {
        place = Math.min(Math.max(place + step, 0), count - 1);
        update().catch(reportFailure);
    }

    async function save() {
        const letter = text.value;
        const problem = await held.SaveLetter(letter);
        if (problem) {
            notice(problem, { fault: true });
            return false;
        }
        saved = letter;
        return true;
    }

    text.addEventListener("input", () => {
        clearTimeout(timer);
        timer = setTimeout(() => update().catch(reportFailure), restBeforePreview);
    });
    find("preview-back").addEventListener("click", () => turn(-1));
    find("preview-next").addEventListener("click", () => turn(1));
    submitOnce(find("letter-form"), find("letter-save"), async () => {
        if (await save()) notice("The letter is saved.");
    });
    find("letter-all").addEventListener("click", async () => {
        const isSaved = await save().catch(reportFailure);
        if (isSaved) location.assign(allUrl);
    });
    return { begin, update };
}

/** The fields by their groups, both in their order: [["Donor", [field, ...]], ...]. */
function groupsOf(fields) {
    const groups = new Map();
    for (const field of fields) groups.set(field.Group, [...(groups.get(field.Group) ?? []), field]);
    return [...groups];
}
