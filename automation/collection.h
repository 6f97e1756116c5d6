#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "automation/members.h"

namespace qmevents {

/// Values in the order in which they were added, each with an optional text key. Keys are matched
/// without regard to case. Positions count from 1.
class Collection : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "Collection";
    const Members& members() const override;

    /// Appends; error 457 when the key is taken.
    void append(Value item, const std::string& key = {});
    bool contains(std::string_view key) const { return sequenceOf_.contains(std::string(key)); }
    std::size_t size() const { return entries_.size(); }
    /// The item at `position`; error 9 when there is none.
    const Value& at(std::size_t position) const;
    /// The item under `key`; error 5 when there is none.
    const Value& at(std::string_view key) const;
    Value take(std::size_t position); ///< Removes the item and gives it.
    Value take(std::string_view key);
    void clear();

    /// Called with the key of each keyed item that leaves.
    std::function<void(const std::string& key)> onKeyFreed;

    // The late-bound face.
    void Add(const Value& item, const std::optional<std::string>& key);
    std::int32_t Count() const { return static_cast<std::int32_t>(size()); }
    Value Item(const Value& index) const; ///< By position or by key.
    void Remove(const Value& index);
    Ref<Enumerator> NewEnum();

private:
    struct Entry {
        std::size_t sequence; // ascending, so that an entry is found by binary search
        std::string key;
        Value item;
    };
    std::size_t indexOf(std::string_view key) const;
    std::size_t indexOfValue(const Value& index) const;
    Value takeAt(std::size_t index);

    std::deque<Entry> entries_;
    std::unordered_map<std::string, std::size_t, text::NameHash, text::NameEqual> sequenceOf_;
    std::size_t nextSequence_ = 0;
};

} // namespace qmevents
