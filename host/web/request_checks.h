#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <httplib.h>

namespace refhost {

/// Why a request is not answered.
struct Refused {
    int status = 400;
    std::string reason;
};

/// What a server at `address` and `port` may be called in a request's Host header. A page elsewhere
/// whose name was made to lead here calls it by that other name.
std::vector<std::string> namesOf(const std::string& address, int port);

/// Refuses a request that was addressed to another name than one of `names`.
std::optional<Refused> checkHost(const httplib::Request& request,
                                 const std::vector<std::string>& names);
/// Refuses a request of our interface that a page of another origin made.
std::optional<Refused> checkOrigin(const httplib::Request& request,
                                   const std::vector<std::string>& names);
/// Refuses a body that is not declared as JSON: only such requests ask before they cross origins.
std::optional<Refused> checkJson(const httplib::Request& request);

/// The value of a cookie; empty without it.
std::string cookieIn(const httplib::Request& request, const std::string& name);
/// A page's name for itself: letters, digits and "-._", at most 64. Nothing when it is malformed.
std::optional<std::string> viewName(const std::string& text);
/// The path of a request as it was sent, without its query.
std::string_view rawPath(const httplib::Request& request);

} // namespace refhost
