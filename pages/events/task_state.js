// How a task stands.

/** "Done", "Overdue" or "Open" on the day `today` ("2026-03-07"); what is due today is open. */
export function taskState({ Completed, DueDateTime }, today) {
    if (Completed) return "Done";
    return DueDateTime.date && DueDateTime.date < today ? "Overdue" : "Open";
}
