#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace qmevents {

/// Whether the user may change events; if not, the user has been told.
bool mayUpdateEvents();
/// Whether the user may delete events; if not, the user has been told.
bool mayDeleteEvents();

/// Whether the user may send mailings; if not, the user has been told.
bool maySendMailings();

/// Shows the user what is wrong with a record.
void refuse(const std::string& message);
/// Whether `given` holds; if not, the method's need for "a valid ..." has been reported.
bool isGivenTo(bool given, const std::string& method, const std::string& what);

/// One rule of a record, and what the user is told when it is broken.
template <typename T>
struct Rule {
    bool (*broken)(const T&);
    const char* message;
};
/// Whether all rules hold; if not, the first that is broken has been shown.
template <typename T, std::size_t n>
bool rulesHold(const Rule<T> (&rules)[n], const T& record)
{
    for (const auto& rule : rules) {
        if (!rule.broken(record)) continue;
        refuse(rule.message);
        return false;
    }
    return true;
}

/// "The selected ... no longer exists.", a line break, "It may have been deleted by another user."
std::string noLongerExists(const std::string& item);

/// Whether fund, campaign and appeal, where not 0, stand in the host's code lists; if not, the
/// first that is missing has been shown.
bool codesExist(std::int32_t fundId, std::int32_t campaignId, std::int32_t appealId);

} // namespace qmevents
