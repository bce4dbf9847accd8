#include "settings/Settings.h"

#include <gtest/gtest.h>

#include <algorithm>

#include <vector>

#include "OptionsFixture.h"
#include "OptionsTable.h"
#include "TestErrors.h"

namespace corvane::test {
namespace {

using SettingsTest = OptionsTest;

// A text of the option's kind that is not its default.
std::wstring OtherThanDefault(const ExpectedOption& option) {
    switch (option.kind) {
        case OptionKind::Check:
            return option.defaultText == L"1" ? L"0" : L"1";
        case OptionKind::Choice:
            return option.defaultText == L"True" ? L"False" : L"True";
        default:
            return option.defaultText + L"7";
    }
}

TEST_F(SettingsTest, AFirstRunShowsTheDefaultsAndLeavesAnEmptyKey) {
    settings.LoadSettings();

    for (const ExpectedOption& option : ExpectedOptions())
        EXPECT_EQ(Shown(option.name), option.defaultText) << option.name;
    ASSERT_TRUE(registry.keys.contains(FakeRegistry::ownKey));
    EXPECT_TRUE(registry.keys[FakeRegistry::ownKey].empty());
    EXPECT_FALSE(form.SettingsDirty);
    EXPECT_EQ(registry.openHandles, 0);
}

class EachOptionTest : public OptionsTest, public testing::WithParamInterface<ExpectedOption> {};

TEST_P(EachOptionTest, IsLoadedFromItsEntry) {
    const std::wstring text = OtherThanDefault(GetParam());
    // A later selected member of its group would clear it.
    for (const ExpectedOption& option : ExpectedOptions()) {
        if (option.kind == OptionKind::Choice)
            Store(option.name, L"False");
    }
    Store(GetParam().name, text);

    settings.LoadSettings();

    EXPECT_EQ(Shown(GetParam().name), text);
    EXPECT_FALSE(form.SettingsDirty);
}

TEST_P(EachOptionTest, IsTrimmedWhenLoaded) {
    Store(GetParam().name, L"  " + GetParam().defaultText + L" ");

    settings.LoadSettings();

    EXPECT_EQ(Shown(GetParam().name), GetParam().defaultText);
}

TEST_P(EachOptionTest, IsSavedUnderItsNameAndLoadedAgain) {
    settings.LoadSettings();
    form.txtLinkedItemPath.setText(L"R:\\");
    const std::wstring text = OtherThanDefault(GetParam());
    Set(GetParam().name, text);

    ASSERT_TRUE(settings.SaveSettings());

    EXPECT_EQ(Stored(GetParam().name), text);
    Form later;
    Settings laterSettings{later, registry, status, boxes};
    laterSettings.LoadSettings();
    EXPECT_EQ(OptionText(later.control(GetParam().name)), text);
}

TEST_P(EachOptionTest, MakesTheSettingsDirtyWhenChanged) {
    settings.LoadSettings();

    Set(GetParam().name, OtherThanDefault(GetParam()));

    EXPECT_TRUE(form.SettingsDirty);
}

INSTANTIATE_TEST_SUITE_P(Catalogue, EachOptionTest, testing::ValuesIn(ExpectedOptions()));

TEST_F(SettingsTest, AStoredTextThatDoesNotConvertRaises) {
    for (const ExpectedOption& option : ExpectedOptions()) {
        if (option.kind == OptionKind::Text)
            continue;
        for (const wchar_t* text : {L"yes", L""}) {
            Store(option.name, text);
            EXPECT_EQ(ErrorOf([&] { settings.LoadSettings(); }).number, 13) << option.name;
        }
        Store(option.name, option.defaultText);
    }
}

TEST_F(SettingsTest, LoadingGoesInTheOrderOfTheCatalogue) {
    std::vector<std::wstring> expected;
    for (const ExpectedOption& option : ExpectedOptions()) {
        if (option.kind == OptionKind::Choice)
            continue;  // members of a group change each other
        Store(option.name, option.kind == OptionKind::Check ? L"1" : L"5");
        expected.push_back(option.name);
    }

    settings.LoadSettings();

    std::vector<std::wstring> changed = view.ChangedValues();
    std::erase_if(changed, [](const std::wstring& name) { return name.starts_with(L"opt"); });
    EXPECT_EQ(changed, expected);
}

TEST_F(SettingsTest, TheLaterOfTwoSelectedMembersWins) {
    Store(L"optProcessStart", L"True");
    Store(L"optProcessConnect", L"True");
    Store(L"optProcessEnd", L"True");

    settings.LoadSettings();

    EXPECT_FALSE(form.optProcessStart.selected());
    EXPECT_FALSE(form.optProcessConnect.selected());
    EXPECT_TRUE(form.optProcessEnd.selected());
}

TEST_F(SettingsTest, ALowerCaseWordLoads) {
    Store(L"optPhone123", L"false");

    settings.LoadSettings();

    EXPECT_FALSE(form.optPhone123.selected());
}

TEST_F(SettingsTest, LoadingRunsTheEnablingRulesAndAsksNothing) {
    Store(L"chkSearchInAddlContacts", L"1");
    Store(L"chkCreateLink", L"1");

    settings.LoadSettings();

    EXPECT_TRUE(form.chkSearchInAddlContacts.checked());
    EXPECT_TRUE(form.txtLinkedItemPath.enabled());
    EXPECT_FALSE(form.SettingsDirty);
    EXPECT_TRUE(boxes.Take().empty());
}

TEST_F(SettingsTest, TheLogsOptionIsNotLoadedWithTheOthers) {
    Store(L"chkWriteLog", L"1");

    settings.LoadSettings();

    EXPECT_FALSE(form.chkWriteLog.checked());
}

TEST_F(SettingsTest, AnUnreadableRegistryRaises) {
    registry.failingKeys.insert(FakeRegistry::ownKey);

    EXPECT_EQ(ErrorOf([&] { settings.LoadSettings(); }).number, -2147191503);
}

TEST_F(SettingsTest, SavingWritesAllEntriesInOrderAndSaysSo) {
    settings.LoadSettings();
    form.SettingsDirty = true;

    EXPECT_TRUE(settings.SaveSettings());

    std::vector<std::wstring> expected;
    for (const ExpectedOption& option : ExpectedOptions()) {
        expected.push_back(option.name);
        EXPECT_EQ(Stored(option.name), option.defaultText) << option.name;
    }
    expected.push_back(L"chkWriteLog");
    EXPECT_EQ(registry.writes, expected);
    EXPECT_EQ(status.lines, (std::vector<std::wstring>{L"Settings saved."}));
    EXPECT_FALSE(form.SettingsDirty);
}

TEST_F(SettingsTest, ASettingThatLosesCharactersIsNamed) {
    LoadAsForUser();
    form.txtLinkedItemPath.setText(L"C:\\\x0416");
    registry.codePage = [](const std::wstring& text) {
        std::wstring kept = text;
        std::replace_if(
            kept.begin(), kept.end(), [](wchar_t each) { return each > 255; }, L'?');
        return kept;
    };

    EXPECT_TRUE(settings.SaveSettings());

    EXPECT_EQ(Stored(L"txtLinkedItemPath"), L"C:\\?");
    EXPECT_EQ(status.lines, (std::vector<std::wstring>{
                                L"Setting txtLinkedItemPath holds characters that cannot be saved; "
                                L"they were saved as \"?\".",
                                L"Settings saved."}));
}

TEST_F(SettingsTest, TextsAreSavedAsTheyStand) {
    LoadAsForUser();
    form.txtCallerIDFormat.setText(L" ### ");

    EXPECT_TRUE(settings.SaveSettings());

    EXPECT_EQ(Stored(L"txtCallerIDFormat"), L" ### ");
}

TEST_F(SettingsTest, AGreyedBoxIsSavedAsTwo) {
    LoadAsForUser();
    form.chkFormatCallerID.setValue(2);

    EXPECT_TRUE(settings.SaveSettings());

    EXPECT_EQ(Stored(L"chkFormatCallerID"), L"2");
}

TEST_F(SettingsTest, ALinkWithoutAFolderIsNotSaved) {
    LoadAsForUser();
    form.chkCreateLink.setChecked(true);

    EXPECT_FALSE(settings.SaveSettings());

    EXPECT_EQ(boxes.Take(),
              (std::vector<ShownBox>{{L"Please specify a folder or uncheck \"add link\"",
                                      BoxButtons::Ok, BoxIcon::None}}));
    EXPECT_EQ(form.focused(), &form.txtLinkedItemPath);
    EXPECT_TRUE(registry.writes.empty());
    EXPECT_TRUE(status.lines.empty());
    EXPECT_TRUE(form.SettingsDirty);
}

TEST_F(SettingsTest, AFolderOfBlanksIsAFolder) {
    LoadAsForUser();
    form.chkCreateLink.setChecked(true);
    form.txtLinkedItemPath.setText(L" ");

    EXPECT_TRUE(settings.SaveSettings());
}

TEST_F(SettingsTest, TheFolderIsNotAskedForWhereItCannotBeTyped) {
    LoadAsForUser();
    form.chkCreateLink.setChecked(true);
    form.chkCreateHistory.setChecked(false);
    ASSERT_FALSE(form.txtLinkedItemPath.enabled());

    EXPECT_TRUE(settings.SaveSettings());

    EXPECT_EQ(Stored(L"chkCreateLink"), L"1");
}

TEST_F(SettingsTest, TheFolderIsNotAskedForWithoutALink) {
    LoadAsForUser();
    ASSERT_FALSE(form.chkCreateLink.checked());

    EXPECT_TRUE(settings.SaveSettings());
}

TEST_F(SettingsTest, AFailingWriteLeavesTheEarlierEntriesAndTheDirtyFlag) {
    LoadAsForUser();
    form.chkTrimOutboundPrefix.setChecked(false);
    registry.failingValues.insert(L"txtOutboundMaxLength");

    const RuntimeError error = ErrorOf([&] { static_cast<void>(settings.SaveSettings()); });

    EXPECT_EQ(error.number, -2147191503);
    EXPECT_EQ(registry.writes,
              (std::vector<std::wstring>{L"chkGlobalEnable", L"chkTrimOutboundPrefix"}));
    EXPECT_TRUE(form.SettingsDirty);
    EXPECT_TRUE(status.lines.empty());
}

TEST_F(SettingsTest, TheLogsOptionIsStoredRightAfterTheOthers) {
    LoadAsForUser();
    for (const bool on : {true, false}) {
        form.chkWriteLog.setChecked(on);
        registry.writes.clear();

        EXPECT_TRUE(settings.SaveSettings());

        EXPECT_EQ(registry.writes.size(), 40u);
        EXPECT_EQ(registry.writes.back(), L"chkWriteLog");
        EXPECT_EQ(Stored(L"chkWriteLog"), on ? L"1" : L"0");
    }
}

TEST_F(SettingsTest, ALogsOptionThatCannotBeStoredLeavesTheSettingsUnsaved) {
    LoadAsForUser();
    form.chkWriteLog.setChecked(true);
    registry.failingValues = {L"chkWriteLog"};

    const RuntimeError error = ErrorOf([this] { static_cast<void>(settings.SaveSettings()); });

    EXPECT_TRUE(error.description.starts_with(L"SaveSettings: chkWriteLog: RegSetValueEx"));
    EXPECT_TRUE(form.SettingsDirty);
    EXPECT_TRUE(status.lines.empty()) << "nor is it told as saved";
}

TEST_F(SettingsTest, TheLogsOptionIsNotLoadedAgain) {
    Store(L"chkWriteLog", L"yes");
    form.chkWriteLog.setChecked(true);

    settings.LoadSettings();

    EXPECT_TRUE(form.chkWriteLog.checked());
}

// Every option but the master switch differs from its default, the log's option too.
class RestoreDefaultsTest : public OptionsTest {
protected:
    RestoreDefaultsTest() {
        LoadAsForUser();
        for (const ExpectedOption& option : ExpectedOptions()) {
            if (option.kind != OptionKind::Choice)
                Set(option.name, OtherThanDefault(option));
        }
        form.optPhone1Only.setSelected(true);
        form.optPopOnInboundCallConnect.setSelected(true);
        form.optPopCurrentWindow.setSelected(true);
        form.optProcessEnd.setSelected(true);
        form.optOpenHistoryAfterSaving.setSelected(true);
        form.optCompleteUnscheduledCall.setSelected(true);
        form.chkWriteLog.setChecked(true);
        form.SettingsDirty = false;
    }
};

TEST_F(RestoreDefaultsTest, AllOptionsButTheMasterSwitchTakeTheirDefaults) {
    settings.RestoreDefaults();

    for (const ExpectedOption& option : ExpectedOptions()) {
        if (option.name == L"chkGlobalEnable")
            continue;
        EXPECT_EQ(Shown(option.name), option.defaultText) << option.name;
    }
    EXPECT_EQ(Shown(L"chkGlobalEnable"), L"0");
    EXPECT_FALSE(form.chkWriteLog.checked());
}

TEST_F(RestoreDefaultsTest, NothingIsAskedOrSavedAndTheSettingsAreDirty) {
    settings.RestoreDefaults();

    EXPECT_TRUE(registry.writes.empty());
    EXPECT_TRUE(boxes.Take().empty());
    EXPECT_TRUE(status.lines.empty());
    EXPECT_TRUE(form.SettingsDirty);
}

TEST_F(RestoreDefaultsTest, AnOldGoldMineKeepsPhone1OnlyAndNoOpenHistory) {
    form.GoldMineVersionOK = false;
    form.optPhone123.setSelected(true);
    form.chkAutoOpenHistory.setChecked(true);

    settings.RestoreDefaults();

    EXPECT_TRUE(form.optPhone1Only.selected());
    EXPECT_FALSE(form.optPhone123.selected());
    EXPECT_FALSE(form.chkAutoOpenHistory.checked());
    EXPECT_EQ(Shown(L"txtCOMDurationSeconds"), L"1");
}

TEST_F(RestoreDefaultsTest, TheOrderIsFixed) {
    view.changes.clear();

    settings.RestoreDefaults();

    std::vector<std::wstring> changed = view.ChangedValues();
    std::erase_if(changed, [](const std::wstring& name) { return name.starts_with(L"opt"); });
    EXPECT_EQ(changed, (std::vector<std::wstring>{L"chkTrimOutboundPrefix",
                                                  L"txtOutboundMaxLength",
                                                  L"chkSearchInAddlContacts",
                                                  L"chkFormatCallerID",
                                                  L"txtCallerIDFormat",
                                                  L"chkIgnoreShortCallerID",
                                                  L"txtCallerIDMinLength",
                                                  L"chkCallerIDIgnoreLeading1",
                                                  L"chkCallerIDRemoveSpaces",
                                                  L"chkPopOnInboundCall",
                                                  L"chkCreateHistory",
                                                  L"chkFillInRef",
                                                  L"chkAutoOpenHistory",
                                                  L"chkCreateLink",
                                                  L"txtLinkedItemPath",
                                                  L"chkDelayAddingLink",
                                                  L"txtDelayAddingLinkSeconds",
                                                  L"chkConfirmRecentRecordingFile",
                                                  L"txtRecordingFileMaxAgeSeconds",
                                                  L"chkConfirmLinkCallIdentifier",
                                                  L"chkAlwaysShowForm",
                                                  L"chkAutoProcess",
                                                  L"chkWriteLog",
                                                  L"chkLogCOMCalls",
                                                  L"txtCOMDurationSeconds"}));
}

}  // namespace
}  // namespace corvane::test
