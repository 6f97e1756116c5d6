#include "model/details_page.h"

namespace qmevents {

const Members& DetailsPageSectionRow::members() const
{
    using C = DetailsPageSectionRow;
    static const Members table =
        describe<C>("One line of a section.")
            .property("Id", &C::Id, "Names the row.")
            .property("Name", &C::Name, "The label.")
            .property("Value", &C::Value, "The value beside the label.")
            .property("HtmlContent", &C::HtmlContent, "Ready-made markup instead of a value.")
            .property("HalfWidth", &C::HalfWidth, "Takes half of the section's width.");
    return table;
}

const Members& DetailsPageSection::members() const
{
    using C = DetailsPageSection;
    static const Members table =
        describe<C>("One box on a tab.")
            .property("Title", &C::Title, "The heading.")
            .property("Key", &C::Key, "Names the section.")
            .property("Rows", &C::Rows, "The rows, a collection.")
            .property("Link", &C::Link, "The address that the heading leads to.");
    return table;
}

const Members& DetailsPageTab::members() const
{
    using C = DetailsPageTab;
    static const Members table =
        describe<C>("One tab of the details page.")
            .property("Title", &C::Title, "The tab's title.")
            .property("Key", &C::Key, "Names the tab.")
            .property("Sections", &C::Sections, "The sections, a collection.")
            .property("Operation", &C::Operation, "The right that a user needs to see the tab.");
    return table;
}

const Members& DetailsPage::members() const
{
    static const Members table =
        describe<DetailsPage>("The event details page as tabs of sections of rows.")
            .readOnly("EventObject", &DetailsPage::EventObject, "The event shown.")
            .readOnly("Tabs", &DetailsPage::Tabs, "The tabs that the user may see.")
            .method("GetNewTab", &DetailsPage::GetNewTab, "A new, empty tab.")
            .method("GetNewSection", &DetailsPage::GetNewSection, "A new, empty section.")
            .method("GetNewSectionRow", &DetailsPage::GetNewSectionRow, "A new, empty row.")
            .method("Init", &DetailsPage::Init, {arg("EventObject")},
                    "Makes the page that of an event, without tabs.");
    return table;
}

void DetailsPage::Init(const Ref<cEvent>& eventObject)
{
    event_ = eventObject;
    if (!tabs_) tabs_ = makeRef<SecureCollection>();
    while (tabs_->Count() > 0) tabs_->Remove(1);
}

} // namespace qmevents
