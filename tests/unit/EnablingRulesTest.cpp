#include "ui/form/EnablingRules.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "fakes/FakeFormView.h"
#include "ui/form/Form.h"

namespace corvane::test {
namespace {

// The controls that rules look at. One bit each makes every combination.
const std::vector<std::wstring> controlling = {
    L"chkTrimOutboundPrefix",
    L"chkIgnoreShortCallerID",
    L"chkPopOnInboundCall",
    L"chkCreateHistory",
    L"chkCreateLink",
    L"chkDelayAddingLink",
    L"chkAutoOpenHistory",
    L"chkConfirmRecentRecordingFile",
    L"optOpenHistoryBeforeSaving",
    L"chkAlwaysShowForm",
};

// One dependency: the control can be used when its controlling control can be used and is on.
struct Dependency {
    std::wstring control;
    std::wstring on;
};

// Parents stand before their children. A control that is not named can always be used.
const std::vector<Dependency> dependencies = {
    {L"txtOutboundMaxLength", L"chkTrimOutboundPrefix"},
    {L"txtCallerIDMinLength", L"chkIgnoreShortCallerID"},
    {L"optPopOnInboundCallStart", L"chkPopOnInboundCall"},
    {L"optPopOnInboundCallConnect", L"chkPopOnInboundCall"},
    {L"optProcessStart", L"chkCreateHistory"},
    {L"optProcessConnect", L"chkCreateHistory"},
    {L"optProcessEnd", L"chkCreateHistory"},
    {L"chkFillInRef", L"chkCreateHistory"},
    {L"chkAutoOpenHistory", L"chkCreateHistory"},
    {L"chkCreateLink", L"chkCreateHistory"},
    {L"txtLinkedItemPath", L"chkCreateLink"},
    {L"chkDelayAddingLink", L"chkCreateLink"},
    {L"lblDelayAddingLinkSeconds", L"chkCreateLink"},
    {L"chkConfirmRecentRecordingFile", L"chkCreateLink"},
    {L"lblRecordingFileMaxAgeSeconds", L"chkCreateLink"},
    {L"chkConfirmLinkCallIdentifier", L"chkCreateLink"},
    {L"txtDelayAddingLinkSeconds", L"chkDelayAddingLink"},
    {L"txtRecordingFileMaxAgeSeconds", L"chkConfirmRecentRecordingFile"},
    {L"optOpenHistoryBeforeSaving", L"chkAutoOpenHistory"},
    {L"optOpenHistoryAfterSaving", L"chkAutoOpenHistory"},
    {L"optCompleteScheduledCall", L"optOpenHistoryBeforeSaving"},
    {L"optCompleteUnscheduledCall", L"optOpenHistoryBeforeSaving"},
    {L"chkAutoProcess", L"chkAlwaysShowForm"},
};

// These need GoldMine 6.7, whatever the boxes say.
const std::set<std::wstring> needRecentGoldMine = {L"chkAutoOpenHistory", L"optPhone123"};

bool IsOn(const Control& control) {
    return control.spec().kind == ControlKind::CheckBox
               ? static_cast<const CheckBox&>(control).checked()
               : static_cast<const OptionButton&>(control).selected();
}

void SetOn(Control& control, bool on) {
    if (control.spec().kind == ControlKind::CheckBox) {
        static_cast<CheckBox&>(control).setChecked(on);
    } else {
        static_cast<OptionButton&>(control).setSelected(on);
    }
}

using Usable = std::map<std::wstring, bool>;

// Which controls can be used while the master switch is on.
Usable ExpectedUsable(const Form& form) {
    Usable usable;
    for (const Control* control : form.controls()) {
        usable[control->name()] =
            form.GoldMineVersionOK || !needRecentGoldMine.contains(control->name());
    }
    for (const Dependency& dependency : dependencies) {
        if (!usable[dependency.on] || !IsOn(form.control(dependency.on)))
            usable[dependency.control] = false;
    }
    return usable;
}

// "name: is" for every control whose state is not the expected one.
std::vector<std::wstring> Deviations(const Form& form, const Usable& expected) {
    std::vector<std::wstring> deviations;
    for (const Control* control : form.controls()) {
        if (control->enabled() != expected.at(control->name())) {
            deviations.push_back(control->name() +
                                 (control->enabled() ? L" is enabled" : L" is disabled"));
        }
    }
    return deviations;
}

class EnablingRulesTest : public testing::TestWithParam<bool> {
protected:
    EnablingRulesTest() {
        form.GoldMineVersionOK = GetParam();
        form.chkGlobalEnable.setChecked(true);
        RunAllEnablingRules(form);
    }

