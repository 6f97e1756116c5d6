#include "host/web/event_stream.h"

#include <charconv>
#include <optional>
#include <string>
#include <utility>

namespace refhost {

namespace {

using SteadyClock = std::chrono::steady_clock;

/// How often an idle stream looks whether the browser still reads it.
constexpr auto glance = std::chrono::milliseconds(500);
constexpr auto heartbeat = std::chrono::seconds(5);

std::optional<std::uint64_t> lastEventId(const httplib::Request& request)
{
    const std::string text = request.get_header_value("Last-Event-ID");
    std::uint64_t id = 0;
    const auto* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, id);
    if (text.empty() || error != std::errc() || stop != end) return std::nullopt;
    return id;
}

class EventStream {
public:
    EventStream(std::shared_ptr<BrowserSession> session, std::shared_ptr<View> view,
                std::optional<std::uint64_t> lastId, std::chrono::milliseconds length)
        : session_(std::move(session)), view_(std::move(view)),
          number_(session_->views().openStream(*view_, lastId)), end_(SteadyClock::now() + length)
    {
    }
    EventStream(const EventStream&) = delete;
    EventStream& operator=(const EventStream&) = delete;
    ~EventStream() { session_->views().closeStream(*view_); }

    bool write(httplib::DataSink& sink)
    {
        if (!sink.is_writable()) return false;
        std::string text;
        if (!std::exchange(begun_, true)) text = "retry: 500\n\n";
        if (SteadyClock::now() >= end_) return finish(sink);
        const auto events = text.empty() ? session_->views().next(*view_, number_, glance)
                                         : std::optional(std::vector<ViewEvent>());
        if (!events) return finish(sink);
        for (const auto& event : *events) {
            text += "id: " + std::to_string(event.id) + "\nevent: " + event.name +
                    "\ndata: " + event.data + "\n\n";
        }
        if (text.empty() && SteadyClock::now() - lastWritten_ > heartbeat) text = ":\n\n";
        if (text.empty()) return true;
        lastWritten_ = SteadyClock::now();
        return sink.write(text.data(), text.size());
    }

private:
    static bool finish(httplib::DataSink& sink)
    {
        sink.done();
        return true;
    }

    std::shared_ptr<BrowserSession> session_;
    std::shared_ptr<View> view_;
    std::uint64_t number_;
    SteadyClock::time_point end_;
    SteadyClock::time_point lastWritten_ = SteadyClock::now();
    bool begun_ = false;
};

} // namespace

void streamEvents(const httplib::Request& request, httplib::Response& response,
                  const std::shared_ptr<BrowserSession>& session, const std::string& view,
                  std::chrono::milliseconds length, std::shared_ptr<void> counted)
{
    const auto stream = std::make_shared<EventStream>(session, session->views().visit(view),
                                                      lastEventId(request), length);
    response.set_header("Cache-Control", "no-store");
    response.set_chunked_content_provider(
        "text/event-stream",
        [stream, counted = std::move(counted)](std::size_t, httplib::DataSink& sink) {
            return stream->write(sink);
        });
}

} // namespace refhost
