#include <cstring>

#include "WindowTest.h"

namespace end_to_end {
namespace {

struct FieldCase {
    const char* name;
    const char* field;
    int tab;
    const wchar_t* refused;
    const char* message;
    const wchar_t* accepted;
};

void PutOnClipboard(HWND window, const std::wstring& text) {
    ASSERT_TRUE(WaitUntil([&] { return OpenClipboard(window) != 0; }));
    EmptyClipboard();
    const size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    std::memcpy(GlobalLock(memory), text.c_str(), bytes);
    GlobalUnlock(memory);
    EXPECT_NE(SetClipboardData(CF_UNICODETEXT, memory), nullptr);  // the clipboard's from now on
    CloseClipboard();
}

class WindowFieldsTest : public WindowTest {};

class FieldCheckTest : public WindowTest, public testing::WithParamInterface<FieldCase> {};

TEST_P(FieldCheckTest, KeepsTheFocusUntilTheTextIsRight) {
    const FieldCase& each = GetParam();
    CloseGoldMine();
    Set("chkCreateLink", "1");
    Set("txtLinkedItemPath", "C:\\");
    ProgramRun run = Start("");
    const HWND window = Show(run);
    SelectTab(window, "tabstripOptions", each.tab);

    Focus(window, each.field);
    Type(window, each.field, each.refused);
    Focus(window, "cmdExit");
    run.Answer("OK");
    EXPECT_TRUE(HasFocus(window, each.field));
    Type(window, each.field, each.accepted);
    Focus(window, "cmdExit");
    EXPECT_TRUE(HasFocus(window, "cmdExit"));

    CloseAndDiscard(run, window, {{each.message}});
}

INSTANTIATE_TEST_SUITE_P(
    Fields, FieldCheckTest,
    testing::Values(FieldCase{"OutboundLength", "txtOutboundMaxLength", 0, L"21",
                              "Please enter a numeric value from 1 to 20", L"20"},
                    FieldCase{"CallerIDLength", "txtCallerIDMinLength", 1, L"0",
                              "Please enter a numeric value from 1 to 20", L"1"},
                    FieldCase{"Delay", "txtDelayAddingLinkSeconds", 2, L"abc",
                              "Please provide a numeric value in seconds", L"1000"},
                    FieldCase{"RecordingAge", "txtRecordingFileMaxAgeSeconds", 2, L"",
                              "Please provide a numeric value in seconds", L"1e1"},
                    FieldCase{"ComDuration", "txtCOMDurationSeconds", 3, L"100",
                              "Please provide a numeric value between 0 and 99 seconds", L"99"},
                    FieldCase{"Folder", "txtLinkedItemPath", 2, L"C:\\no such folder",
                              "Folder not found. Please specify a valid folder that you have "
                              "permission to access, e.g. \\\\Server\\Share\\Folder or X:\\Folder.",
                              L"C:\\"}),
    NameOf);

TEST_F(WindowFieldsTest, AZeroDelayUnchecksItsBox) {
    CloseGoldMine();
    SetAll({{"chkCreateLink", "1"}, {"txtLinkedItemPath", "C:\\"}});
    ProgramRun run = Start("");
    const HWND window = Show(run);
    SelectTab(window, "tabstripOptions", 2);
    Focus(window, "txtDelayAddingLinkSeconds");
    Type(window, "txtDelayAddingLinkSeconds", L"0");
    Focus(window, "cmdExit");
    EXPECT_TRUE(WaitUntil([&] { return !Checked(window, "chkDelayAddingLink"); }));
    EXPECT_FALSE(ControlEnabled(window, "txtDelayAddingLinkSeconds"));
    CloseAndDiscard(run, window);
}

TEST_F(WindowFieldsTest, LettersOfTheTwoCallBoxesBecomeCapitals) {
    CloseGoldMine();
    ProgramRun run = Start("");
    const HWND window = Show(run);
    Click(window, "cmdParams");
    SelectTab(window, "tabstripParams", 1);

    for (const char* box : {"txtNotifType", "txtCallType"}) {
        Focus(window, box);
        Type(window, box, L"si");
        Focus(window, "cmdExit");
        EXPECT_TRUE(TextIs(window, box, "SI")) << box;
    }
    EXPECT_TRUE(ControlEnabled(window, "cmdProcessCall"));
    Close(run, window);  // parameters are no settings
}

TEST_F(WindowFieldsTest, ProcessCallCanBePressedWhileThereIsSomethingToProcess) {
    CloseGoldMine();
    ProgramRun run = Start("");
    const HWND window = Show(run);
    Click(window, "cmdParams");
    const auto leaves = [&](const std::string& box, const wchar_t* text, bool enabled) {
        Focus(window, box);
        Type(window, box, text);
        Focus(window, "cmdExit");
        EXPECT_TRUE(WaitUntil([&] { return ControlEnabled(window, "cmdProcessCall") == enabled; }))
            << box << " with " << Utf8(text);
    };
    ASSERT_FALSE(ControlEnabled(window, "cmdProcessCall"));
    leaves("txtOutboundPhone", L"5", true);
    leaves("txtOutboundPhone", L"", false);
    SelectTab(window, "tabstripParams", 1);
    for (const char* box : {"txtCallIdentifier", "txtCallType", "txtCallerID"}) {
        leaves(box, L"5", true);
        leaves(box, L" ", false);
    }
    leaves("txtCallIdentifier", L"7", true);
    leaves("txtNotifType", L"S", true);
    leaves("txtCallIdentifier", L"", false);  // the notification alone is nothing
    Close(run, window);
}

TEST_F(WindowFieldsTest, ACallerIdTypedByHandIsReducedAndFormatted) {
    CloseGoldMine();
    ProgramRun run = Start("");
    const HWND window = Show(run);
    Click(window, "cmdParams");
    SelectTab(window, "tabstripParams", 1);

    Focus(window, "txtCallerID");
    Type(window, "txtCallerID", L"+1 (555) 123-4567");
    Focus(window, "cmdExit");

    EXPECT_TRUE(TextIs(window, "txtCallerIDDigits", "15551234567"));
    EXPECT_TRUE(TextIs(window, "txtCallerIDFormatted", "(555)123-4567"));
    Close(run, window);
}

TEST_F(WindowFieldsTest, TheParametersPanelHasTwoWidths) {
    CloseGoldMine();
    ProgramRun run = Start("");
    const HWND window = Show(run);
    const auto twips = [&] {
        RECT place{};
        GetWindowRect(window, &place);
        return (place.right - place.left) * 1440 / 96;
    };

    Click(window, "cmdParams");
    EXPECT_EQ(twips(), 13920);
    EXPECT_EQ(ControlText(window, "cmdParams"), "<< &Params");
    EXPECT_TRUE(IsWindowVisible(ControlNamed(window, "tabstripParams")));
    Click(window, "cmdParams");
    EXPECT_EQ(twips(), 7800);
    EXPECT_EQ(ControlText(window, "cmdParams"), "&Params >>");
    EXPECT_FALSE(IsWindowVisible(ControlNamed(window, "tabstripParams")));
    Close(run, window);
}

TEST_F(WindowFieldsTest, ACallBringsUpTheStatusTab) {
    GoldMine();
    SetAll({{"chkAlwaysShowForm", "1"}, {"chkAutoProcess", "0"}, {"chkCreateHistory", "0"}});
    ProgramRun run = Start("/N:S /C:5551234567 /T:I /I:7");
    const HWND window = Show(run);
    EXPECT_FALSE(IsWindowVisible(ControlNamed(window, "txtStatus")));

    PressControl(window, "cmdProcessCall");

    EXPECT_TRUE(WaitUntil([&] { return IsWindowVisible(ControlNamed(window, "txtStatus")) != 0; }));
    Close(run, window);
}

TEST_F(WindowFieldsTest, OpenButtonsSayWhichFileIsMissing) {
    CloseGoldMine();
    Set("chkWriteLog", "0");
    ProgramRun run = Start("");
    const HWND window = Show(run);
    Click(window, "cmdParams");
    SelectTab(window, "tabstripParams", 2);

    const std::vector<std::pair<std::string, std::string>> buttons = {
        {"cmdOpenUserINI", "<user>.INI file does not exist"},
        {"cmdOpenGMINI", "GM.INI file does not exist"},
        {"cmdOpenLog",
         "Log file does not exist. In the Advanced box to the left, check \"Write Status messages "
         "to a log file\"."},
        {"cmdOpenPluginLog", "3CX Command Line API Plugin log file does not exist."}};
    Boxes expected;
    for (const auto& [button, message] : buttons) {
        PressControl(window, button);
        run.Answer("OK");
        expected.push_back(Box{message});
    }
    Close(run, window, expected);
}

TEST_F(WindowFieldsTest, TheLogLevelOfThePluginGoesThereAndBack) {
    CloseGoldMine();
    const Box restart{
        "Please exit and re-start 3CXPhone to complete changing the 3CX Command Line API Plugin "
        "log level."};
    ProgramRun run = Start("");
    const HWND window = Show(run);
    Click(window, "cmdParams");
    SelectTab(window, "tabstripParams", 2);

    PressControl(window, "cmdChangeLogLevel");
    run.Answer("OK");
    EXPECT_TRUE(TextIs(window, "txtCommandLineAPILogLevel", "AllEvents"));
    EXPECT_TRUE(HasFocus(window, "txtCommandLineAPILogLevel"));
    EXPECT_EQ(ControlText(window, "cmdChangeLogLevel"), "Set to log only ImportantEvents");
    EXPECT_EQ(RegistryText(HKEY_LOCAL_MACHINE, crmKey, "CommandLineAPILogLevel"), "AllEvents");
    PressControl(window, "cmdChangeLogLevel");
    run.Answer("OK");
    EXPECT_TRUE(TextIs(window, "txtCommandLineAPILogLevel", "ImportantEvents"));
    EXPECT_EQ(ControlText(window, "cmdChangeLogLevel"), "Set to log AllEvents");
    Close(run, window, {restart, restart});
}

struct OddText {
    const char* name;
    std::wstring text;
    std::string stored;  // in the system's code page
};

class OddTextTest : public WindowTest, public testing::WithParamInterface<OddText> {};

TEST_P(OddTextTest, IsKeptAsTypedAndStoredAsTheCodePageHasIt) {
    CloseGoldMine();
    ProgramRun run = Start("");
    const HWND window = Show(run);

    Type(window, "txtCallerIDFormat", GetParam().text);

    EXPECT_EQ(TextOf(ControlNamed(window, "txtCallerIDFormat")), GetParam().text);
    Click(window, "cmdSaveSettings");
    EXPECT_EQ(OwnValue("txtCallerIDFormat"), GetParam().stored);
    Close(run, window);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, OddTextTest,
    testing::Values(OddText{"ControlCharacters", L"a\x01\x02\x1b\x7f\tb", "a\x01\x02\x1b\x7f\tb"},
                    OddText{"RightToLeft", L"\x05e9\x05dc\x05d5\x05dd ###", "???? ###"}),
    NameOf);

TEST_F(WindowFieldsTest, APastedMegabyteIsRefusedByEveryBox) {
    CloseGoldMine();
    SetAll({{"chkCreateLink", "1"}, {"txtLinkedItemPath", "C:\\"}});
    ProgramRun run = Start("");
    const HWND window = Show(run);
    PutOnClipboard(window, std::wstring(1 << 20, L'5'));
    for (const char* box :
         {"txtOutboundMaxLength", "txtCallerIDMinLength", "txtCallerIDFormat", "txtLinkedItemPath",
          "txtDelayAddingLinkSeconds", "txtRecordingFileMaxAgeSeconds", "txtCOMDurationSeconds",
          "txtOutboundPhone", "txtOutboundPhoneAsDialed", "txtNotifType", "txtCallerID",
          "txtCallType", "txtCallIdentifier", "txtCallerIDDigits", "txtCallerIDFormatted",
          "txtAppPath", "txtStatus", "txtAbout"}) {
        const std::string before = ControlText(window, box);
        SendMessageW(ControlNamed(window, box), EM_SETSEL, 0, -1);
        SendMessageW(ControlNamed(window, box), WM_PASTE, 0, 0);
        EXPECT_EQ(ControlText(window, box), before) << box;
    }
    Close(run, window);  // nothing was changed
}

TEST_F(WindowFieldsTest, APasteIsTakenWholeUpToTheLongestLineAndNotBeyond) {
    CloseGoldMine();
    ProgramRun run = Start("");
    const HWND window = Show(run);
    const HWND box = ControlNamed(window, "txtCallerIDFormat");
    const auto paste = [&](const std::wstring& text, WPARAM selectFrom) {
        PutOnClipboard(window, text);
        SendMessageW(box, EM_SETSEL, selectFrom, -1);
        SendMessageW(box, WM_PASTE, 0, 0);
        return TextOf(box).size();
    };
    EXPECT_EQ(paste(L"12345", 0), 5u);
    EXPECT_EQ(paste(std::wstring(32767, L'7'), 1), 5u) << "one too many";
    EXPECT_EQ(paste(std::wstring(32766, L'7'), 1), 32767u);
    EXPECT_EQ(paste(L"8", 32767), 32767u) << "full";
    EXPECT_EQ(paste(L"(###)\r\n" + std::wstring(1 << 20, L'7'), 0), 5u) << "the first line only";
    CloseAndDiscard(run, window);
}

TEST_F(WindowFieldsTest, WhatAnotherProgramSendsIsCutToALine) {
    // No more than Wine can carry from program to program on the receiver's stack.
    const std::wstring sent(200'000, L'5');
    CloseGoldMine();
    ProgramRun run = Start("");
    const HWND window = Show(run);
    Type(window, "txtCallerIDFormat", sent);
    EXPECT_EQ(TextOf(ControlNamed(window, "txtCallerIDFormat")), sent.substr(0, 32767));
    Click(window, "cmdParams");
    EXPECT_EQ(ControlText(window, "cmdParams"), "<< &Params");
    CloseAndDiscard(run, window);
}

TEST_F(WindowFieldsTest, ALineOf32000CharactersIsSavedAndLoadedAsItIs) {
    CloseGoldMine();
    const std::wstring text(32000, L'#');
    ProgramRun first = Start("");
    HWND window = Show(first);
    SelectTab(window, "tabstripOptions", 1);
    Type(window, "txtCallerIDFormat", text);
    Click(window, "cmdSaveSettings");
    Close(first, window);
    EXPECT_EQ(Wide(OwnValue("txtCallerIDFormat")), text);

    ProgramRun second = Start("");
    window = Show(second);
    EXPECT_EQ(TextOf(ControlNamed(window, "txtCallerIDFormat")), text);
    Close(second, window);
}

TEST_F(WindowFieldsTest, AStoredFolderOf32000CharactersIsLoadedAndKept) {
    CloseGoldMine();
    const std::string folder = "C:\\" + std::string(31997, 'f');
    SetAll({{"chkCreateLink", "1"}, {"txtLinkedItemPath", folder}});
    ProgramRun run = Start("");
    const HWND window = Show(run);
    SelectTab(window, "tabstripOptions", 2);
    EXPECT_EQ(ControlText(window, "txtLinkedItemPath"), folder);
    Click(window, "cmdSaveSettings");
    Close(run, window);
    EXPECT_EQ(OwnValue("txtLinkedItemPath"), folder);
}

TEST_F(WindowFieldsTest, AFolderPathOf32000CharactersIsRefused) {
    CloseGoldMine();
    SetAll({{"chkCreateLink", "1"}, {"txtLinkedItemPath", "C:\\"}});
    ProgramRun run = Start("");
    const HWND window = Show(run);
    SelectTab(window, "tabstripOptions", 2);
    Focus(window, "txtLinkedItemPath");
    Type(window, "txtLinkedItemPath", L"C:\\" + std::wstring(32000, L'f'));
    Focus(window, "cmdExit");
    run.Answer("OK");
    EXPECT_TRUE(HasFocus(window, "txtLinkedItemPath"));
    Type(window, "txtLinkedItemPath", L"C:\\");
    CloseAndDiscard(run, window,
                    {{"Folder not found. Please specify a valid folder that you have permission to "
                      "access, e.g. \\\\Server\\Share\\Folder or X:\\Folder."}});
}

}  // namespace
}  // namespace end_to_end
