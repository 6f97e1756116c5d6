#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>

#include "automation/value.h"

namespace refhost {

/// The objects that pages hold by number. Stays on the session's thread.
class HeldObjects {
public:
    static constexpr std::size_t mostPerView = 20'000;
    static constexpr std::size_t mostInAll = 100'000;

    /// Who holds an object: a page, or the page of one of its dialog windows (0: none).
    struct Holder {
        std::string view;
        int window = 0;
    };

    /// Holds `object` and gives its number, which is never used again. Error 7 when the page, or
    /// all pages together, hold too many already.
    int hold(const qmevents::Ref<qmevents::Object>& object, const Holder& holder);
    /// The object held under `number`; error 424 when there is none.
    const qmevents::Ref<qmevents::Object>& at(int number) const;
    void release(int number);
    void releaseView(const std::string& view);
    void releaseWindow(int window);
    void clear();
    std::size_t size() const { return held_.size(); }

private:
    struct Held {
        qmevents::Ref<qmevents::Object> object;
        Holder holder;
    };
    template <typename Condition>
    void releaseWhere(Condition condition);

    std::unordered_map<int, Held> held_;
    std::unordered_map<std::string, std::size_t> countOf_;
    int last_ = 0;
};

} // namespace refhost
