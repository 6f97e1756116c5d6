// What the event costs.

import { list } from "../../lib/app.js";
import { commands, manage } from "../addin.js";
import { recordTab } from "./record_tab.js";

const columns = ["Id", "Description", "ExpenseDate", "Amount"];

export const tab = recordTab({
    key: "expenses",
    title: "Expenses",

    async load({ eventId }) {
        const { rows } = await list(manage().GetEventExpenses(eventId), columns);
        return rows;
    },

    describe({ eventId, allowed, refresh }) {
        const mayEdit = allowed("events/edit");
        const edit = ({ Id }) => commands().EditEventExpense(eventId, Id).then(refresh);
        return {
            name: ["expense", "expenses"],
            columns: [
                { key: "Description", label: "What it was for" },
                { key: "ExpenseDate", label: "Date" },
                { key: "Amount", label: "Amount", number: true, total: true },
            ],
            order: { key: "ExpenseDate", descending: true },
            empty: "No expenses yet.",
            titleOf: ({ Description }) => Description,
            open: mayEdit ? edit : undefined,
            tools: mayEdit
                ? [
                      {
                          label: "Add expense",
                          isPrimary: true,
                          run: () => commands().AddEventExpense(eventId, false).then(refresh),
                      },
                  ]
                : [],
            actions: mayEdit
                ? [
                      { label: "Edit", run: edit },
                      {
                          label: "Delete",
                          run: ({ Id }) =>
                              commands().DeleteEventExpense(eventId, Id).then(refresh),
                      },
                  ]
                : [],
        };
    },
});
