#include "model/secure_collection.h"

#include "automation/describe.h"
#include "automation/error.h"
#include "core/host.h"

namespace qmevents {

const Members& SecureCollection::members() const
{
    static const Members table =
        describe<SecureCollection>("Items that the signed-in user may see.")
            .method("Add", &SecureCollection::Add, {arg("Item"), optional("Key")},
                    "Adds the item when the user is allowed its Operation, else skips it.")
            .readOnly("Count", &SecureCollection::Count, "Number of items.")
            .readOnly("Item", &SecureCollection::Item, {arg("inIndex")},
                      "The item at a position (from 1) or under a key.")
            .asDefault()
            .method("Remove", &SecureCollection::Remove, {arg("inIndex")}, "Removes an item.")
            .enumerator("NewEnum", &SecureCollection::NewEnum);
    return table;
}

Collection& SecureCollection::items() const
{
    if (!items_) items_ = makeRef<Collection>();
    return *items_;
}

void SecureCollection::Add(const Ref<Object>& item, const std::optional<std::string>& key)
{
    if (!item) throw Error::with(ErrorNumber::objectNotSet, "Add needs an item");
    if (host().security().isAllowed(toText(get(item, "Operation")))) items().Add(item, key);
}

Value SecureCollection::Item(const Value& inIndex) const { return items().Item(inIndex); }
void SecureCollection::Remove(const Value& inIndex) { items().Remove(inIndex); }
Ref<Enumerator> SecureCollection::NewEnum() { return items().NewEnum(); }

} // namespace qmevents
