#include "host/reports/columns.h"

#include <algorithm>

namespace refhost::reporting {

using qmevents::Null;
using qmevents::ValueKind;
using qmevents::text::sameName;

namespace {

// The field that no statement can give: the number of the row.
constexpr std::string_view rowNumberField = "#";

Value cellOf(const Value& value, const ColumnPlan& plan)
{
    if (value.isNull() || value.isEmpty()) return Null{};
    if (!plan.words.empty()) {
        const auto word = plan.words.find(wordsOf(value));
        if (word != plan.words.end()) return word->second;
    }
    switch (plan.kind) {
    case CellKind::yesNo:
        return qmevents::toBool(value);
    case CellKind::money:
        return qmevents::toCurrency(value);
    case CellKind::date:
        return qmevents::toDate(value).datePart();
    case CellKind::text:
        return value.isText() ? value : Value(wordsOf(value));
    default:
        return value;
    }
}

} // namespace

Columns::Columns(const Inquiry& inquiry, const std::vector<Records>& sections) : inquiry_(inquiry)
{
    for (const ColumnPlan& plan : inquiry.layout.columns) {
        if (!mayUse(inquiry.context, plan.operation)) {
            withheld_ = true;
        } else if (plan.columnEach) {
            showQuestions(plan, sections);
        } else if (plan.part.empty() || (indexOf(plan.part) && indexOf(plan.whole))) {
            show(plan, {});
        }
    }
}

std::optional<std::size_t> Columns::indexOf(const std::string& key) const
{
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (sameName(columns_[i].key, key)) return i;
    }
    return std::nullopt;
}

void Columns::show(const ColumnPlan& plan, const std::string& question)
{
    slots_.push_back({&plan, question});
    const bool isQuestion = !question.empty();
    columns_.push_back({isQuestion ? plan.key + ":" + question : plan.key,
                        isQuestion ? question : plan.caption, plan.kind, plan.width, plan.align});
}

// The questions as the activity asks them, then answers to questions that it asks no longer.
void Columns::showQuestions(const ColumnPlan& plan, const std::vector<Records>& sections)
{
    constexpr std::size_t mostQuestions = 40;
    std::vector<std::string> questions;
    for (const std::string& source : {plan.field, plan.answers}) {
        for (const Records& records : sections) {
            const auto column = records.find(source);
            if (!column) continue;
            for (const Record& row : records.rows) {
                const Value& document = row[*column];
                if (!document.isText() || document.text() == document_) continue;
                document_ = document.text();
                for (const auto& field :
                     readFields(document_).value_or(std::vector<ReservationField>())) {
                    const bool known =
                        std::any_of(questions.begin(), questions.end(),
                                    [&](const auto& name) { return sameName(name, field.name); });
                    if (!known && questions.size() < mostQuestions && !field.name.empty())
                        questions.push_back(field.name);
                }
            }
        }
    }
    document_.clear();
    for (const std::string& question : questions) show(plan, question);
}

RowBinding Columns::bind(const Records& records, const RowPlan& row, int line) const
{
    const Layout& layout = inquiry_.layout;
    RowBinding binding{std::vector<RowBinding::Source>(slots_.size()), {}, {}, line};
    if (!row.link.empty()) binding.link = records.column(layout, row.link, line);
    if (!row.needs.empty()) binding.needs = records.column(layout, row.needs, line);
    const auto bindField = [&](std::size_t i, const std::string& field, int at) {
        if (field != rowNumberField) binding.sources[i].field = records.column(layout, field, at);
    };
    for (std::size_t i = 0; i < slots_.size(); ++i) {
        const ColumnPlan& plan = *slots_[i].plan;
        if (!row.cells.empty() || !plan.part.empty()) continue;
        bindField(i, plan.answers.empty() ? plan.field : plan.answers, plan.line);
    }
    for (const CellPlan& cell : row.cells) {
        const auto i = indexOf(cell.column);
        if (!i || !mayUse(inquiry_.context, cell.operation)) continue;
        binding.sources[*i].text = cell.text;
        if (!cell.field.empty()) bindField(*i, cell.field, cell.line);
    }
    return binding;
}

Value Columns::answer(const Slot& slot, const Value& document)
{
    if (!document.isText() || document.text().empty()) return Null{};
    if (document.text() != document_) {
        document_ = document.text();
        fields_ = readFields(document_);
        if (!fields_) ++unreadable_;
    }
    if (!fields_) return Null{};
    if (!slot.plan->columnEach) return asOneText(*fields_);
    for (const ReservationField& field : *fields_) {
        if (sameName(field.name, slot.question)) return field.value;
    }
    return Null{};
}

std::vector<Value> Columns::cells(const Records& records, const Record& record,
                                  const RowBinding& binding, std::size_t number)
{
    std::vector<Value> cells(slots_.size(), Value(Null{}));
    for (std::size_t i = 0; i < slots_.size(); ++i) {
        const ColumnPlan& plan = *slots_[i].plan;
        const auto& [field, text] = binding.sources[i];
        if (field) {
            const Value& value = record[*field];
            cells[i] = plan.answers.empty() ? cellOf(value, plan) : answer(slots_[i], value);
            if (plan.zeroIsBlank && cells[i].isNumber() && qmevents::toDouble(cells[i]) == 0)
                cells[i] = Null{};
        } else if (!text.empty()) {
            cells[i] = filled(text, inquiry_.layout, records, record, {1}, binding.line);
        } else if (plan.field == rowNumberField) {
            cells[i] = static_cast<std::int32_t>(number);
        }
    }
    fillRatios(cells);
    return cells;
}

void Columns::fillRatios(std::vector<Value>& cells) const
{
    for (std::size_t i = 0; i < slots_.size(); ++i) {
        const ColumnPlan& plan = *slots_[i].plan;
        if (plan.part.empty()) continue;
        cells[i] = ratio(cells[*indexOf(plan.part)], cells[*indexOf(plan.whole)], plan.kind);
    }
}

void Columns::add(Totals& totals, const std::vector<Value>& cells) const
{
    ++totals.rows;
    for (std::size_t i = 0; i < slots_.size(); ++i) {
        const ColumnPlan& plan = *slots_[i].plan;
        Figure& figure = totals.figures[i];
        if (plan.total == Totalled::sum) {
            figure.add(cells[i], plan.kind);
        } else if (plan.total == Totalled::count) {
            const bool counts =
                cells[i].is(ValueKind::boolean) ? cells[i].as<bool>() : !cells[i].isNull();
            if (counts) figure.countOne();
        }
    }
}

std::vector<Value> Columns::cellsOf(const Totals& totals) const
{
    std::vector<Value> cells;
    for (std::size_t i = 0; i < slots_.size(); ++i)
        cells.push_back(
            totals.figures[i].value(slots_[i].plan->kind, slots_[i].plan->total, totals.rows));
    fillRatios(cells);
    return cells;
}

} // namespace refhost::reporting
