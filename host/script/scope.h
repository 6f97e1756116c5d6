#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "automation/text.h"
#include "automation/value.h"

namespace refhost::script {

/// The place of one variable. It stays where it is as long as its scope lives, so that a
/// by-reference parameter may point to it.
struct Cell {
    enum class Kind : std::uint8_t { variable, fixedArray, constant };
    qmevents::Value value;
    Kind kind = Kind::variable;
};

/// The variables of a procedure's call, or of the script.
class Scope {
public:
    /// The variable called `name`, or null.
    Cell* find(std::string_view name)
    {
        const auto found = entries_.find(name);
        if (found == entries_.end()) return nullptr;
        return found->second.other ? found->second.other : &found->second.own;
    }
    /// A variable of this scope; the one that is there already when there is one.
    Cell& declare(const std::string& name) { return entries_[name].own; }
    /// Makes `name` mean a variable of another scope, which must live longer.
    void alias(const std::string& name, Cell* other) { entries_[name].other = other; }
    void clear() { entries_.clear(); }

private:
    struct Entry {
        Cell own;
        Cell* other = nullptr;
    };
    std::unordered_map<std::string, Entry, qmevents::text::NameHash, qmevents::text::NameEqual>
        entries_;
};

} // namespace refhost::script
