#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/document/dialect.h"

// A report as its layout file describes it; docs/report-layouts.md explains the format. The line
// of each part is kept, because an author looks for mistakes by line.
namespace refhost::reporting {

/// On what a piece of a statement depends.
struct Condition {
    std::string filter;
    std::optional<std::string> is; ///< The filter has this value; else any.
    bool negated = false;
};

/// A piece of a statement, which stands in it when all its conditions hold.
struct SqlPiece {
    std::string text; ///< With `{filter}` where the value goes.
    std::optional<Dialect> dialect;
    std::vector<Condition> conditions;
};

struct SqlText {
    std::vector<SqlPiece> pieces;
    int line = 0;
};

enum class FilterKind { date, event, activity, choice, list, number, yesNo, text };

struct OptionPlan {
    std::string value, caption;
    std::string operation; ///< The right without which the option is not offered.
};

/// A question that is asked before the report runs.
struct FilterPlan {
    std::string key, caption;
    FilterKind kind = FilterKind::text;
    std::string defaultValue;
    bool required = false;
    std::vector<OptionPlan> options = {};
    std::optional<SqlText> choices = {}; ///< Columns Id and Name.
    std::string entityType;              ///< Of a list: "donors" or "events".
    std::string notBefore;               ///< Of a date: the filter with the first day.
    std::string range;                   ///< What both days together are called.
    double least = 0, most = 0;          ///< Of a number.
    std::string operation;               ///< The right without which it is not asked.
    int line = 0;
};

enum class CellKind { text, number, money, percent, date, dateTime, yesNo };
enum class Totalled { nothing, sum, count };

struct ColumnPlan {
    std::string key, caption;
    CellKind kind = CellKind::text;
    int width = 10;
    std::string align = {}; ///< "left", "right" or "center".
    std::string operation;  ///< The right without which the column is left out.
    std::string field;      ///< The field that it shows.
    Totalled total = Totalled::nothing;
    std::string part, whole; ///< The columns whose ratio it shows, in rows and totals alike.
    std::map<std::string, std::string> words = {}; ///< What stands for a stored code.
    /// The field with a reservation's answers: one text, or a column for each question.
    std::string answers;
    bool columnEach = false;
    bool zeroIsBlank = false; ///< A row shows nothing rather than 0.
    bool isHidden = false;    ///< Only ratios use it.
    int line = 0;
};

struct LookupPlan {
    std::string key;
    std::vector<std::string> by;
    std::string separator;
    std::string text; ///< Of one item, with `{field}`.
    SqlText sql;
};

struct GroupPlan {
    std::string by;
    std::string caption;                           ///< Of its head, with `{field}`.
    std::string blank;                             ///< Its head when `by` is empty or 0.
    std::string subtotal;                          ///< None when empty.
    std::string link;                              ///< The field with an event's id.
    std::map<std::string, std::string> words = {}; ///< Its heads for certain values of `by`.
    int line = 0;
};

struct CellPlan {
    std::string column;
    std::string field;
    std::string text; ///< With `{field}`; stands when there is no field.
    std::string operation;
    int line = 0;
};

struct RowPlan {
    std::string link;
    std::string operation;
    std::string needs;           ///< The field without which the row is left out.
    std::vector<CellPlan> cells; ///< Empty: every column shows its own field.
};

struct SectionPlan {
    std::string caption;
    std::string operation;
    SqlText sql;
    std::vector<LookupPlan> lookups = {};
    std::vector<GroupPlan> groups = {};
    std::vector<RowPlan> rows = {};
    std::string total = {}; ///< The caption of the total; none when empty.
    int line = 0;
};

/// The records that the sections tell about, one after the other.
struct RecordPlan {
    std::string by, caption, link;
    SqlText sql;
    int line = 0;
};

struct SeriesPlan {
    std::string column, caption;
    std::optional<Condition> when;
    int line = 0;
};

struct ChartPlan {
    std::string kind, title, category;
    bool overGroups = false; ///< A point for each outermost group rather than for each row.
    std::size_t most = 12;
    std::vector<SeriesPlan> series = {};
};

struct Layout {
    std::string file; ///< As messages call it.
    std::string key, title, description, orientation, operation;
    std::vector<FilterPlan> filters;
    std::vector<ColumnPlan> columns;
    std::optional<RecordPlan> record;
    std::vector<SectionPlan> sections;
    std::optional<ChartPlan> chart;
};

/// The layout called `key` in `folder`. Throws Error naming the file and, where it is no layout,
/// the line and what is wrong there.
Layout readLayout(const std::string& folder, const std::string& shownFolder,
                  const std::string& key);

/// The Error for a mistake of the layout's author.
[[noreturn]] void failAt(const Layout& layout, int line, const std::string& reason);

} // namespace refhost::reporting
