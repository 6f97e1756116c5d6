// The details page's model in the add-in: filled from plain descriptions, read back as it stands.
// Between the two the add-in leaves out what the user may not see.

import { all, list, release, write } from "../lib/app.js";
import { detailsPage } from "./addin.js";

/**
 * Fills the model for the held `event` with `tabs`:
 * { key, title, operation, sections: [{ key, title, rows: [{ id, name, value, halfWidth }] }] }.
 */
export async function fillModel(event, tabs) {
    const sections = tabs.flatMap((tab) => tab.sections);
    const rows = sections.flatMap((section) => section.rows);
    const page = detailsPage;
    const [, ...made] = await all([
        page().Init(event),
        ...tabs.map(() => page().GetNewTab()),
        ...sections.map(() => page().GetNewSection()),
        ...rows.map(() => page().GetNewSectionRow()),
    ]);
    const objects = new Map(
        [...tabs, ...sections, ...rows].map((item, index) => [item, made[index]]),
    );
    const object = (item) => objects.get(item);

    await Promise.all([
        ...tabs.map((tab) =>
            write(object(tab), { Key: tab.key, Title: tab.title, Operation: tab.operation }),
        ),
        ...sections.map((section) =>
            write(object(section), { Key: section.key, Title: section.title }),
        ),
        ...rows.map((row) =>
            write(object(row), {
                Id: row.id,
                Name: row.name,
                Value: row.value,
                HalfWidth: Boolean(row.halfWidth),
            }),
        ),
    ]);
    await all([
        ...sections.flatMap((section) =>
            section.rows.map((row) => object(section).Rows.Add(object(row), row.id)),
        ),
        ...tabs.flatMap((tab) =>
            tab.sections.map((section) => object(tab).Sections.Add(object(section), section.key)),
        ),
        ...tabs.map((tab) => page().Tabs.Add(object(tab), tab.key)),
    ]);
    release(...made);
}

/** The model as plain tabs of sections of rows. */
export async function readModel() {
    const { rows: tabs } = await list(detailsPage().Tabs, ["Key", "Title"]);
    return Promise.all(
        tabs.map(async ({ Key, Title }) => {
            const tab = () => detailsPage().Tabs.Item(Key);
            const { rows: sections } = await list(tab().Sections, ["Key", "Title", "Link"]);
            const filled = sections.map(async (section) => {
                const columns = ["Id", "Name", "Value", "HalfWidth"];
                const { rows } = await list(tab().Sections.Item(section.Key).Rows, columns);
                return { key: section.Key, title: section.Title, link: section.Link, rows };
            });
            return { key: Key, title: Title, sections: await Promise.all(filled) };
        }),
    );
}
