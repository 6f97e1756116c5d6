// Submitting a form that nothing submits twice.

import { bindKey } from "./keys.js";
import { reportFailure } from "./notice.js";

/**
 * Runs `submit` when `form` is submitted or Ctrl+Enter is pressed; while it runs, `button` is off
 * and nothing submits again.
 */
export function submitOnce(form, button, submit) {
    let running = false;
    async function run() {
        if (running) return;
        running = true;
        button.disabled = true;
        try {
            await submit();
        } catch (error) {
            reportFailure(error);
        } finally {
            running = false;
            button.disabled = false;
        }
    }
    form.addEventListener("submit", (event) => {
        event.preventDefault();
        run();
    });
    bindKey("Ctrl+Enter", button.textContent, run);
}
