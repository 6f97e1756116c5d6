#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace refhost {

/// What a field of a list holds: how it is read, shown, sorted and compared.
enum class ListKind { text, yesNo, date, money, number, choice };

std::optional<ListKind> listKind(std::string_view name);
std::string_view nameOf(ListKind kind);

/// Rows that fields share: a query that a statement reads once, joined by its column RecordId.
struct ListSource {
    std::string key = {}; ///< "{key}" in an expression stands for the joined rows.
    std::string query = {};
};

/// What a list can show of its records.
struct ListField {
    std::string name = {}, caption = {}, group = {};
    ListKind kind = ListKind::text;
    /// A scalar SQL expression in which "{id}" stands for the record's key.
    std::string value = {};
    std::vector<ListSource> sources = {}; ///< Those that `value` speaks of.
    std::string operation = {};           ///< The right that a user needs; empty for none.
    std::string origin = {}; ///< Where it is defined, for messages; empty for the host's own.
    std::string fault = {};  ///< Why it cannot be used; empty when it can.
    std::int32_t width = 100;
    bool isShown = false;      ///< A new list shows it.
    bool leadsToEvent = false; ///< Its value is the id of the row's event, or 0.
};

/// What a list can be filtered by.
struct ListCriterion {
    std::string key = {}, caption = {}, group = {};
    ListKind kind = ListKind::text;
    std::string value = {}; ///< What is compared; of a choice empty.
    /// Of a choice: a query of the columns Id and Name, or the pairs themselves.
    std::string choices = {};
    std::vector<std::pair<std::string, std::string>> fixedChoices = {};
    /// Of a choice: a condition in which "{values}" stands for the chosen keys.
    std::string condition = {};
    std::vector<ListSource> sources = {}; ///< Those that `value` and `condition` speak of.
    bool hasTextKeys = false;             ///< The keys of the choices are texts.
    std::string owner = {};               ///< The field that it belongs to, if any.
    std::string operation = {};           ///< The right that a user needs; empty for none.
    std::string origin = {};              ///< Where it is defined, for messages.
    std::string fault = {};               ///< Why it cannot be used; empty when it can.
};

/// Fields and criteria in the order in which they are offered.
struct ListOffer {
    std::vector<ListField> fields;
    std::vector<ListCriterion> criteria;
};

/// Where something is defined, as messages add it: " (builder.xml, line 2)", or nothing.
std::string placeOf(const std::string& origin);

/// The criterion that every field is without more being said: its value compared.
ListCriterion criterionOf(const ListField& field);

} // namespace refhost
