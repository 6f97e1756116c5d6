#include "host/script/script_error.h"

#include <algorithm>
#include <iterator>

namespace refhost::script {
namespace {

constexpr struct {
    int number;
    std::string_view text;
} texts[] = {
    {arrayIsFixed, "This array is fixed"},
    {outOfStack, "Out of stack space"},
    {undefinedVariable, "Variable is undefined"},
    {illegalAssignment, "Illegal assignment"},
    {unqualifiedReference, "Invalid or unqualified reference"},
    {syntaxError, "Syntax error"},
    {expectedOpening, "Expected '('"},
    {expectedClosing, "Expected ')'"},
    {expectedBracket, "Expected ']'"},
    {expectedName, "Expected identifier"},
    {expectedEquals, "Expected '='"},
    {expectedExpression, "Expected expression"},
    {expectedStatement, "Expected statement"},
    {expectedEndOfStatement, "Expected end of statement"},
    {expectedWholeNumber, "Expected integer constant"},
    {expectedWhileOrUntil, "Expected 'While' or 'Until'"},
    {invalidNumber, "Invalid number"},
    {invalidCharacter, "Invalid character"},
    {unterminatedText, "Unterminated string constant"},
    {loopWithoutDo, "'Loop' without 'Do'"},
    {invalidExit, "Invalid 'Exit' statement"},
    {nameRedefined, "Name redefined"},
    {parenthesesInCall, "Cannot use parentheses when calling a Sub"},
    {expectedLiteral, "Expected literal constant"},
};

} // namespace

std::string textOf(int number)
{
    const auto* const found =
        std::find_if(std::begin(texts), std::end(texts),
                     [&](const auto& entry) { return entry.number == number; });
    return std::string(found != std::end(texts)
                           ? found->text
                           : qmevents::standardText(static_cast<qmevents::ErrorNumber>(number)));
}

qmevents::Error scriptError(int number, std::string_view detail)
{
    return {number, "Script",
            textOf(number) + (detail.empty() ? "" : " (" + std::string(detail) + ")")};
}

qmevents::Error scriptError(qmevents::ErrorNumber number, std::string_view detail)
{
    return scriptError(static_cast<int>(number), detail);
}

} // namespace refhost::script
