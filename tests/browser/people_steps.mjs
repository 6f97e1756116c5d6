// What the stories of participants and reservations need: donors, activities, reservations.

/** Takes down donors, [first name, last name] each, and gives their ids. */
export function makeDonors(page, names) {
    return page.evaluate(async (wanted) => {
        const { App, write } = await import("/lib/app.js");
        const manage = App.Modules.donor.DonorManage;
        const ids = [];
        for (const [FirstName, LastName] of wanted) {
            const donor = await manage.GetNewDonor();
            await write(donor, { FirstName, LastName, Email: `${LastName}@example.org` });
            await manage.UpdateDonor(donor);
            ids.push(await donor.Id);
        }
        return ids;
    }, names);
}

/** Makes an activity; `fields` are { type, name, value, items: [[name, visible]] }. */
export function makeActivity(page, eventId, { name, price, available, fields = [] }) {
    return page.evaluate(async ([event, title, cost, units, asked]) => {
        const { write } = await import("/lib/app.js");
        const { manage } = await import("/events/addin.js");
        const { Currency } = await import("/lib/values.js");
        const activity = await manage().GetNewEventActivity(event);
        await write(activity, {
            Name: title,
            ListPrice: Currency.parse(cost),
            QuantityAvailable: units ?? 0,
            QuantityType: units === undefined ? 1 : 0,
        });
        for (const { type, name: caption, value = "", items = [] } of asked) {
            const field = await manage().GetNewEventActivityReservationField();
            await write(field, { FieldType: type, Name: caption, DefaultValue: value });
            for (const [item, visible] of items) await field.AddListItem(item, visible);
            await activity.ReservationFields.Add(field);
        }
        await manage().UpdateEventActivity(activity, true);
        return activity.Id;
    }, [eventId, name, price, available, fields]);
}

/** Reserves `quantity` of an activity for a donor, as another user's script would. */
export function reserve(page, eventId, donorId, activityId, quantity) {
    return page.evaluate(async ([event, donor, activity, count]) => {
        const { write } = await import("/lib/app.js");
        const { manage } = await import("/events/addin.js");
        const { Currency, DateTime } = await import("/lib/values.js");
        const reservation = await manage().GetNewEventReservation(event);
        await write(reservation, { FKdonorId: donor, ReservationDate: DateTime.of("2031-01-05") });
        const line = await manage().GetNewEventReservationActivity();
        const price = Currency.parse("50");
        await write(line, { FKActivityId: activity, Quantity: count, Price: price, Notes: "" });
        await reservation.Activities.Add(line, 0);
        await manage().UpdateEventReservation(reservation, true);
        return reservation.Id;
    }, [eventId, donorId, activityId, quantity]);
}

/** The quantities of a reservation's lines as they are stored. */
export function storedQuantities(page, reservationId) {
    return page.evaluate(async (id) => {
        const { list } = await import("/lib/app.js");
        const { manage } = await import("/events/addin.js");
        const { rows } = await list(manage().GetEventReservationActivities(id), ["Quantity"]);
        return rows.map(({ Quantity }) => Quantity);
    }, reservationId);
}

/** Looks at a page or dialog at both widths: accessible, and kept as a picture. */
export async function look({ page, axe, shot }, name) {
    for (const width of [390, 1280]) {
        await page.setViewportSize({ width, height: 800 });
        await axe(page);
        await shot(page, `${name} ${width}`);
    }
}
