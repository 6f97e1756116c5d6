#pragma once

#include <string>

#include "model/collection_template.h"

namespace qmevents {

/// A collection that holds records of one class: an engine of its own, whose members it forwards
/// unchanged. `T` is the record's class.
template <typename T>
class TypedCollection : public DescribedObject {
public:
    TypedCollection() { engine_->Initialize(); }
    ~TypedCollection() override { engine_->Terminate(); }

    void Add(const Ref<T>& oObject, Value* sKey) { engine_->Add(oObject, sKey); }
    /// Adds a stored record under its key.
    void add(const Ref<T>& record)
    {
        Value key = record->Id();
        engine_->Add(record, &key);
    }
    Value Item(const Value& vntIndex) const { return engine_->Item(vntIndex); }
    Value ItemByKey(const Value& vntKey) const { return engine_->ItemByKey(vntKey); }
    Value SortedItems() const { return engine_->SortedItems(); }
    std::int32_t Count() const { return engine_->Count(); }
    void Remove(const Value& vntIndex, bool fix) { engine_->Remove(vntIndex, fix); }
    void RemoveByKey(const Value& vntKey, bool record) { engine_->RemoveByKey(vntKey, record); }
    void RemoveAll() { engine_->RemoveAll(); }
    Ref<Enumerator> NewEnum() { return engine_->NewEnum(); }
    Ref<Collection> DeletedItems() const { return engine_->DeletedItems(); }
    Ref<Collection> Items() const { return engine_->Items(); }
    void Move(const Value& vntIndex, std::int32_t sort, std::int32_t direction)
    {
        engine_->Move(vntIndex, sort, direction);
    }
    void MoveByKey(const Value& vntKey, std::int32_t sort, std::int32_t direction)
    {
        engine_->MoveByKey(vntKey, sort, direction);
    }
    void Sort(const std::string& sortColumn) { engine_->Sort(sortColumn); }

    /// Calls `visit` with each live record in the order of adding. Whatever else was put into the
    /// live items by hand is passed over.
    template <typename Visit>
    void each(Visit visit) const
    {
        eachIn(*engine_->Items(), visit);
    }
    /// The same for the records taken out since loading.
    template <typename Visit>
    void eachDeleted(Visit visit) const
    {
        eachIn(*engine_->DeletedItems(), visit);
    }

    /// Sum of what `amountOf` gives for each live record.
    template <typename AmountOf>
    Currency sum(AmountOf amountOf) const
    {
        Currency total;
        each([&](const Ref<T>& record) { total += amountOf(*record); });
        return total;
    }
    /// Number of live records for which `holds` is true.
    template <typename Holds>
    std::int32_t countIf(Holds holds) const
    {
        std::int32_t count = 0;
        each([&](const Ref<T>& record) { count += holds(*record) ? 1 : 0; });
        return count;
    }

    /// The records' names joined with `separator`.
    std::string ToString(const std::string& separator) const
    {
        std::string joined;
        bool first = true;
        each([&](const Ref<T>& record) {
            if (!first) joined += separator;
            first = false;
            joined += record->displayName();
        });
        return joined;
    }

private:
    template <typename Visit>
    static void eachIn(const Collection& items, Visit visit)
    {
        for (std::size_t i = 1; i <= items.size(); ++i) {
            const Value& item = items.at(i);
            if (!item.isObject()) continue;
            if (const auto record = refCast<T>(item.object())) visit(record);
        }
    }

    Ref<CollectionTemplate> engine_ = makeRef<CollectionTemplate>();
};

/// The `ToString` line of a typed collection's member table.
template <typename C>
void joinsNames(Describe<C>& table)
{
    table.method("ToString", &C::ToString, {optional("SepChar", ", ")},
                 "The names of the live items, joined.");
}

} // namespace qmevents
