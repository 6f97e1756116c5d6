#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "automation/collection.h"
#include "host/app/session_context.h"
#include "host/reports/layout.h"

namespace refhost::reporting {

/// What a report works on: its layout and what was entered for its filters.
struct Inquiry {
    SharedContext context;
    Layout layout;
    std::vector<Value> values; ///< One for each filter of the layout.
    /// What follows "SELECT Id FROM " when the report works on a list of records; else empty.
    std::string source;
    std::string sourceName; ///< As a note calls it.
};

/// A filter's value, read and checked.
struct Answer {
    bool given = false;
    std::string plain;   ///< What conditions of the layout compare.
    std::string literal; ///< As statements of the session's dialect hold it; "NULL" for none.
    std::string next;    ///< Of a day: the day after it.
    std::string words;   ///< As notes tell it.
    std::string problem; ///< Why the value is none; empty when it is.
    qmevents::Date day;
};
using Answers = std::map<std::string, Answer>;

/// Whether the signed-in user holds the right; an empty one is held by all.
bool mayUse(const SharedContext& context, const std::string& operation);

/// The values that a report starts with.
std::vector<Value> defaultValues(const SharedContext& context, const Layout& layout);

/// Whether the filter is asked: one for an event or an activity is not where a list gives them, nor
/// one that needs a right that the user lacks.
bool isAsked(const Inquiry& inquiry, const FilterPlan& filter);

/// Every filter's answer, by its key. Reads the database where a choice must exist there.
Answers readAnswers(const Inquiry& inquiry);

bool holds(const Condition& condition, const Answers& answers);

/// `sql` as one statement of the session's dialect.
std::string statementOf(const Inquiry& inquiry, const SqlText& sql, const Answers& answers);

/// Runs that statement; a failure names the layout's line.
std::unique_ptr<Cursor> query(const Inquiry& inquiry, const SqlText& sql, const Answers& answers);

/// What a filter offers.
class Choice : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "ReportChoice";
    const Members& members() const override;

    Value Id;
    std::string Name;
};

/// A question that is asked before the report runs.
class Filter : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "ReportFilter";
    const Members& members() const override;

    Filter(std::shared_ptr<Inquiry> inquiry, std::size_t index)
        : inquiry_(std::move(inquiry)), index_(index)
    {
    }

    // The late-bound face.
    std::string Key() const { return plan().key; }
    std::string Caption() const { return plan().caption; }
    std::string Kind() const;
    bool Required() const { return plan().required; }
    Value value() const { return inquiry_->values[index_]; }
    void setValue(const Value& value) { inquiry_->values[index_] = value; }
    /// What can be chosen with the values that the other filters have now.
    Ref<qmevents::Collection> Choices() const;
    std::string Problem() const; ///< Why the value is none; empty when it is.

private:
    const FilterPlan& plan() const { return inquiry_->layout.filters[index_]; }

    std::shared_ptr<Inquiry> inquiry_;
    std::size_t index_;
};

} // namespace refhost::reporting
