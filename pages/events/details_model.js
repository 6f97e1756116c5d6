// The details page's model in the add-in: filled from plain descriptions, read back as it stands.
// Between the two the add-in leaves out what the user may not see.

import { all, ask, list, release } from "../lib/app.js";
import { detailsPage as page } from "./addin.js";

/**
 * Fills the model for the held `event` with `tabs`:
 * { key, title, operation, sections: [{ key, title, rows: [{ id, name, value, halfWidth }] }] }.
 */
export async function fillModel(event, tabs) {
    const sections = tabs.flatMap((tab) => tab.sections);
    const rows = sections.flatMap((section) => section.rows);
    const [, ...made] = await all([
        ask.call(page().Init(event)),
        ...tabs.map(() => ask.call(page().GetNewTab())),
        ...sections.map(() => ask.call(page().GetNewSection())),
        ...rows.map(() => ask.call(page().GetNewSectionRow())),
    ]);
    const items = [...tabs, ...sections, ...rows];
    const objects = new Map(items.map((item, index) => [item, made[index]]));
    const object = (item) => objects.get(item);

    await all([
        ...rows.map((row) =>
            ask.write(object(row), {
                Id: row.id,
                Name: row.name,
                Value: row.value,
                HalfWidth: Boolean(row.halfWidth),
            }),
        ),
        ...sections.flatMap((section) => [
            ask.write(object(section), { Key: section.key, Title: section.title }),
            ...section.rows.map((row) => ask.call(object(section).Rows.Add(object(row), row.id))),
        ]),
        ...tabs.flatMap((tab) => [
            ask.write(object(tab), { Key: tab.key, Title: tab.title, Operation: tab.operation }),
            ...tab.sections.map((section) =>
                ask.call(object(tab).Sections.Add(object(section), section.key)),
            ),
            ask.call(page().Tabs.Add(object(tab), tab.key)),
        ]),
    ]);
    release(...made);
}

/** The model as plain tabs of sections of rows: one request for each of these. */
export async function readModel() {
    const { rows: tabs } = await list(page().Tabs, ["Key", "Title"]);
    const sectionsOf = ({ Key }) => page().Tabs.Item(Key).Sections;
    const sections = await all(
        tabs.map((tab) => ask.list(sectionsOf(tab), ["Key", "Title", "Link"])),
    );
    const pairs = tabs.flatMap((tab, index) =>
        sections[index].rows.map((section) => [tab, section]),
    );
    const lines = await all(
        pairs.map(([tab, { Key }]) =>
            ask.list(sectionsOf(tab).Item(Key).Rows, ["Id", "Name", "Value", "HalfWidth"]),
        ),
    );
    return tabs.map((tab) => ({
        key: tab.Key,
        title: tab.Title,
        sections: pairs.flatMap(([owner, { Key, Title, Link }], index) =>
            owner === tab ? [{ key: Key, title: Title, link: Link, rows: lines[index].rows }] : [],
        ),
    }));
}