    FakeFormView view;
    Form form{&view};
};

INSTANTIATE_TEST_SUITE_P(OldAndRecentGoldMine, EnablingRulesTest, testing::Bool());

// Gray code: each step clicks one box, and every combination comes up once.
TEST_P(EnablingRulesTest, EveryCombinationIsReachedByClicks) {
    const unsigned combinations = 1u << controlling.size();
    unsigned state = 0;
    for (unsigned step = 0; step < combinations; ++step) {
        const unsigned next = step ^ (step >> 1);
        for (std::size_t bit = 0; bit < controlling.size(); ++bit) {
            if (((next ^ state) >> bit) & 1u)
                SetOn(form.control(controlling[bit]), (next >> bit) & 1u);
        }
        state = next;
        ASSERT_EQ(Deviations(form, ExpectedUsable(form)), std::vector<std::wstring>{})
            << "combination " << state;
    }
}

TEST_P(EnablingRulesTest, EveryCombinationIsReachedByRunningAllRules) {
    const unsigned combinations = 1u << controlling.size();
    for (unsigned state = 0; state < combinations; ++state) {
        for (std::size_t bit = 0; bit < controlling.size(); ++bit)
            SetOn(form.control(controlling[bit]), (state >> bit) & 1u);
        const Usable expected = ExpectedUsable(form);
        for (const Dependency& dependency : dependencies)
            form.control(dependency.control).setEnabled(!expected.at(dependency.control));
        form.optPhone123.setEnabled(!expected.at(L"optPhone123"));
        RunAllEnablingRules(form);
        ASSERT_EQ(Deviations(form, expected), std::vector<std::wstring>{})
            << "combination " << state;
    }
}

TEST_P(EnablingRulesTest, TheMasterSwitchLeavesOnlyTheNeededControlsUsable) {
    for (int tab = 0; tab < 6; ++tab) {
        Form fresh;
        fresh.GoldMineVersionOK = GetParam();
        fresh.chkGlobalEnable.setChecked(true);
        fresh.SelectTab(fresh.tabstripOptions, tab);

        fresh.chkGlobalEnable.setChecked(false);

        for (const Control* control : fresh.controls()) {
            const std::wstring& name = control->name();
            const bool usable = (name == L"frameOptions" && control->spec().index == tab) ||
                                name == L"frameGlobal" || name == L"chkGlobalEnable" ||
                                name == L"cmdSaveSettings" || name == L"cmdExit";
            EXPECT_EQ(control->enabled(), usable) << name << L" " << control->spec().index;
        }
    }
}

TEST_P(EnablingRulesTest, WhatTheMasterSwitchLeavesUsableIsNotTouched) {
    form.chkAlwaysShowForm.setChecked(false);
    view.changes.clear();

    form.chkGlobalEnable.setChecked(false);
    RunEnablingRulesOnActivation(form);

    for (const FakeFormView::Change& change : view.changes) {
        if (change.aspect == ControlAspect::Enabled) {
            EXPECT_NE(change.control, L"frameGlobal");
            EXPECT_NE(change.control, L"chkGlobalEnable");
            EXPECT_NE(change.control, L"cmdSaveSettings");
            EXPECT_NE(change.control, L"cmdExit");
        }
    }
}

TEST_P(EnablingRulesTest, ActivationKeepsADisabledProgramDisabled) {
    form.chkAlwaysShowForm.setChecked(true);
    form.chkGlobalEnable.setChecked(false);

    RunEnablingRulesOnActivation(form);

    EXPECT_FALSE(form.chkAutoProcess.enabled());
    EXPECT_TRUE(form.cmdExit.enabled());
}

TEST_P(EnablingRulesTest, ActivationRunsTheRuleOfAlwaysShowing) {
    form.chkAlwaysShowForm.setChecked(true);
    form.chkAutoProcess.setEnabled(false);

    RunEnablingRulesOnActivation(form);
    EXPECT_TRUE(form.chkAutoProcess.enabled());

    form.chkAlwaysShowForm.setChecked(false);
    form.chkAutoProcess.setEnabled(true);
    RunEnablingRulesOnActivation(form);
    EXPECT_FALSE(form.chkAutoProcess.enabled());
}

TEST_P(EnablingRulesTest, UncheckingHistoryDisablesTheWholeChain) {
    for (const std::wstring& name : controlling)
        SetOn(form.control(name), true);

    form.chkCreateHistory.setChecked(false);

    for (const wchar_t* name :
         {L"chkCreateLink", L"txtLinkedItemPath", L"chkDelayAddingLink",
          L"txtDelayAddingLinkSeconds", L"lblDelayAddingLinkSeconds",
          L"chkConfirmRecentRecordingFile", L"txtRecordingFileMaxAgeSeconds",
          L"lblRecordingFileMaxAgeSeconds", L"chkConfirmLinkCallIdentifier"}) {
        EXPECT_FALSE(form.control(name).enabled()) << std::wstring(name);
    }
    EXPECT_TRUE(form.chkCreateLink.checked());
    EXPECT_TRUE(form.chkDelayAddingLink.checked());
}

TEST_P(EnablingRulesTest, ChoosingToOpenAfterSavingDisablesTheTypesOfCall) {
    SetOn(form.chkCreateHistory, true);
    SetOn(form.chkAutoOpenHistory, true);
    form.optOpenHistoryBeforeSaving.setSelected(true);
    EXPECT_EQ(form.optCompleteScheduledCall.enabled(), GetParam());

    form.optOpenHistoryAfterSaving.setSelected(true);

    EXPECT_FALSE(form.optCompleteScheduledCall.enabled());
    EXPECT_FALSE(form.optCompleteUnscheduledCall.enabled());
    EXPECT_TRUE(form.optCompleteCallByType.enabled());
}

}  // namespace
}  // namespace corvane::test
