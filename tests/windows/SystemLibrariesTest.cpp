#include "platform/kit/SystemLibraries.h"

#include <gtest/gtest.h>

namespace corvane::test {
namespace {

bool IsFoundByName(const wchar_t* library) {
    const HMODULE module = LoadLibraryW(library);
    if (module)
        FreeLibrary(module);
    return module != nullptr;
}

TEST(SystemLibrariesTest, ADllBesideTheProgramIsNotFoundByItsNameAnyMore) {
    constexpr const wchar_t* beside = L"unready_html_engine.dll";
    ASSERT_TRUE(IsFoundByName(beside));

    LoadFromSystemFolderOnly();

    EXPECT_FALSE(IsFoundByName(beside));
    EXPECT_TRUE(IsFoundByName(L"version.dll"));
}

TEST(SystemLibrariesTest, AFunctionThatThisWindowsLacksIsNone) {
    EXPECT_NE(SystemFunction<FARPROC>(L"kernel32.dll", "GetTickCount64"), nullptr);
    EXPECT_EQ(SystemFunction<FARPROC>(L"kernel32.dll", "GetTickCount65"), nullptr);
    EXPECT_EQ(SystemFunction<FARPROC>(L"no such.dll", "GetTickCount64"), nullptr);
    // Of the system folder only.
    EXPECT_EQ(SystemFunction<FARPROC>(L"unready_html_engine.dll", "DllGetClassObject"), nullptr);
}

}  // namespace
}  // namespace corvane::test
