#pragma once

#include <cstdint>
#include <string>

#include "automation/collection.h"
#include "host/app/utils.h"
#include "host/document/objects/document.h"

namespace refhost {

/// One item of a code list.
class Code : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Code";
    const Members& members() const override;

    std::int32_t Id = 0;
    std::string Name;
    bool Visible = true;
};

/// `App.Provider`: what kind of database is open, and how values are written for it.
class Provider : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Provider";
    const Members& members() const override;

    Provider(SharedContext context, Ref<Document> document, Ref<Utils> utils)
        : context_(std::move(context)), document_(std::move(document)), utils_(std::move(utils))
    {
    }

    // The late-bound face.
    std::int32_t GetDocumentType() const; ///< 1 SQL Server, 2 Jet.
    std::string VToSQL(const Value& value, std::int32_t kind) const;
    /// Whether the last Execute failed because a key is taken; gives its number and description.
    bool DuplicateErrorOnInsert(std::int32_t* number, std::string* description) const;
    /// The items of "fund", "campaign" or "giftsource" in their order; error 5 for another name.
    Ref<qmevents::Collection> Codes(const std::string& list, bool includeHidden) const;
    Ref<Utils> utils() const { return utils_; }

private:
    SharedContext context_;
    Ref<Document> document_;
    Ref<Utils> utils_;
};

} // namespace refhost
