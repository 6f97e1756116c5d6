// Work that is asked for more often than it needs doing.

/**
 * `run`, of which never two are under way: what is asked for meanwhile is done once more after it,
 * however often it was asked for. The promise given is that of the run which serves the asking.
 */
export function coalesced(run) {
    let running;
    let next;
    return function ask() {
        if (!running) {
            running = Promise.resolve(run()).finally(() => {
                running = undefined;
            });
            return running;
        }
        const again = () => {
            next = undefined;
            return ask();
        };
        next ??= running.then(again, again);
        return next;
    };
}
