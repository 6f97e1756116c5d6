#include "core/root_objects.h"

#include <array>

#include "core/context.h"
#include "core/date_time_util.h"
#include "core/general_handler.h"
#include "core/links.h"
#include "core/security_handler.h"
#include "core/security_items.h"
#include "core/setting_handler.h"
#include "handlers/donor_handler.h"
#include "handlers/mailing_handler.h"
#include "handlers/report_handler.h"
#include "handlers/smart_list_handler.h"
#include "model/details_page.h"
#include "model/reservation_fields.h"
#include "store/events_manage.h"
#include "store/list_manage.h"
#include "workflow/dialog.h"
#include "workflow/workflow_events.h"

namespace qmevents {
namespace {

/// What the host creates and initialises: keeps the first application object that arrives and
/// finds the add-in's own root.
class RootObject : public DescribedObject {
public:
    void OnInitialize(const Ref<Object>& oApp)
    {
        Context::current().initialize(oApp);
        Context::current().root();
    }
};

/// Entry object for the commands.
class Workflow : public RootObject {
public:
    static constexpr std::string_view ClassName = "Workflow";
    const Members& members() const override
    {
        static const Members table =
            describe<Workflow>("Entry object for the commands.")
                .method("OnInitialize", &Workflow::OnInitialize, {arg("oApp")},
                        "Takes the host's application object.")
                .readOnly("Events", &Workflow::Events, "The commands of the user.");
        return table;
    }
    Ref<WorkflowEvents> Events() const { return commands_; }

private:
    Ref<WorkflowEvents> commands_ = makeRef<WorkflowEvents>();
};

/// The root object: the way to the stores, the dialogs, the helpers and the details page model.
class Events : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "Events";
    const Members& members() const override
    {
        static const Members table =
            describe<Events>("The root object.")
                .method("OnInitialize", &Events::OnInitialize, {arg("oApp")},
                        "Takes the host's application object.")
                .readOnly("EventsManage", &Events::store, "The event store.")
                .readOnly("ListManage", &Events::lists, "The lookup-list store.")
                .readOnly("Dialogs", &Events::dialogs, "The factory of dialogs.")
                .readOnly("Utils", &Events::utils, "Value helpers.")
                .readOnly("DetailsPage", &Events::detailsPage, "The details page model.")
                .method("GetNewLink", &Events::GetNewLink, "A new, empty link.")
                .method("Links", &Events::Links, "The add-in's links, one collection for ever.");
        return table;
    }
    // This object is the root itself, so it does not look itself up.
    void OnInitialize(const Ref<Object>& oApp) { Context::current().initialize(oApp); }
    Ref<EventsManage> store() const { return store_; }
    Ref<ListManage> lists() const { return lists_; }
    Ref<Dialogs> dialogs() const { return dialogs_; }
    Ref<Utils> utils() const { return utils_; }
    Ref<DetailsPage> detailsPage() const { return detailsPage_; }
    Ref<ApplicationLink> GetNewLink() { return makeRef<ApplicationLink>(); }
    Ref<Collection> Links()
    {
        if (!links_) links_ = makeRef<Collection>();
        return links_;
    }

private:
    Ref<EventsManage> store_ = makeRef<EventsManage>();
    Ref<ListManage> lists_ = makeRef<ListManage>();
    Ref<Dialogs> dialogs_ = makeRef<Dialogs>();
    Ref<Utils> utils_ = makeRef<Utils>();
    Ref<DetailsPage> detailsPage_ = makeRef<DetailsPage>();
    Ref<Collection> links_;
};

Ref<EventAnswerer> makeAnswerer(EventGroup group)
{
    switch (group) {
    case EventGroup::donor:
        return makeRef<DonorHandler>();
    case EventGroup::report:
        return makeRef<ReportHandler>();
    case EventGroup::smartList:
        return makeRef<SmartListHandler>();
    case EventGroup::mailing:
        return makeRef<MailingHandler>();
    case EventGroup::setting:
        return makeRef<SettingHandler>();
    case EventGroup::general:
        return makeRef<GeneralHandler>();
    case EventGroup::security:
        return makeRef<SecurityHandler>();
    }
    return {};
}

/// The dispatcher of host events. Each answering class is made on the first event of its group and
/// kept. Failures go back to the host as the result of its own call.
class Handler : public RootObject {
public:
    static constexpr std::string_view ClassName = "Handler";
    const Members& members() const override
    {
        static const Members table =
            describe<Handler>("The dispatcher of host events.")
                .method("OnInitialize", &Handler::OnInitialize, {arg("oApp")},
                        "Takes the host's application object.")
                .method("EventHandler", &Handler::EventHandler, {arg("Ev")},
                        "Hands a host event to the class that answers it; unknown ones are "
                        "ignored.");
        return table;
    }
    void EventHandler(const Ref<Object>& Ev)
    {
        const auto group = eventGroupOf(HostEvent(Ev).key());
        if (!group) return;
        auto& answerer = answerers_[static_cast<std::size_t>(*group)];
        if (!answerer) answerer = makeAnswerer(*group);
        answerer->EventHandler(Ev);
    }

private:
    std::array<Ref<EventAnswerer>, eventGroups> answerers_;
};

/// Item-level security asked by the host.
class Security : public RootObject {
public:
    static constexpr std::string_view ClassName = "Security";
    const Members& members() const override
    {
        static const Members table =
            describe<Security>("Item-level security asked by the host.")
                .method("OnInitialize", &Security::OnInitialize, {arg("oApp")},
                        "Takes the host's application object.")
                .method("IsButtonItemAllowed", &Security::isAllowed, {optional("Item")},
                        "Whether the user may use a button.")
                .method("IsTaskItemAllowed", &Security::isAllowed, {optional("Item")},
                        "Whether the user may use a task.")
                .method("IsPageItemAllowed", &Security::isAllowed, {optional("Item")},
                        "Whether the user may see a page or an item of one.")
                .method("IsMenuItemAllowed", &Security::isAllowed, {optional("Item")},
                        "Whether the user may use an item of a menu.");
        return table;
    }
    bool isAllowed(const Value& item) { return isItemAllowed(item); }
};

template <typename T>
Ref<Object> make()
{
    return makeRef<T>();
}

struct RootClass {
    std::string_view progId;
    Ref<Object> (*make)();
};
constexpr RootClass rootClasses[] = {
    {"QMEvents.Workflow", make<Workflow>},
    {"QMEvents.Events", make<Events>},
    {"QMEvents.Handler", make<Handler>},
    {"QMEvents.Security", make<Security>},
    {"QMEvents.Utils", make<Utils>},
    {"QMEvents.DateTimeUtil", make<DateTimeUtil>},
    {"QMEvents.ApplicationLink", make<ApplicationLink>},
    {"QMEvents.EntityKeyLock", make<EntityKeyLock>},
};

template <typename... T>
void addTables(std::vector<const Members*>& tables)
{
    (tables.push_back(&T().members()), ...);
}

} // namespace

