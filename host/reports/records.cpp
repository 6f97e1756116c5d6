#include "host/reports/records.h"

#include <algorithm>
#include <set>

#include "automation/locale.h"
#include "host/reports/statement.h"

namespace refhost::reporting {

std::optional<std::size_t> Records::find(std::string_view name) const
{
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (qmevents::text::sameName(names[i], name)) return i;
    }
    return std::nullopt;
}

std::size_t Records::column(const Layout& layout, std::string_view name, int line) const
{
    if (const auto found = find(name)) return *found;
    failAt(layout, line, "the statement gives no field " + std::string(name));
}

namespace {

std::string keyOf(const Record& record, const std::vector<std::size_t>& columns)
{
    std::string key;
    for (const std::size_t column : columns) key += wordsOf(record[column]) + '\n';
    return key;
}

void addLookup(const Inquiry& inquiry, const LookupPlan& lookup, const Answers& answers,
               Records& records)
{
    const Records found = readRecords(inquiry, lookup.sql, answers);
    const int line = lookup.sql.line;
    std::vector<std::size_t> from, to;
    for (const std::string& name : lookup.by) {
        from.push_back(found.column(inquiry.layout, name, line));
        to.push_back(records.column(inquiry.layout, name, line));
    }

    std::unordered_map<std::string, std::string> texts;
    for (const Record& row : found.rows) {
        std::string& text = texts[keyOf(row, from)];
        if (!text.empty()) text += lookup.separator;
        text += filled(lookup.text, inquiry.layout, found, row, {1}, line);
    }
    records.names.push_back(lookup.key);
    for (Record& row : records.rows) {
        const auto text = texts.find(keyOf(row, to));
        row.emplace_back(text == texts.end() ? std::string() : text->second);
    }
}

} // namespace

Records readRecords(const Inquiry& inquiry, const SqlText& sql, const Answers& answers)
{
    Records records;
    const auto cursor = query(inquiry, sql, answers);
    for (std::size_t i = 0; i < cursor->columnCount(); ++i)
        records.names.push_back(cursor->columnName(i));
    for (; !cursor->eof(); cursor->next()) {
        Record& row = records.rows.emplace_back();
        row.reserve(records.names.size() + 2);
        for (std::size_t i = 0; i < records.names.size(); ++i) row.push_back(cursor->value(i));
    }
    return records;
}

Records readSectionRows(const Inquiry& inquiry, const SectionPlan& section, const Answers& answers)
{
    Records records = readRecords(inquiry, section.sql, answers);
    for (const LookupPlan& lookup : section.lookups) addLookup(inquiry, lookup, answers, records);
    return records;
}

namespace {

// A day, with the time of day where one was entered; nobody reads its seconds.
std::string momentText(qmevents::Date date)
{
    const qmevents::Locale& locale = qmevents::Locale::current();
    if (!date.hasDate()) return {};
    if (!date.hasTime()) return locale.shortDate(date);
    std::string time = locale.longTime(date);
    const auto seconds = time.rfind(":00");
    if (seconds != std::string::npos && time.find(':') != seconds) time.erase(seconds, 3);
    return locale.shortDate(date) + ' ' + time;
}

} // namespace

std::string wordsOf(const Value& value)
{
    const qmevents::Locale& locale = qmevents::Locale::current();
    switch (value.kind()) {
    case qmevents::ValueKind::null:
        return {};
    case qmevents::ValueKind::boolean:
        return value.as<bool>() ? "Yes" : "No";
    case qmevents::ValueKind::currency:
        return locale.money(value.as<qmevents::Currency>());
    case qmevents::ValueKind::date:
        return momentText(value.as<qmevents::Date>());
    default:
        return qmevents::toText(value);
    }
}

namespace {

// Takes off what `text` has up to the next colon.
std::string_view nextPart(std::string_view& text)
{
    const auto colon = std::min(text.find(':'), text.size());
    const std::string_view part = text.substr(0, colon);
    text.remove_prefix(std::min(colon + 1, text.size()));
    return part;
}

// "1 event" or "12 events" for "event:events", "2 donors" for "donor:donors:DonorId".
std::string counted(std::string_view words, const Layout& layout, const Records& records,
                    const Told& told, int line)
{
    const auto one = nextPart(words);
    const auto many = words.empty() ? one : nextPart(words);
    std::size_t number = told.rows;
    if (!words.empty()) {
        const std::size_t column = records.column(layout, words, line);
        std::set<std::string> different;
        for (const std::size_t row : told.records)
            different.insert(wordsOf(records.rows[row][column]));
        number = different.size();
    }
    return std::to_string(number) + ' ' + std::string(number == 1 ? one : many);
}

// What stands for a code where a column says so.
std::string spelled(const Layout& layout, std::string_view field, const std::string& stored)
{
    for (const ColumnPlan& column : layout.columns) {
        if (!qmevents::text::sameName(column.field, field)) continue;
        const auto word = column.words.find(stored);
        if (word != column.words.end()) return word->second;
    }
    return stored;
}

} // namespace

std::string filled(std::string_view text, const Layout& layout, const Records& records,
                   const Record& record, const Told& told, int line)
{
    std::string result;
    while (!text.empty()) {
        const auto open = text.find('{');
        result += text.substr(0, open);
        if (open == std::string_view::npos) break;
        const auto close = text.find('}', open);
        if (close == std::string_view::npos) failAt(layout, line, "a { without its }");
        std::string_view name = text.substr(open + 1, close - open - 1);
        text.remove_prefix(close + 1);
        if (name.starts_with("count:")) {
            result += counted(name.substr(6), layout, records, told, line);
            continue;
        }
        if (name == "head") {
            result += told.head;
            continue;
        }
        const auto bar = name.find('|');
        std::string_view before = bar == std::string_view::npos ? "" : name.substr(0, bar);
        if (result.empty())
            before.remove_prefix(std::min(before.find_first_not_of(", "), before.size()));
        if (bar != std::string_view::npos) name.remove_prefix(bar + 1);
        const auto colon = name.find(':');
        const std::string_view field = name.substr(0, colon);
        const Value& value = record[records.column(layout, field, line)];
        const bool dayAlone =
            colon != std::string_view::npos && value.is(qmevents::ValueKind::date);
        const std::string words =
            dayAlone ? wordsOf(value.as<qmevents::Date>().datePart()) : wordsOf(value);
        if (!words.empty()) result += std::string(before) + spelled(layout, field, words);
    }
    return result;
}

} // namespace refhost::reporting
