#include "host/web/serve.h"

#include <charconv>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <optional>
#include <pthread.h>
#include <stdexcept>

#include "host/cli/command_line.h"
#include "host/cli/common_options.h"
#include "host/web/host_backend.h"
#include "host/web/web_server.h"

namespace refhost {

namespace {

int portFrom(const std::string& text)
{
    constexpr int highest = 65535;
    int port = 0;
    const char* const last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, port);
    if (error != std::errc() || end != last || port < 0 || port > highest)
        throw UsageError{"--port is a number from 0 to 65535, not " + text};
    return port;
}

qmevents::Date momentFrom(const std::string& text)
{
    const auto moment = qmevents::Date::parseIso(text);
    if (!moment) throw UsageError{"--now is like \"2026-11-21 09:00:00\", not " + text};
    return *moment;
}

// Waits on signals that were blocked before any thread was there, so that they come here.
class EndSignals {
public:
    EndSignals()
    {
        sigemptyset(&signals_);
        sigaddset(&signals_, SIGINT);
        sigaddset(&signals_, SIGTERM);
        pthread_sigmask(SIG_BLOCK, &signals_, &before_);
    }
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;
    ~EndSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

    void wait() const
    {
        int signal = 0;
        sigwait(&signals_, &signal);
    }

private:
    sigset_t signals_{};
    sigset_t before_{};
};

int serve(HostBackend::Options host, const WebServerOptions& web, const std::string& file)
{
    // A new database would have no user who could sign in.
    if (!std::filesystem::exists(file)) {
        throw std::runtime_error("there is no database \"" + file + "\"; quillmere demo makes one");
    }
    host.database = Database::open(file);
    std::optional<EndSignals> signals(std::in_place);
    HostBackend backend(std::move(host));
    WebServer server(backend, web);
    std::cout << "Quillmere answers at " << server.url() << std::endl;
    signals->wait();
    signals.reset(); // a second one ends the process at once, should a command never end
    server.stop();
    return succeeded;
}

} // namespace

int serveCommand(std::span<const std::string> args)
{
    std::string file;
    HostBackend::Options host;
    host.addInPath = findAddIn();
    WebServerOptions web;
    web.port = 8080;
    const CommandLine line(
        "serve", "", "Answers browsers until it is interrupted.",
        {databaseOption(file, "The database."),
         dialectOption(host.dialect),
         {"--port", "NUMBER", "The port to answer at (8080); 0 takes any free one.",
          [&](const std::string& text) { web.port = portFrom(text); }},
         {"--bind", "ADDRESS", "The network address to answer at (127.0.0.1).",
          [&](const std::string& text) { web.address = text; }},
         {"--pages", "DIR", "The pages (those of the add-in).",
          [&](const std::string& text) { web.pages = text; }},
         {"--addin", "DIR", "The add-in's folder with data/, cache/ and pages/.",
          [&](const std::string& text) { host.addInPath = text; }},
         {"--now", "DATE", "The moment at which all clocks stand; they run without.",
          [&](const std::string& text) { host.now = momentFrom(text); }}});
    const Streams streams{std::cin, std::cout, std::cerr};
    return line.run(args, streams, [&](const std::vector<std::string>& operands) -> int {
        if (!operands.empty()) throw UsageError{"what is " + operands[0] + "?"};
        if (file.empty()) throw UsageError{"--db is missing"};
        web.addIn = host.addInPath;
        if (web.pages.empty()) web.pages = std::filesystem::path(host.addInPath) / "pages";
        try {
            return serve(host, web, file);
        } catch (const std::exception& error) {
            std::cerr << "quillmere serve: " << error.what() << '\n';
            return failed;
        }
    });
}

} // namespace refhost
