#pragma once

#include "model/entity.h"
#include "model/typed_collection.h"

namespace qmevents {

/// One cost of an event; a negative amount is a refund.
class cEventExpense : public Entity, public AuditFields {
public:
    static constexpr std::string_view ClassName = "cEventExpense";
    const Members& members() const override;

    Tracked<std::int32_t> FKEventId{*this};
    Tracked<Date> ExpenseDate{*this};
    Tracked<std::string> Description{*this};
    Tracked<Currency> Amount{*this};

    std::string displayName() const { return Description; }
};

/// Expenses under their keys.
class cEventExpenses : public TypedCollection<cEventExpense> {
public:
    static constexpr std::string_view ClassName = "cEventExpenses";
    const Members& members() const override;

    Currency Total() const; ///< Sum of the amounts.
};

} // namespace qmevents
