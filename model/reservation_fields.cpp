#include "model/reservation_fields.h"

#include "automation/error.h"

namespace qmevents {

const Members& cEventActivityReservationItem::members() const
{
    using C = cEventActivityReservationItem;
    static const Members table = describe<C>("One choice of a drop-down reservation field.")
                                     .property("Name", &C::Name, "The choice.")
                                     .property("Visible", &C::Visible, "Whether it is offered.");
    return table;
}

const Members& cEventActivityReservationField::members() const
{
    using C = cEventActivityReservationField;
    static const Members table =
        describe<C>("Extra information that an activity asks of whoever reserves it.")
            .property("FieldType", &C::FieldType,
                      "1 text box, 2 drop-down list, 3 drop-down list that accepts typed text, "
                      "4 date, 6 check box.")
            .property("Name", &C::Name, "The field's caption.")
            .property("Description", &C::Description, "Help text.")
            .property("DefaultValue", &C::DefaultValue, "Value of a new reservation.")
            .property("ListItems", &C::ListItems, &C::setListItems,
                      "Choices of a drop-down field under their names.")
            .readOnly("FieldTypeString", &C::FieldTypeString,
                      "The field type in words; empty for 5 and unknown types.")
            .method("AddListItem", &C::AddListItem,
                    {arg("Name"), arg("Visible"), optional("Duplicate")},
                    "Adds a choice unless there is one of this name, which sets Duplicate to True.")
            .method("CopyFrom", &C::CopyFrom, {arg("Master")},
                    "Makes this field a copy of Master, choices included.");
    return table;
}

const Members& cEventReservationActivityField::members() const
{
    using C = cEventReservationActivityField;
    static const Members table =
        describe<C>("What was entered for one reservation field.")
            .property("FieldType", &C::FieldType, "Type of the field, as in its definition.")
            .property("Name", &C::Name, "The field's caption.")
            .property("Value", &C::Value, "What was entered.");
    return table;
}

void cEventActivityReservationField::AddListItem(const std::string& name, bool visible,
                                                 bool* Duplicate)
{
    if (hasChoice(name)) {
        if (Duplicate) *Duplicate = true;
        return;
    }
    auto item = makeRef<cEventActivityReservationItem>();
    item->Name = name;
    item->Visible = visible;
    listItems_.get()->append(item, name);
}

bool cEventActivityReservationField::hasChoice(const std::string& name) const
{
    if (!name.empty()) return listItems_.get()->contains(name);
    // An empty text is no key.
    bool found = false;
    eachListItem([&](const auto& item) { found = found || item.Name.empty(); });
    return found;
}

std::string cEventActivityReservationField::FieldTypeString() const
{
    switch (FieldType) {
    case 1:
        return "Textbox";
    case 2:
        return "Dropdown List";
    case 3:
        return "Dropdown Edit";
    case 4:
        return "Date";
    case 6:
        return "Checkbox";
    default:
        return {};
    }
}

void cEventActivityReservationField::CopyFrom(const Ref<cEventActivityReservationField>& Master)
{
    if (!Master) throw Error::with(ErrorNumber::objectNotSet, "CopyFrom needs a field");
    if (Master.get() == this) return;
    FieldType = Master->FieldType;
    Name = Master->Name;
    Description = Master->Description;
    DefaultValue = Master->DefaultValue;
    isVisible = Master->isVisible;
    listItems_.set({});
    Master->eachListItem([this](const auto& item) { AddListItem(item.Name, item.Visible); });
}

void appendValue(Collection& values, const Ref<cEventReservationActivityField>& value)
{
    values.append(value, values.contains(value->Name) ? std::string() : value->Name);
}

} // namespace qmevents
