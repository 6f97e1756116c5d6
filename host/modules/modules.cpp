#include "host/modules/modules.h"

#include "automation/describe.h"

namespace refhost {

using qmevents::arg;
using qmevents::describe;
using qmevents::makeRef;

namespace {

struct ModuleName {
    const char* name;
    Ref<Object> (*get)(const Modules&);
};
template <auto member>
Ref<Object> moduleOf(const Modules& modules)
{
    return modules.*member;
}
constexpr ModuleName names[] = {
    {"Events", moduleOf<&Modules::events>},   {"Quillmere", moduleOf<&Modules::quillmere>},
    {"donor", moduleOf<&Modules::donor>},     {"Donation", moduleOf<&Modules::donation>},
    {"Actions", moduleOf<&Modules::actions>}, {"Loader", moduleOf<&Modules::loader>},
};

} // namespace

const Members& QuillmereModule::members() const
{
    static const Members table =
        describe<QuillmereModule>("The host's core module.")
            .readOnly("Smartlists", &QuillmereModule::smartLists, "Lists of records.")
            .readOnly("Mailings", &QuillmereModule::mailings, "Mailings.")
            .readOnly("Reports", &QuillmereModule::reports, "Reports.")
            .readOnly("Settings", &QuillmereModule::settings, "Settings.")
            .readOnly("Donors", &QuillmereModule::donors, "Donors and their details page.")
            .readOnly("Widgets", &QuillmereModule::widgets, "The start page.")
            .readOnly("Codes", &QuillmereModule::codes, "Funds, campaigns, appeals and assignees.");
    return table;
}

QuillmereModule::QuillmereModule(const SharedContext& context, Ref<Donors> allDonors)
    : smartLists(makeRef<SmartLists>(context)), mailings(makeRef<Mailings>(context)),
      reports(makeRef<Reports>(context, smartLists)), settings(makeRef<Settings>(context)),
      donors(std::move(allDonors)), widgets(makeRef<Widgets>(context)),
      codes(makeRef<Codes>(context))
{
}

const Members& LoaderModule::members() const
{
    static const Members table = describe<LoaderModule>("Sends host events to the modules.")
                                     .readOnly("CurrentEvent", &LoaderModule::currentEvent,
                                               "The event that is being answered, or Nothing.");
    return table;
}

const Members& Modules::members() const
{
    static const Members table =
        describe<Modules>("The modules of the host.")
            .readOnly("Item", &Modules::Item, {arg("Name")}, "The module of this name.")
            .asDefault()
            .readOnly("Events", &Modules::events, "The Events add-in.")
            .readOnly("Quillmere", &Modules::quillmere, "The core module.")
            .readOnly("donor", &Modules::donor, "Donors.")
            .readOnly("Donation", &Modules::donation, "Donations.")
            .readOnly("Actions", &Modules::actions, "Notes, assignments and reminders.")
            .readOnly("Loader", &Modules::loader, "Host events.");
    return table;
}

Modules::Modules(const SharedContext& context)
    : events(makeRef<EventsModule>(context)), donors(makeRef<Donors>(context)),
      quillmere(makeRef<QuillmereModule>(context, donors)),
      donor(makeRef<DonorModule>(context, donors, quillmere->mailings)),
      donation(makeRef<DonationModule>(context)), actions(makeRef<ActionsModule>(context)),
      loader(makeRef<LoaderModule>())
{
}

bool Modules::isLoaded(const std::string& name) const
{
    for (const ModuleName& known : names) {
        if (qmevents::text::sameName(known.name, name)) return true;
    }
    return false;
}

Ref<Object> Modules::Item(const std::string& name) const
{
    for (const ModuleName& known : names) {
        if (qmevents::text::sameName(known.name, name)) return known.get(*this);
    }
    throw qmevents::Error::with(qmevents::ErrorNumber::invalidCall,
                                "there is no module called " + name);
}

} // namespace refhost
