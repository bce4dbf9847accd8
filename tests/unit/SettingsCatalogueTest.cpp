#include "settings/SettingsCatalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "OptionsTable.h"
#include "ui/form/ControlCatalogue.h"

namespace corvane::test {
namespace {

const ControlSpec* Find(std::wstring_view name) {
    const std::size_t row = FindControl(name);
    return row == noControl ? nullptr : &controlCatalogue[row];
}

ControlKind KindOf(OptionKind kind) {
    switch (kind) {
        case OptionKind::Check:
            return ControlKind::CheckBox;
        case OptionKind::Choice:
            return ControlKind::OptionButton;
        default:
            return ControlKind::TextBox;
    }
}

std::vector<std::wstring> NamesIn(const auto& order) {
    std::vector<std::wstring> names;
    for (const std::size_t row : order)
        names.emplace_back(controlCatalogue[row].name);
    return names;
}

std::set<std::wstring> NamesOf(const auto& order) {
    const std::vector<std::wstring> names = NamesIn(order);
    return {names.begin(), names.end()};
}

TEST(SettingsCatalogueTest, EverySavedNameIsAnOptionControl) {
    for (const std::size_t row : savedOptions)
        EXPECT_TRUE(controlCatalogue[row].has(ControlTrait::option)) << row;
}

TEST(SettingsCatalogueTest, EveryOptionControlIsSavedOrIsTheLogs) {
    std::set<std::wstring> known = NamesOf(savedOptions);
    EXPECT_EQ(known.size(), savedOptions.size()) << "a name stands twice";
    EXPECT_FALSE(known.contains(L"chkWriteLog"));
    known.insert(L"chkWriteLog");
    for (const ControlSpec& spec : controlCatalogue) {
        EXPECT_EQ(spec.has(ControlTrait::option), known.contains(std::wstring(spec.name)))
            << std::wstring(spec.name);
    }
}

TEST(SettingsCatalogueTest, AllButTheMasterSwitchAreRestored) {
    std::set<std::wstring> saved = NamesOf(savedOptions);
    saved.erase(L"chkGlobalEnable");
    saved.insert(L"chkWriteLog");

    const std::set<std::wstring> restored = NamesOf(restoredOptions);

    EXPECT_EQ(restored, saved);
    EXPECT_EQ(restored.size(), restoredOptions.size()) << "a name stands twice";
}

TEST(SettingsCatalogueTest, TheSavedOptionsStandInTheKnownOrder) {
    std::vector<std::wstring> expected;
    for (const ExpectedOption& option : ExpectedOptions())
        expected.push_back(option.name);

    EXPECT_EQ(NamesIn(savedOptions), expected);
    EXPECT_EQ(expected.size(), 39u);
}

TEST(SettingsCatalogueTest, TheRestoredOptionsStandInTheKnownOrder) {
    const std::vector<std::wstring> expected = {
        L"chkTrimOutboundPrefix",
        L"txtOutboundMaxLength",
        L"optPhone1Only",
        L"optPhone123",
        L"chkSearchInAddlContacts",
        L"chkFormatCallerID",
        L"txtCallerIDFormat",
        L"chkIgnoreShortCallerID",
        L"txtCallerIDMinLength",
        L"chkCallerIDIgnoreLeading1",
        L"chkCallerIDRemoveSpaces",
        L"optPopCurrentWindow",
        L"optPopNewWindow",
        L"chkPopOnInboundCall",
        L"optPopOnInboundCallStart",
        L"optPopOnInboundCallConnect",
        L"chkCreateHistory",
        L"optProcessStart",
        L"optProcessConnect",
        L"optProcessEnd",
        L"chkFillInRef",
        L"chkAutoOpenHistory",
        L"optOpenHistoryBeforeSaving",
        L"optCompleteCallByType",
        L"optCompleteScheduledCall",
        L"optCompleteUnscheduledCall",
        L"optOpenHistoryAfterSaving",
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
        L"txtCOMDurationSeconds",
    };

    EXPECT_EQ(NamesIn(restoredOptions), expected);
}

TEST(SettingsCatalogueTest, TheLogsOptionIsOffByDefault) {
    const ControlSpec* spec = Find(L"chkWriteLog");

    ASSERT_NE(spec, nullptr);
    EXPECT_EQ(spec->kind, ControlKind::CheckBox);
    EXPECT_EQ(spec->tag, L"0");
    EXPECT_EQ(spec->caption, L"Write Status messages to a log file");
}

class OptionTest : public testing::TestWithParam<ExpectedOption> {};

TEST_P(OptionTest, HasItsKindDefaultAndCaption) {
    const ControlSpec* spec = Find(GetParam().name);

    ASSERT_NE(spec, nullptr);
    EXPECT_EQ(spec->kind, KindOf(GetParam().kind));
    EXPECT_EQ(spec->tag, GetParam().defaultText);
    EXPECT_EQ(spec->caption, GetParam().caption);
}

INSTANTIATE_TEST_SUITE_P(Catalogue, OptionTest, testing::ValuesIn(ExpectedOptions()));

// Groups of options that exclude each other, in the order of the catalogue.
const std::vector<std::set<std::wstring>> optionGroups = {
    {L"optPhone1Only", L"optPhone123"},
    {L"optPopOnInboundCallStart", L"optPopOnInboundCallConnect"},
    {L"optPopCurrentWindow", L"optPopNewWindow"},
    {L"optProcessStart", L"optProcessConnect", L"optProcessEnd"},
    {L"optOpenHistoryBeforeSaving", L"optOpenHistoryAfterSaving"},
    {L"optCompleteCallByType", L"optCompleteScheduledCall", L"optCompleteUnscheduledCall"},
};

TEST(SettingsCatalogueTest, OptionsExcludeEachOtherWithinTheirGroups) {
    for (const ControlSpec& one : controlCatalogue) {
        if (one.kind != ControlKind::OptionButton)
            continue;
        const std::wstring name(one.name);
        const auto group = std::find_if(optionGroups.begin(), optionGroups.end(),
                                        [&](const auto& each) { return each.contains(name); });
        ASSERT_NE(group, optionGroups.end()) << name;
        for (const ControlSpec& other : controlCatalogue) {
            if (other.kind != ControlKind::OptionButton)
                continue;
            EXPECT_EQ(one.group == other.group, group->contains(std::wstring(other.name)))
                << name << L" and " << std::wstring(other.name);
        }
    }
}

TEST(SettingsCatalogueTest, EveryGroupHasExactlyOneSelectedDefault) {
    for (const auto& group : optionGroups) {
        EXPECT_EQ(
            std::count_if(group.begin(), group.end(),
                          [](const std::wstring& name) { return Find(name)->tag == L"True"; }),
            1)
            << *group.begin();
    }
}

}  // namespace
}  // namespace corvane::test
