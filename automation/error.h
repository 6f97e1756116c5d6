#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace qmevents {

/// Numbers of the Automation errors that this system raises or recognises.
enum class ErrorNumber : int {
    invalidCall = 5,
    overflow = 6,
    outOfMemory = 7,
    subscriptOutOfRange = 9,
    divisionByZero = 11,
    typeMismatch = 13,
    internal = 51,
    permissionDenied = 70,
    objectNotSet = 91,
    invalidNull = 94,
    readOnlyProperty = 383,
    objectRequired = 424,
    noSuchMember = 438,
    argumentNotOptional = 449,
    wrongArgumentCount = 450,
    notACollection = 451,
    duplicateKey = 457,
};

/// A failure that travels between the host and the add-in: what an Automation caller sees as
/// `Err.Number`, `Err.Source` and `Err.Description`.
class Error : public std::runtime_error {
public:
    Error(int number, std::string source, const std::string& description)
        : std::runtime_error(description), number_(number), source_(std::move(source))
    {
    }
    Error(ErrorNumber number, const std::string& description)
        : Error(static_cast<int>(number), "QMEvents", description)
    {
    }
    /// The standard text of `number`, followed by `detail` in parentheses when there is one.
    explicit Error(ErrorNumber number);
    static Error with(ErrorNumber number, std::string_view detail);

    int number() const { return number_; }
    bool is(ErrorNumber number) const { return number_ == static_cast<int>(number); }
    const std::string& source() const { return source_; }
    std::string description() const { return what(); }

private:
    int number_;
    std::string source_;
};

/// The standard description of `number`, for example "Type mismatch" for 13.
std::string_view standardText(ErrorNumber number);

} // namespace qmevents
