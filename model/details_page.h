#pragma once

#include "model/event.h"
#include "model/secure_collection.h"

namespace qmevents {

/// One line of a section: a label with its value, or ready-made markup.
class DetailsPageSectionRow : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "DetailsPageSectionRow";
    const Members& members() const override;

    std::string Id;
    std::string Name;
    std::string Value;
    std::string HtmlContent;
    bool HalfWidth = false; ///< Takes half of the section's width.
};

/// One box on a tab.
class DetailsPageSection : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "DetailsPageSection";
    const Members& members() const override;

    std::string Title;
    std::string Key;
    Ref<Object> Rows = makeRef<Collection>();
    std::string Link; ///< Where the heading leads.
};

/// One tab.
class DetailsPageTab : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "DetailsPageTab";
    const Members& members() const override;

    std::string Title;
    std::string Key;
    Ref<Object> Sections = makeRef<Collection>();
    std::string Operation; ///< The right that a user needs to see it.
};

/// The event details page as tabs of sections of rows. Tabs that the user may not see never enter.
class DetailsPage : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "DetailsPage";
    const Members& members() const override;

    Ref<DetailsPageTab> GetNewTab() { return makeRef<DetailsPageTab>(); }
    Ref<DetailsPageSection> GetNewSection() { return makeRef<DetailsPageSection>(); }
    Ref<DetailsPageSectionRow> GetNewSectionRow() { return makeRef<DetailsPageSectionRow>(); }
    /// Makes the page that of `eventObject`, without tabs.
    void Init(const Ref<cEvent>& eventObject);
    Ref<cEvent> EventObject() const { return event_; }
    Ref<SecureCollection> Tabs() const { return tabs_; }

private:
    Ref<cEvent> event_;
    Ref<SecureCollection> tabs_;
};

} // namespace qmevents
