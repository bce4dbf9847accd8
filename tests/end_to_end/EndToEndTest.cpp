#include "EndToEndTest.h"

#include "support/windows/BuiltFiles.h"
#include "support/windows/Files.h"
#include "support/windows/Folders.h"
#include "support/windows/SystemWords.h"

namespace end_to_end {
namespace {

constexpr wchar_t maker3CX[] = L"SOFTWARE\\3CX";
constexpr wchar_t goldMineKey[] = L"SOFTWARE\\FrontRange Solutions";
constexpr char firstRunNumber[] = "17";
constexpr char programVersion[] = "1.0.0.1";

const std::string separatorLine = "[]: " + std::string(68, '-') + " <date>";

struct RunningGoldMine {
    std::string options;
    std::unique_ptr<PracticeGoldMine> server;
};

// One serves many tests: a start takes longer than most of them.
RunningGoldMine& TheGoldMine() {
    static RunningGoldMine goldMine;
    return goldMine;
}

}  // namespace

void EndToEndTest::SetUpTestSuite() {
    RegisterGoldMine(ordinaryGoldMine);
    EmptyFolder(appFolder);
    CopyFileTo(BuiltFile("CorvaneTo3CX.exe"), std::wstring(appFolder) + L"CorvaneTo3CX.exe");
    CopyFileTo(StandinFile("CallTriggerCmd.exe"), std::wstring(appFolder) + L"CallTriggerCmd.exe");
}

void EndToEndTest::TearDownTestSuite() {
    TheGoldMine().server.reset();
    UnregisterGoldMine(ordinaryGoldMine);
    EmptyFolder(appFolder);
    EmptyFolder(dataFolder);
    EmptyFolder(recordingsFolder);
}

void EndToEndTest::SetUp() {
    own_ = std::make_unique<ClearedKey>(HKEY_CURRENT_USER, ownKey);
    phone_ = std::make_unique<ClearedKey>(HKEY_LOCAL_MACHINE, maker3CX);
    goldMine_ = std::make_unique<ClearedKey>(HKEY_LOCAL_MACHINE, goldMineKey);
    SetRegistryText(HKEY_LOCAL_MACHINE, phoneKey, "Path", Utf8(appFolder));
    SetRegistryText(HKEY_LOCAL_MACHINE, crmKey, "CallNotifierPath", programPath);
    SetRegistryText(HKEY_LOCAL_MACHINE, L"SOFTWARE\\FrontRange Solutions\\GoldMine", "InstallDir",
                    Utf8(dataFolder));
    // A machine may be slow: no line about slow commands unless a test wants it.
    SetAll({{"LastVersionRun", programVersion},
            {"PreviousStatus", firstRunNumber},
            {"chkWriteLog", "1"},
            {"txtCOMDurationSeconds", "99"}});
    DeleteFileW(logFile().c_str());
    DeleteFileWhenFree(std::wstring(appFolder) + L"CallTriggerCmd.log");
    WriteFileText(std::wstring(appFolder) + L"CommandLineAPIPlugin.dll", "");
    MakeFolder(dataFolder);
    DeleteFileW((std::wstring(dataFolder) + L"faults.txt").c_str());
    DeleteFileW((std::wstring(dataFolder) + L"complete-call.txt").c_str());
    WriteFileText(std::wstring(dataFolder) + L"GM.INI", "[GoldMine]\r\nHTML_Cal_Notes=0\r\n");
    WriteFileText(std::wstring(dataFolder) + L"MASTER.INI",
                  "[GoldMine]\r\n\r\n[Modem]\r\nDeviceID=0\r\nDDEDial=&Dial,," +
                      std::string(programPath) + " %s\r\nTAPITranslation=0\r\n");
    EmptyFolder(recordingsFolder);
}

void EndToEndTest::TearDown() {
    RunningGoldMine& goldMine = TheGoldMine();
    if (spoilt_ || HasFailure())
        goldMine.server.reset();
}

PracticeGoldMine& EndToEndTest::GoldMine(const std::string& options) {
    RunningGoldMine& goldMine = TheGoldMine();
    if (!goldMine.server || !goldMine.server->running() || goldMine.options != options) {
        CloseGoldMine();
        goldMine.options = options;
        goldMine.server =
            std::make_unique<PracticeGoldMine>(StandinFile(ordinaryGoldMine), dataFolder, options);
    } else {
        goldMine.server->CloseOtherWindows();
    }
    return *goldMine.server;
}

void EndToEndTest::CloseGoldMine() {
    TheGoldMine().server.reset();
}

void EndToEndTest::Set(const std::string& option, const std::string& text) {
    SetRegistryText(HKEY_CURRENT_USER, ownKey, option, text);
}

void EndToEndTest::SetAll(const std::map<std::string, std::string>& options) {
    for (const auto& [option, text] : options)
        Set(option, text);
}

ProgramRun EndToEndTest::Start(const std::string& commandLine) {
    runNumber_ = expectedRunNumber_.value_or(OwnValue("PreviousStatus"));
    startTime_ = TimeStampNow();
    DeleteFileW(logFile().c_str());
    journalBegin_ = TheGoldMine().server ? TheGoldMine().server->Journal().size() : 0;
    return ProgramRun(Wide(programPath), commandLine);
}

Outcome EndToEndTest::Finish(ProgramRun& run, const std::vector<std::string>& answers,
                             DWORD exitCode) {
    run.Finish(answers, exitCode);
    Outcome outcome;
    outcome.boxes = run.boxes();
    outcome.window = run.windowShown();
    outcome.commands = Commands();
    if (exitCode == 0 && TheGoldMine().server && TheGoldMine().server->running())
        ExpectWithdrawn(outcome.commands);
    std::string lastTime = startTime_;
    for (const LogLine& line : ParseLog(LogText())) {
        EXPECT_EQ(line.runNumber, runNumber_) << line.message;
        EXPECT_LE(lastTime, line.timeStamp) << line.message;
        lastTime = line.timeStamp;
        outcome.log.push_back("[" + line.identifier + "]: " + Normalised(line.message));
    }
    EXPECT_LE(lastTime, TimeStampNow());
    return outcome;
}

void EndToEndTest::ExpectWithdrawn(const Lines& commands) {
    bool registered = false;
    for (const std::string& command : commands) {
        if (command == gmapi::Register("1") || command == gmapi::Register("0"))
            registered = command == gmapi::Register("1");
    }
    EXPECT_FALSE(registered) << "for GoldMine's dialog";
}

Outcome EndToEndTest::Run(const std::string& commandLine, const std::vector<std::string>& answers) {
    ProgramRun run = Start(commandLine);
    return Finish(run, answers);
}

Lines EndToEndTest::Commands() const {
    Lines commands;
    if (TheGoldMine().server) {
        const Lines journal = TheGoldMine().server->Journal();
        for (size_t i = journalBegin_; i < journal.size(); ++i) {
            if (journal[i].starts_with("> "))
                commands.push_back(journal[i].substr(2));
        }
    }
    return commands;
}

std::string EndToEndTest::LogText() {
    return Utf8FromAnsi(ReadFileText(logFile()).value_or(""));
}

Lines EndToEndTest::Dialled(const std::wstring& folder) {
    const std::wstring file = folder + L"CallTriggerCmd.log";
    return UnescapedLines(SplitLines(ReadFileText(file).value_or(""), "\n"));
}

std::wstring EndToEndTest::logFile() {
    return L"C:\\ProgramData\\Halvorn Systems\\CorvaneTo3CX\\CorvaneTo3CX.log";
}

std::map<std::string, std::string> OwnValues() {
    return RegistryValues(HKEY_CURRENT_USER, ownKey);
}

std::string OwnValue(const std::string& name) {
    return RegistryText(HKEY_CURRENT_USER, ownKey, name).value_or("<none>");
}

void Check(const Outcome& actual, const Outcome& expected) {
    EXPECT_EQ(actual.log, expected.log);
    EXPECT_EQ(actual.commands, expected.commands);
    EXPECT_EQ(actual.boxes, expected.boxes);
    EXPECT_EQ(actual.window, expected.window);
}

Lines RunLog(const std::string& commandLine, const std::string& identifier, const Lines& messages) {
    Lines log = {separatorLine,
                 commandLine.empty()
                     ? "[]: Corvane 1.0.0.1 started without params."
                     : "[]: Corvane 1.0.0.1 started with param(s): " + commandLine + "."};
    for (const std::string& message : messages)
        log.push_back("[" + identifier + "]: " + message);
    log.push_back("[" + identifier + "]: Finished unloading form and closing program.");
    return log;
}

std::string StatusText(const Lines& messages) {
    std::string text;
    for (const std::string& message : messages)
        text += (text.empty() ? "" : "\r\n") + message;
    return text;
}

Lines Joined(std::initializer_list<Lines> parts) {
    Lines all;
    for (const Lines& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

std::string SystemText(DWORD code) {
    const std::string words = Utf8(SystemWords(code));
    return words.substr(0, words.find_last_not_of("\r\n ") + 1);
}

}  // namespace end_to_end
