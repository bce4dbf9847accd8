#include "settings/SettingQuestions.h"

#include <gtest/gtest.h>

#include "OptionsFixture.h"
#include "TestErrors.h"

namespace corvane::test {
namespace {

const ShownBox reloadQuestion = {
    L"The program must be reloaded to re-enable the link between GoldMine and 3CX. Okay to save "
    L"your settings and exit? You can then re-start the program.",
    BoxButtons::YesNo, BoxIcon::None};
const ShownBox indexQuestion = {
    L"Has your system administrator added database indexes on the ContSupp.Phone and ContSupp.Fax "
    L"fields? This is required in order for this function to work efficiently.",
    BoxButtons::YesNo, BoxIcon::None};

// The parameter says whether the settings were dirty before the click.
class SettingQuestionsTest : public OptionsTest, public testing::WithParamInterface<bool> {
protected:
    SettingQuestionsTest() {
        LoadAsForUser();
        form.chkGlobalEnable.setChecked(false);
        form.SettingsDirty = GetParam();
    }
    // One question, answered so.
    void Expect(const ShownBox& question, BoxAnswer answer) {
        expected_.push_back(question);
        boxes.answers.push_back(answer);
    }
    ~SettingQuestionsTest() override {
        EXPECT_EQ(boxes.Take(), expected_);
        EXPECT_TRUE(boxes.answers.empty());
    }

    SettingQuestions questions{form, settings, boxes};

private:
    std::vector<ShownBox> expected_;
};

INSTANTIATE_TEST_SUITE_P(CleanOrDirty, SettingQuestionsTest, testing::Bool());

TEST_P(SettingQuestionsTest, SwitchingOffAsksNothing) {
    form.chkGlobalEnable.setChecked(true);
    form.SettingsDirty = GetParam();

    questions.ClickGlobalEnable();

    EXPECT_FALSE(form.chkGlobalEnable.checked());
    EXPECT_TRUE(form.SettingsDirty);
    EXPECT_FALSE(form.cmdDefaults.enabled());
    EXPECT_TRUE(form.cmdExit.enabled());
    EXPECT_EQ(view.closeRequests, 0);
}

TEST_P(SettingQuestionsTest, SwitchingOnSavesAndCloses) {
    Expect(reloadQuestion, BoxAnswer::Yes);

    questions.ClickGlobalEnable();

    EXPECT_TRUE(form.chkGlobalEnable.checked());
    EXPECT_EQ(Stored(L"chkGlobalEnable"), L"1");
    EXPECT_EQ(status.lines, (std::vector<std::wstring>{L"Settings saved."}));
    EXPECT_FALSE(form.SettingsDirty);
    EXPECT_EQ(view.closeRequests, 1);
}

TEST_P(SettingQuestionsTest, ANoLeavesTheSwitchOffAndTheFlagAsItWas) {
    Expect(reloadQuestion, BoxAnswer::No);

    questions.ClickGlobalEnable();

    EXPECT_FALSE(form.chkGlobalEnable.checked());
    EXPECT_EQ(form.SettingsDirty, GetParam());
    EXPECT_TRUE(registry.writes.empty());
    EXPECT_EQ(view.closeRequests, 0);
}

TEST_P(SettingQuestionsTest, AFailingSaveDoesNotClose) {
    Expect(reloadQuestion, BoxAnswer::Yes);
    registry.readOnlyKeys.insert(FakeRegistry::ownKey);

    EXPECT_EQ(ErrorOf([this] { questions.ClickGlobalEnable(); }).number, -2147191503);

    EXPECT_FALSE(form.chkGlobalEnable.checked());
    EXPECT_TRUE(form.SettingsDirty);
    EXPECT_EQ(view.closeRequests, 0);
}

TEST_P(SettingQuestionsTest, SearchingAdditionalContactsWantsAYes) {
    Expect(indexQuestion, BoxAnswer::Yes);

    questions.ClickSearchInAddlContacts();

    EXPECT_TRUE(form.chkSearchInAddlContacts.checked());
    EXPECT_TRUE(form.SettingsDirty);
}

TEST_P(SettingQuestionsTest, AnythingButYesUnchecksAndLeavesTheFlagAsItWas) {
    for (const BoxAnswer answer : {BoxAnswer::No, BoxAnswer::Cancel}) {
        Expect(indexQuestion, answer);

        questions.ClickSearchInAddlContacts();

        EXPECT_FALSE(form.chkSearchInAddlContacts.checked());
        EXPECT_EQ(form.SettingsDirty, GetParam());
    }
}

TEST_P(SettingQuestionsTest, UncheckingAdditionalContactsAsksNothing) {
    form.chkSearchInAddlContacts.setChecked(true);
    form.SettingsDirty = GetParam();

    questions.ClickSearchInAddlContacts();

    EXPECT_FALSE(form.chkSearchInAddlContacts.checked());
    EXPECT_TRUE(form.SettingsDirty);
}

}  // namespace
}  // namespace corvane::test
