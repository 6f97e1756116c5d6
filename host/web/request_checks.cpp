#include "host/web/request_checks.h"

#include <algorithm>

#include "automation/text.h"

namespace refhost {

using qmevents::text::sameName;

namespace {

bool isOneOf(std::string_view text, const std::vector<std::string>& names)
{
    return std::ranges::any_of(names, [&](const auto& name) { return sameName(name, text); });
}

} // namespace

std::vector<std::string> namesOf(const std::string& address, int port)
{
    std::vector<std::string> hosts{address};
    if (address == "127.0.0.1") hosts.emplace_back("localhost");
    if (address == "::1") hosts = {"[::1]", "localhost"};
    std::vector<std::string> names;
    constexpr int usualPort = 80;
    for (const auto& host : hosts) {
        names.push_back(host + ":" + std::to_string(port));
        if (port == usualPort) names.push_back(host);
    }
    return names;
}

std::optional<Refused> checkHost(const httplib::Request& request,
                                 const std::vector<std::string>& names)
{
    const bool isNamedOnce = request.get_header_value_count("Host") == 1;
    if (isNamedOnce && isOneOf(request.get_header_value("Host"), names)) return std::nullopt;
    return Refused{403, "This server is not known by that name."};
}

std::optional<Refused> checkOrigin(const httplib::Request& request,
                                   const std::vector<std::string>& names)
{
    constexpr std::string_view scheme = "http://";
    const Refused refused{403, "Requests from other sites are refused."};
    if (request.has_header("Origin")) {
        const std::string origin = request.get_header_value("Origin");
        const bool isOurs = origin.starts_with(scheme) &&
                            isOneOf(std::string_view(origin).substr(scheme.size()), names);
        if (!isOurs || request.get_header_value_count("Origin") != 1) return refused;
        // "localhost" and "127.0.0.1" are two origins even when both lead here.
        if (!sameName(std::string_view(origin).substr(scheme.size()),
                      request.get_header_value("Host")))
            return refused;
    }
    if (request.has_header("Sec-Fetch-Site") &&
        request.get_header_value("Sec-Fetch-Site") != "same-origin")
        return refused;
    return std::nullopt;
}

std::optional<Refused> checkJson(const httplib::Request& request)
{
    const std::string type = request.get_header_value("Content-Type");
    const std::string_view plain(type.data(), std::min(type.find(';'), type.size()));
    if (sameName(qmevents::text::trim(plain), "application/json")) return std::nullopt;
    return Refused{415, "The body must be JSON."};
}

std::string cookieIn(const httplib::Request& request, const std::string& name)
{
    const std::string header = request.get_header_value("Cookie");
    std::string_view rest = header;
    while (!rest.empty()) {
        const std::string_view pair = qmevents::text::trim(rest.substr(0, rest.find(';')));
        rest.remove_prefix(std::min(rest.find(';'), rest.size() - 1) + 1);
        if (pair.size() > name.size() && pair.starts_with(name) && pair[name.size()] == '=')
            return std::string(pair.substr(name.size() + 1));
    }
    return {};
}

std::optional<std::string> viewName(const std::string& text)
{
    constexpr std::size_t longest = 64;
    constexpr std::string_view allowed =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._";
    if (text.size() > longest || text.find_first_not_of(allowed) != std::string::npos)
        return std::nullopt;
    return text;
}

std::string_view rawPath(const httplib::Request& request)
{
    const std::string_view target = request.target;
    return target.substr(0, target.find('?'));
}

} // namespace refhost
