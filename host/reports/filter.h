#pragma once

#include <memory>
#include <string>

#include "automation/collection.h"
#include "host/reports/answers.h"

namespace refhost::reporting {

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
