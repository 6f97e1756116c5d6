#include "host/document/prepared_plan.h"

namespace refhost {
namespace {

constexpr std::size_t mostShapes = 400;
constexpr std::size_t mostVariants = 8;
constexpr std::size_t mostIdle = 4;

// The literals that a plan has taken in. All plans of a shape take in the same places, because
// what they depend on is the shape.
std::string fixedLiterals(const Plan& plan, const std::vector<Token>& tokens)
{
    std::string literals;
    for (const std::size_t token : plan.fixedTokens) {
        literals += tokens[token].text;
        literals += '\x01';
    }
    return literals;
}

} // namespace

EngineStatement PreparedPlan::acquire(Connection& connection)
{
    if (idle.empty()) return connection.prepare(plan.sql[0]);
    EngineStatement statement = std::move(idle.back());
    idle.pop_back();
    return statement;
}

void PreparedPlan::release(EngineStatement statement)
{
    if (!statement) return;
    statement.reset();
    if (idle.size() < mostIdle) idle.push_back(std::move(statement));
}

std::shared_ptr<PreparedPlan> PlanCache::find(const std::string& shape,
                                              const std::vector<Token>& tokens)
{
    const auto found = byShape_.find(shape);
    if (found == byShape_.end()) return nullptr;
    entries_.splice(entries_.begin(), entries_, found->second);
    for (const Variant& variant : found->second->variants) {
        const Plan& plan = variant.plan->plan;
        if (plan.fixedTokens.empty() || fixedLiterals(plan, tokens) == variant.literals) {
            return variant.plan;
        }
    }
    return nullptr;
}

void PlanCache::add(std::string shape, const std::vector<Token>& tokens,
                    std::shared_ptr<PreparedPlan> plan)
{
    auto found = byShape_.find(shape);
    if (found == byShape_.end()) {
        if (entries_.size() >= mostShapes) {
            byShape_.erase(entries_.back().shape);
            entries_.pop_back();
        }
        entries_.push_front({std::move(shape), {}});
        found = byShape_.emplace(entries_.front().shape, entries_.begin()).first;
    }
    std::vector<Variant>& variants = found->second->variants;
    if (variants.size() >= mostVariants) variants.erase(variants.begin());
    std::string literals = fixedLiterals(plan->plan, tokens);
    variants.push_back({std::move(literals), std::move(plan)});
}

void PlanCache::clear()
{
    byShape_.clear();
    entries_.clear();
}

} // namespace refhost
