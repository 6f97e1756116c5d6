// Buttons whose work takes a while.

/**
 * Runs `run` whenever `button` is pressed, never twice at once: until its promise settles the
 * button says that it is off. What fails is told as any failure of the page.
 */
export function onPress(button, run) {
    button.addEventListener("click", async () => {
        if (button.ariaDisabled === "true") return;
        sayOff(button, true);
        try {
            await run();
        } finally {
            sayOff(button, false);
        }
    });
}

/** Has `button` say whether it is off; it keeps the focus, unlike one that is disabled. */
export function sayOff(button, isOff) {
    button.ariaDisabled = isOff ? "true" : null;
}
