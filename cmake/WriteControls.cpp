// Writes the table of controls as text, built and run by the build itself on the building machine:
//   controls   name, control id and kind of each, separated by tabs, for user-interface tests and
//              support
//   settings   the page on the stored options, docs/settings.md
//   reg        a registry file with the defaults, to be edited and given out

#include <cstdio>
#include <string>
#include <string_view>

#include "settings/SettingsCatalogue.h"

namespace {

using namespace corvane;

// Every text of the table is plain ASCII.
std::string Narrow(std::wstring_view text) {
    std::string narrow;
    for (const wchar_t each : text)
        narrow += static_cast<char>(each);
    return narrow;
}

const char* NameOf(ControlKind kind) {
    switch (kind) {
        case ControlKind::Label:
            return "label";
        case ControlKind::TextBox:
            return "text box";
        case ControlKind::CheckBox:
            return "check box";
        case ControlKind::OptionButton:
            return "option button";
        case ControlKind::CommandButton:
            return "button";
        case ControlKind::Frame:
            return "frame";
        case ControlKind::TabStrip:
            return "tab strip";
    }
    return "";
}

// Members of a control array carry their index: lblParam(13).
std::string FullName(const ControlSpec& spec) {
    int members = 0;
    for (const ControlSpec& other : controlCatalogue)
        members += other.name == spec.name ? 1 : 0;
    const std::string name = Narrow(spec.name);
    return members > 1 ? name + "(" + std::to_string(spec.index) + ")" : name;
}

void WriteControls() {
    std::puts("name\tid\tkind");
    for (std::size_t row = 0; row < controlCount; ++row) {
        std::printf("%s\t%d\t%s\n", FullName(controlCatalogue[row]).c_str(), ControlId(row),
                    NameOf(controlCatalogue[row].kind));
    }
}

std::string Code(std::wstring_view text) {
    return text.empty() ? std::string() : "`" + Narrow(text) + "`";
}

// What may be stored, as the option's control takes it.
std::string Values(const ControlSpec& option) {
    switch (option.kind) {
        case ControlKind::CheckBox:
            return "`0`, `1`";
        case ControlKind::OptionButton:
            return "`True`, `False`";
        default:
            break;
    }
    if (!option.number)
        return "any text";
    if (option.number->anyNumber)
        return "any number";
    return std::to_string(option.number->lowest) + " to " + std::to_string(option.number->highest);
}

std::string UsableWith(const ControlSpec& option) {
    std::string condition = Code(option.enabledBy);
    if (option.has(ControlTrait::needsGoldMine67))
        condition += std::string(condition.empty() ? "" : ", ") + "GoldMine 6.7";
    return condition;
}

// The caption; of a box without one, that of the check box before it.
std::wstring_view CaptionOf(std::size_t row) {
    const ControlSpec& option = controlCatalogue[row];
    return option.kind == ControlKind::TextBox ? controlCatalogue[row - 1].caption : option.caption;
}

void WriteSetting(std::size_t row) {
    const ControlSpec& option = controlCatalogue[row];
    std::printf("| `%s` | %s | %s | %s | %s | %s |\n", Narrow(option.name).c_str(),
                Values(option).c_str(), Code(option.tag).c_str(), UsableWith(option).c_str(),
                Narrow(CaptionOf(row)).c_str(), Narrow(option.tip).c_str());
}

void WriteSettings() {
    std::puts(
        "# Settings\n\n"
        "Each option is a text (REG_SZ) under `HKEY_CURRENT_USER\\SOFTWARE\\Halvorn "
        "Systems\\CorvaneTo3CX`.\nA value that is missing counts as its default. The build writes "
        "this page from the program's own\ntable of controls.\n\n"
        "| Value | Values | Default | Usable with | Caption | What it does |\n"
        "|---|---|---|---|---|---|");
    for (const std::size_t row : savedOptions)
        WriteSetting(row);
    WriteSetting(FindControl(L"chkWriteLog"));
    std::puts(
        "\nThe same key holds two values of the log's own, which are not to be given out to "
        "others:\n"
        "`PreviousStatus` (the run number) and `LastVersionRun`.");
}

// A registry file is UTF-16, so that folders may be written into it in every language.
void WriteUtf16(std::string_view ascii) {
    for (const char each : ascii) {
        if (each == '\n')
            WriteUtf16("\r");
        std::putchar(each);
        std::putchar('\0');
    }
}

std::string Escaped(std::wstring_view text) {
    std::string escaped;
    for (const char each : Narrow(text)) {
        if (each == '\\' || each == '"')
            escaped += '\\';
        escaped += each;
    }
    return escaped;
}

void WriteRegistryEntry(std::size_t row) {
    const ControlSpec& option = controlCatalogue[row];
    WriteUtf16("\n; " + Narrow(CaptionOf(row)) + "\n\"" + Narrow(option.name) + "\"=\"" +
               Escaped(option.tag) + "\"\n");
}

void WriteRegistryFile() {
    std::fputs("\xFF\xFE", stdout);
    WriteUtf16(
        "Windows Registry Editor Version 5.00\n\n"
        "; The default settings of Corvane to 3CX. What you do not want to prescribe, take out.\n"
        "; A backslash is written twice.\n\n"
        "[HKEY_CURRENT_USER\\SOFTWARE\\Halvorn Systems\\CorvaneTo3CX]\n");
    for (const std::size_t row : savedOptions)
        WriteRegistryEntry(row);
    WriteRegistryEntry(FindControl(L"chkWriteLog"));
}

}  // namespace

// WriteControls <what> <file>
int main(int count, char** arguments) {
    const std::string_view wanted = count == 3 ? arguments[1] : "";
    // The same bytes on every building machine.
    if (wanted.empty() || !std::freopen(arguments[2], "wb", stdout)) {
        std::fputs("usage: WriteControls controls|settings|reg <file>\n", stderr);
        return 2;
    }
    if (wanted == "controls")
        WriteControls();
    else if (wanted == "settings")
        WriteSettings();
    else if (wanted == "reg")
        WriteRegistryFile();
    else
        return 2;
    return std::fclose(stdout) == 0 ? 0 : 1;
}
