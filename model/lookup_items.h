#pragma once

#include "model/donor_name.h"
#include "model/entity.h"
#include "model/typed_collection.h"

namespace qmevents {

/// One item of a lookup list that users keep: what all lists have in common. The flags of lookup
/// items are the store's own, not readable by the host.
class LookupItem : public Entity {
public:
    std::string ObjectType; ///< The list's item key, for example "eventcategory".
    Tracked<std::string> Description{*this};
    Tracked<bool> Visible{*this};
    Tracked<std::int16_t> Order{*this};

    /// Assigning the key marks the item dirty.
    void setId(std::int32_t id)
    {
        assignId(id);
        markDirty();
    }
    /// `Order` as text with 15 digits, so that the collections' text sort follows the numbers.
    std::string SortOrder() const;
};

/// A lookup item with a name of its own.
class NamedItem : public LookupItem {
public:
    Tracked<std::string> Name{*this};
    std::string displayName() const { return Name; }
};

class cEventCategory : public NamedItem {
public:
    static constexpr std::string_view ClassName = "cEventCategory";
    const Members& members() const override;
};

class cEventStatus : public NamedItem {
public:
    static constexpr std::string_view ClassName = "cEventStatus";
    const Members& members() const override;
};

class cEventLocation : public NamedItem {
public:
    static constexpr std::string_view ClassName = "cEventLocation";
    const Members& members() const override;

    Tracked<std::string> ContactName{*this};
    Tracked<std::string> Address{*this};
    Tracked<std::string> Phone{*this};
    Tracked<std::string> Fax{*this};
    Tracked<std::string> Email{*this};
    Tracked<std::string> Notes{*this};
};

class cEventInvitationGroup : public NamedItem {
public:
    static constexpr std::string_view ClassName = "cEventInvitationGroup";
    const Members& members() const override;

    Tracked<std::int32_t> FKEventId{*this};
    Tracked<std::int32_t> FKdonorId{*this};
    Tracked<bool> IsSelected{*this}; ///< Selection mark of the group pickers.
};

/// A donor who coordinates events. The donor's id is the item's identity.
class cEventCoordinator : public LookupItem {
public:
    static constexpr std::string_view ClassName = "cEventCoordinator";
    const Members& members() const override;

    Tracked<std::int32_t> FKdonorId{*this};
    /// The donor's display name; asked of the host when the store has not filled it in.
    std::string Display() const;
    void setDisplay(const std::string& display);
    std::string displayName() const { return Display(); }

private:
    friend class StoreAccess;
    DonorName display_;
};

/// One value of a host attribute table.
class cAttributeValue : public NamedItem {
public:
    static constexpr std::string_view ClassName = "cAttributeValue";
    const Members& members() const override;
};

class cEventCategories : public TypedCollection<cEventCategory> {
public:
    static constexpr std::string_view ClassName = "cEventCategories";
    const Members& members() const override;
};
class cEventStatuses : public TypedCollection<cEventStatus> {
public:
    static constexpr std::string_view ClassName = "cEventStatuses";
    const Members& members() const override;
};
class cEventLocations : public TypedCollection<cEventLocation> {
public:
    static constexpr std::string_view ClassName = "cEventLocations";
    const Members& members() const override;
};
class cEventCoordinators : public TypedCollection<cEventCoordinator> {
public:
    static constexpr std::string_view ClassName = "cEventCoordinators";
    const Members& members() const override;
};
class cEventInvitationGroups : public TypedCollection<cEventInvitationGroup> {
public:
    static constexpr std::string_view ClassName = "cEventInvitationGroups";
    const Members& members() const override;
};
class cAttributeValues : public TypedCollection<cAttributeValue> {
public:
    static constexpr std::string_view ClassName = "cAttributeValues";
    const Members& members() const override;
};

} // namespace qmevents
