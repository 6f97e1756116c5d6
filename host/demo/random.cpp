#include "host/demo/random.h"

namespace refhost::demo {

// SplitMix64: small, well mixed, and the same everywhere.
std::uint64_t Random::next()
{
    std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ULL);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    return z ^ (z >> 31);
}

Random Random::branch(std::uint64_t topic) const
{
    Random mixed(state_ ^ (topic * 0xD1B54A32D192ED03ULL));
    return Random(mixed.next());
}

std::uint32_t Random::below(std::uint32_t bound)
{
    return static_cast<std::uint32_t>(((next() >> 32) * bound) >> 32);
}

int Random::between(int lowest, int highest)
{
    return lowest + static_cast<int>(below(static_cast<std::uint32_t>(highest - lowest + 1)));
}

} // namespace refhost::demo
