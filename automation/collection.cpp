#include "automation/collection.h"

#include <algorithm>

#include "automation/describe.h"
#include "automation/error.h"

namespace qmevents {
namespace {

// Stands on positions, so that items added or removed during the walk neither end nor break it.
class CollectionWalk : public Enumerator {
public:
    explicit CollectionWalk(Ref<Collection> collection) : collection_(std::move(collection)) {}
    bool next(Value& item) override
    {
        if (position_ >= collection_->size()) return false;
        item = collection_->at(++position_);
        return true;
    }

private:
    Ref<Collection> collection_;
    std::size_t position_ = 0;
};

} // namespace

const Members& Collection::members() const
{
    static const Members table =
        describe<Collection>("Items in the order in which they were added, each with an optional "
                             "key.")
            .method("Add", &Collection::Add, {arg("Item"), optional("Key")},
                    "Appends an item; a key that is taken is an error.")
            .readOnly("Item", &Collection::Item, {arg("Index")},
                      "The item at a position (from 1) or under a key.")
            .asDefault()
            .readOnly("Count", &Collection::Count, "Number of items.")
            .method("Remove", &Collection::Remove, {arg("Index")},
                    "Removes the item at a position or under a key.")
            .enumerator("NewEnum", &Collection::NewEnum);
    return table;
}

void Collection::append(Value item, const std::string& key)
{
    if (!key.empty() && !sequenceOf_.emplace(key, nextSequence_).second) {
        throw Error::with(ErrorNumber::duplicateKey, key);
    }
    entries_.push_back({nextSequence_++, key, std::move(item)});
}

const Value& Collection::at(std::size_t position) const
{
    if (position < 1 || position > entries_.size()) {
        throw Error::with(ErrorNumber::subscriptOutOfRange, "position " + std::to_string(position) +
                                                                " of " +
                                                                std::to_string(entries_.size()));
    }
    return entries_[position - 1].item;
}

const Value& Collection::at(std::string_view key) const { return entries_[indexOf(key)].item; }

std::size_t Collection::indexOf(std::string_view key) const
{
    const auto found = sequenceOf_.find(key);
    if (found == sequenceOf_.end()) {
        throw Error::with(ErrorNumber::invalidCall, "no item has the key " + std::string(key));
    }
    const auto entry = std::lower_bound(
        entries_.begin(), entries_.end(), found->second,
        [](const Entry& e, std::size_t sequence) { return e.sequence < sequence; });
    return static_cast<std::size_t>(entry - entries_.begin());
}

std::size_t Collection::indexOfValue(const Value& index) const
{
    if (index.isText()) return indexOf(index.text());
    const std::int32_t position = toInt32(index);
    at(position < 0 ? 0 : static_cast<std::size_t>(position)); // refuses what is outside
    return static_cast<std::size_t>(position) - 1;
}

Value Collection::takeAt(std::size_t index)
{
    Entry entry = std::move(entries_[index]);
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(index));
    if (!entry.key.empty()) {
        sequenceOf_.erase(entry.key);
        if (onKeyFreed) onKeyFreed(entry.key);
    }
    return std::move(entry.item);
}

Value Collection::take(std::size_t position)
{
    at(position);
    return takeAt(position - 1);
}

Value Collection::take(std::string_view key) { return takeAt(indexOf(key)); }

void Collection::clear()
{
    while (size() > 0) takeAt(size() - 1);
}

void Collection::Add(const Value& item, const std::optional<std::string>& key)
{
    append(item, key.value_or(""));
}

Value Collection::Item(const Value& index) const { return entries_[indexOfValue(index)].item; }

void Collection::Remove(const Value& index) { takeAt(indexOfValue(index)); }

Ref<Enumerator> Collection::NewEnum() { return makeRef<CollectionWalk>(Ref<Collection>(this)); }

} // namespace qmevents
