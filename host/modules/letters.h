#pragma once

#include <map>
#include <string>
#include <vector>

#include "automation/collection.h"
#include "host/app/session_context.h"
#include "host/modules/mailings.h"

namespace refhost {

/// Payload of "mailing-data": the modules supply the values of a list's donors.
class MailingData : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "MailingData";
    const Members& members() const override;

    std::string ListKey;
    std::string Source;    ///< The module that started the mailing.
    std::string Reference; ///< What it wanted to be told with the list.
    Value DonorIds;        ///< An array.
    void SetValue(std::int32_t donorId, const std::string& field, const Value& value);
    /// Nothing when no module has given one.
    const Value* find(std::int32_t donorId, const std::string& field) const;

private:
    std::map<std::pair<std::int32_t, std::string>, Value> values_; // names in lower case
};

/// A letter to one donor.
class MergedLetter : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "MergedLetter";
    const Members& members() const override;

    std::int32_t DonorId = 0;
    std::string DonorName;
    std::string Text;
};

/// A part of a letter: its own words, or a field.
struct LetterPart {
    std::string text; ///< The words, or the field's name.
    bool isField = false;
};

/// The parts of a letter's text, in which "{Name}" is a field. Braces around anything else are
/// words.
std::vector<LetterPart> letterParts(const std::string& text);

/// `value` of a field of `kind` as it stands in a letter; what is absent is blank.
std::string letterText(const Value& value, const std::string& kind);

} // namespace refhost
