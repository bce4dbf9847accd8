#include "environment/FileOpener.h"

#include <string>

#include "seams/FileSystem.h"
#include "seams/MessageBoxes.h"
#include "seams/Shell.h"
#include "ui/form/Form.h"
#include "util/Text.h"

namespace corvane {

FileOpener::FileOpener(Form& form, const FileSystem& files, Shell& shell, MessageBoxes& boxes)
    : form_(form), files_(files), shell_(shell), boxes_(boxes) {}

void FileOpener::OpenUserINI() {
    Open(form_.txtGoldMineUserIniPath, L"<user>.INI file", L"<user>.INI file does not exist");
}

void FileOpener::OpenGMINI() {
    Open(form_.txtGoldMineGMIniPath, L"GM.INI file", L"GM.INI file does not exist");
}

void FileOpener::OpenLog() {
    Open(form_.txtLogPath, L"log file",
         form_.chkWriteLog.checked()
             ? L"Log file does not exist."
             : L"Log file does not exist. In the Advanced box to the left, check \"Write Status "
               L"messages to a log file\".");
}

void FileOpener::OpenPluginLog() {
    Open(form_.txtCommandLineAPILogPath, L"log file",
         L"3CX Command Line API Plugin log file does not exist.");
}

void FileOpener::Open(const TextBox& path, std::wstring_view what, std::wstring_view missing) {
    if (!files_.FileExists(path.text())) {
        boxes_.Notify(missing);
        return;
    }
    constexpr int lastErrorResult = 32;
    const int result = shell_.OpenFile(path.text());
    if (result > lastErrorResult)
        return;
    boxes_.Notify(
        Join(L"Error ", std::to_wstring(result), L" opening ", what, L":", lineBreak, path.text()));
}

}  // namespace corvane
