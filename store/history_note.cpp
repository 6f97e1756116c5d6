#include "store/history_note.h"

#include "automation/locale.h"
#include "automation/text.h"
#include "core/host.h"

namespace qmevents {

void addHistoryNote(const HistoryNote& note, std::int32_t donorId, const cEvent& event, Date day)
{
    const Host app = host();
    std::string markup = note.heading + text::escapeMarkup(event.Name.get()) + "<br>" + note.by +
                         text::escapeMarkup(app.security().currentUserName());
    if (day.hasDate()) {
        markup += std::string("<br>") + note.dated + Locale::current().shortDate(day);
    }
    // The group and the event's key lead from the note back to the event.
    app.modules().actions().addNote(donorId, "Event", std::to_string(event.Id()), markup);
}

} // namespace qmevents
