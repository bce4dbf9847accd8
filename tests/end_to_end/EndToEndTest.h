#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Box.h"
#include "LogFile.h"
#include "ProgramRun.h"
#include "RegistryKeys.h"
#include "support/Gmapi.h"
#include "support/Lines.h"
#include "support/windows/Encoding.h"
#include "support/windows/NativeWindow.h"
#include "support/windows/PracticeGoldMine.h"
#include "support/windows/Waiting.h"

namespace end_to_end {

using namespace test_support;
using gmapi = Gmapi<char>;

inline constexpr wchar_t ownKey[] = L"SOFTWARE\\Halvorn Systems\\CorvaneTo3CX";
inline constexpr wchar_t phoneKey[] = L"SOFTWARE\\3CX\\3CXPhone for Windows";
inline constexpr wchar_t myPhoneKey[] = L"SOFTWARE\\3CX\\MyPhone";
inline constexpr wchar_t crmKey[] = L"SOFTWARE\\3CX\\CRM";

// The desk: neither path holds a blank, as GoldMine wants it.
inline constexpr wchar_t appFolder[] = L"C:\\corvane-e2e\\app\\";
inline constexpr wchar_t dataFolder[] = L"C:\\corvane-e2e\\goldmine\\";
inline constexpr wchar_t recordingsFolder[] = L"C:\\corvane-e2e\\recordings\\";
inline constexpr char programPath[] = "C:\\corvane-e2e\\app\\CorvaneTo3CX.exe";

// What one run did, and what a test expects of one. Log lines read "[identifier]: message".
struct Outcome {
    Lines log{};
    Lines commands{};  // that GoldMine got
    Boxes boxes{};
    bool window = false;  // the main window was shown
};

// A machine on which GoldMine and 3CX are installed and wired to the program as its installer does
// it: every test begins with that, with the default options, the log on, and no run before this one
// but of the same version. Nothing of it is left behind.
class EndToEndTest : public testing::Test {
protected:
    static void SetUpTestSuite();
    static void TearDownTestSuite();
    void SetUp() override;
    void TearDown() override;

    // The practice GoldMine, running with these options; started only when it must be.
    PracticeGoldMine& GoldMine(const std::string& options = "");
    void CloseGoldMine();
    // The next test gets a new one: this test leaves it changed.
    void GoldMineIsSpoilt() { spoilt_ = true; }

    // The number that the lines of the next run have to show; else it is the stored one.
    void ExpectRunNumber(const std::string& number) { expectedRunNumber_ = number; }

    void Set(const std::string& option, const std::string& text);
    void SetAll(const std::map<std::string, std::string>& options);

    // Starts the program, answers its boxes in turn and waits for its end.
    Outcome Run(const std::string& commandLine, const std::vector<std::string>& answers = {});
    // The same in steps: what is done in between is the test's.
    ProgramRun Start(const std::string& commandLine);
    Outcome Finish(ProgramRun& run, const std::vector<std::string>& answers = {},
                   DWORD exitCode = 0);

    // The commands since the last Start.
    Lines Commands() const;
    static std::string LogText();
    // What the CallTriggerCmd.exe of this folder was started with, one command line each.
    static Lines Dialled(const std::wstring& folder = appFolder);

    static std::wstring logFile();

private:
    // Nothing of a run that ended by itself stays with GoldMine.
    static void ExpectWithdrawn(const Lines& commands);

    std::string runNumber_;  // that the run's lines have to show
    std::optional<std::string> expectedRunNumber_;
    std::string startTime_;
    size_t journalBegin_ = 0;
    bool spoilt_ = false;
    std::unique_ptr<ClearedKey> own_, phone_, goldMine_;
};

// The values of the program's own key, and one of them.
std::map<std::string, std::string> OwnValues();
std::string OwnValue(const std::string& name);

// Compares all of it.
void Check(const Outcome& actual, const Outcome& expected);

// The log of a run: separator and echo of the command line with empty brackets, these messages with
// the identifier, and the last line of all.
Lines RunLog(const std::string& commandLine, const std::string& identifier, const Lines& messages);
// The lines that the status box holds.
std::string StatusText(const Lines& messages);
Lines Joined(std::initializer_list<Lines> parts);

// Names the rows of a table of tests by their member "name".
inline constexpr auto NameOf = [](const auto& each) { return std::string(each.param.name); };

// What the system says about a code, without the line end.
std::string SystemText(DWORD code);

inline const std::string ringingCall = "/N:S /C:5551234567 /T:I /I:7";
inline const std::string foundLine = "Found (555)123-4567 in a primary contact record.";
inline const std::string popPhase = "Inbound call search for CallerID:  ";
inline const std::string historyPhase = "History creation:  ";
inline const std::string disabledLine =
    "Corvane to 3CX disabled--the \"Master Switch\" is unchecked. No connection to GoldMine "
    "attempted.";
inline const Box loadingFailed{"Error loading configuration. Exiting.", "OK", "critical"};

// What every run that finds GoldMine says and asks first.
inline const std::string versionDetected = "GoldMine version 2014.1 detected.";
inline const Lines startUpCommands = {gmapi::Macro("&amp;Version"),
                                      gmapi::Macro("&amp;ProgramDataDir"),
                                      gmapi::Macro("&amp;UserName")};
inline const Lines phoneCommands = {gmapi::Macro("&amp;Phone1"), gmapi::Macro("&amp;Phone2"),
                                    gmapi::Macro("&amp;Phone3")};

}  // namespace end_to_end
