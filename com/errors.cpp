#include "com/errors.h"

#include <array>
#include <cstdio>
#include <new>

#include "com/com_ptr.h"
#include "com/text.h"

namespace qmevents::com {
namespace {

// What scripts see as an error number is an HRESULT of this facility.
constexpr DWORD scriptErrors = 0x800A0000;

// HRESULTs that mean an Automation error; the others are passed on as they are.
struct Meaning {
    HRESULT result;
    int number;
    const char* text; // only where there is no standard text
};
constexpr Meaning meanings[] = {
    {DISP_E_UNKNOWNNAME, 438, nullptr},
    {DISP_E_MEMBERNOTFOUND, 438, nullptr},
    {DISP_E_TYPEMISMATCH, 13, nullptr},
    {DISP_E_OVERFLOW, 6, nullptr},
    {DISP_E_DIVBYZERO, 11, nullptr},
    {DISP_E_BADINDEX, 9, nullptr},
    {DISP_E_BADPARAMCOUNT, 450, nullptr},
    {DISP_E_PARAMNOTOPTIONAL, 449, nullptr},
    {DISP_E_PARAMNOTFOUND, 448, "Named argument not found"},
    {DISP_E_NONAMEDARGS, 446, "Object doesn't support named arguments"},
    {DISP_E_NOTACOLLECTION, 451, nullptr},
    {DISP_E_ARRAYISLOCKED, 10, "The array is locked by its owner"},
    {DISP_E_BADVARTYPE, 458, "Variable uses a type not supported"},
    {E_NOTIMPL, 445, "Object doesn't support this action"},
    {E_INVALIDARG, 5, nullptr},
    {E_ACCESSDENIED, 70, nullptr},
    {E_OUTOFMEMORY, 7, nullptr},
};

struct Explanation {
    HRESULT result;
    const char* text;
};
constexpr Explanation explanations[] = {
    {RPC_E_WRONG_THREAD, "The object belongs to another thread"},
    {RPC_E_DISCONNECTED, "The host's object is no longer there"},
    {RPC_E_SERVER_DIED, "The host's object is no longer there"},
    {RPC_E_CALL_REJECTED, "The host is busy and took no call"},
    {RPC_E_CANTCALLOUT_ININPUTSYNCCALL, "The host can be called from no input message"},
    {CO_E_OBJNOTCONNECTED, "The host's object is no longer there"},
    {CO_E_NOTINITIALIZED, "COM is not initialised on this thread"},
    {E_UNEXPECTED, "The host's object can no longer answer"},
    {E_POINTER, "A pointer was missing"},
    {E_NOINTERFACE, "The host's object lacks an interface"},
};

// The Automation number of an HRESULT, or the HRESULT itself.
int numberOf(HRESULT result)
{
    if ((static_cast<DWORD>(result) & 0xFFFF0000) == scriptErrors) return result & 0xFFFF;
    for (const auto& meaning : meanings) {
        if (meaning.result == result) return meaning.number;
    }
    return result;
}

std::string textOf(HRESULT result)
{
    for (const auto& meaning : meanings) {
        if (meaning.result != result) continue;
        return meaning.text ? std::string(meaning.text)
                            : std::string(standardText(static_cast<ErrorNumber>(meaning.number)));
    }
    for (const auto& explanation : explanations) {
        if (explanation.result == result) return explanation.text;
    }
    const int number = numberOf(result);
    if (number != result) {
        const std::string_view text = standardText(static_cast<ErrorNumber>(number));
        if (text != standardText(ErrorNumber{})) return std::string(text);
        return "The host's object failed with error " + std::to_string(number);
    }
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "The host's object failed with 0x%08lX",
                  static_cast<unsigned long>(result));
    return text.data();
}

// Texts of a failure are worth less than the failure: without memory it goes without them.
BSTR textOrNothing(std::string_view text) noexcept
{
    try {
        return Bstr(text).detach();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void leaveErrorObject(std::string_view source, std::string_view description) noexcept
{
    ComPtr<ICreateErrorInfo> creation;
    if (FAILED(CreateErrorInfo(creation.out()))) return;
    BSTR text = textOrNothing(description);
    creation->SetDescription(text);
    SysFreeString(text);
    text = textOrNothing(source);
    creation->SetSource(text);
    SysFreeString(text);
    if (const auto error = creation.as<IErrorInfo>(IID_IErrorInfo)) SetErrorInfo(0, error.get());
}

} // namespace

HRESULT resultOf(int number)
{
    if (number < 0) return number;
    if (number == 0 || number > 0xFFFF) return E_FAIL;
    return static_cast<HRESULT>(scriptErrors | static_cast<DWORD>(number));
}

HRESULT report(const Error& error, EXCEPINFO* info) noexcept
{
    if (!info) {
        leaveErrorObject(error.source(), error.what());
        return DISP_E_EXCEPTION;
    }
    *info = EXCEPINFO{};
    info->scode = resultOf(error.number());
    info->bstrSource = textOrNothing(error.source());
    info->bstrDescription = textOrNothing(error.what());
    return DISP_E_EXCEPTION;
}

HRESULT reportCurrent(EXCEPINFO* info, UINT* argument) noexcept
{
    try {
        throw;
    } catch (const CallRefused& refusal) {
        if (argument) *argument = refusal.argument;
        return refused(refusal.result, refusal.description);
    } catch (const Error& error) {
        return report(error, info);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const std::exception& failure) {
        try {
            return report(Error::with(ErrorNumber::internal, failure.what()), info);
        } catch (...) {
            return E_OUTOFMEMORY;
        }
    } catch (...) {
        return refused(E_UNEXPECTED, "Internal error of an unknown kind");
    }
}

HRESULT refused(HRESULT result, std::string_view description) noexcept
{
    leaveErrorObject("QMEvents", description);
    return result;
}

HRESULT refusedOnThisThread() noexcept
{
    return refused(RPC_E_WRONG_THREAD,
                   "The object belongs to another thread; have it marshalled to this one");
}

ReceivedException::~ReceivedException()
{
    SysFreeString(bstrSource);
    SysFreeString(bstrDescription);
    SysFreeString(bstrHelpFile);
}

Error errorOf(HRESULT result, ReceivedException& info, const std::string& source,
              const std::string& member, const std::string& description)
{
    const std::string called = source + "." + member;
    if (result != DISP_E_EXCEPTION) {
        return {numberOf(result), source,
                description.empty() ? textOf(result) + " (" + called + ")" : description};
    }
    if (info.pfnDeferredFillIn) info.pfnDeferredFillIn(&info);
    const int number = info.wCode != 0   ? info.wCode
                       : info.scode != 0 ? numberOf(info.scode)
                                         : static_cast<int>(ErrorNumber::internal);
    const std::string told = utf8(info.bstrDescription);
    const std::string from = utf8(info.bstrSource);
    return {number, from.empty() ? source : from,
            told.empty() ? textOf(resultOf(number)) + " (" + called + ")" : told};
}

} // namespace qmevents::com
