// Reservations and their payments.
#include "workflow/command_steps.h"
#include "workflow/workflow_events.h"

namespace qmevents {
namespace {

constexpr auto check = &EventsManage::IsValidEventReservationAction;

constexpr EventSearch eventOfReservation{"Add Event Reservation",
                                         "Find an Event For This Reservation", eventSearchHint};
// The hint ends without a full stop in the host's texts, too.
constexpr DonorSearch donorOfReservation{
    .title = "Select Event Reservation Donor",
    .heading = "Find Event Reservation Donor",
    .description = "Enter part or all of the donor name you would like to use as the donor for "
                   "this event reservation, then click Next below",
    .showsAll = true};

// Whether there is anything to reserve; if not, the user has been told.
bool hasActivities(std::int32_t eventId)
{
    const auto activities = eventsManage()->GetEventActivities(eventId);
    if (!activities) return false; // told
    if (activities->Count() > 0) return true;
    host().shell().msgBox("No activities have been added for this event.  You must add at least "
                          "one activity for this event before you can add a reservation.",
                          "No Event Activities");
    return false;
}

// Shows the payments; the reservation and what the user wants next when the user confirmed.
struct PaymentsShown {
    Ref<cEventReservation> reservation;
    std::string returnAction;
};
std::optional<PaymentsShown> showPayments(std::int32_t eventId, std::int32_t reservationId,
                                          EventsActions action, const char* dialogAction)
{
    const auto reservation = allowed(check, reservationId, action);
    if (!reservation) return {};
    const auto dialog = newDialog("editeventreservationpayments");
    dialog->set("Action", dialogAction);
    dialog->set("EventId", eventId);
    dialog->set("EventReservation", reservation);
    if (!confirmed(dialog)) return {};
    return PaymentsShown{reservation, output(dialog, "ReturnAction", toText)};
}

// The donor, or nothing. Hosts may also raise an error for one who no longer exists, and to the
// user that is the same.
Ref<Object> readableDonor(std::int32_t id)
{
    try {
        return host().modules().donor().donor(id);
    } catch (const Error&) {
        return {};
    }
}

// Hands over to the host's donation wizard, which reads the dialog values, records the gift for the
// reservation and returns to the page that the user came from.
void addPayment(std::int32_t eventId, std::int32_t reservationId)
{
    const RecordLock lock = lockEvent(eventId);
    const auto reservation = allowed(check, reservationId, EventsActions::Edit);
    if (!reservation) return;
    const Host app = host();
    const std::int32_t donorId = reservation->FKdonorId;
    const auto donor = readableDonor(donorId);
    if (!donor) {
        return showRefusal("The request to add a payment for the donor is no longer valid."
                           "</br></br>The donor no longer exists.");
    }
    const Shell shell = app.shell();
    shell.dialog().clearClipboard();
    shell.setDialogValue("donorid", donorId);
    shell.setDialogValue("donor-entitytype", get(donor, "EntityType"));
    shell.setDialogValue("donation-reservationId", reservation->Id());
    shell.setDialogValue("donation-return-to-caller", "true");
    app.modules().donation().startWizard();
}

} // namespace

void WorkflowEvents::AddEventReservation(std::int32_t EventId, std::int32_t* DonorId,
                                         const std::string& TabName)
{
    reported([&] {
        const auto eventId = eventOrFound(EventId, eventOfReservation);
        if (eventId == 0) return;
        RecordLock lock = lockEvent(eventId);
        if (!hasActivities(eventId)) return;
        const auto donorId = donorOrChosen(DonorId ? *DonorId : 0, donorOfReservation);
        if (donorId == 0) return;
        if (DonorId) *DonorId = donorId;
        openOnTab(eventId, TabName, donorId);
        const auto reservation = eventsManage()->GetNewEventReservation(eventId);
        reservation->FKdonorId = donorId;
        lock.release();
        CreateEventReservation(eventId, reservation, TabName, false, false);
    });
}

void WorkflowEvents::CreateEventReservation(
    std::int32_t EventId, const std::optional<Ref<cEventReservation>>& oEventReservation,
    const std::string& TabName, bool CheckActivities, bool InDialog)
{
    reported([&] {
        RecordLock lock = lockEvent(EventId);
        if (CheckActivities && !hasActivities(EventId)) return;
        std::string address = "obsidian://events/eventreservation-fulledit?action=new";
        if (oEventReservation && *oEventReservation) {
            host().setSession("eventreservation", *oEventReservation);
            address += "&persist=eventreservation";
        }
        lock.release();
        goTo(address + "&eventid=" + std::to_string(EventId) + "&tabname=" + TabName, InDialog);
    });
}

void WorkflowEvents::EditEventReservation(std::int32_t EventId, std::int32_t EventReservationId)
{
    reported([&] {
        RecordLock lock = lockEvent(EventId);
        if (!allowed(check, EventReservationId, EventsActions::Edit)) return;
        lock.release();
        host().shell().navigate(
            "obsidian://events/eventreservation-fulledit?id=" + std::to_string(EventReservationId) +
            "&action=edit&eventid=" + std::to_string(EventId));
    });
}

void WorkflowEvents::DeleteEventReservation(std::int32_t EventId, std::int32_t EventReservationId,
                                            std::int32_t DonorId)
{
    reported([&] {
        const RecordLock lock = lockEvent(EventId);
        if (!allowed(check, EventReservationId, EventsActions::Delete)) return;
        const auto dialog = newDialog("deleteeventreservation");
        dialog->set("EventId", EventId);
        dialog->set("ReservationId", EventReservationId);
        dialog->set("DonorId", DonorId);
        if (confirmed(dialog)) refresh();
    });
}

void WorkflowEvents::EditEventReservationPayments(std::int32_t EventId,
                                                  std::int32_t EventReservationId)
{
    reported([&] {
        const auto shown = showPayments(EventId, EventReservationId, EventsActions::Edit, "edit");
        if (!shown) return;
        if (shown->returnAction == "addpayment") {
            addPayment(EventId, EventReservationId);
        } else {
            refresh();
        }
    });
}

void WorkflowEvents::ViewEventReservationPayments(std::int32_t EventId,
                                                  std::int32_t EventReservationId)
{
    reported([&] { showPayments(EventId, EventReservationId, EventsActions::View, "view"); });
}

} // namespace qmevents