Ref<Object> createRootObject(std::string_view progId)
{
    for (const auto& root : rootClasses) {
        if (text::sameName(root.progId, progId)) return root.make();
    }
    return {};
}

void releaseAddIn() { Context::current().release(); }

std::span<const Enumeration> publicEnumerations()
{
    static const std::vector<Enumeration> enumerations{
        {EnumerationName<EventStates>::value, {{"stateOpenEvent", 1}, {"stateClosedEvent", 8}}},
        {EnumerationName<EventsActions>::value,
         {{"Create", 1},
          {"Edit", 2},
          {"View", 3},
          {"Delete", 4},
          {"EditReservationFields", 5},
          {"EditReservationActivities", 6},
          {"CompleteTask", 7},
          {"AddReservation", 8},
          {"ViewDonor", 9},
          {"Copy", 10}}}};
    return enumerations;
}

std::span<const Members* const> publicClasses()
{
    static const std::vector<const Members*> tables = [] {
        std::vector<const Members*> all;
        addTables<Workflow, Events, Handler, Security, Utils, DateTimeUtil, ApplicationLink,
                  EntityKeyLock, WorkflowEvents, EventsManage, ListManage, Dialogs, DialogTemplate,
                  cEventsCriteria, cEvent, cEvents, cEventCategory, cEventCategories, cEventStatus,
                  cEventStatuses, cEventLocation, cEventLocations, cEventCoordinator,
                  cEventCoordinators, cEventInvitationGroup, cEventInvitationGroups,
                  cAttributeValue, cAttributeValues, cEventActivity, cEventActivities,
                  cEventActivityReservationField, cEventActivityReservationItem,
                  cEventReservationActivityField, cEventParticipant, cEventParticipants,
                  cEventParticipantGroup, cEventParticipantGroups, cEventReservation,
                  cEventReservations, cEventReservationActivity, cEventReservationActivities,
                  cEventExpense, cEventExpenses, cEventTask, cEventTasks, CollectionTemplate,
                  SecureCollection, Collection, DetailsPage, DetailsPageTab, DetailsPageSection,
                  DetailsPageSectionRow>(all);
        for (const Members* dialog : dialogMembers()) all.push_back(dialog);
        return all;
    }();
    return tables;
}

} // namespace qmevents
