#include "store/statement.h"

#include "automation/text.h"

namespace qmevents {

Statement& Statement::add(std::string_view piece)
{
    const std::string_view trimmed = text::trim(piece);
    if (trimmed.empty()) return *this;
    if (!text_.empty()) text_ += ' ';
    text_ += trimmed;
    return *this;
}

Statement& Statement::where(std::string_view condition)
{
    add(hasCondition_ ? "AND" : "WHERE");
    hasCondition_ = true;
    return add(condition);
}

} // namespace qmevents
