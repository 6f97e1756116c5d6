// What the component writes into the registry and takes out again. Runs before anything needs it
// registered, and leaves nothing behind. The first argument is the component's file.

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "com/class_ids.h"
#include "com/guid.h"
#include "com/text.h"

namespace qmevents::com {
namespace {

std::wstring file;

// Every "key: value" below `path`, as "name=data" under the key's path.
void collect(HKEY hive, const std::wstring& path, std::set<std::wstring>& found)
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(hive, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
    found.insert(path);
    wchar_t name[512];
    for (DWORD i = 0;; ++i) {
        DWORD length = 512;
        wchar_t data[1024];
        DWORD size = sizeof data;
        if (RegEnumValueW(key, i, name, &length, nullptr, nullptr, reinterpret_cast<BYTE*>(data),
                          &size) != ERROR_SUCCESS) {
            break;
        }
        found.insert(path + L": " + name + L"=" + data);
    }
    for (DWORD i = 0;; ++i) {
        DWORD length = 512;
        if (RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr)) break;
        collect(hive, path + L"\\" + name, found);
    }
    RegCloseKey(key);
}

// What a hive has below Software\Classes that names us.
std::set<std::wstring> entriesIn(HKEY hive)
{
    const std::wstring classes = L"Software\\Classes\\";
    std::set<std::wstring> found;
    for (const auto& entry : creatableClasses) {
        collect(hive, classes + L"CLSID\\" + braced(entry.classId), found);
        collect(hive, classes + wide(entry.progId), found);
        collect(hive, classes + wide(entry.progId) + L".1", found);
    }
    collect(hive, classes + L"TypeLib\\" + braced(typeLibraryId), found);
    return found;
}

class Registration : public ::testing::Test {
protected:
    ~Registration() override { FreeLibrary(module); }

    HRESULT call(const char* name)
    {
        const auto entry = reinterpret_cast<void*>(GetProcAddress(module, name));
        return reinterpret_cast<HRESULT(WINAPI*)()>(entry)();
    }
    HRESULT install(BOOL install, const wchar_t* scope)
    {
        const auto entry = reinterpret_cast<void*>(GetProcAddress(module, "DllInstall"));
        return reinterpret_cast<HRESULT(WINAPI*)(BOOL, const wchar_t*)>(entry)(install, scope);
    }
    HMODULE module = LoadLibraryW(file.c_str());
};

TEST_F(Registration, OfMachineOrUserMayBeRepeatedAndIsRemovedWhole)
{
    for (int i = 0; i < 2; ++i) EXPECT_EQ(call("DllRegisterServer"), S_OK);
    const auto entries = entriesIn(HKEY_LOCAL_MACHINE);
    const std::wstring id = L"Software\\Classes\\CLSID\\{88D769E4-F065-40F2-B031-0F9113FA1BA6}";
    for (const std::wstring& expected :
         {id + L"\\InprocServer32: =" + file, id + L"\\InprocServer32: ThreadingModel=Apartment",
          id + L"\\ProgID: =QMEvents.Workflow.1",
          id + L"\\VersionIndependentProgID: =QMEvents.Workflow", id + L"\\Programmable",
          id + L"\\TypeLib: ={96DAB580-9275-4E8D-AC31-9195B2D164D1}",
          std::wstring(L"Software\\Classes\\QMEvents.Workflow\\CurVer: =QMEvents.Workflow.1"),
          std::wstring(L"Software\\Classes\\TypeLib\\{96DAB580-9275-4E8D-AC31-9195B2D164D1}\\1.0"
                       L"\\0\\win64: =") +
              file}) {
        EXPECT_TRUE(entries.contains(expected)) << utf8(expected);
    }
    EXPECT_TRUE(entriesIn(HKEY_CURRENT_USER).empty());
    for (int i = 0; i < 2; ++i) EXPECT_EQ(call("DllUnregisterServer"), S_OK);
    EXPECT_TRUE(entriesIn(HKEY_LOCAL_MACHINE).empty());

    for (int i = 0; i < 2; ++i) EXPECT_EQ(install(TRUE, L"user"), S_OK);
    EXPECT_EQ(entriesIn(HKEY_CURRENT_USER), entries);
    EXPECT_TRUE(entriesIn(HKEY_LOCAL_MACHINE).empty());
    for (int i = 0; i < 2; ++i) EXPECT_EQ(install(FALSE, L"user"), S_OK);
    EXPECT_TRUE(entriesIn(HKEY_CURRENT_USER).empty());
    EXPECT_EQ(install(TRUE, L"everyone"), E_INVALIDARG);
}

TEST_F(Registration, FallsBackToTheUserWhereTheMachineIsOutOfReach)
{
    // Below a volatile key nothing lasting can be made.
    HKEY refusing = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\QMEventsTest", 0, nullptr,
                              REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &refusing, nullptr),
              ERROR_SUCCESS);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, refusing);
    const HRESULT machine = install(TRUE, L"machine");
    const HRESULT either = call("DllRegisterServer");
    const auto entries = entriesIn(HKEY_CURRENT_USER);
    const HRESULT removed = call("DllUnregisterServer");
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegCloseKey(refusing);
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\QMEventsTest");
    EXPECT_TRUE(FAILED(machine));
    EXPECT_EQ(either, S_OK);
    EXPECT_FALSE(entries.empty());
    EXPECT_EQ(removed, S_OK);
    EXPECT_TRUE(entriesIn(HKEY_CURRENT_USER).empty());
}

TEST_F(Registration, SharesItsNamesWithTheOtherWordSize)
{
    // As a component of the other word size would stand there.
    const std::wstring other = L"Software\\Classes\\CLSID\\" + braced(creatableClasses[0].classId);
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, other.c_str(), 0, nullptr, 0,
                              KEY_WRITE | KEY_WOW64_32KEY, nullptr, &key, nullptr),
              ERROR_SUCCESS);
    RegCloseKey(key);
    EXPECT_EQ(call("DllRegisterServer"), S_OK);
    EXPECT_EQ(call("DllUnregisterServer"), S_OK);
    EXPECT_FALSE(entriesIn(HKEY_LOCAL_MACHINE).empty()) << "its names still lead somewhere";
    RegDeleteKeyExW(HKEY_LOCAL_MACHINE, other.c_str(), KEY_WOW64_32KEY, 0);
    EXPECT_EQ(call("DllUnregisterServer"), S_OK);
    EXPECT_TRUE(entriesIn(HKEY_LOCAL_MACHINE).empty());
}

} // namespace
} // namespace qmevents::com

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    qmevents::com::file = qmevents::com::wide(argv[1]);
    for (wchar_t& c : qmevents::com::file) c = c == L'/' ? L'\\' : c;
    return RUN_ALL_TESTS();
}
