#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <vector>

#include "automation/collection.h"
#include "automation/describe.h"

namespace qmevents {

/// The free negative numbers that unsaved items take as keys, nearest to zero first, found without
/// trying the taken ones again.
class TemporaryKeys {
public:
    /// The free number nearest to zero, as a positive count; `isTaken` tells about numbers that
    /// callers used themselves.
    template <typename IsTaken>
    std::int32_t takeNext(IsTaken isTaken)
    {
        while (!freed_.empty()) {
            const std::int32_t number = *freed_.begin();
            freed_.erase(freed_.begin());
            if (!isTaken(number)) return number;
        }
        while (isTaken(next_)) ++next_;
        return next_++;
    }
    void free(std::int32_t number)
    {
        if (number < next_) freed_.insert(number);
    }

private:
    std::int32_t next_ = 1; // no number below is free unless it stands in freed_
    std::set<std::int32_t> freed_;
};

/// The engine of every list of records: the live items under their keys ("FK=" and the record's
/// key), the items taken out since loading, which the store deletes on save, and the display order.
class CollectionTemplate : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "CollectionTemplate";
    const Members& members() const override;

    void Initialize();
    void Terminate();

    /// Appends an item: without a key when none is given; with key 0 under the free negative number
    /// nearest to zero, which is written back; else under the given key. Error 457 when it is
    /// taken.
    void Add(const Ref<Object>& oObject, Value* sKey = nullptr);
    Value Item(const Value& vntIndex) const;     ///< By position (from 1) or full key.
    Value ItemByKey(const Value& vntKey) const;  ///< By the bare record key.
    bool holdsKey(const Value& recordKey) const; ///< By the bare record key.
    Value SortedItems() const;                   ///< The display order, first index 1.
    std::int32_t Count() const { return static_cast<std::int32_t>(live().size()); }
    /// Takes an item out by position and records it as deleted. The display order keeps its entry
    /// unless `RemoveIdFromArray` is set.
    void Remove(const Value& vntIndex, bool RemoveIdFromArray);
    /// Takes an item out by key and out of the display order; records it as deleted on demand.
    void RemoveByKey(const Value& vntKey, bool AddToDeleted);
    void RemoveAll(); ///< Every item ends among the deleted ones.
    Ref<Enumerator> NewEnum();
    Ref<Collection> DeletedItems() const { return deleted_; }
    Ref<Collection> Items() const { return live_; }
    /// Moves an item one step in the display order: toward the end for down (1) in an ascending (0)
    /// list and for up (0) in a descending (1) one. Beyond either end it reports an error.
    void Move(const Value& vntIndex, std::int32_t sort, std::int32_t direction);
    void MoveByKey(const Value& vntKey, std::int32_t sort, std::int32_t direction);
    /// Sorts the display order by a property, compared as upper-case text.
    void Sort(const std::string& sortColumn);

    const Collection& live() const;

private:
    void removeFromOrder(std::int32_t id);
    void moveItem(const Ref<Object>& item, std::int32_t sort, std::int32_t direction);

    Ref<Collection> live_;
    Ref<Collection> deleted_;
    std::vector<Ref<Object>> ordered_;
    std::shared_ptr<TemporaryKeys> temporaryKeys_; // shared with the live collection's callback
};

/// The lines that the engine's member table and those of all typed collections have in common.
template <typename C>
void collectionMembers(Describe<C>& table)
{
    table
        .method(
            "Add", &C::Add, {arg("oObject"), optional("sKey")},
            "Appends an item: without a key when none is given, with key 0 under a free negative "
            "number that is written back, else under the record key given.")
        .readOnly("Item", &C::Item, {arg("vntIndex")},
                  "The item at a position (from 1) or under a full key.")
        .asDefault()
        .readOnly("ItemByKey", &C::ItemByKey, {arg("vntKey")}, "The item with a record key.")
        .readOnly("SortedItems", &C::SortedItems,
                  "The items in display order, an array whose first index is 1.")
        .readOnly("Count", &C::Count, "Number of live items.")
        .method("Remove", &C::Remove, {arg("vntIndex"), optional("RemoveIdFromArray", false)},
                "Takes an item out by position and records it as deleted.")
        .method("RemoveByKey", &C::RemoveByKey, {arg("vntKey"), optional("AddToDeleted", false)},
                "Takes an item out by record key and out of the display order.")
        .method("RemoveAll", &C::RemoveAll, "Takes every item out and records it as deleted.")
        .enumerator("NewEnum", &C::NewEnum)
        .readOnly("DeletedItems", &C::DeletedItems, "The items taken out since loading.")
        .readOnly("Items", &C::Items, "The live items.")
        .method("Move", &C::Move, {arg("vntIndex"), arg("Sort"), arg("Direction")},
                "Moves the item at a position one step in the display order.")
        .method("MoveByKey", &C::MoveByKey, {arg("vntKey"), arg("Sort"), arg("Direction")},
                "Moves the item with a record key one step in the display order.")
        .method("Sort", &C::Sort, {arg("SortColumn")},
                "Sorts the display order by a property, compared as upper-case text.");
}

} // namespace qmevents
