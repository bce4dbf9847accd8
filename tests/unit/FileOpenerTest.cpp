#include "environment/FileOpener.h"

#include <gtest/gtest.h>

#include "fakes/FakeFiles.h"
#include "fakes/FakeMessageBoxes.h"
#include "ui/form/Form.h"

namespace corvane::test {
namespace {

struct OpenButton {
    TextBox& (*path)(Form&);
    void (FileOpener::*open)();
    std::wstring what;
    std::wstring missing;
};

class FileOpenerTest : public testing::TestWithParam<OpenButton> {
protected:
    FileOpenerTest() { GetParam().path(form).setText(L"C:\\a b.txt"); }
    void Open() { (opener.*GetParam().open)(); }

    FakeFileSystem files;
    FakeShell shell;
    FakeMessageBoxes boxes;
    Form form;
    FileOpener opener{form, files, shell, boxes};
};

TEST_P(FileOpenerTest, TheFileIsOpenedWithItsProgram) {
    files.files[L"C:\\a b.txt"];
    shell.openResult = 33;
    Open();
    EXPECT_EQ(shell.opened, std::vector<std::wstring>{L"C:\\a b.txt"});
}

TEST_P(FileOpenerTest, AMissingFileIsTold) {
    Open();
    EXPECT_TRUE(shell.opened.empty());
    EXPECT_EQ(boxes.Take(), ShownBoxes{Notice(GetParam().missing)});
}

TEST_P(FileOpenerTest, WhoHasTheLogOnIsNotToldToSwitchItOn) {
    form.chkWriteLog.setChecked(true);
    Open();
    const bool isLog = GetParam().open == &FileOpener::OpenLog;
    EXPECT_EQ(boxes.Take(),
              ShownBoxes{Notice(isLog ? L"Log file does not exist." : GetParam().missing)});
}

TEST_P(FileOpenerTest, AShellResultUpTo32IsAnError) {
    files.files[L"C:\\a b.txt"];
    for (const int result : {0, 31, 32}) {
        shell.openResult = result;
        Open();
        EXPECT_EQ(boxes.Take(),
                  ShownBoxes{Notice(L"Error " + std::to_wstring(result) + L" opening " +
                                    GetParam().what + L":\r\nC:\\a b.txt")});
    }
}

INSTANTIATE_TEST_SUITE_P(
    Buttons, FileOpenerTest,
    testing::Values(
        OpenButton{[](Form& form) -> TextBox& { return form.txtGoldMineUserIniPath; },
                   &FileOpener::OpenUserINI, L"<user>.INI file", L"<user>.INI file does not exist"},
        OpenButton{[](Form& form) -> TextBox& { return form.txtGoldMineGMIniPath; },
                   &FileOpener::OpenGMINI, L"GM.INI file", L"GM.INI file does not exist"},
        OpenButton{[](Form& form) -> TextBox& { return form.txtLogPath; }, &FileOpener::OpenLog,
                   L"log file",
                   L"Log file does not exist. In the Advanced box to the left, check \"Write "
                   L"Status messages to a log file\"."},
        OpenButton{[](Form& form) -> TextBox& { return form.txtCommandLineAPILogPath; },
                   &FileOpener::OpenPluginLog, L"log file",
                   L"3CX Command Line API Plugin log file does not exist."}));

}  // namespace
}  // namespace corvane::test
