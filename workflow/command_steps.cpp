#include "workflow/command_steps.h"

namespace qmevents {
namespace {

constexpr const char* section = "events";

void filterReservationsByDonor(std::int32_t eventId, std::int32_t donorId)
{
    const Host app = host();
    const auto donor = app.modules().donor().smallDonor(donorId);
    if (!donor) return;
    const std::string id = std::to_string(eventId);
    const std::string name = toText(get(donor, "Display"));
    app.document().setPreference(section, "reservation-list-filter-" + id,
                                 "name~" + std::string(text::trim(name)));
    app.document().setPreference(section, "reservation-list-sortby-" + id, "date");
}

} // namespace

bool confirmed(const Ref<Dialog>& dialog) { return isConfirmed(dialog->Create()); }

std::optional<std::int32_t> findEvent(const EventSearch& search)
{
    const auto dialog = newDialog("findevent");
    dialog->set("Title", search.title);
    if (search.heading) dialog->set("Heading", search.heading);
    if (search.description) dialog->set("Description", search.description);
    if (!confirmed(dialog)) return {};
    return toInt32(dialog->get("EventId"));
}

std::int32_t eventOrFound(std::int32_t eventId, const EventSearch& search)
{
    return eventId != 0 ? eventId : findEvent(search).value_or(0);
}

std::int32_t donorOrChosen(std::int32_t donorId, const DonorSearch& search)
{
    if (donorId != 0) return donorId;
    const DonorChooser chooser = host().modules().donor().newDonorChooser();
    chooser.setTitle(search.title);
    chooser.setHeading(search.heading);
    if (search.description) chooser.setDescription(search.description);
    chooser.allowNew();
    if (search.showsAll) chooser.showAll();
    chooser.allowAdvanced();
    return isConfirmed(chooser.create()) ? chooser.donorId() : 0;
}

void tellRefusal(const std::string& reason, Telling telling, bool* forceUpdate)
{
    if (telling == Telling::always) {
        showRefusal(reason);
    } else if (!showRefusalIfExplained(reason)) {
        return;
    }
    setTrue(forceUpdate);
}

void refresh() { host().document().forceUpdate(); }

void goTo(const std::string& address, bool inDialog)
{
    const Shell shell = host().shell();
    if (inDialog) {
        shell.dialog().close(address);
    } else {
        shell.navigate(address);
    }
}

void openOnTab(std::int32_t eventId, const std::string& tab, std::int32_t donorId)
{
    if (tab.empty()) return;
    host().setSession("tabname", tab);
    if (tab == "events_reservations" && donorId != 0) filterReservationsByDonor(eventId, donorId);
}

} // namespace qmevents
