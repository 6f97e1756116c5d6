#include "host/script/characters.h"

#include "automation/text.h"

namespace refhost::script {
namespace {

bool continues(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

} // namespace

std::size_t offsetOf(std::string_view text, std::size_t index)
{
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (at > 0 && continues(text[at])) continue;
        if (index-- == 0) return at;
    }
    return text.size();
}

std::string_view slice(std::string_view text, std::size_t index, std::size_t count)
{
    text.remove_prefix(offsetOf(text, index));
    return text.substr(0, offsetOf(text, count));
}

std::size_t indexOf(std::string_view text, std::size_t offset)
{
    return qmevents::text::length(text.substr(0, offset));
}

std::uint32_t codeOf(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text.at(0));
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    if (length == 1 || text.size() < length) return lead;
    std::uint32_t code = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if (!continues(text[i])) return lead;
        code = (code << 6U) | (static_cast<unsigned char>(text[i]) & 0x3FU);
    }
    return code;
}

std::string character(std::uint32_t code)
{
    const auto byte = [](std::uint32_t bits) { return static_cast<char>(bits); };
    const auto tail = [&](unsigned shift) { return byte(0x80U | ((code >> shift) & 0x3FU)); };
    if (code < 0x80) return {byte(code)};
    if (code < 0x800) return {byte(0xC0U | (code >> 6U)), tail(0)};
    if (code < 0x10000) return {byte(0xE0U | (code >> 12U)), tail(6), tail(0)};
    return {byte(0xF0U | (code >> 18U)), tail(12), tail(6), tail(0)};
}

} // namespace refhost::script
