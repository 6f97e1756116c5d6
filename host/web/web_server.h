#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>

#include "host/web/backend.h"

namespace refhost {

struct WebServerOptions {
    std::string address = "127.0.0.1"; ///< The network address to answer at.
    int port = 0;                      ///< 0: any free one.
    std::filesystem::path pages;       ///< The folder of the pages.
    std::filesystem::path addIn;       ///< The folder of cache/ and of the pages' libraries.
    std::chrono::milliseconds idleTimeout = std::chrono::hours(4); ///< Signs idle browsers out.
    std::chrono::milliseconds viewGrace = std::chrono::seconds(8); ///< See ViewHub.
    std::chrono::milliseconds streamLength = std::chrono::seconds(25);
};

/// Serves the pages and their requests to browsers on this machine.
class WebServer {
public:
    /// `backend` outlives the server. Throws std::runtime_error when it cannot answer at the
    /// address or there are no pages.
    WebServer(Backend& backend, WebServerOptions options);
    WebServer(const WebServer&) = delete;
    WebServer& operator=(const WebServer&) = delete;
    ~WebServer(); ///< Stops.

    int port() const;
    std::string url() const; ///< "http://127.0.0.1:8080/"
    /// Signs everybody out, answers what is under way and returns. Safe to call again.
    void stop();

private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace refhost
