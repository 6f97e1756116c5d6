#include "host/reports/layout.h"

#include <fstream>
#include <iterator>
#include <utility>

#include "automation/error.h"
#include "automation/text.h"
#include "host/app/file_finder.h"
#include "host/reports/layout_nodes.h"

namespace refhost::reporting {

using qmevents::Error;
using qmevents::ErrorNumber;

namespace {

constexpr Word<FilterKind> filterKinds[] = {
    {"date", FilterKind::date},         {"event", FilterKind::event},
    {"activity", FilterKind::activity}, {"choice", FilterKind::choice},
    {"list", FilterKind::list},         {"number", FilterKind::number},
    {"yesno", FilterKind::yesNo},       {"text", FilterKind::text},
};
constexpr Word<CellKind> cellKinds[] = {
    {"text", CellKind::text},       {"number", CellKind::number}, {"money", CellKind::money},
    {"percent", CellKind::percent}, {"date", CellKind::date},     {"datetime", CellKind::dateTime},
    {"yesno", CellKind::yesNo},
};
constexpr Word<Totalled> totals[] = {
    {"none", Totalled::nothing},
    {"sum", Totalled::sum},
    {"count", Totalled::count},
};
constexpr Word<bool> answers[] = {{"yes", true}, {"no", false}};

class Reader : LayoutNodes {
public:
    Reader(Layout& layout, std::string text) : LayoutNodes(layout, std::move(text)) {}

    void read()
    {
        pugi::xml_document document;
        const XmlFault fault = parseXml(text_, XmlSource::file, document);
        if (fault.code != 0) failAt(layout_, fault.line, fault.reason);
        const pugi::xml_node root = document.document_element();
        if (std::string_view(root.name()) != "report") fail(root, "a layout begins with <report>");
        readReport(root);
    }

private:
    void readReport(pugi::xml_node root)
    {
        allow(root, {"key", "title"}, {"orientation", "operation"},
              {"description", "filter", "column", "record", "section", "chart"});
        const std::string key = attribute(root, "key");
        if (!qmevents::text::sameName(key, layout_.key))
            fail(root, "the layout's key is \"" + key + "\", unlike its file's name");
        layout_.title = attribute(root, "title");
        layout_.operation = attribute(root, "operation");
        static constexpr Word<const char*> orientations[] = {{"portrait", "portrait"},
                                                             {"landscape", "landscape"}};
        layout_.orientation = word(root, "orientation", orientations, "portrait");
        layout_.description = root.child("description").text().get();
        for (const pugi::xml_node node : root.children("filter")) readFilter(node);
        for (const pugi::xml_node node : root.children("column")) readColumn(node);
        if (layout_.columns.empty()) fail(root, "a report has a column");
        for (const ColumnPlan& column : layout_.columns) checkRatio(column);
        if (const pugi::xml_node node = root.child("record")) readRecord(node);
        for (const pugi::xml_node node : root.children("section")) readSection(node);
        if (layout_.sections.empty()) fail(root, "a report has a section");
        if (const pugi::xml_node node = root.child("chart")) readChart(node);
    }

    void readFilter(pugi::xml_node node)
    {
        allow(node, {"key", "kind", "caption"},
              {"default", "required", "type", "notbefore", "range", "least", "most", "operation"},
              {"option", "choices"});
        FilterPlan filter{.key = attribute(node, "key"),
                          .caption = attribute(node, "caption"),
                          .kind = word(node, "kind", filterKinds, FilterKind::text),
                          .defaultValue = attribute(node, "default"),
                          .required = word(node, "required", answers, false),
                          .entityType = attribute(node, "type"),
                          .notBefore = attribute(node, "notbefore"),
                          .range = attribute(node, "range"),
                          .least = number(node, "least", 0),
                          .most = number(node, "most", 1e9),
                          .operation = attribute(node, "operation"),
                          .line = lineOf(node)};
        if (findFilter(filter.key)) fail(node, "there is a filter " + filter.key + " already");
        if (!filter.notBefore.empty()) needFilter(node, filter.notBefore);
        for (const pugi::xml_node option : node.children("option")) {
            allow(option, {"value", "caption"}, {"operation"}, {});
            filter.options.push_back({attribute(option, "value"), attribute(option, "caption"),
                                      attribute(option, "operation")});
        }
        // Its choices may depend on the filters before it.
        if (const pugi::xml_node choices = node.child("choices")) filter.choices = readSql(choices);
        const bool chooses =
            filter.kind == FilterKind::choice || filter.kind == FilterKind::activity;
        if (chooses && filter.options.empty() && !filter.choices)
            fail(node, "a choice has options or choices");
        layout_.filters.push_back(std::move(filter));
    }

    const FilterPlan* findFilter(std::string_view key) const
    {
        for (const FilterPlan& filter : layout_.filters) {
            if (filter.key == key) return &filter;
        }
        return nullptr;
    }

