#include "com/type_library.h"

#include <string>

#include "com/com_ptr.h"

namespace qmevents::com {
namespace {

// Path of the file that this code was loaded from, or nothing when the system does not say.
std::wstring ownPath()
{
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCWSTR>(&ownPath), &module)) {
        return {};
    }
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

// The system keeps a library in memory while someone holds a part of it, so asking for it each
// time costs little and leaves nothing of ours to let go of when the component is unloaded.
HRESULT findType(const std::wstring& name, ITypeInfo** info)
{
    if (!info) return E_POINTER;
    *info = nullptr;
    ComPtr<ITypeLib> library;
    const HRESULT loaded = LoadTypeLibEx(ownPath().c_str(), REGKIND_NONE, library.out());
    if (FAILED(loaded)) return loaded;
    // Not by FindName, which may give up at a member that has the type's name.
    const UINT count = library->GetTypeInfoCount();
    for (UINT i = 0; i < count; ++i) {
        BSTR candidate = nullptr;
        const HRESULT read =
            library->GetDocumentation(static_cast<INT>(i), &candidate, nullptr, nullptr, nullptr);
        if (FAILED(read)) return read;
        const bool isIt = candidate && name == candidate;
        SysFreeString(candidate);
        if (isIt) return library->GetTypeInfo(i, info);
    }
    return TYPE_E_ELEMENTNOTFOUND;
}

HRESULT findTypeOf(const wchar_t* prefix, std::string_view className, ITypeInfo** info) noexcept
{
    try {
        return findType(prefix + std::wstring(className.begin(), className.end()), info);
    } catch (...) { // only memory can run out here
        return E_OUTOFMEMORY;
    }
}

} // namespace

HRESULT typeInfoOf(std::string_view className, ITypeInfo** info) noexcept
{
    return findTypeOf(L"_", className, info);
}

HRESULT classInfoOf(std::string_view className, ITypeInfo** info) noexcept
{
    return findTypeOf(L"", className, info);
}

} // namespace qmevents::com
