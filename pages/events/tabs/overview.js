// What the event is, how its money and its people stand.

import { overviewSections } from "../details_overview.js";
import { showBoxes } from "../details_view.js";

export const tab = {
    key: "overview",
    title: "Overview",
    sections: overviewSections,
    show(panel, context) {
        panel.classList.add("boxes");
        const update = () => showBoxes(panel, context.sections("overview"));
        update();
        return update;
    },
};
