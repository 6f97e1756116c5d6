#pragma once

#include <type_traits>

#include "core/host.h"
#include "core/record_lock.h"

namespace qmevents {

/// What an operation needs could not be read, which the read has reported; the operation ends
/// without a further message.
class AlreadyReported : public Error {
public:
    AlreadyReported() : Error(ErrorNumber::objectNotSet) {}
};

/// Shows `failure` as unexpected through the host's shell. Where even that fails, as before
/// `OnInitialize` or with a host that has no shell, throws `failure` itself: it is the cause.
void showUnexpected(const Error& failure);

/// Runs an operation that the host or a page called. A failure is reported through the host's
/// shell, with its message and nothing else, and gives an empty result. A refused lock, which the
/// host has reported itself, ends quietly.
template <typename Operation>
auto reported(Operation operation)
{
    using Result = std::invoke_result_t<Operation>;
    try {
        return operation();
    } catch (const LockRefused&) {
        // Told by the host.
    } catch (const AlreadyReported&) {
        // Told where it happened.
    } catch (const Error& error) {
        showUnexpected(error);
    }
    if constexpr (!std::is_void_v<Result>) return Result{};
}

/// Ends the texts that report a record as missing.
inline constexpr const char* deletedByAnotherUser = "It may have been deleted by another user.";
/// The line break inside the host's messages.
inline constexpr const char* lineBreak = "\r\n";

} // namespace qmevents
