// The start page: the widgets that the user has chosen, each on its own.

import { App, list } from "../lib/app.js";
import { build } from "../lib/build.js";
import { bindKey } from "../lib/keys.js";
import { confirmBox } from "../lib/message_box.js";
import { announce, reportFailure } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { onPress } from "../lib/press.js";
import { DateTime } from "../lib/values.js";
import { commands } from "../events/addin.js";
import { widgetBox } from "./widget_box.js";

const byId = (id) => document.getElementById(id);
const widgets = () => App.Modules.Quillmere.Widgets;

startPage("Home", async ({ session, format, allowed }) => {
    byId("greeting").textContent = `Welcome, ${session.user.name}`;
    byId("today").textContent = format.longDate(DateTime.of(session.today));
    byId("quick").hidden = false;
    byId("add").hidden = !allowed("events/edit");
    byId("find").hidden = !allowed("events/view");
    onPress(byId("add"), () => commands().AddEvent());
    onPress(byId("find"), () => commands().FindEvent());
    onPress(byId("choose"), choose);
    if (allowed("events/view")) bindKey("f", "Find an event", () => byId("find").click());
    if (allowed("events/edit")) bindKey("n", "Add an event", () => byId("add").click());

    const columns = ["Key", "Title", "Description", "IsShown"];
    const { rows } = await list(widgets().Load(), columns);
    let hidden = rows.filter(({ IsShown }) => !IsShown);
    let boxes = rows.filter(({ IsShown }) => IsShown).map(boxOf);

    function boxOf(widget) {
        const box = widgetBox(widget, format, {
            moveUp: () => move(box, -1),
            moveDown: () => move(box, 1),
            remove: () => remove(box),
        });
        return box;
    }

    /** Puts the boxes in their order; those that stay are not drawn anew. */
    function arrange() {
        const elements = boxes.map(({ element }) => element);
        byId("widgets").replaceChildren(...elements);
        byId("empty").hidden = boxes.length > 0;
        byId("choose").hidden = hidden.length === 0;
    }

    function keep() {
        arrange();
        return widgets().Arrange(boxes.map(({ widget }) => widget.Key).join(","));
    }

    async function move(box, step) {
        const from = boxes.indexOf(box);
        const to = from + step;
        if (to < 0 || to >= boxes.length) {
            return announce(`${box.widget.Title} is the ${step < 0 ? "first" : "last"} already`);
        }
        boxes.splice(to, 0, ...boxes.splice(from, 1));
        await keep();
        box.focus();
        announce(`${box.widget.Title} moved to place ${to + 1} of ${boxes.length}`);
    }

    async function remove(box) {
        const place = boxes.indexOf(box);
        boxes = boxes.filter((one) => one !== box);
        hidden = [...hidden, box.widget];
        await keep();
        (boxes[place] ?? boxes.at(-1) ?? { focus: () => byId("choose").focus() }).focus();
        announce(`${box.widget.Title} removed`);
    }

    async function choose() {
        let chosen;
        const offers = hidden.map((widget) =>
            build("li", {}, build("button", { type: "button", on: { click: (event) => {
                chosen = widget;
                event.target.closest("dialog").close();
            } } },
                build("span", {}, build("b", { text: widget.Title }), build("br"),
                    build("span", { className: "faint", text: widget.Description })))),
        );
        await confirmBox({
            title: "Add a widget",
            content: build("ul", { className: "chooser" }, ...offers),
            buttons: [["cancel", "Cancel"]],
        });
        if (!chosen) return;
        hidden = hidden.filter((widget) => widget !== chosen);
        const box = boxOf(chosen);
        boxes = [...boxes, box];
        await keep();
        await box.update();
        box.focus();
        announce(`${chosen.Title} added`);
    }

    arrange();
    const updateAll = () => Promise.all(boxes.map((box) => box.update()));
    document.addEventListener("hostrefresh", () => updateAll());
    await updateAll();
});
