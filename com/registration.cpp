#include "com/registration.h"

#include <string>
#include <vector>

#include "com/class_ids.h"
#include "com/guid.h"
#include "com/text.h"

namespace qmevents::com {
namespace {

constexpr REGSAM otherWordSize = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
constexpr const wchar_t* platformName = sizeof(void*) == 8 ? L"win64" : L"win32";
constexpr const wchar_t* otherPlatformName = sizeof(void*) == 8 ? L"win32" : L"win64";

// One value to be written; its key comes into being with it.
struct Entry {
    std::wstring key;
    const wchar_t* name; // null for the key's own value
    std::wstring value;
};

class Key {
public:
    Key() = default;
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key()
    {
        if (key_) RegCloseKey(key_);
    }
    LSTATUS create(HKEY parent, const std::wstring& path)
    {
        return RegCreateKeyExW(parent, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key_,
                               nullptr);
    }
    LSTATUS open(HKEY parent, const std::wstring& path, REGSAM access)
    {
        return RegOpenKeyExW(parent, path.c_str(), 0, access, &key_);
    }
    HKEY get() const { return key_; }

private:
    HKEY key_ = nullptr;
};

HKEY hiveOf(Scope scope)
{
    return scope == Scope::machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

std::wstring classesPath(const std::wstring& key) { return L"Software\\Classes\\" + key; }

std::wstring classKey(const CreatableClass& entry) { return L"CLSID\\" + braced(entry.classId); }

std::wstring libraryKey() { return L"TypeLib\\" + braced(typeLibraryId); }

std::wstring libraryVersion()
{
    return std::to_wstring(typeLibraryMajor) + L"." + std::to_wstring(typeLibraryMinor);
}

void addClass(std::vector<Entry>& entries, const CreatableClass& entry, const std::wstring& path)
{
    const std::wstring description = wide(entry.description);
    const std::wstring progId = wide(entry.progId);
    const std::wstring versioned = progId + L"." + std::to_wstring(typeLibraryMajor);
    const std::wstring id = braced(entry.classId);
    const std::wstring key = classKey(entry);
    const Entry lines[] = {
        {key, nullptr, description},
        {key + L"\\InprocServer32", nullptr, path},
        {key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
        {key + L"\\ProgID", nullptr, versioned},
        {key + L"\\VersionIndependentProgID", nullptr, progId},
        {key + L"\\TypeLib", nullptr, braced(typeLibraryId)},
        {key + L"\\Version", nullptr, libraryVersion()},
        {key + L"\\Programmable", nullptr, L""},
        {progId, nullptr, description},
        {progId + L"\\CLSID", nullptr, id},
        {progId + L"\\CurVer", nullptr, versioned},
        {versioned, nullptr, description},
        {versioned + L"\\CLSID", nullptr, id},
    };
    entries.insert(entries.end(), std::begin(lines), std::end(lines));
}

std::vector<Entry> entriesFor(const std::wstring& path)
{
    std::vector<Entry> entries;
    for (const auto& entry : creatableClasses) addClass(entries, entry, path);
    const std::wstring version = libraryKey() + L"\\" + libraryVersion();
    entries.push_back({version, nullptr, wide(componentName)});
    entries.push_back({version + L"\\0\\" + platformName, nullptr, path});
    entries.push_back({version + L"\\FLAGS", nullptr, L"0"});
    entries.push_back({version + L"\\HELPDIR", nullptr, path.substr(0, path.rfind(L'\\'))});
    return entries;
}

LSTATUS write(HKEY hive, const Entry& entry)
{
    Key key;
    if (const LSTATUS status = key.create(hive, classesPath(entry.key)); status != ERROR_SUCCESS) {
        return status;
    }
    const auto bytes = static_cast<DWORD>((entry.value.size() + 1) * sizeof(wchar_t));
    return RegSetValueExW(key.get(), entry.name, 0, REG_SZ,
                          reinterpret_cast<const BYTE*>(entry.value.c_str()), bytes);
}

bool exists(HKEY hive, const std::wstring& key, REGSAM view = 0)
{
    Key opened;
    return opened.open(hive, classesPath(key), KEY_READ | view) == ERROR_SUCCESS;
}

// Removes a key with all below it; remembers the first failure in `outcome`.
void remove(HKEY hive, const std::wstring& key, LSTATUS& outcome)
{
    const std::wstring path = classesPath(key);
    LSTATUS status = RegDeleteTreeW(hive, path.c_str());
    if (status == ERROR_SUCCESS) {
        // Some systems leave the emptied key itself.
        const LSTATUS itself = RegDeleteKeyW(hive, path.c_str());
        status = itself == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : itself;
    }
    if (status == ERROR_FILE_NOT_FOUND || outcome != ERROR_SUCCESS) return;
    outcome = status;
}

} // namespace

HRESULT registerComponent(Scope scope, const wchar_t* path)
{
    for (const Entry& entry : entriesFor(path)) {
        const LSTATUS status = write(hiveOf(scope), entry);
        if (status == ERROR_SUCCESS) continue;
        unregisterComponent(scope);
        return HRESULT_FROM_WIN32(static_cast<DWORD>(status));
    }
    return S_OK;
}

HRESULT unregisterComponent(Scope scope)
{
    const HKEY hive = hiveOf(scope);
    LSTATUS outcome = ERROR_SUCCESS;
    for (const auto& entry : creatableClasses) {
        remove(hive, classKey(entry), outcome);
        if (exists(hive, classKey(entry), otherWordSize)) continue;
        const std::wstring progId = wide(entry.progId);
        remove(hive, progId, outcome);
        remove(hive, progId + L"." + std::to_wstring(typeLibraryMajor), outcome);
    }
    const std::wstring platforms = libraryKey() + L"\\" + libraryVersion() + L"\\0\\";
    remove(hive, platforms + platformName, outcome);
    if (!exists(hive, platforms + otherPlatformName)) remove(hive, libraryKey(), outcome);
    return outcome == ERROR_SUCCESS ? S_OK : HRESULT_FROM_WIN32(static_cast<DWORD>(outcome));
}

} // namespace qmevents::com
