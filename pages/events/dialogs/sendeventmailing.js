// Chooses who a mailing of an event goes to; the command makes the list and shows it.

import { all, App, ask, read, set } from "../../lib/app.js";
import { build } from "../../lib/build.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { bindKey } from "../../lib/keys.js";
import { lists, manage } from "../addin.js";
import {
    byActivity, byGroup, bySponsorship, byStatus, enclosed, reachedBy,
} from "../mailing_choice.js";
import { statuses } from "../participant_list.js";
import { readGroups, readMemberships, readParticipants } from "../participants.js";
import { givenKey } from "./given.js";

const byId = (id) => document.getElementById(id);
const kinds = [byStatus, byActivity, bySponsorship, byGroup];
const nothingChosen = {
    [byStatus]: "Choose at least one status.",
    [byActivity]: "Choose at least one activity.",
    [bySponsorship]: "Choose at least one kind of reservation.",
    [byGroup]: "Choose at least one group.",
};

startDialogPage(async ({ format, heading, close, setTitle }) => {
    setTitle("Send an Event Mailing");
    if (heading) byId("heading").textContent = heading;
    const eventId = await givenKey("eventid");
    const event = eventId ? await manage().GetEvent(eventId) : null;
    if (!event) {
        byId("gone").hidden = false;
        return;
    }
    const [{ Name }, people, choices] = await Promise.all([
        read(event, ["Name"]),
        readPeople(eventId),
        readChoices(eventId),
    ]);
    byId("event").textContent = Name;
    for (const kind of kinds) fill(kind, choices[kind]);
    byId("mailing").hidden = false;
    byId("mailing").addEventListener("change", update);
    document.querySelector('input[name="kind"]').focus();
    update();

    function kindChosen() {
        return document.querySelector('input[name="kind"]:checked').value;
    }

    function chosenKeys() {
        const boxes = partOf(kindChosen()).querySelectorAll("input:checked");
        return [...boxes].map(({ value }) => value);
    }

    function update() {
        const kind = kindChosen();
        for (const one of kinds) partOf(one).hidden = one !== kind;
        byId("fault").textContent = "";
        const count = reachedBy(kind, chosenKeys(), people).size;
        byId("reached").textContent =
            count === 1 ? "This reaches 1 donor." : `This reaches ${format.whole(count)} donors.`;
    }

    let isClosing = false;
    async function submit() {
        const kind = kindChosen();
        const keys = chosenKeys();
        if (keys.length === 0) {
            byId("fault").textContent = nothingChosen[kind];
            partOf(kind).querySelector("input")?.focus();
            return;
        }
        if (isClosing) return;
        isClosing = true;
        try {
            await putValues(kind, keys);
            await close(true);
        } finally {
            isClosing = false;
        }
    }
    byId("mailing").addEventListener("submit", (submission) => {
        submission.preventDefault();
        submit();
    });
    bindKey("Ctrl+Enter", "Make the mailing list", submit);
});

function partOf(kind) {
    return document.querySelector(`[data-kind="${kind}"]`);
}

function fill(kind, choices) {
    partOf(kind).append(
        ...choices.map(({ key, label, isChosen }) =>
            build("label", { className: "option" },
                build("input", { type: "checkbox", value: key, checked: Boolean(isChosen) }),
                build("span", { text: label })),
        ),
        ...(choices.length === 0 ? [build("p", { className: "hint", text: "There are none." })] : []),
    );
}

async function readPeople(eventId) {
    const columns = ["FKdonorId", "FKActivityId", "Sponsorship"];
    const [participants, memberships, [{ rows }]] = await Promise.all([
        readParticipants(eventId),
        readMemberships(eventId),
        all([
            ask.list(manage().GetEventReservationActivities(undefined, eventId), columns, {
                count: 1000000,
            }),
        ]),
    ]);
    const lines = rows.map(({ FKdonorId, FKActivityId, Sponsorship }) => ({
        donorId: FKdonorId,
        activityId: FKActivityId,
        isSponsorship: Sponsorship,
    }));
    return { participants, memberships, lines };
}

async function readChoices(eventId) {
    const [groups, [{ rows }]] = await Promise.all([
        readGroups(),
        all([ask.list(manage().GetEventActivities(eventId), ["Id", "Name"])]),
    ]);
    return {
        [byStatus]: statuses.map((label, key) => ({ key, label, isChosen: key === 2 })),
        [byActivity]: rows.map(({ Id, Name }) => ({ key: Id, label: Name })),
        [bySponsorship]: [
            { key: "sponsorship", label: "With a sponsorship" },
            { key: "other", label: "With other activities" },
        ],
        [byGroup]: groups.map(({ id, name }) => ({ key: id, label: name })),
    };
}

/** Hands the choice over under the names that the command reads. */
async function putValues(kind, keys) {
    const values = {
        choice: kind,
        participantstatuses: kind === byStatus ? enclosed(keys) : "",
        activityids: kind === byActivity ? enclosed(keys) : "",
        reservationsponsorship: kind === bySponsorship && keys.includes("sponsorship"),
        reservationnonsponsorship: kind === bySponsorship && keys.includes("other"),
        invitationgroups: kind === byGroup ? await groupsOf(keys) : null,
    };
    for (const [name, value] of Object.entries(values)) await set(App.Shell.Dialog(name), value);
}

/** The chosen groups in a collection: the list of all, from which the others are taken out. */
async function groupsOf(keys) {
    const held = await lists().GetEventInvitationGroups(true);
    const [{ rows }] = await all([ask.list(held, ["Id"])]);
    const others = rows.filter(({ Id }) => !keys.includes(String(Id)));
    if (others.length > 0) await all(others.map(({ Id }) => ask.call(held.RemoveByKey(Id, false))));
    return held;
}
