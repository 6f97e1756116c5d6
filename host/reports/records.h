#pragma once

#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "automation/text.h"
#include "automation/value.h"
#include "host/reports/answers.h"

namespace refhost::reporting {

using Record = std::vector<Value>;

/// The rows of a statement with the names of their columns.
struct Records {
    std::vector<std::string> names;
    std::vector<Record> rows;

    /// The column called `name`; error naming the layout's line when the statement gives none.
    std::size_t column(const Layout& layout, std::string_view name, int line) const;
    std::optional<std::size_t> find(std::string_view name) const;
};

/// The rows of a section with the texts that its lookups add.
Records readSectionRows(const Inquiry& inquiry, const SectionPlan& section, const Answers& answers);

Records readRecords(const Inquiry& inquiry, const SqlText& sql, const Answers& answers);

/// The value as people read it; a null is blank.
std::string wordsOf(const Value& value);

/// What a caption can tell of the lines that it stands for, besides the first one's record.
struct Told {
    std::size_t rows = 0;
    std::span<const std::size_t> records = {}; ///< Their positions.
    std::string_view head = {};                ///< Of their group.
};

/// `text` with each `{field}` replaced by the record's value. `{field:date}` is the day alone, and
/// what stands before a bar, as in `{, |field}`, appears only when there is a value, and without
/// its comma where the text begins with it. `{count:event:events}` is the number of rows with the
/// word for one or for many, `{count:donor:donors:DonorId}` that of the field's different values,
/// and `{head}` the head of the group.
std::string filled(std::string_view text, const Layout& layout, const Records& records,
                   const Record& record, const Told& told, int line);

} // namespace refhost::reporting
