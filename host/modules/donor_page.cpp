#include "host/modules/donor_page.h"

#include "automation/describe.h"

namespace refhost {

using qmevents::arg;
using qmevents::describe;
using qmevents::makeRef;

namespace {

struct TabName {
    const char *key, *title;
};
constexpr TabName tabs[] = {
    {"summary", "Summary"}, {"detail", "Details"}, {"relationship", "Relationships"}};

} // namespace

const Members& DonorPageRow::members() const
{
    static const Members table =
        describe<DonorPageRow>("One line of a section.")
            .property("Name", &DonorPageRow::Name, "The label.")
            .property("Value", &DonorPageRow::Value, "The value as markup.");
    return table;
}

const Members& DonorPageSection::members() const
{
    static const Members table =
        describe<DonorPageSection>("One box on a tab.")
            .property("Title", &DonorPageSection::Title, "The heading.")
            .property("Key", &DonorPageSection::Key, "The key among the tab's sections.")
            .readOnly("Rows", &DonorPageSection::Rows, "The lines.");
    return table;
}

const Members& DonorPageTab::members() const
{
    static const Members table =
        describe<DonorPageTab>("One tab of a donor's details page.")
            .readOnly("Key", &DonorPageTab::Key, "\"summary\", \"detail\" or \"relationship\".")
            .readOnly("Title", &DonorPageTab::Title, "The tab's caption.")
            .readOnly("Sections", &DonorPageTab::Sections, "The boxes, by their keys.");
    return table;
}

const Members& DonorDetailsPage::members() const
{
    static const Members table =
        describe<DonorDetailsPage>("The details page of a donor.")
            .readOnly("donor", &DonorDetailsPage::donor, "The donor shown.")
            .readOnly("Tabs", &DonorDetailsPage::Tabs, "The tabs, by their keys.")
            .method("GetNewSection", &DonorDetailsPage::GetNewSection, "A new empty section.")
            .method("GetNewSectionRow", &DonorDetailsPage::GetNewSectionRow, "A new empty row.");
    return table;
}

DonorDetailsPage::DonorDetailsPage() { begin({}); }

void DonorDetailsPage::begin(Ref<Donor> shown)
{
    donor = std::move(shown);
    Tabs->clear();
    for (const auto& [key, title] : tabs) {
        Tabs->append(qmevents::Value(makeRef<DonorPageTab>(key, title)), key);
    }
}

Ref<DonorPageSection> DonorDetailsPage::GetNewSection() const
{
    return makeRef<DonorPageSection>();
}

Ref<DonorPageRow> DonorDetailsPage::GetNewSectionRow() const { return makeRef<DonorPageRow>(); }

const Members& Donors::members() const
{
    static const Members table =
        describe<Donors>("The donors of the database.")
            .readOnly("DetailsPage", &Donors::DetailsPage, "The details page shown last.")
            .method("OpenDetailsPage", &Donors::OpenDetailsPage, {arg("DonorId")},
                    "Fills the details page for a donor and gives it, or Nothing.");
    return table;
}

Ref<DonorDetailsPage> Donors::OpenDetailsPage(std::int32_t donorId)
{
    const auto donor = DonorManage(context_).GetDonor(donorId);
    if (!donor) return {};
    DetailsPage->begin(donor);
    context_->raise("donor-detailspage-summarysections", Value(DetailsPage));
    for (const auto& tab : tabs) context_->raise("donor-detailspage-tabinit", Value(tab.key));
    return DetailsPage;
}

const Members& DonorModule::members() const
{
    static const Members table =
        describe<DonorModule>("The donor module.")
            .readOnly("DonorManage", &DonorModule::manage, "Reads donors.")
            .readOnly("MailingManage", &DonorModule::mailings,
                      "Collects lists of donors and starts mailings to them.")
            .readOnly("Donors", &DonorModule::donors, "The donors and their details page.")
            .readOnly("Dialogs", &DonorModule::dialogs, "The module's dialogs.");
    return table;
}

} // namespace refhost
