#pragma once

#include <string>
#include <utility>

#include "model/late_collection.h"

namespace qmevents {

/// The reservation fields of an activity, or the values of a line: a collection that stands in a
/// stored document until somebody asks for it. Most records are read without anyone looking at
/// theirs.
class StoredFields {
public:
    /// Makes the collection out of a document; nothing, after a report, when it is unreadable.
    using Reader = Ref<Collection> (*)(const std::string& document);
    /// Makes a document out of the collection.
    using Writer = std::string (*)(const Collection& items);
    /// Makes a collection of its own out of the fields of another.
    using Copier = Ref<Collection> (*)(const LateCollection& items);

    void load(std::string document, Reader reader)
    {
        document_ = std::move(document);
        reader_ = reader;
        items_.set({});
    }
    /// The collection, never Nothing; empty when the document cannot be read.
    const Ref<Collection>& get() const;
    void set(Ref<Collection> items);
    /// Takes over the fields of `other`, with its document where that is unread or unreadable.
    void copyFrom(const StoredFields& other, Copier copy);
    /// The document to store: the one loaded as long as nobody asked for the fields, or as it could
    /// not be read and nothing was put in its place, so that nothing in it is lost.
    std::string document(Writer write) const;

    template <typename T, typename Visit>
    void each(Visit visit) const
    {
        get();
        items_.each<T>(visit);
    }

private:
    // Whether the loaded document has still to be read.
    bool isUnread() const { return reader_ != nullptr; }

    mutable LateCollection items_;
    mutable std::string document_; // as loaded; empty once its fields stand in `items_`
    mutable Reader reader_ = nullptr;
};

} // namespace qmevents
