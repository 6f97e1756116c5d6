#pragma once

#include <string>
#include <vector>

#include "host/lists/smart_list.h"

namespace refhost {

/// The saved lists of the database.
class ListStore {
public:
    explicit ListStore(SharedContext context) : context_(std::move(context)) {}

    std::vector<Ref<SmartList>> all() const;    ///< By name.
    Ref<SmartList> find(std::int32_t id) const; ///< Nothing when there is none.
    /// Who changed or deleted `list` since it was read, in words; empty when nobody did.
    std::string changedMeanwhile(const SmartList& list) const;
    /// What keeps `list` from being saved under its name; empty when nothing does.
    std::string problemOf(const SmartList& list) const;
    /// Writes the list, as a new one when it has no row (any more).
    void save(SmartList& list) const;
    void remove(std::int32_t id) const;

private:
    SharedContext context_;
};

} // namespace refhost
