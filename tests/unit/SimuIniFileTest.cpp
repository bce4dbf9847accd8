#include "settings/cSimuIniFile.h"

#include <gtest/gtest.h>

#include "fakes/FakeRegistry.h"
#include "TestErrors.h"

namespace corvane::test {
namespace {

const std::wstring path = L"HKCU\\SOFTWARE\\Halvorn Systems\\CorvaneTo3CX";

class SimuIniFileTest : public testing::Test {
protected:
    SimuIniFileTest() {
        store.Scope = 1;
        store.Subkey = L"SOFTWARE\\Halvorn Systems";
        store.RootSpec = L"CorvaneTo3CX";
    }
    ~SimuIniFileTest() override { EXPECT_EQ(registry.openHandles, openHandlesLeft); }

    FakeRegistry registry;
    cSimuIniFile store{registry};
    int openHandlesLeft = 0;  // keys that could not be closed
};

TEST_F(SimuIniFileTest, ReadingAMissingPathGivesTheDefaultAndLeavesAnEmptyKey) {
    EXPECT_EQ(store.ReadProfileString(L"X", L"the default"), L"the default");

    ASSERT_TRUE(registry.keys.contains(path));
    EXPECT_TRUE(registry.keys[path].empty());
}

TEST_F(SimuIniFileTest, AMissingEntryOfAnExistingKeyGivesTheDefault) {
    registry.Store(path, L"Other", L"1");

    EXPECT_EQ(store.ReadProfileString(L"X", L"d"), L"d");
    EXPECT_EQ(registry.keys[path].size(), 1u);
}

TEST_F(SimuIniFileTest, AWrittenTextIsStoredWithItsTerminator) {
    EXPECT_EQ(store.WriteProfileString(L"X", L"abc"), L"");

    EXPECT_EQ(registry.keys[path][L"X"], std::wstring(L"abc\0", 4));
}

TEST_F(SimuIniFileTest, WritingReturnsTheTextHeldBefore) {
    store.WriteProfileString(L"X", L"abc");

    EXPECT_EQ(store.WriteProfileString(L"X", L"d"), L"abc");
    EXPECT_EQ(store.WriteProfileString(L"X", L""), L"d");
}

TEST_F(SimuIniFileTest, AWrittenTextReadsBackWithoutTerminatorOrBlank) {
    for (const wchar_t* text : {L"abc", L"", L" two  blanks ", L"a\tb"}) {
        store.WriteProfileString(L"X", text);
        EXPECT_EQ(store.ReadProfileString(L"X", L"default"), text);
    }
}

struct RawEntry {
    std::wstring stored;
    std::wstring read;
};

class RawEntryTest : public SimuIniFileTest, public testing::WithParamInterface<RawEntry> {};

TEST_P(RawEntryTest, IsReadAsText) {
    registry.StoreRaw(path, L"X", GetParam().stored);

    EXPECT_EQ(store.ReadProfileString(L"X", L"default"), GetParam().read);
}

INSTANTIATE_TEST_SUITE_P(
    StoredData, RawEntryTest,
    testing::Values(RawEntry{std::wstring(L"abc\0", 4), L"abc"}, RawEntry{L"abc", L"abc"},
                    RawEntry{std::wstring(L"\0", 1), L""}, RawEntry{L"", L"default"},
                    RawEntry{std::wstring(L"abc\0\0", 5), std::wstring(L"abc\0", 4)},
                    RawEntry{std::wstring(L"a\0b\0", 4), std::wstring(L"a\0b", 3)},
                    RawEntry{L"x", L"x"}));

TEST_F(SimuIniFileTest, EachScopeNamesItsRoot) {
    const std::pair<std::int32_t, std::wstring> roots[] = {
        {1, L"HKCU\\SOFTWARE\\Halvorn Systems\\CorvaneTo3CX"},
        {2, L"HKLM\\SOFTWARE\\Halvorn Systems\\CorvaneTo3CX"},
        {3, L"HKCR\\SOFTWARE\\Halvorn Systems\\CorvaneTo3CX"},
    };
    for (const auto& [scope, key] : roots) {
        store.Scope = scope;
        store.WriteProfileString(L"X", std::to_wstring(scope));
        EXPECT_EQ(registry.Stored(key, L"X"), std::to_wstring(scope));
    }
    EXPECT_EQ(registry.keys.size(), 3u);
}

TEST_F(SimuIniFileTest, WithoutAScopeEveryAccessFails) {
    for (const std::int32_t scope : {0, 4, -1}) {
        store.Scope = scope;
        EXPECT_EQ(ErrorOf([&] { store.ReadProfileString(L"X", L""); }).number, -2147191503);
        EXPECT_EQ(ErrorOf([&] { store.WriteProfileString(L"X", L"1"); }).number, -2147191503);
    }
    EXPECT_TRUE(registry.keys.empty());
}

TEST_F(SimuIniFileTest, AKeyThatCannotBeWrittenRaises) {
    registry.Store(path, L"X", L"old");
    registry.readOnlyKeys.insert(path);

    EXPECT_EQ(ErrorOf([&] { store.WriteProfileString(L"X", L"new"); }).number, -2147191503);
    EXPECT_EQ(registry.Stored(path, L"X"), L"old");
}

TEST_F(SimuIniFileTest, AValueThatCannotBeWrittenRaisesAndItsKeyIsClosed) {
    registry.failingValues.insert(L"X");

    EXPECT_EQ(ErrorOf([&] { store.WriteProfileString(L"X", L"new"); }).number, -2147191503);
}

TEST_F(SimuIniFileTest, AValueThatTellsItsSizeOnlyRaisesAndItsKeyIsClosed) {
    registry.Store(path, L"X", L"text");
    registry.unreadableValues.insert(L"X");

    EXPECT_EQ(ErrorOf([&] { store.ReadProfileString(L"X", L"default"); }).number, -2147191503);
}

TEST_F(SimuIniFileTest, APreviousTextThatCannotBeReadKeepsNothingFromBeingWritten) {
    registry.Store(path, L"X", L"old");
    registry.unreadableValues.insert(L"X");

    EXPECT_EQ(store.WriteProfileString(L"X", L"new"), L"");
    EXPECT_EQ(registry.Stored(path, L"X"), L"new");
}

TEST_F(SimuIniFileTest, AKeyThatCannotBeClosedRaisesWhenReading) {
    registry.Store(path, L"X", L"text");
    registry.closingFails = true;

    EXPECT_EQ(ErrorOf([&] { store.ReadProfileString(L"X", L""); }).number, -2147191503);
    openHandlesLeft = 1;
}

TEST_F(SimuIniFileTest, AnErrorIsNotLostToAKeyThatCannotBeClosed) {
    registry.failingValues.insert(L"X");
    registry.closingFails = true;

    const RuntimeError error = ErrorOf([&] { store.WriteProfileString(L"X", L"new"); });
    EXPECT_TRUE(error.description.starts_with(L"RegSetValueEx")) << error.description;
    openHandlesLeft = 2;
}

TEST_F(SimuIniFileTest, AKeyThatCannotBeClosedRaisesAfterTheValueWasWritten) {
    registry.closingFails = true;

    EXPECT_EQ(ErrorOf([&] { store.WriteProfileString(L"X", L"new"); }).number, -2147191503);
    EXPECT_EQ(registry.Stored(path, L"X"), L"new");
    openHandlesLeft = 2;  // of the reading before, and of the writing
}

TEST_F(SimuIniFileTest, BooleansAreWordsAndTypedReadersTakeNumbersToo) {
    EXPECT_TRUE(store.ReadProfileBoolean(L"X", true));
    EXPECT_FALSE(store.ReadProfileBoolean(L"X", false));
    for (const wchar_t* text : {L"True", L"true", L"1", L"-1"}) {
        registry.Store(path, L"X", text);
        EXPECT_TRUE(store.ReadProfileBoolean(L"X", false)) << std::wstring(text);
    }
    for (const wchar_t* text : {L"False", L"FALSE", L"0"}) {
        registry.Store(path, L"X", text);
        EXPECT_FALSE(store.ReadProfileBoolean(L"X", true)) << std::wstring(text);
    }
}

TEST_F(SimuIniFileTest, ABooleanWrittenToANewEntryMismatchesAfterTheWrite) {
    EXPECT_EQ(ErrorOf([&] { store.WriteProfileBoolean(L"X", true); }).number, 13);

    EXPECT_EQ(registry.Stored(path, L"X"), L"True");
}

TEST_F(SimuIniFileTest, ABooleanWrittenToAnOldEntryReturnsThePreviousOne) {
    registry.Store(path, L"X", L"False");

    EXPECT_FALSE(store.WriteProfileBoolean(L"X", true));
    EXPECT_EQ(registry.Stored(path, L"X"), L"True");
    EXPECT_TRUE(store.WriteProfileBoolean(L"X", false));
    EXPECT_EQ(registry.Stored(path, L"X"), L"False");
}

TEST_F(SimuIniFileTest, IntegersHaveSixteenBits) {
    EXPECT_EQ(store.ReadProfileInteger(L"X", -5), -5);
    EXPECT_EQ(ErrorOf([&] { store.WriteProfileInteger(L"X", 32767); }).number, 13);
    EXPECT_EQ(registry.Stored(path, L"X"), L"32767");
    EXPECT_EQ(store.WriteProfileInteger(L"X", -1), 32767);
    EXPECT_EQ(store.ReadProfileInteger(L"X", 0), -1);

    registry.Store(path, L"X", L"32768");
    EXPECT_EQ(ErrorOf([&] { store.ReadProfileInteger(L"X", 0); }).number, 6);
}

TEST_F(SimuIniFileTest, FloatsAreWrittenInTheirShortestForm) {
    EXPECT_EQ(store.ReadProfileFloat(L"X", 2.5), 2.5);
    EXPECT_EQ(ErrorOf([&] { store.WriteProfileFloat(L"X", 0.1); }).number, 13);
    EXPECT_EQ(registry.Stored(path, L"X"), L"0.1");
    EXPECT_EQ(store.WriteProfileFloat(L"X", 3), 0.1);
    EXPECT_EQ(registry.Stored(path, L"X"), L"3");
    EXPECT_EQ(store.ReadProfileFloat(L"X", 0), 3.0);
}

TEST(OwnSettingsStoreTest, TheProgramsOwnKeyIsTheUsers) {
    FakeRegistry registry;

    cSimuIniFile store = OwnSettingsStore(registry);

    EXPECT_EQ(store.Scope, 1);
    EXPECT_EQ(store.Subkey, L"SOFTWARE\\Halvorn Systems");
    EXPECT_EQ(store.RootSpec, L"CorvaneTo3CX");
}

}  // namespace
}  // namespace corvane::test
