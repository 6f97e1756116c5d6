#pragma once

#include <utility>

#include "automation/collection.h"

namespace qmevents {

/// A collection that comes into being when it is first asked for: most records never need theirs.
class LateCollection {
public:
    /// The collection, never Nothing.
    const Ref<Collection>& get() const
    {
        if (!items_) items_ = makeRef<Collection>();
        return items_;
    }
    void set(Ref<Collection> items) { items_ = std::move(items); }
    /// Calls `visit` with each item that is a `T`.
    template <typename T, typename Visit>
    void each(Visit visit) const
    {
        if (!items_) return;
        for (std::size_t i = 1; i <= items_->size(); ++i) {
            const Value& item = items_->at(i);
            if (!item.isObject()) continue;
            if (const auto typed = refCast<T>(item.object())) visit(typed);
        }
    }

private:
    mutable Ref<Collection> items_;
};

} // namespace qmevents
