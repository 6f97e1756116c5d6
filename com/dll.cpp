// The component's entry points. They are called by COM and by the registration tool, so no
// exception leaves them.

#include <string>
#include <string_view>

#include "com/apartment.h"
#include "com/class_factory.h"
#include "com/errors.h"
#include "com/registration.h"

namespace {

using qmevents::com::Apartment;
using qmevents::com::guarded;
using qmevents::com::Scope;

std::wstring ownPath()
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                           GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&ownPath), &module);
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

// For every user of the machine, or for this one where the machine's part of the registry is out of
// reach.
HRESULT registerWhereAllowed()
{
    const std::wstring path = ownPath();
    const HRESULT machine = registerComponent(Scope::machine, path.c_str());
    if (SUCCEEDED(machine)) return machine;
    const HRESULT user = registerComponent(Scope::user, path.c_str());
    return SUCCEEDED(user) ? user : machine;
}

HRESULT unregisterEverywhere()
{
    const HRESULT user = unregisterComponent(Scope::user);
    const HRESULT machine = unregisterComponent(Scope::machine);
    return FAILED(machine) ? machine : user;
}

} // namespace

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, void** result)
{
    return qmevents::com::classFactory(classId, id, result);
}

STDAPI DllCanUnloadNow()
{
    return guarded(nullptr, nullptr, [] {
        const auto& apartment = Apartment::current();
        apartment->beginCall(); // makes up for releases that came on wrong threads
        apartment->endCall();
        return qmevents::com::ModuleUse::count == 0 ? S_OK : S_FALSE;
    });
}

STDAPI DllRegisterServer() { return guarded(nullptr, nullptr, registerWhereAllowed); }

STDAPI DllUnregisterServer() { return guarded(nullptr, nullptr, unregisterEverywhere); }

/// `commandLine` says for whom: "user", "machine", or nothing for the choice of DllRegisterServer.
STDAPI DllInstall(BOOL install, PCWSTR commandLine)
{
    return guarded(nullptr, nullptr, [&]() -> HRESULT {
        const std::wstring_view choice = commandLine ? commandLine : L"";
        if (choice.empty()) return install ? registerWhereAllowed() : unregisterEverywhere();
        if (choice != L"user" && choice != L"machine") return E_INVALIDARG;
        const Scope scope = choice == L"user" ? Scope::user : Scope::machine;
        if (!install) return unregisterComponent(scope);
        return registerComponent(scope, ownPath().c_str());
    });
}
