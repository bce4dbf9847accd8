#include "check/report/MaskedText.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <vector>

#include "check/report/Masking.h"

namespace corvane {
namespace {

std::wstring Wide(const std::string& text) {
    return {text.begin(), text.end()};
}

std::wstring Masked(const std::wstring& text) {
    Masking masking;
    return MaskedText(text, masking);
}

bool IsHidden(const std::wstring& text) {
    return text.starts_with(L"(hidden: ");
}

// What stands for whatever tells of a person.
constexpr auto marks = {L"Quincy", L"QUINCY", L"5551234", L"123-4567", L"4567", L"0199"};

void ExpectNoMark(const std::wstring& masked, const std::string& of) {
    for (const wchar_t* mark : marks)
        EXPECT_EQ(masked.find(mark), std::wstring::npos) << of << "\n"
                                                         << testing::PrintToString(masked);
}

// The page's text with each part in braces filled in.
std::string Filled(std::string text) {
    const bool isNumbers = text.starts_with("Found ") || text.starts_with("Did not find ") ||
                           text.starts_with("Dialed ") || text.starts_with("Number to dial ") ||
                           text.starts_with("Call to number ");
    const std::string path = R"(C:\Users\Quincy\5551234567\Quincy 0199.wav)";
    const std::map<std::string, std::string> values = {
        {"command", text.starts_with("> COM")
                        ? "<GMAPI call=\"CallerID\"><data name=\"Notes\">Quincy 5551234567</data>"
                        : "\"" + path + "\" -cmd makecall:5551234567"},
        {"dashes", std::string(68, '-')},
        {"date", "11/21/2026 7:27:45 AM"},
        {"description", "Quincy's 5551234567 is not there"},
        {"digits", "5551234567"},
        {"folder", path},
        {"identifier", "00042"},
        {"moment", "connection"},
        {"name", text.starts_with("Setting ") ? "txtLinkedItemPath" : "Quincy 5551234567 (7).wav"},
        {"number", isNumbers ? "(555)123-4567" : "-2147191503"},
        {"parameters", "/N:E /C:5551234567 /T:I /I:00042 Quincy"},
        {"path", path},
        {"query", "select * where Phone = '5551234567' or Contact = 'Quincy'"},
        {"question",
         "Okay to add a DDEDial instruction to your GoldMine <user>.INI file? This is required"},
        {"reason", "Quincy 5551234567"},
        {"record", "Quincy 5551234567"},
        {"reply", "Quincy 5551234567"},
        {"seconds", "1,125"},
        {"step", "Fetch"},
        {"text", "Quincy 5551234567"},
        {"version", "2014.1"},
    };
    for (auto open = text.find('{'); open != std::string::npos; open = text.find('{', open)) {
        const auto close = text.find('}', open);
        const std::string& value = values.at(text.substr(open + 1, close - open - 1));
        text.replace(open, close - open + 1, value);
        open += value.size();
    }
    return text;
}

// A line that the program learns to write without a form of its own would be hidden.
TEST(MaskedText, KnowsEveryStatusLineAndNothingOfAPersonStays) {
    std::ifstream page(TROUBLESHOOTING);
    bool inLines = false;
    std::size_t rows = 0;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("## "))
            inLines = line == "## Status lines";
        if (!inLines || !line.starts_with("| `"))
            continue;
        const std::string text = Filled(line.substr(3, line.find("` |") - 3));
        const std::wstring masked = Masked(Wide(text));
        EXPECT_FALSE(IsHidden(masked)) << text;
        ExpectNoMark(masked, text);
        ++rows;
    }
    EXPECT_GT(rows, 100U) << TROUBLESHOOTING;
}

// All that the program writes when GoldMine fails.
TEST(MaskedText, KnowsTheLinesOfEveryFault) {
    std::ifstream matrix(FAULT_MATRIX);
    std::size_t lines = 0;
    for (std::string line; std::getline(matrix, line);) {
        const auto at = line.find("- ");
        // Some of the faults' texts stand there in short.
        const bool inShort = line.ends_with("(blank)") || line.find(" times ") != std::string::npos;
        if (!line.starts_with("    ") || at == std::string::npos || at > 7 || inShort)
            continue;
        EXPECT_FALSE(IsHidden(Masked(Wide(line.substr(at + 2))))) << line;
        ++lines;
    }
    EXPECT_GT(lines, 100U) << FAULT_MATRIX;
}

struct Example {
    const wchar_t* text;
    const wchar_t* masked;
};

