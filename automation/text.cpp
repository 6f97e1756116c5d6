#include "automation/text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace qmevents::text {
namespace {

constexpr char lowered(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}
constexpr char raised(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

// Runs of letters whose two cases lie a fixed distance apart, or alternate (distance 0: the upper
// case is the even or odd neighbour, as `first` is).
struct CaseRun {
    std::uint32_t first, last; // upper-case letters
    std::uint32_t distance;    // lower = upper + distance; 0 for alternating pairs
};
constexpr std::array caseRuns{
    CaseRun{0x00C0, 0x00D6, 32}, CaseRun{0x00D8, 0x00DE, 32}, CaseRun{0x0100, 0x012E, 0},
    CaseRun{0x0132, 0x0136, 0},  CaseRun{0x0139, 0x0147, 0},  CaseRun{0x014A, 0x0176, 0},
    CaseRun{0x0179, 0x017D, 0},  CaseRun{0x0391, 0x03A1, 32}, CaseRun{0x03A3, 0x03AB, 32},
    CaseRun{0x0410, 0x042F, 32}, CaseRun{0x0400, 0x040F, 80}, CaseRun{0x0460, 0x0480, 0},
    CaseRun{0x048A, 0x04BE, 0},  CaseRun{0x04D0, 0x052E, 0},  CaseRun{0x1E00, 0x1E94, 0},
    CaseRun{0x1EA0, 0x1EFE, 0}};

std::uint32_t upperOf(std::uint32_t c)
{
    for (const auto& run : caseRuns) {
        const std::uint32_t distance = run.distance == 0 ? 1 : run.distance;
        if (c < run.first + distance || c > run.last + distance) continue;
        if (run.distance != 0) return c - distance;
        return (c - run.first) % 2 == 1 ? c - 1 : c;
    }
    return c;
}

std::uint32_t lowerOf(std::uint32_t c)
{
    for (const auto& run : caseRuns) {
        if (c < run.first || c > run.last) continue;
        if (run.distance != 0) return c + run.distance;
        return (c - run.first) % 2 == 0 ? c + 1 : c;
    }
    return c;
}

// Maps the characters of two bytes and the Latin ones of three; the two cases of each mapped letter
// take the same number of bytes, so the text keeps its length.
template <typename Ascii, typename Wide>
std::string mapped(std::string_view value, Ascii ascii, Wide wide)
{
    std::string result(value);
    const auto continues = [&](std::size_t at) {
        return at < result.size() && (static_cast<unsigned char>(result[at]) & 0xC0U) == 0x80U;
    };
    for (std::size_t i = 0; i < result.size(); ++i) {
        const auto lead = static_cast<unsigned char>(result[i]);
        if (lead < 0x80) {
            result[i] = ascii(result[i]);
        } else if ((lead & 0xE0U) == 0xC0U && continues(i + 1)) {
            const std::uint32_t c =
                ((lead & 0x1FU) << 6U) | (static_cast<unsigned char>(result[i + 1]) & 0x3FU);
            const std::uint32_t m = wide(c);
            if (m >= 0x80 && m < 0x800) {
                result[i] = static_cast<char>(0xC0U | (m >> 6U));
                result[i + 1] = static_cast<char>(0x80U | (m & 0x3FU));
            }
            ++i;
        } else if (lead == 0xE1 && continues(i + 1) && continues(i + 2)) {
            const std::uint32_t c = 0x1000U |
                                    ((static_cast<unsigned char>(result[i + 1]) & 0x3FU) << 6U) |
                                    (static_cast<unsigned char>(result[i + 2]) & 0x3FU);
            const std::uint32_t m = wide(c);
            result[i + 1] = static_cast<char>(0x80U | ((m >> 6U) & 0x3FU));
            result[i + 2] = static_cast<char>(0x80U | (m & 0x3FU));
            i += 2;
        }
    }
    return result;
}

} // namespace

std::string upper(std::string_view value) { return mapped(value, raised, upperOf); }
std::string lower(std::string_view value) { return mapped(value, lowered, lowerOf); }

std::string lowerAscii(std::string_view value)
{
    std::string result(value);
    std::transform(result.begin(), result.end(), result.begin(), lowered);
    return result;
}

bool sameName(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return x == y || lowered(x) == lowered(y);
           });
}

std::string_view trim(std::string_view value)
{
    const auto first = value.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return value.substr(first, value.find_last_not_of(' ') - first + 1);
}

std::string replaceAll(std::string_view value, std::string_view from, std::string_view to)
{
    std::string result;
    if (from.empty()) return std::string(value);
    std::size_t at = 0;
    for (std::size_t hit = 0; (hit = value.find(from, at)) != std::string_view::npos;
         at = hit + from.size()) {
        result.append(value.substr(at, hit - at)).append(to);
    }
    return result.append(value.substr(at));
}

std::string escapeMarkup(std::string_view value)
{
    std::string escaped;
    escaped.reserve(value.size());
    for (const char c : value) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::size_t length(std::string_view value)
{
    return static_cast<std::size_t>(std::count_if(value.begin(), value.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    }));
}

std::size_t NameHash::operator()(std::string_view name) const noexcept
{
    std::uint64_t hash = 1469598103934665603ULL;
    for (const char c : name) {
        hash = (hash ^ static_cast<unsigned char>(lowered(c))) * 1099511628211ULL;
    }
    return static_cast<std::size_t>(hash ^ (hash >> 32U));
}

} // namespace qmevents::text
