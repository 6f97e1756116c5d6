#pragma once

#include <string>
#include <string_view>

#include "automation/error.h"

namespace refhost::script {

/// Numbers of the failures that only scripts have; scripts compare them with `Err.Number`.
enum Failure : int {
    arrayIsFixed = 10,
    outOfStack = 28,
    undefinedVariable = 500,
    illegalAssignment = 501,
    unqualifiedReference = 505,
    syntaxError = 1002,
    expectedOpening = 1005,
    expectedClosing = 1006,
    expectedBracket = 1007,
    expectedName = 1010,
    expectedEquals = 1011,
    expectedWord = 1014,
    expectedExpression = 1023,
    expectedStatement = 1024,
    expectedEndOfStatement = 1025,
    expectedWholeNumber = 1026,
    expectedWhileOrUntil = 1027,
    invalidNumber = 1031,
    invalidCharacter = 1032,
    unterminatedText = 1033,
    loopWithoutDo = 1038,
    invalidExit = 1039,
    nameRedefined = 1041,
    parenthesesInCall = 1044,
    expectedLiteral = 1045,
};

/// The standard description of `number`, or nothing that helps for a number not known.
std::string textOf(int number);

/// A failure of the running script itself, as opposed to one of an object that it called.
qmevents::Error scriptError(int number, std::string_view detail = {});
qmevents::Error scriptError(qmevents::ErrorNumber number, std::string_view detail = {});

/// Runs `act`; what conversions throw in it counts as the script's own failure.
template <typename Act>
auto asScript(Act act)
{
    try {
        return act();
    } catch (const qmevents::Error& error) {
        throw qmevents::Error(error.number(), "Script", error.description());
    }
}

/// A text that cannot be run, and the line that is to blame.
struct SyntaxError {
    int number = syntaxError;
    std::string description;
    int line = 0;
};

} // namespace refhost::script