TEST(MaskedText, ReplacesWhatDiffersInAText) {
    for (const auto& [text, masked] : std::vector<Example>{
             {L"Corvane 1.0.0.1 started with param(s): /N:E /C:5551234567 /T:I /I:00042.",
              L"Corvane 1.0.0.1 started with param(s): /N:E /C:########67 /T:I /I:00042."},
             {L"Corvane 1.0.0.1 started with param(s): (555) 123-4567.",
              L"Corvane 1.0.0.1 started with param(s): (###) ###-##67."},
             {L"Corvane 1.0.0.1 started with param(s): /N:Quincy /C:Ann /X:5551234567.",
              L"Corvane 1.0.0.1 started with param(s): /name-1:name-2 /C:name-3 "
              L"/name-4:########67."},
             {L"Inbound call search for CallerID:  call end event ignored.",
              L"Inbound call search for CallerID:  call end event ignored."},
             {L"Found Ann in Phone1 of the current record. in a primary contact record.",
              L"Found name-1 name-2 name-3# name-4 name-5 name-6 name-7. in a primary contact "
              L"record."},
             {L"Checked 3 files in \"C:\\Recordings\\Ann\" in 0.001 seconds.",
              L"Checked 3 files in \"C:\\Recordings\\name-1\" in 0.001 seconds."},
             {L"Run-time error '13':  LoadSettings: chkCreateHistory: Type mismatch",
              L"Run-time error '13':  LoadSettings: chkCreateHistory: Type mismatch"},
             {L"Run-time error '7':  ProcessCall: Ann: Type mismatch",
              L"Run-time error '7':  ProcessCall: (hidden: 18 characters)"},
             {L"> COM command > 1 second(s) (2.500 seconds): '<GMAPI "
              L"call=\"CallerID\"><data>5</data>",
              L"> COM command > 1 second(s) (2.500 seconds): '<GMAPI call=\"CallerID\"(hidden: 15 "
              L"characters)"},
             {L"Program crashed: exception 0xC0000005 in CorvaneTo3CX.exe at offset 0x00061000.",
              L"Program crashed: exception 0xC0000005 in CorvaneTo3CX.exe at offset 0x00061000."},
             {L"Most recent file is \"Ann (00042).wav\", modified 21.11.2026 07:27:45.",
              L"Most recent file is \"name-1 (#####).wav\", modified 21.11.2026 07:27:45."},
             {L"Most recent file is \"Ann.wav\", modified on a Monday.",
              L"Most recent file is \"name-1.wav\", modified (hidden: 11 characters)."},
             {L"process 17 says: The 3CX CRM Call Notifier is missing or empty. Please re-install "
              L"Corvane to 3CX.",
              L"process 17 says: The 3CX CRM Call Notifier is missing or empty. Please re-install "
              L"Corvane to 3CX."},
             {L"process 17 says: Ann", L"process 17 says: (hidden: 3 characters)"},
             {L"txtCOMDurationSeconds \"100\" is out of range; optPhone1Only \"Ann\" does not "
              L"convert",
              L"txtCOMDurationSeconds \"100\" is out of range; optPhone1Only \"(hidden: 3 "
              L"characters)\" does not convert"},
             {L"C:\\Ann: 12 files, the newest, Ann, 3 days ago.wav, 40 days ago",
              L"C:\\name-1: 12 files, the newest, name-2.wav, 40 days ago"},
             {L"D:\\Ann\\x.exe is not there", L"D:\\name-1\\name-2.exe is not there"},
         }) {
        EXPECT_EQ(Masked(text), masked);
    }
}

TEST(MaskedText, OfAnyOtherTextOnlyTheLengthIsTold) {
    EXPECT_EQ(Masked(L"Found Ann in the garden."), L"(hidden: 24 characters)");
    EXPECT_EQ(Masked(L"History creation:  5551234567"), L"(hidden: 29 characters)");
    EXPECT_EQ(Masked(L"History creation:  C:\\Ann"), L"(hidden: 25 characters)");
    EXPECT_EQ(Masked(L"Delaying adding link for 5551234567890 seconds."),
              L"(hidden: 47 characters)");
    EXPECT_EQ(Masked(L"Setting Ann holds characters that cannot be saved; they were saved as "
                     L"\"?\"."),
              L"(hidden: 74 characters)");
    EXPECT_EQ(Masked(L"Ann is not there"), L"(hidden: 16 characters)");
    EXPECT_EQ(Masked(L"Found " + std::wstring(5000, L'5') + L" in a primary contact record."),
              L"(hidden: 5035 characters)");
    EXPECT_EQ(Masked(L""), L"");
}

}  // namespace
}  // namespace corvane
