#include "ui/form/Form.h"

#include <gtest/gtest.h>

#include <vector>

#include "fakes/FakeFormView.h"
#include "TestErrors.h"

namespace corvane::test {
namespace {

class FormTest : public testing::Test {
protected:
    // The indexes of the frames that are visible.
    [[nodiscard]] std::vector<int> VisibleFrames(const std::wstring& name) const {
        std::vector<int> visible;
        for (int tab = 0; FindControl(name, tab) != noControl; ++tab) {
            if (form.control(name, tab).visible())
                visible.push_back(tab);
        }
        return visible;
    }

    FakeFormView view;
    Form form{&view};
};

TEST_F(FormTest, EveryControlOfTheCatalogueIsThere) {
    ASSERT_EQ(form.controls().size(), controlCatalogue.size());
    for (std::size_t row = 0; row < controlCatalogue.size(); ++row) {
        ASSERT_NE(form.controls()[row], nullptr);
        EXPECT_EQ(form.controls()[row]->name(), controlCatalogue[row].name);
        EXPECT_EQ(form.controls()[row]->caption(), controlCatalogue[row].caption);
        EXPECT_EQ(form.controls()[row]->tooltip(), controlCatalogue[row].tip);
    }
}

TEST_F(FormTest, AtStartNothingIsShownChangedOrSelected) {
    EXPECT_FALSE(form.visible());
    EXPECT_FALSE(form.SettingsDirty);
    EXPECT_FALSE(form.GoldMineRunning);
    EXPECT_FALSE(form.GoldMineVersionOK);
    EXPECT_FALSE(form.NotesAreHTML);
    EXPECT_EQ(form.width(), 7570);
    EXPECT_EQ(form.txtStatus.text(), L"");
}

TEST_F(FormTest, SelectingAMemberClearsTheOthersOfItsGroup) {
    OptionButton* const members[] = {&form.optProcessStart, &form.optProcessConnect,
                                     &form.optProcessEnd};
    form.optPhone123.setSelected(true);
    for (OptionButton* chosen : members) {
        chosen->setSelected(true);
        for (const OptionButton* each : members)
            EXPECT_EQ(each->selected(), each == chosen) << each->name();
    }
    EXPECT_TRUE(form.optPhone123.selected()) << "of another group";
}

TEST_F(FormTest, DeselectingAMemberSelectsNoOther) {
    form.optPhone123.setSelected(true);

    form.optPhone123.setSelected(false);

    EXPECT_FALSE(form.optPhone1Only.selected());
    EXPECT_FALSE(form.optPhone123.selected());
}

TEST_F(FormTest, OptionsOfTheWindowAndOfItsTypeAreGroupsOfTheirOwn) {
    form.optOpenHistoryBeforeSaving.setSelected(true);
    form.optCompleteCallByType.setSelected(true);
    form.optPopNewWindow.setSelected(true);
    form.optPopOnInboundCallStart.setSelected(true);

    EXPECT_TRUE(form.optOpenHistoryBeforeSaving.selected());
    EXPECT_TRUE(form.optCompleteCallByType.selected());
    EXPECT_TRUE(form.optPopNewWindow.selected());
    EXPECT_TRUE(form.optPopOnInboundCallStart.selected());
}

TEST_F(FormTest, ClickingATabShowsItsFrameInsteadOfTheOneBefore) {
    EXPECT_EQ(VisibleFrames(L"frameOptions"), std::vector<int>{0});
    EXPECT_EQ(VisibleFrames(L"frameParams"), std::vector<int>{0});
    for (const int tab : {3, 5, 0, 4, 1, 2}) {
        form.SelectTab(form.tabstripOptions, tab);
        EXPECT_EQ(VisibleFrames(L"frameOptions"), std::vector<int>{tab});
        EXPECT_EQ(form.tabstripOptions.selectedTab(), tab);
    }
    EXPECT_EQ(VisibleFrames(L"frameParams"), std::vector<int>{0});
    for (const int tab : {1, 3, 2, 0}) {
        form.SelectTab(form.tabstripParams, tab);
        EXPECT_EQ(VisibleFrames(L"frameParams"), std::vector<int>{tab});
    }
    EXPECT_EQ(VisibleFrames(L"frameOptions"), std::vector<int>{2});
}

TEST_F(FormTest, ClickingTheShownTabChangesNothing) {
    form.SelectTab(form.tabstripOptions, 2);
    view = {};

    form.SelectTab(form.tabstripOptions, 2);

    EXPECT_EQ(VisibleFrames(L"frameOptions"), std::vector<int>{2});
    EXPECT_TRUE(view.changes.empty());
    EXPECT_EQ(view.windowChanges, 0);
}

TEST_F(FormTest, ATabThatIsNotThereChangesNothing) {
    for (const int tab : {-1, 6}) {
        form.SelectTab(form.tabstripOptions, tab);
        EXPECT_EQ(form.tabstripOptions.selectedTab(), 0);
        EXPECT_EQ(VisibleFrames(L"frameOptions"), std::vector<int>{0});
    }
}

TEST_F(FormTest, TheParametersButtonWidensTheWindow) {
    form.ToggleParams();

    EXPECT_EQ(form.width(), 13920);
    EXPECT_EQ(form.cmdParams.caption(), L"<< &Params");
    EXPECT_GT(view.windowChanges, 0);
}

TEST_F(FormTest, TheParametersButtonPressedTwiceNarrowsIt) {
    form.ToggleParams();
    form.ToggleParams();

    EXPECT_EQ(form.width(), 7800);
    EXPECT_EQ(form.cmdParams.caption(), L"&Params >>");

    form.ToggleParams();
    EXPECT_EQ(form.width(), 13920);
}

TEST_F(FormTest, OnlyOptionsMakeTheSettingsDirty) {
    form.txtCallerID.setText(L"555");
    form.txtStatus.Append(L"line");
    form.txtLogPath.setText(L"C:\\log");
    EXPECT_FALSE(form.SettingsDirty);

    form.txtCallerIDFormat.setText(L"#");
    EXPECT_TRUE(form.SettingsDirty);
}

TEST_F(FormTest, SettingWhatIsThereAlreadyIsNoChange) {
    form.txtCallerIDFormat.setText(L"#");
    form.chkFillInRef.setChecked(true);
    form.optPhone123.setSelected(true);
    form.SettingsDirty = false;
    view = {};

    form.txtCallerIDFormat.setText(L"#");
    form.chkFillInRef.setChecked(true);
    form.optPhone123.setSelected(true);

    EXPECT_FALSE(form.SettingsDirty);
    EXPECT_TRUE(view.changes.empty());
}

TEST_F(FormTest, ACheckBoxHasThreeStates) {
    for (const int state : {1, 2, 0}) {
        form.chkFillInRef.setValue(state);
        EXPECT_EQ(form.chkFillInRef.value(), state);
        EXPECT_EQ(form.chkFillInRef.checked(), state == 1);
    }
    for (const int state : {-1, 3}) {
        EXPECT_EQ(ErrorOf([&] { form.chkFillInRef.setValue(state); }).number, 380);
        EXPECT_EQ(form.chkFillInRef.value(), 0);
    }
}

TEST_F(FormTest, TheViewIsToldWhatChanged) {
    form.txtStatus.setText(L"one");
    form.txtStatus.Append(L"two");
    form.chkFillInRef.setChecked(true);
    form.cmdExit.setEnabled(false);
    form.cmdChangeLogLevel.setCaption(L"new");
    form.txtLogPath.setTooltip(L"tip");
    form.SetFocus(form.cmdExit);

    EXPECT_EQ(view.changes,
              (std::vector<FakeFormView::Change>{{L"txtStatus", ControlAspect::Text},
                                                 {L"txtStatus", ControlAspect::Appended},
                                                 {L"chkFillInRef", ControlAspect::Value},
                                                 {L"cmdExit", ControlAspect::Enabled},
                                                 {L"cmdChangeLogLevel", ControlAspect::Caption},
                                                 {L"txtLogPath", ControlAspect::Tooltip}}));
    EXPECT_EQ(view.focus, std::vector<std::wstring>{L"cmdExit"});
    EXPECT_EQ(form.txtStatus.text(), L"onetwo");
    EXPECT_EQ(form.focused(), &form.cmdExit);
}

TEST_F(FormTest, TheWaitPointerEndsWithItsScope) {
    {
        const WaitPointer pointer(form);
        EXPECT_TRUE(form.waiting());
    }
    EXPECT_FALSE(form.waiting());
}

}  // namespace
}  // namespace corvane::test
