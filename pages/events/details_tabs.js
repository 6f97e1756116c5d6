// The tabs of the event details page: which there are, which is chosen, what they show.

import { set, App } from "../lib/app.js";
import { reportFailure } from "../lib/notice.js";
import { preferences, remember } from "../lib/preferences.js";
import { tabRow } from "../lib/tabs.js";
import { overviewBoxes } from "./details_overview.js";
import { showBoxes } from "./details_view.js";
import { tabs } from "./tabs/index.js";

const preference = "details-tab";
const prefix = "events_";

/**
 * What the model is filled with before it is asked which tabs the user may see; what the user has
 * `hidden` (see details_choice.js) is left out.
 */
export function tabsForModel(context, hidden) {
    return tabs
        .filter(({ key }) => !hidden.has(`tab-${key}`))
        .map(({ key, title, right = "events/view", sections }) => ({
            key: prefix + key,
            title,
            operation: right,
            sections: (sections?.(context) ?? []).filter(
                (section) => !hidden.has(`box-${section.key}`),
            ),
        }));
}

/** What a user with certain rights can leave out: every tab but the first, and the boxes of that. */
export function hideable({ allowed }) {
    return [
        ...tabs
            .slice(1)
            .filter(({ right }) => !right || allowed(right))
            .map(({ key, title }) => ({ key: `tab-${key}`, title })),
        ...overviewBoxes.map(({ key, title }) => ({ key: `box-${key}`, title })),
    ];
}

/**
 * Shows the tabs of `model` (see readModel) in `head` and `panels` and opens the one asked for.
 * Gives a function that brings what is shown up to date.
 */
export async function showTabs(model, context, { head, panels }) {
    const first = await chosenTab(); // before there are tabs: a user's own choice is not overruled
    const shown = model.map(({ key, title }) => {
        const panel = document.createElement("div");
        panels.append(panel);
        return { key: key.replace(prefix, ""), title, panel, isStale: true };
    });
    const choose = tabRow(head, shown, (tab) => {
        keepChoice(tab.key);
        return bringUp(tab);
    });

    async function bringUp(tab) {
        if (!tab.isStale) return;
        tab.isStale = false;
        const { show } = tabs.find(({ key }) => key === tab.key) ?? generic(tab.key);
        tab.update ??= Promise.resolve(show(tab.panel, context)).then((update) => {
            tab.isFilled = true;
            return update;
        });
        const wasFilled = tab.isFilled;
        const update = await tab.update;
        if (wasFilled) await update?.();
    }

    await choose(first);
    return () => {
        for (const tab of shown) tab.isStale = true;
        return bringUp(shown.find(({ panel }) => !panel.hidden));
    };
}

/** A tab that some other script put into the model: nothing but its boxes. */
function generic(key) {
    return {
        show(panel, context) {
            panel.classList.add("boxes");
            const update = () => showBoxes(panel, context.sections(key));
            update();
            return update;
        },
    };
}

/** The tab that the address names, else a command, else the one that the user had last. */
async function chosenTab() {
    const inAddress = new URLSearchParams(location.search).get("tab");
    const [asked, [last]] = await Promise.all([App.Session("tabname"), preferences(preference)]);
    if (asked) set(App.Session("tabname"), "").catch(reportFailure);
    return inAddress || String(asked || "").replace(prefix, "") || last;
}

function keepChoice(key) {
    const address = new URL(location.href);
    if (address.searchParams.get("tab") === key) return;
    address.searchParams.set("tab", key);
    history.replaceState(history.state, "", address);
    remember(preference, key);
}
