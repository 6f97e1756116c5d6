#include "workflow/dialog_catalog.h"

#include "model/event_participant.h"

namespace qmevents {
namespace {

using enum Exchange;
constexpr bool id = true;

constexpr DialogValue addEvent[] = {{"EventInfo", "EventInfo", requiredObject}};
constexpr DialogValue deleteEvent[] = {{"EventId", "eventid", requiredInput, id}};
constexpr DialogValue copyEvent[] = {{"EventInfo", "EventInfo", object},
                                     {"NewEventId", "event-copy-newid", output, id}};
constexpr DialogValue findEvent[] = {{"NavigateUrl", "navigateurl", input},
                                     {"NextPage", "nextpage", input},
                                     {"EventId", "eventid", output, id}};

// The list-item dialogs carry the item, the list that it stands in and which item it is.
constexpr DialogValue eventCategory[] = {{"Name", "name", inputOutput},
                                         {"Description", "description", inputOutput},
                                         {"Visible", "visible", inputOutput},
                                         {"Action", "action", input},
                                         {"EventCategories", "eventcategories", object},
                                         {"EditId", "editid", input}};
constexpr DialogValue eventStatus[] = {{"Name", "name", inputOutput},
                                       {"Description", "description", inputOutput},
                                       {"Visible", "visible", inputOutput},
                                       {"Action", "action", input},
                                       {"EventStatuses", "eventstatuses", object},
                                       {"EditId", "editid", input}};
constexpr DialogValue eventLocation[] = {{"Name", "name", inputOutput},
                                         {"Description", "description", inputOutput},
                                         {"ContactName", "contactname", inputOutput},
                                         {"Address", "address", inputOutput},
                                         {"Phone", "phone", inputOutput},
                                         {"Fax", "fax", inputOutput},
                                         {"Email", "email", inputOutput},
                                         {"Notes", "notes", inputOutput},
                                         {"Visible", "visible", inputOutput},
                                         {"Action", "action", input},
                                         {"EventLocations", "eventlocations", object},
                                         {"EditId", "editid", input}};
constexpr DialogValue invitationGroup[] = {
    {"Name", "name", inputOutput},
    {"Description", "description", inputOutput},
    {"Visible", "visible", inputOutput},
    {"Action", "action", input},
    {"EventInvitationGroups", "eventinvitationgroups", object},
    {"EditId", "editid", input}};

constexpr DialogValue expense[] = {{"Action", "action", input},
                                   {"EventExpense", "eventexpense", object}};
constexpr DialogValue participant[] = {{"Action", "action", input},
                                       {"EventParticipant", "eventparticipant", object}};
constexpr DialogValue participants[] = {{"EventId", "eventid", input, id},
                                        {"EventParticipants", "eventparticipants", object}};
// The page gathers donors in it, whoever opened the dialog.
constexpr DialogValue newParticipants[] = {
    {"EventId", "eventid", input, id},
    {"EventParticipants", "eventparticipants", object, false,
     []() -> Ref<Object> { return makeRef<cEventParticipants>(); }}};
constexpr DialogValue activity[] = {{"Action", "action", input},
                                    {"EventActivity", "eventactivity", object}};
constexpr DialogValue task[] = {{"Action", "action", input}, {"EventTask", "eventtask", object}};
constexpr DialogValue deleteReservation[] = {{"EventId", "eventid", input, id},
                                             {"ReservationId", "reservationid", input, id},
                                             {"DonorId", "donorid", input, id}};
constexpr DialogValue reservationItems[] = {{"Action", "action", input},
                                            {"ReservationField", "reservationfield", object}};
constexpr DialogValue customize[] = {{"Settings", "settings", object}};
constexpr DialogValue addField[] = {{"EventActivity", "eventactivity", object},
                                    {"FieldType", "type", output},
                                    {"Name", "name", output},
                                    {"FieldDescription", "description", output},
                                    {"DefaultValue", "defaultvalue", output}};
constexpr DialogValue editField[] = {{"ReservationField", "reservationfield", object}};
constexpr DialogValue reservationActivity[] = {
    {"Action", "action", input},
    {"EventId", "eventid", input, id},
    {"ReservationId", "reservationid", input, id},
    {"EventReservationActivity", "eventreservationactivity", object},
    {"EventReservationActivities", "eventreservationactivities", object}};
constexpr DialogValue mailing[] = {
    {"Action", "action", input},
    {"EventId", "eventid", input, id},
    {"Choice", "choice", output},
    {"ParticipantStatuses", "participantstatuses", output},
    {"ReservationSponsorship", "reservationsponsorship", output},
    {"ReservationNonSponsorship", "reservationnonsponsorship", output},
    {"InvitationGroups", "invitationgroups", output},
    {"ActivityIds", "activityids", output}};
constexpr DialogValue participantMessage[] = {{"EventId", "eventid", input, id},
                                              {"Message", "message", input}};
constexpr DialogValue donationType[] = {{"DefaultChoice", "defaultchoice", input},
                                        {"DonorId", "donorid", input, id},
                                        {"EventId", "eventid", input, id},
                                        {"EventReservationId", "eventreservationid", input, id},
                                        {"EventReservation", "eventreservation", object},
                                        {"DonationType", "event-donation-type", output}};
constexpr DialogValue selectReservation[] = {
    {"DonorId", "donorid", input, id}, {"EventReservationId", "eventreservationid", output, id}};
constexpr DialogValue payments[] = {{"Action", "action", input},
                                    {"EventId", "eventid", input, id},
                                    {"EventReservation", "eventreservation", object},
                                    {"ReturnAction", "returnaction", output}};
constexpr DialogValue results[] = {{"NavigateUrl", "navigateurl", input},
                                   {"SearchCriteria", "searchcriteria", object},
                                   {"DonorId", "donorid", output, id}};

constexpr DialogDescription catalog[] = {
    {"addevent", "AddEventDialog", Headings::all, addEvent, "Enter a new event."},
    {"deleteevent", "DeleteEventDialog", Headings::all, deleteEvent,
     "Confirm and delete an event."},
    {"copyevent", "CopyEventDialog", Headings::all, copyEvent, "Copy an event."},
    {"findevent", "FindEventDialog", Headings::all, findEvent, "Find an event."},
    {"editeventcategory", "EditEventCategoryDialog", Headings::ownDescription, eventCategory,
     "Add or edit an event category."},
    {"editeventstatus", "EditEventStatusDialog", Headings::ownDescription, eventStatus,
     "Add or edit an event status."},
    {"editeventlocation", "EditEventLocationDialog", Headings::ownDescription, eventLocation,
     "Add or edit an event location."},
    {"editeventinvitationgroup", "EditEventInvitationGroupDialog", Headings::ownDescription,
     invitationGroup, "Add or edit an invitation group."},
    {"editeventexpense", "EditEventExpenseDialog", Headings::noDescription, expense,
     "Add or edit an expense."},
    {"editeventparticipant", "EditEventParticipantDialog", Headings::all, participant,
     "Edit one participant."},
    {"editeventparticipants", "EditEventParticipantsDialog", Headings::all, participants,
     "Edit several participants at once."},
    {"deleteeventparticipants", "DeleteEventParticipantsDialog", Headings::all, participants,
     "Delete several participants."},
    {"editeventactivity", "EditEventActivityDialog", Headings::noDescription, activity,
     "Add or edit an activity."},
    {"editeventtask", "EditEventTaskDialog", Headings::noDescription, task, "Add or edit a task."},
    {"deleteeventreservation", "DeleteEventReservationDialog", Headings::all, deleteReservation,
     "Delete a reservation."},
    {"editreservationfielditems", "EditReservationItemsDialog", Headings::noDescription,
     reservationItems, "Edit the choice items of a reservation field."},
    {"customizeeventdetails", "CustomizeEventDetailsDialog", Headings::noDescription, customize,
     "Choose what the event details page shows."},
    {"addeventparticipants", "AddEventParticipantsDialog", Headings::all, newParticipants,
     "Add participants from a source."},
    {"addeventparticipant", "AddEventParticipantDialog", Headings::all, participants,
     "Add one participant."},
    {"addeventactivityfield", "AddEventActivityFieldDialog", Headings::all, addField,
     "Add a reservation field to an activity."},
    {"editeventactivityfield", "EditEventActivityFieldDialog", Headings::all, editField,
     "Edit a reservation field."},
    {"editeventreservationactivity", "EditReservationActivityDialog", Headings::noDescription,
     reservationActivity, "Add or edit an activity reserved."},
    {"sendeventmailing", "SendEventMailingDialog", Headings::noDescription, mailing,
     "Choose the recipients of an event mailing."},
    {"progressbar", "ProgressBarDialog", Headings::all, {}, "Show progress of a long operation."},
    {"protectedpassword", "ProtectedPasswordDialog", Headings::titleOnly, {}, "A password prompt."},
    {"participantmessage", "ParticipantMessageDialog", Headings::noDescription, participantMessage,
     "Show a message about participants of an event."},
    {"choosedonationtype", "ChooseDonationTypeDialog", Headings::all, donationType,
     "Choose what a donation is for."},
    {"selecteventreservation", "SelectEventReservationDialog", Headings::all, selectReservation,
     "Pick one of a donor's reservations."},
    {"editeventreservationpayments", "EditReservationPaymentsDialog", Headings::noDescription,
     payments, "Record or edit the payments of a reservation."},
};

constexpr DialogDescription resultsDialog{"eventsfindresults", "EventsResultsDialog", Headings::all,
                                          results, "The events that were found."};

} // namespace

std::span<const DialogDescription> dialogCatalog() { return catalog; }

const DialogDescription& eventsResultsDialog() { return resultsDialog; }

} // namespace qmevents
