#pragma once

#include <cstdint>
#include <string>

#include "automation/describe.h"
#include "model/late_collection.h"

namespace qmevents {

/// One choice of a drop-down field.
class cEventActivityReservationItem : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "cEventActivityReservationItem";
    const Members& members() const override;

    std::string Name;
    bool Visible = false; ///< Whether the choice is offered.
};

/// Extra information that an activity asks of whoever reserves it.
class cEventActivityReservationField : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "cEventActivityReservationField";
    const Members& members() const override;

    std::int16_t FieldType = 0; ///< 1 text, 2 list, 3 list or typed text, 4 date, 6 check box.
    std::string Name;           ///< The caption.
    std::string Description;
    std::string DefaultValue;
    bool isVisible = true; ///< Kept for the stored document; no page shows it.

    /// The choices under their names.
    Ref<Collection> ListItems() const { return listItems_.get(); }
    void setListItems(const Ref<Collection>& items) { listItems_.set(items); }
    /// Adds a choice. When there is one of this name already, it stays and `Duplicate` becomes
    /// True; else `Duplicate` is left as it was.
    void AddListItem(const std::string& name, bool visible, bool* Duplicate = nullptr);
    /// Calls `visit` with each choice.
    template <typename Visit>
    void eachListItem(Visit visit) const
    {
        listItems_.each<cEventActivityReservationItem>([&](const auto& item) { visit(*item); });
    }
    /// "Textbox", "Dropdown List" and so on; empty for 5, which has no name on purpose.
    std::string FieldTypeString() const;
    /// Makes this field a copy of `Master`, with choices of its own.
    void CopyFrom(const Ref<cEventActivityReservationField>& Master);

private:
    bool hasChoice(const std::string& name) const;

    LateCollection listItems_;
};

/// What was entered for one field of an activity on a line of a reservation.
class cEventReservationActivityField : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "cEventReservationActivityField";
    const Members& members() const override;

    std::int16_t FieldType = 0;
    std::string Name; ///< The field's caption.
    std::string Value;
};

/// Appends a field's value under the field's name, or without a key when that is taken.
void appendValue(Collection& values, const Ref<cEventReservationActivityField>& value);

} // namespace qmevents
