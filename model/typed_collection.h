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
    /// Takes out the record under the key `id`, else the one whose Id it is, because a new record
    /// keeps its temporary key once it is stored. What is stored counts as deleted from now on.
    /// Error 5 when there is no such record.
    void takeOut(std::int32_t id)
    {
        if (engine_->holdsKey(id)) {
            const auto record = recordIn(engine_->ItemByKey(id));
            return engine_->RemoveByKey(id, record && !record->IsNew());
        }
        const std::int32_t position = positionOf(id);
        if (position == 0) return engine_->RemoveByKey(id, false); // says that there is none
        engine_->Remove(position, true);
    }
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
    // Nothing for whatever else was put into the items by hand.
    static Ref<T> recordIn(const Value& item)
    {
        return item.isObject() ? refCast<T>(item.object()) : Ref<T>();
    }
    std::int32_t positionOf(std::int32_t id) const
    {
        const Collection& items = engine_->live();
        for (std::size_t i = 1; i <= items.size(); ++i) {
            const auto record = recordIn(items.at(i));
            if (record && record->Id() == id) return static_cast<std::int32_t>(i);
        }
        return 0;
    }
    template <typename Visit>
    static void eachIn(const Collection& items, Visit visit)
    {
        for (std::size_t i = 1; i <= items.size(); ++i) {
            if (const auto record = recordIn(items.at(i))) visit(record);
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
