// The donor chooser: finds a donor, or takes down a new one.

import { all, App, ask, set } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { createForm } from "../../lib/form.js";
import { bindKey } from "../../lib/keys.js";
import { recordEditor } from "../../lib/record_editor.js";
import { guardUnsaved } from "../../lib/unsaved.js";
import { findDonors } from "../../events/donors.js";
import { advancedCondition, kinds } from "../donor_search.js";

const mostShown = 50;
const typingPause = 200;
const shownColumns = ["Id", "Display", "EntityType", "City", "Email"];
const byId = (id) => document.getElementById(id);
const manage = () => App.Modules.donor.DonorManage;

const groups = [
    {
        fields: [
            { name: "EntityType", label: "Kind", kind: "oneOf" },
            { name: "FirstName", label: "First name", kind: "text" },
            { name: "LastName", label: "Last name, or organisation", kind: "text", required: true },
            { name: "Email", label: "E-mail", kind: "text" },
            { name: "Phone", label: "Telephone", kind: "text" },
            { name: "Address", label: "Address", kind: "text" },
            { name: "PostalCode", label: "Postal code", kind: "text" },
            { name: "City", label: "City", kind: "text" },
        ],
    },
];

startDialogPage(async ({ format, heading, description, close }) => {
    if (heading) byId("heading").textContent = heading;
    byId("description").textContent = description ?? "";
    const flags = ["allownew", "showall", "allowadvanced"];
    const [allowNew, showAll, allowAdvanced] = await all(
        flags.map((name) => ask.call(App.Shell.Dialog(name))),
    );
    byId("new").hidden = !allowNew;
    byId("advanced").hidden = !allowAdvanced;
    byId("kind").append(new Option("Any", ""), ...kinds.map((kind) => new Option(kind, kind)));

    const choose = async (id) => {
        await set(App.Shell.Dialog("donorid"), id);
        await close(true);
    };
    setUpNew({ format, choose });
    setUpSearch({ format, showAll, choose });
});

function setUpSearch({ format, showAll, choose }) {
    let latest = 0;
    const typed = (id) => byId(id).value.trim();

    async function search() {
        latest += 1;
        const mine = latest;
        const fields = {
            lastName: typed("lastname"),
            city: typed("city"),
            kind: byId("kind").value,
            number: typed("number"),
        };
        const literal = (text) => App.Provider.VToSQL(text, 5).then((sql) => sql);
        const CustomWhere = await advancedCondition(fields, literal);
        const SearchString = typed("search");
        if (!SearchString && !CustomWhere && !showAll) return show([], "Type a part of the name.");
        const found = await findDonors(
            { SearchString, CustomWhere, MaxRows: mostShown + 1 },
            shownColumns,
        );
        if (mine === latest) show(found, "Nobody matches.");
    }

    function show(donors, nothing) {
        const more = donors.length > mostShown ? "More match: type more to narrow them down." : "";
        const words = document.createElement("p");
        words.className = "hint";
        words.setAttribute("role", "status");
        words.textContent = donors.length === 0 ? nothing : more;
        const shown = donors.slice(0, mostShown);
        byId("results").replaceChildren(
            ...(shown.length > 0 ? [donorList(shown, { choose, format })] : []),
            words,
        );
    }

    let pause;
    byId("search-form").addEventListener("input", () => {
        clearTimeout(pause);
        pause = setTimeout(search, typingPause);
    });
    byId("search-form").addEventListener("submit", async (event) => {
        event.preventDefault();
        clearTimeout(pause);
        await search();
        byId("results").querySelector("button")?.focus();
    });
    byId("finding").hidden = false;
    byId("search").focus();
    search();
}

function donorList(donors, { choose }) {
    const list = document.createElement("ul");
    list.className = "chooser";
    list.append(
        ...donors.map(({ Id, Display, EntityType, City, Email }) => {
            const button = document.createElement("button");
            button.type = "button";
            const name = document.createElement("span");
            name.textContent = Display;
            const more = document.createElement("span");
            more.className = "faint";
            more.textContent = [EntityType, City, Email].filter(Boolean).join(" · ");
            button.append(name, more);
            button.addEventListener("click", () => choose(Id));
            const item = document.createElement("li");
            item.append(button);
            return item;
        }),
    );
    return list;
}

function setUpNew({ format, choose }) {
    const choices = { EntityType: kinds.map((name) => ({ name, visible: true })) };
    const form = createForm(byId("donor"), groups, { format, choices });
    const editor = recordEditor({
        form,
        format,
        open: () => manage().GetNewDonor(),
        save: (donor) => manage().UpdateDonor(donor),
        fieldOf: (message) => (message.includes("name") ? "LastName" : undefined),
    });
    editor.show({ EntityType: "Person" });
    const unguard = guardUnsaved(() => !byId("donor").hidden && form.isChanged());
    let isConfirmed = false;

    byId("new").addEventListener("click", () => {
        const typed = byId("search").value.trim().split(/\s+/);
        if (!form.isChanged() && typed[0]) {
            form.fill({ FirstName: typed.slice(0, -1).join(" "), LastName: typed.at(-1) });
        }
        turn(true);
        form.fields.get("FirstName").focus();
    });
    byId("back").addEventListener("click", () => {
        turn(false);
        byId("search").focus();
    });
    byId("donor").addEventListener("input", () => {
        isConfirmed = false;
        byId("alike").replaceChildren();
        byId("save").textContent = "Add donor";
    });
    byId("donor").addEventListener("submit", (event) => {
        event.preventDefault();
        submit();
    });
    bindKey("Ctrl+Enter", "Add donor", () => byId("donor").hidden || submit());

    function turn(isNew) {
        byId("finding").hidden = isNew;
        byId("donor").hidden = !isNew;
    }

    async function submit() {
        byId("save").disabled = true;
        try {
            if (!isConfirmed && (await showAlike())) return;
            const { outcome, record } = await editor.submit();
            if (outcome !== "saved") return;
            unguard();
            await choose(await record.Id);
        } finally {
            byId("save").disabled = false;
        }
    }

    /** Shows donors of the same name first, so that nobody is taken down twice unawares. */
    async function showAlike() {
        const values = form.values();
        const name = values && `${values.FirstName} ${values.LastName}`.trim();
        if (!name) return false;
        const found = await findDonors({ SearchString: name, MaxRows: 5 }, shownColumns);
        if (found.length === 0) return false;
        isConfirmed = true;
        const words = document.createElement("p");
        words.textContent = "Somebody of this name is there already. Choose them, or add a new one:";
        byId("alike").replaceChildren(words, donorList(found, { choose }));
        byId("save").textContent = "Add anyway";
        return true;
    }
}
