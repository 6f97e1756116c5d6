#pragma once

#include "automation/collection.h"

namespace qmevents {

/// Holds only the items whose `Operation` the signed-in user is allowed; others are skipped.
class SecureCollection : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "SecureCollection";
    const Members& members() const override;

    void Add(const Ref<Object>& item, const std::optional<std::string>& key);
    std::int32_t Count() const { return items_ ? items_->Count() : 0; }
    Value Item(const Value& inIndex) const; ///< By position (from 1) or key.
    void Remove(const Value& inIndex);
    Ref<Enumerator> NewEnum();

private:
    Collection& items() const; // made when first needed
    mutable Ref<Collection> items_;
};

} // namespace qmevents
