// The form of an expense, new or stored.

import { manage } from "../addin.js";
import { fieldOfRefusalOf } from "../record_rules.js";
import { startRecordDialog } from "./record_dialog.js";

startRecordDialog({
    value: "eventexpense",
    groups: [
        {
            fields: [
                {
                    name: "Description",
                    label: "What it was for",
                    kind: "text",
                    required: true,
                    wide: true,
                },
                { name: "ExpenseDate", label: "Date", kind: "date", required: true },
                {
                    name: "Amount",
                    label: "Amount",
                    kind: "money",
                    required: true,
                    hint: "A refund is a negative amount.",
                },
            ],
        },
    ],
    save: (expense) => manage().UpdateEventExpense(expense, true),
    fieldOf: fieldOfRefusalOf("expense"),
    words: {
        add: { title: "Add an Expense", button: "Add expense" },
        edit: { title: "Edit the Expense", button: "Save expense" },
    },
});
