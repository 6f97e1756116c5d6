#pragma once

#include "store/table.h"

namespace qmevents {

/// The column of a document with reservation fields or with their values.
template <typename C>
Column<C> fieldColumn(StoredFields::Reader read, StoredFields::Writer write)
{
    return {"ReservationInfo", Kind::text, Written::always,
            [write](const C& record) { return Value(StoreAccess::fields(record).document(write)); },
            [read](C& record, const Value& value) {
                std::string document = toText(value);
                if (!document.empty()) StoreAccess::fields(record).load(std::move(document), read);
            }};
}

} // namespace qmevents
