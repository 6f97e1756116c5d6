#pragma once

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/document/engine.h"
#include "host/document/plan.h"

namespace refhost {

/// A plan with prepared statements of the engine that nobody is using.
struct PreparedPlan {
    explicit PreparedPlan(Plan translated) : plan(std::move(translated)) {}

    const Plan plan;
    std::vector<EngineStatement> idle;

    EngineStatement acquire(Connection& connection);
    void release(EngineStatement statement);
};

/// Plans by the shape of the statements that they were made for. Literals that a plan has taken in
/// distinguish the variants of one shape. The shape that was not used for longest goes first.
class PlanCache {
public:
    std::shared_ptr<PreparedPlan> find(const std::string& shape, const std::vector<Token>& tokens);
    void add(std::string shape, const std::vector<Token>& tokens,
             std::shared_ptr<PreparedPlan> plan);
    void clear();
    std::size_t size() const { return entries_.size(); }

private:
    struct Variant {
        std::string literals;
        std::shared_ptr<PreparedPlan> plan;
    };
    struct Entry {
        std::string shape;
        std::vector<Variant> variants; // the latest last
    };

    std::list<Entry> entries_; // the latest first
    std::unordered_map<std::string_view, std::list<Entry>::iterator> byShape_;
};

} // namespace refhost
