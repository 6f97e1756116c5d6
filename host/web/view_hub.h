#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace refhost {

/// Something that a browser page is told.
struct ViewEvent {
    std::uint64_t id = 0;
    std::string name;
    std::string data; ///< JSON on one line.
};

/// One page that a browser shows. Guarded by its hub.
struct View {
    std::string id;
    bool hasLeft = false;
    int streams = 0;
    std::uint64_t newestStream = 0;
    std::chrono::steady_clock::time_point lastSeen;
    std::deque<ViewEvent> events; ///< Those to send, after those kept in case a stream breaks.
    std::uint64_t lastSentId = 0;
};

/// The pages of one session: what they are to be told, whether they are still there, and what their
/// users answered. Used from every thread.
class ViewHub {
public:
    using Clock = std::chrono::steady_clock;

    /// A view counts as gone when its event stream has been away for `grace` with no call.
    explicit ViewHub(std::chrono::milliseconds grace) : grace_(grace) {}

    /// The view called `id`, which a request has just come from.
    std::shared_ptr<View> visit(const std::string& id);
    /// The page has said goodbye; a later visit under the same name is another view.
    void leave(const std::string& id);
    bool isGone(const View& view) const;
    /// Forgets views that have been away for `absence` and gives their names.
    std::vector<std::string> forgetAbsent(std::chrono::milliseconds absence);

    /// Tells `view`; no view in particular means the first that listens.
    void tell(const std::shared_ptr<View>& view, const std::string& name, std::string data);

    /// A stream of events begins. `lastEventId` is what the browser has got so far, if it says.
    std::uint64_t openStream(View& view, std::optional<std::uint64_t> lastEventId);
    void closeStream(View& view);
    /// Waits for events up to `patience`. Nothing when the stream should end: the hub has ended,
    /// the view has left, or a newer stream took over.
    std::optional<std::vector<ViewEvent>> next(View& view, std::uint64_t stream,
                                               std::chrono::milliseconds patience);

    /// A question that awaits one of `buttons`; gives its number.
    int ask(std::vector<int> buttons);
    /// Takes the user's answer; false when nobody asked or the button is not one of those.
    bool answer(int question, int button);
    /// The answer, if it is there.
    std::optional<int> answerTo(int question) const;
    void withdraw(int question);

    /// Ends all streams.
    void end();

    std::function<void()> onChange; ///< Called when an answer came or a view left.

private:
    struct Question {
        std::vector<int> buttons;
        std::optional<int> answer;
    };
    bool isGoneNow(const View& view) const;

    const std::chrono::milliseconds grace_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::map<std::string, std::shared_ptr<View>> views_;
    std::vector<ViewEvent> unclaimed_;
    std::map<int, Question> questions_;
    std::uint64_t lastEvent_ = 0;
    std::uint64_t lastStream_ = 0;
    int lastQuestion_ = 0;
    bool ended_ = false;
};

} // namespace refhost
