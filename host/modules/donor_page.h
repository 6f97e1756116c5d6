#pragma once

#include <string>

#include "automation/collection.h"
#include "host/modules/donor_dialogs.h"
#include "host/modules/donor_module.h"
#include "host/modules/mailing_manage.h"

namespace refhost {

using qmevents::Collection;

/// One line of a section: a label and its value as markup.
class DonorPageRow : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "DonorPageRow";
    const Members& members() const override;

    std::string Name;
    std::string Value;
};

/// One box on a tab.
class DonorPageSection : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "DonorPageSection";
    const Members& members() const override;

    std::string Title;
    std::string Key;
    Ref<Collection> Rows = qmevents::makeRef<Collection>();
};

/// One tab of the page.
class DonorPageTab : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "DonorPageTab";
    const Members& members() const override;

    DonorPageTab(std::string key, std::string title) : Key(std::move(key)), Title(std::move(title))
    {
    }
    std::string Key;
    std::string Title;
    Ref<Collection> Sections = qmevents::makeRef<Collection>();
};

/// The details page of a donor, which modules fill with their sections.
class DonorDetailsPage : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "DonorDetailsPage";
    const Members& members() const override;

    DonorDetailsPage();
    /// Begins the page of `donor` with empty tabs.
    void begin(Ref<Donor> donor);

    Ref<Donor> donor; ///< Nothing before the first page.
    Ref<Collection> Tabs = qmevents::makeRef<Collection>();
    Ref<DonorPageSection> GetNewSection() const;
    Ref<DonorPageRow> GetNewSectionRow() const;
};

/// `Donors` of the host's modules.
class Donors : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Donors";
    const Members& members() const override;

    explicit Donors(SharedContext context) : context_(std::move(context)) {}
    Ref<DonorDetailsPage> DetailsPage = qmevents::makeRef<DonorDetailsPage>();
    /// The details page of a donor with what the modules have to say; Nothing when there is no such
    /// donor.
    Ref<DonorDetailsPage> OpenDetailsPage(std::int32_t donorId);

private:
    SharedContext context_;
};

/// `App.Modules.donor`.
class DonorModule : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "DonorModule";
    const Members& members() const override;

    DonorModule(const SharedContext& context, Ref<Donors> allDonors, Ref<Mailings> setUp)
        : manage(qmevents::makeRef<DonorManage>(context)),
          mailings(qmevents::makeRef<MailingManage>(context, std::move(setUp))),
          donors(std::move(allDonors)), dialogs(qmevents::makeRef<DonorDialogs>(context))
    {
    }
    Ref<DonorManage> manage;
    Ref<MailingManage> mailings;
    Ref<Donors> donors;
    Ref<DonorDialogs> dialogs;
};

} // namespace refhost
