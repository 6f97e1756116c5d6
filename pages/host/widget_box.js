// One widget of the start page. What goes wrong with it is told in its own box.

import { App, list, release, set } from "../lib/app.js";
import { build, buttonOf } from "../lib/build.js";
import { formBox } from "../lib/form_box.js";
import { menuButton } from "../lib/menu.js";
import { notice, reportFailure } from "../lib/notice.js";
import { nodesOf } from "../lib/safe_markup.js";
import { SignedOutError } from "../lib/server.js";
import { commands } from "../events/addin.js";
import { choicesOf, fieldOf } from "./widget_options.js";

const widgets = () => App.Modules.Quillmere.Widgets;

/**
 * The box of `widget` ({ Key, Title }): its `element`, `update()` that reads it anew and never
 * fails, and `focus()`. `orders` are what its menu does to the page: { moveUp, moveDown, remove }.
 */
export function widgetBox(widget, format, { moveUp, moveDown, remove }) {
    const { Key, Title } = widget;
    const element = document.getElementById("widget").content.firstElementChild.cloneNode(true);
    const heading = element.querySelector("h2");
    const body = element.querySelector(".widget-body");
    heading.id = `widget-${Key}`;
    heading.textContent = Title;
    element.setAttribute("aria-labelledby", heading.id);

    const told = (run) => () => Promise.resolve(run()).catch(reportFailure);
    const menu = menuButton("More", [
        { label: "Refresh", run: told(update) },
        { label: "Options", run: told(choose) },
        { label: "Move up", run: told(moveUp) },
        { label: "Move down", run: told(moveDown) },
        { label: "Remove", run: told(remove) },
    ], { className: "quiet" });
    const opener = menu.querySelector("button");
    opener.setAttribute("aria-label", `More about ${Title}`);
    element.querySelector(".widget-head").append(menu);

    let latest = 0;
    async function update() {
        latest += 1;
        const mine = latest;
        body.setAttribute("aria-busy", "true");
        let nodes;
        try {
            nodes = nodesOf(await widgets().Content(Key), run);
        } catch (error) {
            if (error instanceof SignedOutError) reportFailure(error);
            nodes = faultNodes(error);
        }
        if (mine !== latest) return;
        const place = focusable().indexOf(document.activeElement);
        body.replaceChildren(...nodes);
        nameFurtherLinks(body);
        body.removeAttribute("aria-busy");
        if (place >= 0) (focusable()[place] ?? focusable().at(-1) ?? heading).focus();
    }

    const focusable = () => [...body.querySelectorAll("button")];

    function faultNodes(error) {
        return [
            build("div", { role: "alert" },
                build("p", { className: "fault-text", text: "This widget cannot be shown just now." }),
                build("p", { className: "faint", text: error.message })),
            buttonOf("Try again", update, { "aria-label": `Try again to show ${Title}` }),
        ];
    }

    function run({ name, args }) {
        return commands()[name](...args).catch(reportFailure);
    }

    async function choose() {
        const held = await widgets().Options(Key);
        const columns = ["Key", "Caption", "Kind", "Value", "Choices"];
        const { rows: options } = await list(held.Options, columns);
        if (options.length === 0) {
            notice(`There is nothing to choose about ${Title}.`);
            return;
        }
        const saved = await formBox({
            title: `Options of ${Title}`,
            fields: options.map(fieldOf),
            values: Object.fromEntries(options.map((one) => [one.Key, String(one.Value ?? "")])),
            choices: Object.fromEntries(options.map((one) => [one.Key, choicesOf(one.Choices)])),
            action: "Save",
            format,
            async save(entered) {
                for (const [key, value] of Object.entries(entered)) {
                    await set(held.OptionValue(key), String(value));
                }
                return widgets().SaveOptions(held);
            },
        });
        release(held);
        if (saved) await update();
    }

    return { widget, element, update, focus: () => opener.focus() };
}

/** Links after the first of a row say what they are about: "Complete" becomes "Complete <task>". */
function nameFurtherLinks(body) {
    for (const row of body.querySelectorAll(".markup-row")) {
        const [first, ...others] = row.querySelectorAll("button");
        for (const link of others) {
            link.setAttribute("aria-label", `${link.textContent} ${first.textContent}`);
        }
    }
}
