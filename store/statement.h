#pragma once

#include <string>
#include <string_view>

namespace qmevents {

/// Puts a statement together out of pieces with exactly one blank between them.
class Statement {
public:
    explicit Statement(std::string_view start) { add(start); }

    Statement& add(std::string_view piece);
    /// Adds a condition, behind WHERE the first time and behind AND from then on.
    Statement& where(std::string_view condition);

    const std::string& text() const { return text_; }

private:
    std::string text_;
    bool hasCondition_ = false;
};

} // namespace qmevents
