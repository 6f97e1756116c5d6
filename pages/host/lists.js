// The saved lists, and the spans of time that their columns count by.

import { App, list } from "../lib/app.js";
import { buttonOf } from "../lib/build.js";
import { confirmBox } from "../lib/message_box.js";
import { announce, reportFailure } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { arrowKeys, rowFrom } from "../lib/table.js";
import { periodsForm } from "./list_periods.js";

const byId = (id) => document.getElementById(id);
const smartLists = () => App.Modules.Quillmere.Smartlists;
const titles = { donors: "Donors", donations: "Gifts", pledges: "Pledges" };

startPage("Lists", async ({ format, allowed }) => {
    const body = byId("lists").tBodies[0];

    async function load() {
        const { rows } = await list(smartLists().Lists, ["Id", "Name", "ListType", "Owner",
            "ChangedBy", "ChangedDate"]);
        body.replaceChildren(...rows.map(rowOf));
        byId("lists").hidden = rows.length === 0;
        byId("empty").hidden = rows.length > 0;
        announce(rows.length === 1 ? "1 saved list" : `${format.whole(rows.length)} saved lists`);
    }

    function rowOf(one) {
        const row = rowFrom(byId("list-row"), {
            name: one.Name,
            type: titles[one.ListType],
            owner: one.Owner,
            changed: `${format.dateTime(one.ChangedDate)} by ${one.ChangedBy}`,
        });
        row.querySelector("a").href = `/host/list?id=${one.Id}`;
        if (allowed("events/edit")) {
            const remove = () => deleteList(one).catch(reportFailure);
            row.querySelector(".row-actions").append(
                buttonOf("Delete", remove, {
                    className: "quiet",
                    "aria-label": `Delete ${one.Name}`,
                }),
            );
        }
        return row;
    }

    async function deleteList({ Id, Name, Owner }) {
        const answer = await confirmBox({
            title: "Delete list",
            text: `Are you sure you want to delete “${Name}”, which ${Owner} saved?\n` +
                "What stands on it stays.",
            buttons: [
                ["yes", "Yes"],
                ["no", "No"],
            ],
            danger: true,
        });
        if (answer !== "yes") return;
        await smartLists().Delete(Id);
        await load();
        (body.querySelector("a") ?? document.querySelector("h1")).focus();
    }

    for (const link of document.querySelectorAll("[data-right]")) {
        link.hidden = !allowed(link.dataset.right);
    }
    arrowKeys(body);
    await load();
    if (allowed("settings/edit")) {
        await periodsForm(byId("periods"), format);
        byId("spans").hidden = false;
    }
});
