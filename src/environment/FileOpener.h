#pragma once

#include <string_view>

namespace corvane {

class FileSystem;
class Form;
class MessageBoxes;
class Shell;
class TextBox;

// The buttons that open an INI or log file with its associated program.
class FileOpener {
public:
    FileOpener(Form& form, const FileSystem& files, Shell& shell, MessageBoxes& boxes);

    void OpenUserINI();
    void OpenGMINI();
    void OpenLog();
    void OpenPluginLog();

private:
    void Open(const TextBox& path, std::wstring_view what, std::wstring_view missing);

    Form& form_;
    const FileSystem& files_;
    Shell& shell_;
    MessageBoxes& boxes_;
};

}  // namespace corvane
