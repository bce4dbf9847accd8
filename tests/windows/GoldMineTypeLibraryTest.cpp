#include "platform/goldmine/GoldMineTypeLibrary.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/kit/ComApartment.h"
#include "platform/kit/ComObject.h"
#include "support/windows/BuiltFiles.h"
#include "support/windows/ReplacedImport.h"
#include "support/windows/TemporaryFolder.h"
#include "unit/TestErrors.h"
#include "windows/AutomationServer.h"
#include "windows/RegistrySandbox.h"

namespace corvane::test {
namespace {

constexpr std::int32_t cannotCreateObject = 429;

std::wstring SystemFile(const wchar_t* name) {
    std::array<wchar_t, MAX_PATH> folder{};
    GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
    return std::wstring(folder.data()) + L"\\" + name;
}

class GoldMineTypeLibraryTest : public testing::Test {
protected:
    ComApartment apartment;
};

TEST_F(GoldMineTypeLibraryTest, ClassMethodAndEventAreFoundFromTheInterfaceIdAlone) {
    const LibraryRegistration registration(LibraryFlavour::Complete);

    const GoldMineIdentifiers found = ReadGoldMineTypeLibrary();

    // Another class stands before this one, with another event of the same name.
    EXPECT_TRUE(IsEqualCLSID(found.automationClass, askedClass));
    EXPECT_EQ(found.commandMethod, 77);
    EXPECT_TRUE(IsEqualIID(found.eventInterface, askEvents));
    EXPECT_EQ(found.windowUpDown, 41);
}

TEST_F(GoldMineTypeLibraryTest, ClassWithoutEventsStillTakesCommands) {
    const LibraryRegistration registration(LibraryFlavour::WithoutEvents);

    const GoldMineIdentifiers found = ReadGoldMineTypeLibrary();

    EXPECT_TRUE(IsEqualCLSID(found.automationClass, askedClass));
    EXPECT_EQ(found.commandMethod, 77);
    EXPECT_TRUE(IsEqualIID(found.eventInterface, IID_NULL));
    EXPECT_EQ(found.windowUpDown, DISPID_UNKNOWN);
}

TEST_F(GoldMineTypeLibraryTest, InterfaceMayBeADispatchInterfaceOnly) {
    const LibraryRegistration registration(LibraryFlavour::DispatchOnly);

    const GoldMineIdentifiers found = ReadGoldMineTypeLibrary();

    EXPECT_TRUE(IsEqualCLSID(found.automationClass, askedClass));
    EXPECT_EQ(found.commandMethod, 77);
    EXPECT_EQ(found.windowUpDown, 41);
}

TEST_F(GoldMineTypeLibraryTest, LibraryWithoutTheClassIsNoRegistration) {
    const LibraryRegistration registration(LibraryFlavour::WithoutClass);

    const RuntimeError error = ErrorOf([] { static_cast<void>(ReadGoldMineTypeLibrary()); });

    EXPECT_EQ(error.number, cannotCreateObject);
    EXPECT_EQ(error.description, L"ActiveX component can't create object");
}

class OtherRegistrationTest : public GoldMineTypeLibraryTest,
                              public testing::WithParamInterface<RegisteredAs> {};

TEST_P(OtherRegistrationTest, LibraryIsFoundWhereverItIsRegistered) {
    const LibraryRegistration registration(LibraryFlavour::Complete, GetParam());

    EXPECT_TRUE(IsEqualCLSID(ReadGoldMineTypeLibrary().automationClass, askedClass));
}

INSTANTIATE_TEST_SUITE_P(
    Registrations, OtherRegistrationTest,
    testing::Values(RegisteredAs{.language = L"409"}, RegisteredAs{.statedVersion = L"1.0"},
                    RegisteredAs{.statedVersion = L"3.0"},
                    RegisteredAs{.statedVersion = std::nullopt},
                    RegisteredAs{.statedVersion = L"new"},
                    RegisteredAs{.language = L"407", .statedVersion = L"1.0"}));

TEST_F(GoldMineTypeLibraryTest, WhatCannotBeLoadedIsPassedOver) {
    LibraryRegistration registration(LibraryFlavour::Complete,
                                     {.language = L"409", .statedVersion = L"3.0"});
    registration.Add(std::nullopt, L"3.0", L"0");
    registration.Add(std::nullopt, L"2.a", L"407");
    registration.Add(std::nullopt, L"junk", L"0");
    registration.Add(std::nullopt, L"2.a", L"HELPDIR");

    EXPECT_TRUE(IsEqualCLSID(ReadGoldMineTypeLibrary().automationClass, askedClass));
}

#ifdef _WIN64  // the 32-bit Wine of these tests has one view only
TEST_F(GoldMineTypeLibraryTest, LibraryIsFoundInTheViewOfTheOtherWordLength) {
    const LibraryRegistration registration(LibraryFlavour::Complete, {.view = L"Wow6432Node\\"});

    EXPECT_TRUE(IsEqualCLSID(ReadGoldMineTypeLibrary().automationClass, askedClass));
}
#endif

TEST_F(GoldMineTypeLibraryTest, AnotherLibraryIsPassedOver) {
    LibraryRegistration registration(LibraryFlavour::Complete, {.statedVersion = L"3.0"});
    registration.AddPath(SystemFile(L"kernel32.dll"), L"3.0", L"0");
    registration.AddPath(SystemFile(L"stdole2.tlb"), L"2.b", L"0");

    EXPECT_TRUE(IsEqualCLSID(ReadGoldMineTypeLibrary().automationClass, askedClass));
}

// Notes what is asked for instead of loading it.
std::vector<std::wstring> askedFor;
HRESULT WINAPI NoteOnly(LPCOLESTR path, REGKIND, ITypeLib**) {
    askedFor.emplace_back(path);
    return TYPE_E_CANTLOADLIBRARY;
}

class LibraryFileTest : public GoldMineTypeLibraryTest {
protected:
    LibraryFileTest() {
        askedFor.clear();
        folder.Write(L"class.sct", "<scriptlet/>");
        folder.Write(L"empty.tlb", "");
        CreateDirectoryW(folder.file(L"folder.tlb").c_str(), nullptr);
        // A relative name leads to it.
        folder.Write(L"gmw.tlb", "MSFT");
        SetCurrentDirectoryW(folder.path().c_str());
    }
    ~LibraryFileTest() override { SetCurrentDirectoryW(before.c_str()); }

