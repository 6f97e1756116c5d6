#include "model/collection_template.h"

#include <utility>

#include "automation/error.h"
#include "core/host.h"

namespace qmevents {
namespace {

constexpr std::string_view keyPrefix = "FK=";

std::string keyText(const Value& recordKey) { return std::string(keyPrefix) + toText(recordKey); }
std::string temporaryKey(std::int32_t number)
{
    return std::string(keyPrefix) + "-" + std::to_string(number);
}

// The number of a temporary key ("FK=-7" is 7), or 0.
std::int32_t temporaryNumber(const std::string& key)
{
    constexpr std::string_view prefix = "FK=-";
    if (!key.starts_with(prefix)) return 0;
    const auto number = parseNumber(std::string_view(key).substr(prefix.size()));
    return number && *number >= 1 && *number <= 2147483647 ? static_cast<std::int32_t>(*number) : 0;
}

std::int32_t idOf(const Ref<Object>& item) { return item ? toInt32(get(item, "Id")) : 0; }

struct SortEntry {
    std::string key;
    Ref<Object> item;
};

// Quicksort around the value of the middle entry. The smaller side is sorted by recursion, so that
// the depth stays logarithmic.
void quicksort(std::vector<SortEntry>& entries, std::ptrdiff_t lo, std::ptrdiff_t hi)
{
    const auto at = [&](std::ptrdiff_t i) -> SortEntry& {
        return entries[static_cast<std::size_t>(i)];
    };
    while (lo < hi) {
        if (hi - lo == 1) {
            if (at(lo).key > at(hi).key) std::swap(at(lo), at(hi));
            return;
        }
        const std::string pivot = at((lo + hi) / 2).key;
        std::ptrdiff_t left = lo;
        std::ptrdiff_t right = hi;
        while (left <= right) {
            while (at(left).key < pivot) ++left;
            while (pivot < at(right).key) --right;
            if (left <= right) std::swap(at(left++), at(right--));
        }
        if (right - lo < hi - left) {
            quicksort(entries, lo, right);
            lo = left;
        } else {
            quicksort(entries, left, hi);
            hi = right;
        }
    }
}

} // namespace

const Members& CollectionTemplate::members() const
{
    static const Members table =
        describe<CollectionTemplate>("Records under their keys, with the deleted ones and a "
                                     "display order.")
            .with(collectionMembers<CollectionTemplate>)
            .method("Initialize", &CollectionTemplate::Initialize,
                    "Creates the live and the deleted items.")
            .method("Terminate", &CollectionTemplate::Terminate, "Releases them.");
    return table;
}

void CollectionTemplate::Initialize()
{
    Terminate();
    live_ = makeRef<Collection>();
    deleted_ = makeRef<Collection>();
    temporaryKeys_ = std::make_shared<TemporaryKeys>();
    // The live items are shown whole, so keys may also be freed behind this engine's back.
    live_->onKeyFreed = [keys = temporaryKeys_](const std::string& key) {
        if (const std::int32_t number = temporaryNumber(key)) keys->free(number);
    };
}

void CollectionTemplate::Terminate()
{
    live_ = {};
    deleted_ = {};
    ordered_.clear();
}

const Collection& CollectionTemplate::live() const
{
    if (!live_) throw Error::with(ErrorNumber::objectNotSet, "the collection has been terminated");
    return *live_;
}

void CollectionTemplate::Add(const Ref<Object>& oObject, Value* sKey)
{
    live();
    if (!oObject) throw Error::with(ErrorNumber::objectNotSet, "Add needs an item");
    if (!sKey) {
        live_->append(oObject);
    } else if (const std::int32_t key = toInt32(*sKey); key != 0) {
        live_->append(oObject, keyText(key));
    } else {
        const std::int32_t number = temporaryKeys_->takeNext(
            [&](std::int32_t n) { return live_->contains(temporaryKey(n)); });
        live_->append(oObject, temporaryKey(number));
        *sKey = -number;
    }
    ordered_.resize(live_->size());
    ordered_.back() = oObject;
}

Value CollectionTemplate::Item(const Value& vntIndex) const { return live().Item(vntIndex); }

Value CollectionTemplate::ItemByKey(const Value& vntKey) const
{
    return live().at(keyText(vntKey));
}

bool CollectionTemplate::holdsKey(const Value& recordKey) const
{
    return live().contains(keyText(recordKey));
}

Value CollectionTemplate::SortedItems() const
{
    return Array::list({ordered_.begin(), ordered_.end()}, 1);
}

void CollectionTemplate::Remove(const Value& vntIndex, bool RemoveIdFromArray)
{
    const Value item = live().Item(vntIndex);
    // Asked first: what is no record, put into the live items by hand, must not be half removed.
    const std::int32_t id = RemoveIdFromArray ? idOf(toObject(item)) : 0;
    live_->Remove(vntIndex);
    deleted_->append(item);
    if (RemoveIdFromArray) removeFromOrder(id);
}

void CollectionTemplate::RemoveByKey(const Value& vntKey, bool AddToDeleted)
{
    const Value item = ItemByKey(vntKey);
    const std::int32_t id = idOf(toObject(item));
    live_->take(keyText(vntKey));
    if (AddToDeleted) deleted_->append(item);
    removeFromOrder(id);
}

void CollectionTemplate::RemoveAll()
{
    while (Count() > 0) Remove(1, false);
    ordered_.clear();
}

Ref<Enumerator> CollectionTemplate::NewEnum()
{
    live();
    return live_->NewEnum();
}

// Unsaved items share the id 0 and go together; that is how the order is kept.
void CollectionTemplate::removeFromOrder(std::int32_t id)
{
    std::erase_if(ordered_, [id](const Ref<Object>& item) { return idOf(item) == id; });
}

void CollectionTemplate::Move(const Value& vntIndex, std::int32_t sort, std::int32_t direction)
{
    moveItem(toObject(Item(vntIndex)), sort, direction);
}

void CollectionTemplate::MoveByKey(const Value& vntKey, std::int32_t sort, std::int32_t direction)
{
    moveItem(toObject(ItemByKey(vntKey)), sort, direction);
}

void CollectionTemplate::moveItem(const Ref<Object>& item, std::int32_t sort,
                                  std::int32_t direction)
{
    const std::int32_t id = idOf(item);
    std::size_t position = ordered_.size();
    while (position > 0 && (!ordered_[position - 1] || idOf(ordered_[position - 1]) != id)) {
        --position;
    }
    const bool towardEnd = (sort == 0 && direction == 1) || (sort == 1 && direction == 0);
    const std::size_t target = towardEnd ? position + 1 : position - 1;
    if (position == 0 || target < 1 || target > ordered_.size()) {
        host().shell().errorUnexpected("Error calculating the move to index.");
        return;
    }
    std::swap(ordered_[position - 1], ordered_[target - 1]);
}

void CollectionTemplate::Sort(const std::string& sortColumn)
{
    live();
    std::vector<SortEntry> entries;
    entries.reserve(ordered_.size());
    for (const auto& item : ordered_) {
        entries.push_back({item ? text::upper(toText(get(item, sortColumn))) : "", item});
    }
    quicksort(entries, 0, static_cast<std::ptrdiff_t>(entries.size()) - 1);
    for (std::size_t i = 0; i < entries.size(); ++i) ordered_[i] = std::move(entries[i].item);
}

} // namespace qmevents