    void needFilter(pugi::xml_node node, const std::string& key) const
    {
        if (!findFilter(key)) fail(node, "there is no filter " + key);
    }

    void readColumn(pugi::xml_node node)
    {
        allow(node, {"key", "caption"},
              {"kind", "width", "align", "operation", "field", "total", "part", "whole", "answers",
               "each", "zero", "hidden"},
              {"value"});
        ColumnPlan column{.key = attribute(node, "key"),
                          .caption = attribute(node, "caption"),
                          .kind = word(node, "kind", cellKinds, CellKind::text),
                          .width = static_cast<int>(number(node, "width", 10)),
                          .operation = attribute(node, "operation"),
                          .field = attribute(node, "field"),
                          .total = word(node, "total", totals, Totalled::nothing),
                          .part = attribute(node, "part"),
                          .whole = attribute(node, "whole"),
                          .answers = attribute(node, "answers"),
                          .columnEach = word(node, "each", answers, false),
                          .zeroIsBlank = attribute(node, "zero") == "blank",
                          .isHidden = word(node, "hidden", answers, false),
                          .line = lineOf(node)};
        const bool isFigure = column.kind == CellKind::number || column.kind == CellKind::money ||
                              column.kind == CellKind::percent;
        static constexpr Word<const char*> sides[] = {
            {"left", "left"}, {"right", "right"}, {"center", "center"}};
        column.align = word(node, "align", sides, isFigure ? "right" : "left");
        if (findColumn(column.key)) fail(node, "there is a column " + column.key + " already");
        if (column.field.empty()) column.field = column.key;
        if (column.total == Totalled::sum && !isFigure) fail(node, "only figures have a sum");
        if (column.part.empty() != column.whole.empty())
            fail(node, "a ratio has a part and a whole");
        column.words = readWords(node);
        layout_.columns.push_back(std::move(column));
    }

    std::map<std::string, std::string> readWords(pugi::xml_node node) const
    {
        std::map<std::string, std::string> words;
        for (const pugi::xml_node value : node.children("value")) {
            allow(value, {"is", "caption"}, {}, {});
            words[attribute(value, "is")] = attribute(value, "caption");
        }
        return words;
    }

    const ColumnPlan* findColumn(std::string_view key) const
    {
        for (const ColumnPlan& column : layout_.columns) {
            if (column.key == key) return &column;
        }
        return nullptr;
    }

    void checkRatio(const ColumnPlan& column) const
    {
        if (column.part.empty()) return;
        for (const std::string& key : {column.part, column.whole}) {
            const ColumnPlan* of = findColumn(key);
            if (!of || of->total != Totalled::sum)
                failAt(layout_, column.line, "a ratio is of columns with sums, unlike " + key);
        }
    }

    void readRecord(pugi::xml_node node)
    {
        allow(node, {"by", "caption"}, {"link"}, {"sql"});
        layout_.record = RecordPlan{attribute(node, "by"), attribute(node, "caption"),
                                    attribute(node, "link"), readOnlySql(node), lineOf(node)};
    }

    void readSection(pugi::xml_node node)
    {
        allow(node, {}, {"caption", "operation"}, {"sql", "lookup", "group", "row", "total"});
        SectionPlan section{.caption = attribute(node, "caption"),
                            .operation = attribute(node, "operation"),
                            .sql = readOnlySql(node),
                            .line = lineOf(node)};
        for (const pugi::xml_node lookup : node.children("lookup")) {
            allow(lookup, {"key", "by", "text"}, {"separator"}, {"sql"});
            section.lookups.push_back({attribute(lookup, "key"), split(attribute(lookup, "by")),
                                       lookup.attribute("separator").as_string(", "),
                                       attribute(lookup, "text"), readOnlySql(lookup)});
        }
        for (const pugi::xml_node group : node.children("group")) {
            allow(group, {"by", "caption"}, {"blank", "subtotal", "link"}, {"value"});
            section.groups.push_back({.by = attribute(group, "by"),
                                      .caption = attribute(group, "caption"),
                                      .blank = attribute(group, "blank"),
                                      .subtotal = attribute(group, "subtotal"),
                                      .link = attribute(group, "link"),
                                      .words = readWords(group),
                                      .line = lineOf(group)});
        }
        for (const pugi::xml_node row : node.children("row")) section.rows.push_back(readRow(row));
        if (section.rows.empty()) section.rows.push_back({});
        if (const pugi::xml_node total = node.child("total")) {
            allow(total, {"caption"}, {}, {});
            section.total = attribute(total, "caption");
        }
        layout_.sections.push_back(std::move(section));
    }

    RowPlan readRow(pugi::xml_node node) const
    {
        allow(node, {}, {"link", "operation", "needs"}, {"cell"});
        RowPlan row{
            attribute(node, "link"), attribute(node, "operation"), attribute(node, "needs"), {}};
        for (const pugi::xml_node cell : node.children("cell")) {
            allow(cell, {"column"}, {"field", "text", "operation"}, {});
            row.cells.push_back({attribute(cell, "column"), attribute(cell, "field"),
                                 attribute(cell, "text"), attribute(cell, "operation"),
                                 lineOf(cell)});
            if (!findColumn(row.cells.back().column))
                fail(cell, "there is no column " + row.cells.back().column);
        }
        return row;
    }