    std::wstring before = std::filesystem::current_path();
    test_support::TemporaryFolder folder;
};

class NoLibraryFileTest : public LibraryFileTest,
                          public testing::WithParamInterface<const wchar_t*> {};

// Windows takes the name of what is no library for that of an object, and makes it.
TEST_P(NoLibraryFileTest, IsNotAskedFor) {
    LibraryRegistration registration(LibraryFlavour::Complete);
    std::wstring name = GetParam();
    if (const auto place = name.find(L'*'); place != std::wstring::npos)
        name.replace(place, 1, folder.path());
    registration.AddPath(name, L"2.a", L"0");
    const test_support::ReplacedImport noted("LoadTypeLibEx", &NoteOnly);

    EXPECT_EQ(ErrorOf([] { static_cast<void>(ReadGoldMineTypeLibrary()); }).number,
              cannotCreateObject);

    EXPECT_EQ(askedFor, std::vector<std::wstring>());
}

// "*" stands for the folder of the test.
INSTANTIATE_TEST_SUITE_P(Names, NoLibraryFileTest,
                         testing::Values(L"script:*\\class.sct",
                                         L"clsid:00024500-0000-0000-C000-000000000046",
                                         L"*\\class.sct", L"*\\class.sct\\1", L"*\\empty.tlb",
                                         L"*\\folder.tlb", L"*\\absent.tlb", L"*\\gmw.tlb!item",
                                         L"gmw.tlb", L".\\gmw.tlb", L"\\gmw.tlb", L"gmw.tlb\\1",
                                         L"\\", L"1", L""));

TEST_F(LibraryFileTest, AFileWithOneIsAskedForAsItIsRegistered) {
    LibraryRegistration registration(LibraryFlavour::Complete, {.language = L"409"});
    registration.AddPath(folder.file(L"gmw.tlb"), L"2.a", L"0");
    const test_support::ReplacedImport noted("LoadTypeLibEx", &NoteOnly);

    EXPECT_EQ(ErrorOf([] { static_cast<void>(ReadGoldMineTypeLibrary()); }).number,
              cannotCreateObject);

    ASSERT_GE(askedFor.size(), 2u);
    askedFor.resize(2);  // the same again in the other views
    EXPECT_EQ(askedFor, (std::vector<std::wstring>{folder.file(L"gmw.tlb"),
                                                   test_support::OwnProgram() + L"\\1"}));
}

TEST_F(GoldMineTypeLibraryTest, StatedVersionComesBeforeHigher) {
    LibraryRegistration registration(LibraryFlavour::Complete,
                                     {.language = L"409", .statedVersion = L"1.0"});
    registration.Add(LibraryFlavour::OlderVersion, L"1.0", L"409");

    EXPECT_EQ(ReadGoldMineTypeLibrary().windowUpDown, DISPID_UNKNOWN);
}

TEST_F(GoldMineTypeLibraryTest, HigherVersionComesBeforeLower) {
    LibraryRegistration registration(LibraryFlavour::Complete, {.statedVersion = L"3.0"});
    registration.Add(LibraryFlavour::OlderVersion, L"1.0", L"0");

    EXPECT_EQ(ReadGoldMineTypeLibrary().windowUpDown, windowUpDownEvent);
}

// A type that cannot be read at all.
class UnreadableType final : public ComObject<ITypeInfo> {
public:
    HRESULT STDMETHODCALLTYPE GetTypeAttr(TYPEATTR**) override { return E_FAIL; }
    HRESULT STDMETHODCALLTYPE GetTypeComp(ITypeComp**) override { return E_FAIL; }
    HRESULT STDMETHODCALLTYPE GetFuncDesc(UINT, FUNCDESC**) override { return E_FAIL; }
    HRESULT STDMETHODCALLTYPE GetVarDesc(UINT, VARDESC**) override { return E_FAIL; }
    HRESULT STDMETHODCALLTYPE GetNames(MEMBERID, BSTR*, UINT, UINT*) override { return E_FAIL; }
    HRESULT STDMETHODCALLTYPE GetRefTypeOfImplType(UINT, HREFTYPE*) override { return E_FAIL; }
    HRESULT STDMETHODCALLTYPE GetImplTypeFlags(UINT, INT*) override { return E_FAIL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(LPOLESTR*, UINT, MEMBERID*) override { return E_FAIL; }
    HRESULT STDMETHODCALLTYPE Invoke(PVOID, MEMBERID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        return E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE GetDocumentation(MEMBERID, BSTR*, BSTR*, DWORD*, BSTR*) override {
        return E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE GetDllEntry(MEMBERID, INVOKEKIND, BSTR*, BSTR*, WORD*) override {
        return E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE GetRefTypeInfo(HREFTYPE, ITypeInfo**) override { return E_FAIL; }
    HRESULT STDMETHODCALLTYPE AddressOfMember(MEMBERID, INVOKEKIND, PVOID*) override {
        return E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID, PVOID*) override { return E_FAIL; }
    HRESULT STDMETHODCALLTYPE GetMops(MEMBERID, BSTR*) override { return E_FAIL; }
    HRESULT STDMETHODCALLTYPE GetContainingTypeLib(ITypeLib**, UINT*) override { return E_FAIL; }
    void STDMETHODCALLTYPE ReleaseTypeAttr(TYPEATTR*) override {}
    void STDMETHODCALLTYPE ReleaseFuncDesc(FUNCDESC*) override {}
    void STDMETHODCALLTYPE ReleaseVarDesc(VARDESC*) override {}
};

// The complete library behind a type that is not handed out and one that cannot be read.
class DamagedLibrary final : public ComObject<ITypeLib> {
public:
    DamagedLibrary() {
        const std::wstring path = test_support::OwnProgram() + L"\\1";
        EXPECT_EQ(LoadTypeLibEx(path.c_str(), REGKIND_NONE, sound_.GetAddressOf()), S_OK);
    }
    UINT STDMETHODCALLTYPE GetTypeInfoCount() override { return 2 + sound_->GetTypeInfoCount(); }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, ITypeInfo** type) override {
        if (index == 0)
            return E_FAIL;
        if (index > 1)
            return sound_->GetTypeInfo(index - 2, type);
        *type = MakeComObject<UnreadableType>().Detach();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoType(UINT, TYPEKIND*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoOfGuid(REFGUID id, ITypeInfo** type) override {
        return sound_->GetTypeInfoOfGuid(id, type);
    }
    HRESULT STDMETHODCALLTYPE GetLibAttr(TLIBATTR**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeComp(ITypeComp**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetDocumentation(INT, BSTR*, BSTR*, DWORD*, BSTR*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE IsName(LPOLESTR, ULONG, WINBOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE FindName(LPOLESTR, ULONG, ITypeInfo**, MEMBERID*, USHORT*) override {
        return E_NOTIMPL;
    }
    void STDMETHODCALLTYPE ReleaseTLibAttr(TLIBATTR*) override {}

private:
    Microsoft::WRL::ComPtr<ITypeLib> sound_;
};

TEST_F(GoldMineTypeLibraryTest, TypesThatCannotBeReadArePassedOver) {
    const auto library = MakeComObject<DamagedLibrary>();
    EXPECT_TRUE(IsEqualCLSID(ReadGoldMineTypeLibrary(*library.Get()).automationClass, askedClass));
}

TEST_F(GoldMineTypeLibraryTest, MissingRegistrationIsThatTheObjectCannotBeCreated) {
    const RegistrySandbox empty(HKEY_CLASSES_ROOT);

    const RuntimeError error = ErrorOf([] { static_cast<void>(ReadGoldMineTypeLibrary()); });

    EXPECT_EQ(error.number, cannotCreateObject);
    EXPECT_EQ(error.description, L"ActiveX component can't create object");
}

}  // namespace
}  // namespace corvane::test
