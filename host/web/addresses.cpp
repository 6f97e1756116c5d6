#include "host/web/addresses.h"

#include <algorithm>

#include "automation/text.h"

namespace refhost {

namespace {

constexpr std::string_view scheme = "obsidian://";

bool hasScheme(std::string_view text)
{
    return qmevents::text::sameName(text.substr(0, scheme.size()), scheme);
}

// Commands join addresses out of plain texts, so what no address may hold is escaped here.
std::string escaped(std::string_view text)
{
    constexpr std::string_view unsafe = "\"<>\\^`{|}";
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte > ' ' && byte < 0x7F && unsafe.find(c) == std::string_view::npos)
            result += c;
        else
            result += {'%', digits[byte >> 4U], digits[byte & 0xFU]};
    }
    return result;
}

} // namespace

std::string browserPath(std::string_view address)
{
    if (hasScheme(address)) address.remove_prefix(scheme.size());
    address.remove_prefix(std::min(address.find_first_not_of("/\\"), address.size()));
    return std::string(1, '/').append(escaped(address));
}

std::string hostAddress(std::string_view path)
{
    if (path.empty() || hasScheme(path)) return std::string(path);
    path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
    return std::string(scheme) + std::string(path);
}

std::string dialogPath(const DialogWindow& window)
{
    const char joint = window.page.find('?') == std::string::npos ? '?' : '&';
    return browserPath(window.module + "/dialogs/" + window.page) + joint +
           "window=" + std::to_string(window.id);
}

} // namespace refhost
