#pragma once

#include <string>
#include <vector>

#include "automation/collection.h"
#include "host/app/session_context.h"

namespace refhost {

/// An item of a code list, as it is kept.
class CodeItem : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "CodeItem";
    const Members& members() const override;

    std::int32_t Id = 0;
    std::string Name, Description;
    bool Visible = true; ///< Whether it is offered for new records.
};

/// How many records of a table refer to an item.
class CodeUse : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "CodeUse";
    const Members& members() const override;

    std::string Table;
    std::int32_t Count = 0;
};

/// `App.Modules.Quillmere.Codes`: the lists "fund", "campaign", "appeal" and "assignee". Every
/// member is error 5 for another list or an item that does not exist; those that change a list are
/// error 70 without the right "settings/edit".
class Codes : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Codes";
    const Members& members() const override;

    explicit Codes(SharedContext context) : context_(std::move(context)) {}

    Ref<qmevents::Collection> Items(const std::string& list) const; ///< In their order.
    /// Adds an item at the end; gives why that cannot be, or an empty text.
    std::string Add(const std::string& list, const std::string& name,
                    const std::string& description) const;
    /// Names and describes an item anew; gives why that cannot be, or an empty text.
    std::string Rename(const std::string& list, std::int32_t id, const std::string& name,
                       const std::string& description) const;
    void SetVisible(const std::string& list, std::int32_t id, bool isVisible) const;
    /// Moves an item up (-1) or down (1); one at the end stays.
    void Move(const std::string& list, std::int32_t id, std::int32_t step) const;
    /// The tables whose records refer to an item, the modules' included, with how many do.
    Ref<qmevents::Collection> Uses(const std::string& list, std::int32_t id) const;
    /// Deletes an item and clears what refers to it, in one transaction with what the modules do
    /// about theirs. A failure leaves all as it was and is the caller's.
    void Delete(const std::string& list, std::int32_t id) const;

private:
    struct List;
    const List& find(const std::string& name) const;
    const List& findToChange(const std::string& name, std::int32_t id) const;
    std::string faultOf(const List& list, const std::string& name, const std::string& description,
                        std::int32_t own) const;
    std::vector<std::string> tablesWith(const std::string& column) const;
    std::string text(const std::string& value) const;
    std::string yesNo(bool value) const;

    SharedContext context_;
};

} // namespace refhost
