#pragma once

#include <string>
#include <utility>

#include "automation/object.h"
#include "com/com_ptr.h"
#include "com/errors.h"
#include "com/variant.h"

namespace qmevents::com {

/// A walk over a host's collection.
class ImportedWalk final : public Enumerator {
public:
    /// `source` names the collection in messages.
    ImportedWalk(ComPtr<IEnumVARIANT> walk, std::string source)
        : walk_(std::move(walk)), source_(std::move(source))
    {
    }

    bool next(Value& item) override
    {
        Variant found;
        ULONG count = 0;
        const HRESULT result = walk_->Next(1, &found, &count);
        if (FAILED(result)) {
            ReceivedException none;
            throw errorOf(result, none, source_, "next item", {});
        }
        if (result != S_OK) return false;
        item = fromVariant(found);
        return true;
    }

private:
    ComPtr<IEnumVARIANT> walk_;
    std::string source_;
};

} // namespace qmevents::com
