#include "host/modules/letters.h"

#include <array>
#include <cctype>

#include "automation/describe.h"
#include "automation/locale.h"

namespace refhost {

using qmevents::arg;
using qmevents::describe;
using qmevents::Locale;

namespace {

constexpr std::array months{"January", "February", "March",     "April",   "May",      "June",
                            "July",    "August",   "September", "October", "November", "December"};

bool isFieldName(std::string_view name)
{
    constexpr std::size_t longest = 64;
    if (name.empty() || name.size() > longest) return false;
    for (const char c : name) {
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '_') return false;
    }
    return true;
}

/// "March 7, 2026", in the order of the user's locale. The day of a zero date is not known.
std::string longDay(qmevents::Date date)
{
    if (!date.hasDate()) return {};
    const auto parts = date.civil();
    const Locale& locale = Locale::current();
    const std::string month = months.at(static_cast<std::size_t>(parts.month) - 1);
    const std::string day = std::to_string(parts.day);
    const std::string year = std::to_string(parts.year);
    if (locale.order == Locale::DateOrder::yearMonthDay) return locale.shortDate(date);
    return locale.order == Locale::DateOrder::dayMonthYear ? day + " " + month + " " + year
                                                           : month + " " + day + ", " + year;
}

} // namespace

const Members& MailingData::members() const
{
    static const Members table =
        describe<MailingData>("Donors of a mailing and the values of their letters.")
            .readOnly("ListKey", &MailingData::ListKey, "The key of the list.")
            .readOnly("Source", &MailingData::Source, "The module that started the mailing.")
            .readOnly("Reference", &MailingData::Reference,
                      "What that module wanted to be told with the list.")
            .readOnly("DonorIds", &MailingData::DonorIds, "The donors, an array of ids.")
            .method("SetValue", &MailingData::SetValue,
                    {arg("DonorId"), arg("FieldName"), arg("Value")},
                    "The value of a field in the letter to a donor.");
    return table;
}

void MailingData::SetValue(std::int32_t donorId, const std::string& field, const Value& value)
{
    values_.insert_or_assign({donorId, qmevents::text::lowerAscii(field)}, value);
}

const Value* MailingData::find(std::int32_t donorId, const std::string& field) const
{
    const auto found = values_.find({donorId, qmevents::text::lowerAscii(field)});
    return found == values_.end() ? nullptr : &found->second;
}

const Members& MergedLetter::members() const
{
    static const Members table =
        describe<MergedLetter>("A letter to one donor.")
            .readOnly("DonorId", &MergedLetter::DonorId, "The donor's key.")
            .readOnly("DonorName", &MergedLetter::DonorName, "The donor's name.")
            .readOnly("Text", &MergedLetter::Text, "The letter, its lines as they were written.");
    return table;
}

std::vector<LetterPart> letterParts(const std::string& text)
{
    std::vector<LetterPart> parts;
    std::string words;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text[at] == '{' ? text.find('}', at) : std::string::npos;
        const std::string name =
            end == std::string::npos ? std::string() : text.substr(at + 1, end - at - 1);
        if (!isFieldName(name)) {
            words += text[at++];
            continue;
        }
        if (!words.empty()) parts.push_back({std::exchange(words, {}), false});
        parts.push_back({name, true});
        at = end + 1;
    }
    if (!words.empty()) parts.push_back({std::move(words), false});
    return parts;
}

std::string letterText(const Value& value, const std::string& kind)
{
    if (value.isEmpty() || value.isNull() || value.isMissing() || value.isNothing()) return {};
    // A module may say more in words than its kind of field holds, such as "on request".
    if (kind == "date" && value.is(qmevents::ValueKind::date))
        return longDay(value.as<qmevents::Date>());
    if (kind == "money" && qmevents::isNumeric(value)) {
        return Locale::current().money(qmevents::toCurrency(value));
    }
    return toText(value);
}

} // namespace refhost
