#pragma once

#include <string>
#include <string_view>

#include "automation/error.h"
#include "com/platform.h"

// Failures at the boundary. Inside they are exceptions, outside HRESULTs with an EXCEPINFO; no
// exception ever crosses.
namespace qmevents::com {

/// A call that is refused before it reaches any member, because of what the caller passed.
struct CallRefused {
    HRESULT result;
    UINT argument = 0; ///< Its place in the caller's array, for results that are about one.
    std::string description;
};

/// The HRESULT that scripts show as `number`; numbers that are HRESULTs already stay as they are.
HRESULT resultOf(int number);
/// Hands `error` to a caller: fills `info` if there is one, else this thread's error object.
HRESULT report(const Error& error, EXCEPINFO* info) noexcept;
/// Hands over the exception that is being handled.
HRESULT reportCurrent(EXCEPINFO* info, UINT* argument) noexcept;
/// `result`, with a description in this thread's error object for callers that look.
HRESULT refused(HRESULT result, std::string_view description) noexcept;
/// The answer to a call from another thread than the object's own.
HRESULT refusedOnThisThread() noexcept;

/// Runs `operation`, whose result is an HRESULT, and turns whatever it throws into one.
template <typename Operation>
HRESULT guarded(EXCEPINFO* info, UINT* argument, Operation operation) noexcept
{
    try {
        return operation();
    } catch (...) {
        return reportCurrent(info, argument);
    }
}

/// What a failed call to a host object says, freed with it.
class ReceivedException : public EXCEPINFO {
public:
    ReceivedException() noexcept : EXCEPINFO{} {}
    ReceivedException(const ReceivedException&) = delete;
    ReceivedException& operator=(const ReceivedException&) = delete;
    ~ReceivedException();
};

/// The failed call as an Error. `source` names the host's object, `member` what was called. For
/// DISP_E_EXCEPTION `info` tells the rest; otherwise `description`, when the host left one.
Error errorOf(HRESULT result, ReceivedException& info, const std::string& source,
              const std::string& member, const std::string& description);

} // namespace qmevents::com
