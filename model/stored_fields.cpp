#include "model/stored_fields.h"

namespace qmevents {

const Ref<Collection>& StoredFields::get() const
{
    if (reader_) {
        // Forgotten first, so that a document that cannot be read is reported once.
        const Reader read = std::exchange(reader_, nullptr);
        if (auto items = read(document_)) {
            items_.set(std::move(items));
            document_.clear();
        }
    }
    return items_.get();
}

void StoredFields::set(Ref<Collection> items)
{
    document_.clear();
    reader_ = nullptr;
    items_.set(std::move(items));
}

void StoredFields::copyFrom(const StoredFields& other, Copier copy)
{
    document_ = other.document_;
    reader_ = other.reader_;
    items_.set(isUnread() ? Ref<Collection>() : copy(other.items_));
}

std::string StoredFields::document(Writer write) const
{
    if (isUnread()) return document_;
    const auto& items = items_.get();
    return items->size() == 0 ? document_ : write(*items);
}

} // namespace qmevents