    void readChart(pugi::xml_node node)
    {
        allow(node, {"kind", "title"}, {"category", "over", "most"}, {"series"});
        static constexpr Word<const char*> kinds[] = {
            {"bar", "bar"}, {"groupedbar", "groupedbar"}, {"line", "line"}};
        static constexpr Word<bool> over[] = {{"groups", true}, {"rows", false}};
        ChartPlan chart{.kind = word(node, "kind", kinds, "bar"),
                        .title = attribute(node, "title"),
                        .category = attribute(node, "category"),
                        .overGroups = word(node, "over", over, false),
                        .most = static_cast<std::size_t>(number(node, "most", 12))};
        for (const pugi::xml_node series : node.children("series")) {
            allow(series, {"column"}, {"caption", "filter", "is"}, {});
            const ColumnPlan* column = findColumn(attribute(series, "column"));
            if (!column) fail(series, "there is no column " + attribute(series, "column"));
            SeriesPlan plan{column->key, attribute(series, "caption"), {}, lineOf(series)};
            if (plan.caption.empty()) plan.caption = column->caption;
            if (series.attribute("filter")) plan.when = readCondition(series);
            chart.series.push_back(std::move(plan));
        }
        layout_.chart = std::move(chart);
    }

    Condition readCondition(pugi::xml_node node) const
    {
        Condition condition{attribute(node, "filter"), {}, false};
        needFilter(node, condition.filter);
        if (node.attribute("is")) condition.is = attribute(node, "is");
        return condition;
    }

    SqlText readOnlySql(pugi::xml_node node) const
    {
        const pugi::xml_node sql = node.child("sql");
        if (!sql) fail(node, nameOf(node) + " needs <sql>");
        return readSql(sql);
    }

    SqlText readSql(pugi::xml_node node) const
    {
        SqlText sql{{}, lineOf(node)};
        allow(node, {}, {}, {"sqlserver", "jet", "when", "unless"});
        addPieces(node, {}, sql);
        return sql;
    }

    void addPieces(pugi::xml_node node, const SqlPiece& like, SqlText& sql) const
    {
        for (const pugi::xml_node child : node.children()) {
            SqlPiece piece = like;
            if (child.type() != pugi::node_element) {
                piece.text = child.value();
                checkPlaceholders(node, piece.text);
                sql.pieces.push_back(std::move(piece));
                continue;
            }
            const std::string_view name = child.name();
            if (name == "sqlserver" || name == "jet") {
                allow(child, {}, {}, {"when", "unless"});
                piece.dialect = name == "jet" ? Dialect::jet : Dialect::sqlServer;
            } else {
                allow(child, {"filter"}, {"is"}, {"sqlserver", "jet", "when", "unless"});
                piece.conditions.push_back(readCondition(child));
                piece.conditions.back().negated = name == "unless";
            }
            addPieces(child, piece, sql);
        }
    }

    void checkPlaceholders(pugi::xml_node node, const std::string& text) const
    {
        for (auto at = text.find('{'); at != std::string::npos; at = text.find('{', at + 1)) {
            const auto end = text.find('}', at);
            if (end == std::string::npos) fail(node, "a { without its }");
            std::string key = text.substr(at + 1, end - at - 1);
            key = key.substr(0, key.find(':'));
            if (key != "today") needFilter(node, key);
        }
    }

    static std::vector<std::string> split(const std::string& names)
    {
        std::vector<std::string> result;
        for (std::size_t at = 0; at < names.size();) {
            const auto end = std::min(names.find(' ', at), names.size());
            if (end > at) result.push_back(names.substr(at, end - at));
            at = end + 1;
        }
        return result;
    }
};

} // namespace

void failAt(const Layout& layout, int line, const std::string& reason)
{
    const std::string place = line > 0 ? ", line " + std::to_string(line) : std::string();
    throw Error(static_cast<int>(ErrorNumber::invalidCall), "Reports",
                "The report layout " + layout.file + place + ": " + reason);
}

Layout readLayout(const std::string& folder, const std::string& shownFolder, const std::string& key)
{
    Layout layout;
    layout.key = qmevents::text::lowerAscii(key);
    layout.file = withSeparator(shownFolder) + layout.key + ".xml";
    const auto path = findFile(withSeparator(folder) + layout.key + ".xml");
    std::ifstream stream;
    if (path) stream.open(*path, std::ios::binary);
    if (!path || !stream) {
        throw Error(53, "Reports", "The report layout " + layout.file + " cannot be found.");
    }
    Reader(layout, std::string(std::istreambuf_iterator<char>(stream), {})).read();
    return layout;
}

} // namespace refhost::reporting
