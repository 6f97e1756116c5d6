#pragma once

#include <string>
#include <vector>

#include "automation/collection.h"
#include "host/app/session_context.h"
#include "host/modules/letters.h"

namespace refhost {

/// A list of donors that a mailing goes to, as it was collected, with its letter.
class MailingList : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "MailingList";
    const Members& members() const override;

    MailingList(SharedContext context, Ref<Mailings> mailings)
        : context_(std::move(context)), mailings_(std::move(mailings))
    {
    }
    std::int32_t Id = 0;
    std::string Key;
    std::string Source;    ///< The module that started the mailing; empty before it has started.
    std::string CreatedBy; ///< The name of the user who collected it.
    Value CreateDate;
    std::int32_t DonorCount = 0; ///< When the list was read.
    std::string Reference;       ///< What the module wants to be told with it.
    std::string MailingType;     ///< The module's kind of mailing; empty when it has none.
    std::string Letter;          ///< Its text, with fields as "{EventName}".

    /// The donors (SmallDonor) by name; those deleted since are left out.
    Ref<qmevents::Collection> Donors() const;

    // What follows is error 70 without the right to send mailings.

    /// Removes the list, not its donors.
    void Delete() const;
    /// Keeps the text of the letter; gives why that cannot be, or an empty text.
    std::string SaveLetter(const std::string& text);
    /// The fields that a letter to this list can hold, by their groups.
    Ref<qmevents::Collection> Fields() const;
    /// The names in braces that are no fields of this list, separated by ", ".
    std::string UnknownFields(const std::string& text) const;
    /// The letters that `text` makes for `count` donors from `start` (0) on, by name. The modules
    /// are asked once for all of them. Unknown fields stay as they are written.
    Ref<qmevents::Collection> Merge(const std::string& text, std::int32_t start,
                                    std::int32_t count) const;

private:
    void requireRight() const;
    std::vector<Ref<MailingField>> fields() const;
    std::string donorQuery(const std::string& columns) const;

    SharedContext context_;
    Ref<Mailings> mailings_;
};

} // namespace refhost
