#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace refhost::demo {

/// Numbers that depend on the seed alone, whichever compiler and library are used.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    /// A stream of its own for `topic`: what one part draws does not move what another gets.
    Random branch(std::uint64_t topic) const;

    /// From 0 to `bound` - 1; 0 when `bound` is 0.
    std::uint32_t below(std::uint32_t bound);
    /// From `lowest` to `highest`, both included.
    int between(int lowest, int highest);
    bool chance(int percent) { return between(1, 100) <= percent; }

    template <typename T, std::size_t size>
    const T& pick(const T (&items)[size])
    {
        return items[below(static_cast<std::uint32_t>(size))];
    }
    template <typename Range>
    const auto& pick(const Range& items)
    {
        return items[below(static_cast<std::uint32_t>(items.size()))];
    }

private:
    std::uint64_t next();

    std::uint64_t state_;
};

} // namespace refhost::demo
