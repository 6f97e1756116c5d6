// The users, and what each of them may do.

import { App, list } from "../lib/app.js";
import { build } from "../lib/build.js";
import { formBox } from "../lib/form_box.js";
import { bindKey } from "../lib/keys.js";
import { announce, notice, reportFailure } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { onPress } from "../lib/press.js";

const byId = (id) => document.getElementById(id);
const security = () => App.Security;
const described = ["Key", "Name", "Description"];
const password = {
    name: "password",
    label: "Password",
    kind: "password",
    required: true,
    least: 8,
    hint: "At least 8 characters. Tell it to the user yourself.",
};

startPage("Settings", async ({ session, format }) => {
    const zones = await readZones();
    let users = [];
    let chosen = Number(new URLSearchParams(location.search).get("user")) || session.user.id;

    async function update() {
        users = (await list(security().Users, ["Id", "Name", "Rights"])).rows;
        if (!users.some(({ Id }) => Id === chosen)) chosen = users[0].Id;
        byId("users").replaceChildren(...users.map(userItem));
        showUser();
    }

    function userItem({ Id, Name, Rights }) {
        const count = rightsIn(Rights).length;
        const button = build(
            "button",
            { type: "button", data: { id: Id }, on: { click: () => choose(Id) } },
            build("span", { text: Id === session.user.id ? `${Name} (you)` : Name }),
            build("span", {
                className: "faint",
                text: count === 1 ? "1 right" : `${format.whole(count)} rights`,
            }),
        );
        if (Id === chosen) button.setAttribute("aria-current", "true");
        return build("li", {}, button);
    }

    function choose(id) {
        chosen = id;
        history.replaceState(null, "", `?user=${id}`);
        byId("users").replaceChildren(...users.map(userItem));
        showUser();
        byId("user-title").focus();
    }

    function showUser() {
        const user = users.find(({ Id }) => Id === chosen);
        byId("user").hidden = false;
        byId("user-title").textContent = user.Name;
        const held = new Set(rightsIn(user.Rights));
        byId("zones").replaceChildren(...zones.map((zone) => zoneBox(zone, user, held)));
    }

    function zoneBox(zone, user, held) {
        const box = byId("zone").content.firstElementChild.cloneNode(true);
        box.querySelector("legend").textContent = zone.Name;
        box.querySelector(".hint").textContent = zone.Description;
        box.querySelector("ul").append(...zone.rights.map((right) => rightItem(right, user, held)));
        return box;
    }

    function rightItem({ Key, Name, Description }, user, held) {
        const item = byId("right").content.firstElementChild.cloneNode(true);
        const box = item.querySelector("input");
        item.querySelector("b").textContent = Name;
        item.querySelector(".hint").textContent = Description;
        item.querySelector(".hint").id = `about-${Key.replace("/", "-")}`;
        box.setAttribute("aria-describedby", item.querySelector(".hint").id);
        box.checked = held.has(Key.toLowerCase());
        box.addEventListener("change", () => set(user, { Key, Name }, box).catch(reportFailure));
        return item;
    }

    async function set(user, { Key, Name }, box) {
        const isHeld = box.checked;
        const problem = await security()
            .SetRight(user.Id, Key, isHeld)
            .catch((error) => {
                box.checked = !isHeld;
                throw error;
            });
        if (problem) {
            box.checked = !isHeld;
            notice(problem, { fault: true });
            return;
        }
        announce(`${user.Name}: “${Name}” ${isHeld ? "given" : "taken"}`);
        users = (await list(security().Users, ["Id", "Name", "Rights"])).rows;
        byId("users").replaceChildren(...users.map(userItem));
    }

    async function add() {
        const added = await formBox({
            title: "Add user",
            hint: "A new user has no rights until you give some.",
            fields: [{ name: "user", label: "User name", kind: "text", required: true }, password],
            action: "Add user",
            format,
            async save(entered) {
                const problem = await security().AddUser(entered.user, entered.password);
                return problem && { problem, name: problem.includes("assword") ? "password" : "user" };
            },
        });
        if (!added) return;
        await update();
        choose(users.find(({ Name }) => Name === added.user.trim()).Id);
        announce(`${added.user} added`);
    }

    async function setPassword() {
        const user = users.find(({ Id }) => Id === chosen);
        const set = await formBox({
            title: `Password of ${user.Name}`,
            fields: [password],
            action: "Set password",
            format,
            save: (entered) => security().SetPassword(user.Id, entered.password),
        });
        if (set) notice(`The password of ${user.Name} is set.`);
    }

    onPress(byId("add"), add);
    byId("add").hidden = false; // until here, a click would have been lost
    byId("password").addEventListener("click", () => setPassword().catch(reportFailure));
    bindKey("n", "Add a user", () => byId("add").click());
    await update();
});

function rightsIn(names) {
    return names.split(",").filter(Boolean).map((name) => name.toLowerCase());
}

async function readZones() {
    const held = await security().LoadZones();
    const { rows } = await list(held, described);
    return Promise.all(
        rows.map(async (zone) => ({
            ...zone,
            rights: (await list(held.Item(zone.Key).Rights, described)).rows,
        })),
    );
}
