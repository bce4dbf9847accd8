#pragma once

#include <string>
#include <string_view>

namespace corvane {

class FileSystem;
class Form;
class IniFiles;
class Macro;
class MessageBoxes;
class StatusWriter;
enum class BoxIcon;

// Finds GoldMine's INI files, learns whether notes are HTML, and, with the user's consent at each
// step, routes GoldMine's dialing to this program.
class GoldMineIniSetup {
public:
    GoldMineIniSetup(Form& form, Macro& macro, FileSystem& files, IniFiles& iniFiles,
                     StatusWriter& status, MessageBoxes& boxes);

    // True only when all is set up; a refused or failed step ends it at once.
    [[nodiscard]] bool Run();

    // Asks GoldMine where its INI files are and for its user, and reads how it keeps notes. False
    // when the user's file is not found; the user has been told.
    [[nodiscard]] bool FindIniFiles();

    // What the user's file says by now.
    [[nodiscard]] bool KnowsModem() const;
    [[nodiscard]] bool DialsThroughUs() const;
    [[nodiscard]] bool DialsAsEntered() const;
    [[nodiscard]] std::wstring DialingInstruction() const;
    // That dials through us.
    [[nodiscard]] std::wstring OwnDialingInstruction() const;

private:
    void LearnWhetherNotesAreHTML(const std::wstring& gmIniPath);
    [[nodiscard]] bool DefineDummyModem();
    [[nodiscard]] bool DefineDialingInstruction();
    [[nodiscard]] bool DialNumbersAsEntered();

    // Tells why the set-up ends, in a box and a status line.
    [[nodiscard]] bool Fail(std::wstring_view text, BoxIcon icon);
    void WriteReason(std::wstring_view text);
    [[nodiscard]] std::wstring ReadModem(std::wstring_view key) const;
    // Writes after the user's Yes; false when refused or failed.
    [[nodiscard]] bool WriteModem(std::wstring_view question, std::wstring_view key,
                                  std::wstring_view value, std::wstring_view failure);

    // What the user's file held before this program ever changed it.
    void KeepCopy();

    Form& form_;
    Macro& macro_;
    FileSystem& files_;
    IniFiles& iniFiles_;
    StatusWriter& status_;
    MessageBoxes& boxes_;
    bool wroteValue_ = false;
};

}  // namespace corvane
