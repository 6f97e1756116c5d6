#include "host/web/responses.h"

#include <memory>
#include <utility>

#include <nlohmann/json.hpp>

namespace refhost {

using httplib::Response;
using nlohmann::json;

const httplib::Headers& securityHeaders()
{
    static const httplib::Headers headers{
        {"Content-Security-Policy",
         "default-src 'self'; img-src 'self' data:; object-src 'none'; base-uri 'none'; "
         "form-action 'self'; frame-ancestors 'self'"},
        {"X-Content-Type-Options", "nosniff"},
        {"X-Frame-Options", "SAMEORIGIN"},
        {"Referrer-Policy", "no-referrer"},
        {"Cross-Origin-Opener-Policy", "same-origin"},
        {"Cross-Origin-Resource-Policy", "same-origin"},
    };
    return headers;
}

// The library compresses bodies of the types it knows, which costs more than it saves on a
// connection within one machine; files go out through a provider and JSON under a longer name.
void sendFile(Response& response, int status, PageFile file)
{
    response.status = status;
    response.set_header("Cache-Control", "no-cache");
    if (file.content.empty()) return response.set_content("", file.type);
    const auto content = std::make_shared<const std::string>(std::move(file.content));
    response.set_content_provider(
        content->size(), file.type,
        [content](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
            return sink.write(content->data() + offset, length);
        });
}

void sendJson(Response& response, int status, std::string text)
{
    response.status = status;
    response.body = std::move(text);
    response.set_header("Cache-Control", "no-store");
    response.set_header("Content-Type", "application/json; charset=utf-8");
}

void sendFailure(Response& response, int status, const std::string& reason)
{
    sendJson(response, status,
             json{{"error", reason}}.dump(-1, ' ', false, json::error_handler_t::replace));
}

} // namespace refhost
