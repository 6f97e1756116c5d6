#pragma once

#include <string>

#include "host/lists/smart_lists.h"
#include "host/modules/actions_module.h"
#include "host/modules/codes.h"
#include "host/modules/donation_module.h"
#include "host/modules/donor_page.h"
#include "host/modules/events_module.h"
#include "host/modules/mailings.h"
#include "host/modules/reports.h"
#include "host/modules/settings.h"
#include "host/modules/widgets.h"

namespace refhost {

/// `App.Modules.Quillmere`, the host's core module.
class QuillmereModule : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "QuillmereModule";
    const Members& members() const override;

    QuillmereModule(const SharedContext& context, Ref<Donors> allDonors);
    Ref<SmartLists> smartLists;
    Ref<Mailings> mailings;
    Ref<Reports> reports;
    Ref<Settings> settings;
    Ref<Donors> donors;
    Ref<Widgets> widgets;
    Ref<Codes> codes;
};

/// `App.Modules.Loader`.
class LoaderModule : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "LoaderModule";
    const Members& members() const override;

    Ref<Object> currentEvent; ///< The host event that is being answered, or Nothing.
};

/// `App.Modules`: the modules by name, as members or as `Modules("name")`.
class Modules : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Modules";
    const Members& members() const override;

    explicit Modules(const SharedContext& context);
    bool isLoaded(const std::string& name) const;
    Ref<Object> Item(const std::string& name) const; ///< Error 5 when there is no such module.

    Ref<EventsModule> events;
    Ref<Donors> donors;
    Ref<QuillmereModule> quillmere;
    Ref<DonorModule> donor;
    Ref<DonationModule> donation;
    Ref<ActionsModule> actions;
    Ref<LoaderModule> loader;
};

} // namespace refhost
