// Each command that the program sends and each fault that GoldMine can have, at least once through
// the whole of both: what the user is told, and what stands in GoldMine afterwards. Every command
// with every fault is tried on fakes (tests/unit/FaultMatrixTest.cpp); which commands there are is
// known from there.

#include <algorithm>
#include <optional>

#include "EndToEndTest.h"
#include "support/windows/BuiltFiles.h"
#include "support/windows/Files.h"

// For itself: its short names would be in the way of other tests.
namespace end_to_end::fault_table {
namespace {

enum class Fault {
    FailedStatus,
    EmptyReply,
    NoXml,
    AnotherCall,
    AnotherCase,
    Megabyte,
    AccessDenied,
    NotRegistered,
    BusyForTwoSeconds,
    BusyForEver,
    KilledBefore,
    KilledIn,
    KilledAfter,
    ListeningRefused,
    ThreeSecondsSlow,
    Count
};

// The runs ----------------------------------------------------------------------------------------

struct Scenario {
    std::string commandLine;
    std::map<std::string, std::string> options;
    std::string faults{};  // that lead to commands which no run sends otherwise
    bool byHand = false;   // the user handles the call in the window
};
using Options = std::map<std::string, std::string>;

const Options popping = {{"chkCreateHistory", "0"}, {"chkSearchInAddlContacts", "1"}};
const Options poppingHere = {{"chkCreateHistory", "0"},
                             {"chkSearchInAddlContacts", "1"},
                             {"optPopCurrentWindow", "True"},
                             {"optPopNewWindow", "False"}};
const Options slowIsTold = {
    {"chkCreateHistory", "0"}, {"chkSearchInAddlContacts", "1"}, {"txtCOMDurationSeconds", "3"}};
const Options saving = {{"chkPopOnInboundCall", "0"},
                        {"optProcessConnect", "False"},
                        {"optProcessEnd", "True"},
                        {"optOpenHistoryBeforeSaving", "False"},
                        {"optOpenHistoryAfterSaving", "True"},
                        {"chkCreateLink", "1"},
                        {"chkDelayAddingLink", "0"},
                        {"txtLinkedItemPath", "C:\\corvane-e2e\\recordings"}};

const std::string ringing = "/N:S /C:2065550151 /T:I /I:7";  // of an additional contact
const std::string ended = "/N:E /C:5551234567 /T:I /I:7";
const Scenario pop{ringing, popping};
const Scenario slowPop{ringing, slowIsTold};
const Scenario popHere{ringing, poppingHere};
const Scenario withoutAccount{ringing, popping, "Macro:Contact1->AccountNo status 0\n"};
const Scenario oldFolders{ringing, popping, "Macro:&ProgramDataDir status 0\n"};
const Scenario save{ended, saving};
const Scenario saveUnderNumber{ended, saving, "InsHist ids numeric\n"};
const Scenario saveByHand{ended, saving, "", true};
const Scenario dialog{
    "/N:C /C:5551234567 /T:I /I:7", {{"chkPopOnInboundCall", "0"}}, "MenuCommand event before\n"};

// What the user has typed into the dialog before the program fills it in.
const std::string typedReference = "About the boat";
const std::string typedNotes = "He rang before.\r\nCall back.";

// The lines of the runs ---------------------------------------------------------------------------

const std::string searching = "Inbound call search for CallerID:  ";
const std::string completedBegin = "Call processing completed in ";
const std::string completed = completedBegin + "<seconds> seconds.";
const std::string foundAdditional = "Found (206)555-0151 in an Additional Contact record.";
const std::string created = "Created incoming call history.";
const std::string notUpdated = "Could not update history Notes with link.";
const std::string updated = "Updated history Notes with link.";
const Lines opened = {"Opening history item window.", "Opened history item window."};
const Lines notOpened = {"Opening history item window.", "Could not open history item window."};
const std::string dialogOpened = "Finished opening Complete Call dialog before saving in history.";

const Lines starting = {versionDetected};
const Lines ringingSearch = {searching + "requested while inbound call is _ringing_.",
                             searching + "searching while incoming call is ringing."};

Lines Popping(const Lines& messages, const Lines& atTheStart = {}) {
    return Joined({starting,
                   atTheStart,
                   ringingSearch,
                   messages,
                   {searching + "processing completed.",
                    historyPhase + "no history creation requested.", completed}});
}

Lines Saving(const Lines& messages) {
    return Joined(
        {{versionDetected, searching + "no searching requested on inbound call.",
          historyPhase + "requested at _end_ of call.",
          "Found (555)123-4567 in a primary contact record.", "Creating history at end of call.",
          "Checked 1 files in \"C:\\corvane-e2e\\recordings\" in <seconds> seconds.",
          "Most recent file is \"call (7).wav\", modified <date>.",
          "Prepared link to \"C:\\corvane-e2e\\recordings\\call (7).wav\"."},
         messages,
         {"Finishing creating history at end of call.", historyPhase + "processing completed.",
          completed}});
}

Lines Dialog(const Lines& messages, const Lines& behind = {}) {
    return Joined({{versionDetected, searching + "no searching requested on inbound call.",
                    historyPhase + "requested at _connection_ of call.",
                    "Found (555)123-4567 in a primary contact record.",
                    "Creating history at connection of call."},
                   messages,
                   {"Finishing creating history at connection of call.",
                    historyPhase + "processing completed.", completed},
                   behind});
}

const std::string openingDialog = "Opening Complete Call dialog before saving in history.";

// What is told of errors --------------------------------------------------------------------------

// A text of one or more lines, in a box and in the log.
struct Report {
    std::string line;
    Box box;
};

std::string Numbered(const std::string& number, const std::string& message, const char* between) {
    return "Error number:  " + number + between + "Error message:  " + message;
}

const std::string lost = "<lost>";  // whichever way Windows finds out

const Report connectionLost{
    "Lost connection to GoldMine's user interface. If you closed GoldMine before closing Corvane, "
    "you can ignore this error. " +
        lost,
    {"Lost connection to GoldMine's user interface. \r\nIf you closed GoldMine before closing "
     "Corvane, you can ignore this error.\r\n\r\n" +
     lost}};
const Report notLoggedIn{
    "GoldMine may be running but you are not logged in. Log in to GoldMine and re-try the "
    "operation. " +
        Numbered("70", "Permission denied", " "),
    {"GoldMine may be running but you are not logged in.\r\nLog in to GoldMine and re-try the "
     "operation.\r\n\r\n" +
     Numbered("70", "Permission denied", "\r\n")}};

Report NoObject(const std::string& number, const std::string& message) {
    const std::string none = "Could not connect to GoldMine's user interface.";
    const std::string advice =
        "GoldMine should be installed locally. If it already is, this error can usually be "
        "resolved by running the following command from a command prompt (opened with \"Run as "
        "administrator\"):";
    const std::string registration = "\"" + Utf8(StandinFile("gmw.exe")) + "\" /RegServer";
    return {none + " " + Numbered(number, message, " ") + " " + advice + registration,
            {none + "\r\n" + Numbered(number, message, "\r\n") + "\r\n\r\n" + advice + "\r\n\r\n" +
                 registration,
             "OK", "critical"}};
}

Report Exclamation(const std::string& text) {
    return {text, {text, "OK", "exclamation"}};
}

Report RunTimeError(const std::string& number, const std::string& description) {
    const std::string begin = "Run-time error '" + number + "':";
    return {begin + "  " + description, {begin + "\r\n\r\n" + description, "OK", "critical"}};
}

const Report notRegistered = NoObject("429", "ActiveX component can't create object");
const Report noVersion = Exclamation("Error retrieving GoldMine version.");
const Report noFolders = Exclamation("Could not retrieve ProgramDataDir or SysDir");
const Report noUser = Exclamation("Could not retrieve UserName");

// The table ---------------------------------------------------------------------------------------

struct Row {
    const char* name;
    const char* command;  // as faults.txt names it
    Fault fault;
    const Scenario& scenario;
    Lines messages;
    Boxes boxes{};
    std::optional<std::string> item{};    // the notes of the new history item
    std::optional<std::string> dialog{};  // the notes in the dialog
};

const Report notHeard = NoObject("-2147467259", SystemText(0x80004005));
const std::string queryFailed =
    "Error calling DataStream Query function for this SQL query:\r\nselect AccountNo from ContSupp "
    "where RecType = 'C' and (phone = '(206)555-0151' or fax = '(206)555-0151')\r\nResult:\r\n";
const Report noQuery = Exclamation(queryFailed + "Out of memory.");
const Report falseQuery = Exclamation(queryFailed + "False");
const Report noFetch = Exclamation("Error calling DataStream Fetch function. Result:\r\n");
const Report noClose = Exclamation("Error calling DataStream Close function. Result:\r\n" +
                                   gmapi::Reply("DataStream", "0", "No"));
const std::string notFound =
    "Did not find GoldMine contact for (206)555-0151. Further call processing skipped.";
const std::string noAccountNo =
    "Could not retrieve GoldMine AccountNo for current record, so can't check Additional Contacts "
    "for CallerID.";
const std::string noPosition = "Corvane could not position to corresponding primary record.";
const std::string notCreated = "Failed to create history with link at end of call";
// Wine has no words for it.
const std::string busyText = SystemText(RPC_E_SERVERCALL_RETRYLATER);
const Report busy = RunTimeError(
    "-2147417846",
    "ProcessCall: " +
        (busyText.empty() ? std::string("Application-defined or object-defined error") : busyText));
const Report noList = RunTimeError(
    "13", "AddRefAndNotesToOpenCallDialog: GetActiveWindowsList returned no readable list.");
const std::string link = "C:\\corvane-e2e\\recordings\\call (7).wav";
const std::string filledIn = "Connected incoming call from (555)123-4567\r\n\r\n" + typedNotes;

const std::vector<Row>& Table() {
    static const std::vector<Row> table = {
        {.name = "VersionNotRegistered",
         .command = "Macro:&Version",
         .fault = Fault::NotRegistered,
         .scenario = pop,
         .messages = {notRegistered.line, noVersion.line},
         .boxes = {notRegistered.box, noVersion.box, loadingFailed}},
        {.name = "VersionListeningRefused",
         .command = "Macro:&Version",
         .fault = Fault::ListeningRefused,
         .scenario = pop,
         .messages = {notHeard.line, noVersion.line},
         .boxes = {notHeard.box, noVersion.box, loadingFailed}},
        {.name = "ProgramDataDirAccessDenied",
         .command = "Macro:&ProgramDataDir",
         .fault = Fault::AccessDenied,
         .scenario = pop,
         .messages = Popping({foundAdditional}, {notLoggedIn.line}),
         .boxes = {notLoggedIn.box}},
        {.name = "SysDirEmptyReply",
         .command = "Macro:&SysDir",
         .fault = Fault::EmptyReply,
         .scenario = oldFolders,
         .messages = {versionDetected, noFolders.line},
         .boxes = {noFolders.box, loadingFailed}},
        {.name = "UserNameNoXml",
         .command = "Macro:&UserName",
         .fault = Fault::NoXml,
         .scenario = pop,
         .messages = {versionDetected, noUser.line},
         .boxes = {noUser.box, loadingFailed}},
        {.name = "Phone1BusyForEver",
         .command = "Macro:&Phone1",
         .fault = Fault::BusyForEver,
         .scenario = pop,
         .messages = Joined({starting, ringingSearch, {busy.line}}),
         .boxes = {busy.box}},
        {.name = "Phone2BusyForTwoSeconds",
         .command = "Macro:&Phone2",
         .fault = Fault::BusyForTwoSeconds,
         .scenario = pop,
         .messages = Popping({foundAdditional})},
        {.name = "Phone3ThreeSecondsSlow",
         .command = "Macro:&Phone3",
         .fault = Fault::ThreeSecondsSlow,
         .scenario = slowPop,
         .messages = Popping({"> COM command > 3 second(s) (<seconds> seconds): '" +
                                  gmapi::Macro("&amp;Phone3") + "'",
                              foundAdditional})},
        {.name = "AccountNoAnotherCall",
         .command = "Macro:Contact1->AccountNo",
         .fault = Fault::AnotherCall,
         .scenario = pop,
         .messages = Popping({noAccountNo, foundAdditional}),
         .boxes = {{noAccountNo}}},
        {.name = "CallerIDKilledBefore",
         .command = "CallerID",
         .fault = Fault::KilledBefore,
         .scenario = withoutAccount,
         .messages = Popping({noAccountNo, connectionLost.line, notRegistered.line, falseQuery.line,
                              notFound, notRegistered.line}),
         .boxes = {{noAccountNo},
                   connectionLost.box,
                   notRegistered.box,
                   falseQuery.box,
                   notRegistered.box}},
        {.name = "QueryNoXml",
         .command = "DataStream:Query@2",
         .fault = Fault::NoXml,
         .scenario = pop,
         .messages = Popping({noQuery.line, notFound}),
         .boxes = {noQuery.box}},
        {.name = "FetchEmptyReply",
         .command = "DataStream:Fetch",
         .fault = Fault::EmptyReply,
         .scenario = pop,
         .messages = Popping({noFetch.line, notFound}),
         .boxes = {noFetch.box}},
        {.name = "QueryCloseFailedStatus",
         .command = "DataStream:Close@1",
         .fault = Fault::FailedStatus,
         .scenario = pop,
         .messages = Popping({noClose.line, foundAdditional}),
         .boxes = {noClose.box}},
        {.name = "StatusMsgAccessDenied",
         .command = "StatusMsg",
         .fault = Fault::AccessDenied,
         .scenario = pop,
         .messages = Popping({foundAdditional, notLoggedIn.line}),
         .boxes = {notLoggedIn.box}},
        {.name = "SetObjectFailedStatus",
         .command = "RecordObj:SetObject",
         .fault = Fault::FailedStatus,
         .scenario = popHere,
         .messages = Popping({foundAdditional, noPosition})},
        {.name = "SetRecordAnotherCall",
         .command = "RecordObj:SetRecord",
         .fault = Fault::AnotherCall,
         .scenario = popHere,
         .messages = Popping({foundAdditional, noPosition})},
        {.name = "SetOrderNoXml",
         .command = "RecordObj:SetOrder",
         .fault = Fault::NoXml,
         .scenario = popHere,
         .messages = Popping({foundAdditional, noPosition})},
        {.name = "SeekEmptyReply",
         .command = "RecordObj:Seek",
         .fault = Fault::EmptyReply,
         .scenario = popHere,
         .messages = Popping({foundAdditional, noPosition})},
        {.name = "InsHistKilledIn",
         .command = "InsHist",
         .fault = Fault::KilledIn,
         .scenario = save,
         .messages = Saving({connectionLost.line, "Could not insert call history.", notCreated}),
         .boxes = {connectionLost.box, {notCreated}},
         .item = ""},
        {.name = "OpenAnotherCase",
         .command = "Open",
         .fault = Fault::AnotherCase,
         .scenario = save,
         .messages = Saving(Joined({{created, notUpdated}, opened})),
         .item = ""},
        {.name = "MoveMegabyte",
         .command = "Move",
         .fault = Fault::Megabyte,
         .scenario = save,
         .messages = Saving(Joined({{created, notUpdated}, opened})),
         .item = ""},
        {.name = "ReplaceAnotherCall",
         .command = "Replace",
         .fault = Fault::AnotherCall,
         .scenario = save,
         .messages = Saving(Joined({{created, notUpdated}, opened})),
         .item = link},
        {.name = "UnlockNoXml",
         .command = "Unlock",
         .fault = Fault::NoXml,
         .scenario = save,
         .messages = Saving(Joined({{created, notUpdated}, opened})),
         .item = link},
        {.name = "CloseAccessDenied",
         .command = "Close",
         .fault = Fault::AccessDenied,
         .scenario = save,
         .messages = Saving(Joined({{created, notLoggedIn.line, notUpdated}, opened})),
         .boxes = {notLoggedIn.box},
         .item = link},
        {.name = "RecIDMegabyte",
         .command = "Macro:ContHist->RecID",
         .fault = Fault::Megabyte,
         .scenario = saveUnderNumber,
         .messages = Saving(Joined({{created, updated}, notOpened})),
         .item = link},
        {.name = "PopCalHistItemKilledAfter",
         .command = "PopCalHistItem",
         .fault = Fault::KilledAfter,
         .scenario = saveByHand,
         .messages = Saving(Joined({{created, updated}, opened})),
         .item = link},
        {.name = "RegisterAnotherCall",
         .command = "RegisterWindowUpDown@1",
         .fault = Fault::AnotherCall,
         .scenario = dialog,
         .messages = Dialog(
             {"Could not watch for Complete Call dialog, so its Ref and Notes may stay empty.",
              openingDialog, dialogOpened}),
         .dialog = filledIn},
        {.name = "MenuCommandKilledIn",
         .command = "MenuCommand",
         .fault = Fault::KilledIn,
         .scenario = dialog,
         .messages = Dialog({openingDialog, dialogOpened, connectionLost.line,
                             "Could not open Complete Call dialog."}),
         .boxes = {connectionLost.box}},
        {.name = "WindowsListNoXml",
         .command = "GetActiveWindowsList",
         .fault = Fault::NoXml,
         .scenario = dialog,
         .messages = Dialog({openingDialog, noList.line}),
         .boxes = {noList.box},
         .dialog = typedNotes},
        {.name = "SetControlTextFailedStatus",
         .command = "SetControlText",
         .fault = Fault::FailedStatus,
         .scenario = dialog,
         .messages = Dialog(
             {openingDialog, "Could not fill in Notes of Complete Call dialog.", dialogOpened}),
         .dialog = typedNotes},
        {.name = "UnregisterAccessDenied",
         .command = "RegisterWindowUpDown@2",
         .fault = Fault::AccessDenied,
         .scenario = dialog,
         .messages = Dialog({openingDialog, dialogOpened}, {notLoggedIn.line}),
         .boxes = {notLoggedIn.box},
         .dialog = filledIn},
    };
    return table;
}

// What makes GoldMine do it -----------------------------------------------------------------------

// Each letter in its other case.
std::string OtherCase(std::string call) {
    for (char& letter : call)
        letter = static_cast<char>(letter ^ ' ');
    return call;
}

std::string CallOf(const std::string& command) {
    return command.substr(0, command.find_first_of(":@"));
}

// What a command meets; "" when it is something else that happens.
std::string ActionOf(const Row& row) {
    switch (row.fault) {
        case Fault::FailedStatus:
            return "status 0 No";
        case Fault::EmptyReply:
            return "reply";
        case Fault::NoXml:
            return "reply Out of memory.";
        case Fault::AnotherCall:
            return "call Beep";
        case Fault::AnotherCase:
            return "call " + OtherCase(CallOf(row.command));
        case Fault::Megabyte:
            return "padded 500000";  // of UTF-16
        case Fault::AccessDenied:
            return "access-denied";
        case Fault::BusyForTwoSeconds:
            return "busy 8";  // asked again every 250 ms
        case Fault::BusyForEver:
            return "busy 1000";
        case Fault::KilledIn:
            return "die done";
        case Fault::ThreeSecondsSlow:
            return "delay 3000";
        default:
            return "";
    }
}

std::string FaultsOf(const Row& row) {
    const std::string action = ActionOf(row);
    std::string faults = row.scenario.faults;
    if (!action.empty())
        faults += std::string(row.command) + " " + action + "\n";
    if (row.fault == Fault::ListeningRefused)
        faults += "Advise hresult 0x80004005\n";
    return faults;
}

// How long the run takes at least.
ULONGLONG MillisecondsOf(Fault fault) {
    switch (fault) {
        case Fault::BusyForTwoSeconds:
            return 2000;
        case Fault::ThreeSecondsSlow:
            return 3000;
        case Fault::BusyForEver:
            return 10000;
        default:
            return 0;
    }
}

// The ordinary GoldMine is not registered for so long.
class NoRegistration {
public:
    NoRegistration() { UnregisterGoldMine(ordinaryGoldMine); }
    NoRegistration(const NoRegistration&) = delete;
    NoRegistration& operator=(const NoRegistration&) = delete;
    ~NoRegistration() { RegisterGoldMine(ordinaryGoldMine); }
};

// Windows may find the server gone or the call broken.
std::string Plain(std::string text) {
    const std::pair<std::string, std::string> losses[] = {
        {"462", "The remote server machine does not exist or is unavailable"},
        {"-2147023170", SystemText(0x800706BE)}};
    for (const auto& [number, message] : losses) {
        for (const char* between : {" ", "\r\n"}) {
            const std::string told = Numbered(number, message, between);
            if (const size_t found = text.find(told); found != std::string::npos)
                text.replace(found, told.size(), lost);
        }
    }
    return text;
}

class FaultTableTest : public EndToEndTest, public testing::WithParamInterface<Row> {
protected:
    void SetUp() override {
        EndToEndTest::SetUp();
        WriteFileText(std::wstring(recordingsFolder) + L"call (7).wav", "sound");
        WriteFileText(std::wstring(dataFolder) + L"complete-call.txt",
                      typedReference + "\r\n" + typedNotes);
    }

    // Somebody ends GoldMine while no command of the program is out.
    static void Kill(const PracticeGoldMine& goldMine) {
        goldMine.SetFaults("Beep die\n");
        EXPECT_NE(RunToEnd(BuiltFile(L"tests/bare_client.exe"), L"\"<GMAPI call='Beep'/>\""), 0U);
        EXPECT_TRUE(goldMine.WaitForEnd());
    }
};

TEST_P(FaultTableTest, IsToldAndNothingIsLostOrDoneTwice) {
    const Row& row = GetParam();
    PracticeGoldMine& goldMine = GoldMine();
    goldMine.SetFaults(FaultsOf(row));
    SetAll(row.scenario.options);
    if (row.scenario.byHand)
        SetAll({{"chkAlwaysShowForm", "1"}, {"chkAutoProcess", "0"}});
    std::optional<NoRegistration> none;  // COM would start another GoldMine
    if (row.fault == Fault::NotRegistered)
        none.emplace();

    const ULONGLONG begin = GetTickCount64();
    ProgramRun program = Start(row.scenario.commandLine);
    if (row.fault == Fault::KilledBefore) {
        // The command follows the box.
        EXPECT_TRUE(WaitUntil([&] { return FindBox(program.processId()) != nullptr; }));
        Kill(goldMine);
        none.emplace();
    }
    if (row.scenario.byHand) {
        const HWND window = program.WaitForWindow();
        PressControl(window, "cmdProcessCall");
        EXPECT_TRUE(WaitUntil([&] { return LogText().find(completedBegin) != std::string::npos; }));
        if (row.fault == Fault::KilledAfter)
            Kill(goldMine);
        PostMessageW(window, WM_CLOSE, 0, 0);
    }
    Outcome run = Finish(program);

    EXPECT_GE(GetTickCount64() - begin, MillisecondsOf(row.fault));
    for (std::string& line : run.log)
        line = Plain(line);
    for (Box& box : run.boxes)
        box.text = Plain(box.text);
    EXPECT_EQ(run.log, RunLog(row.scenario.commandLine, "7", row.messages));
    EXPECT_EQ(run.boxes, row.boxes);
    EXPECT_EQ(run.window, row.scenario.byHand);
    EXPECT_EQ(std::count_if(run.commands.begin(), run.commands.end(),
                            [](const std::string& command) {
                                return command.starts_with("<GMAPI call=\"InsHist\">");
                            }),
              row.item ? 1 : 0);
    if (row.item) {
        EXPECT_EQ(goldMine.NewestHistory("Notes"), *row.item);
    }
    if (row.dialog) {
        const HWND window = goldMine.WindowTitled("Complete Call");
        EXPECT_EQ(Utf8(TextOf(GetDlgItem(window, 1016))), typedReference);
        EXPECT_EQ(Utf8(TextOf(GetDlgItem(window, 1017))), *row.dialog);
    }
}

INSTANTIATE_TEST_SUITE_P(OfGoldMine, FaultTableTest, testing::ValuesIn(Table()), NameOf);

TEST(FaultTableCoverageTest, EveryFaultIsInTheTable) {
    for (int fault = 0; fault < static_cast<int>(Fault::Count); ++fault) {
        EXPECT_TRUE(std::any_of(Table().begin(), Table().end(), [&](const Row& row) {
            return static_cast<int>(row.fault) == fault;
        })) << fault;
    }
}

TEST(FaultTableCoverageTest, EveryCommandIsInTheTable) {
    int commands = 0;
    for (const std::string& line :
         SplitLines(ReadFileText(Wide(FAULT_MATRIX)).value_or(""), "\n")) {
        if (!line.starts_with(">> "))
            continue;
        ++commands;
        const std::string command = line.substr(3) + " ";
        EXPECT_TRUE(std::any_of(Table().begin(), Table().end(), [&](const Row& row) {
            std::string begin = row.command;
            begin = begin.substr(0, begin.find('@')) + " ";
            std::replace(begin.begin(), begin.end(), ':', ' ');
            return command.starts_with(begin);
        })) << line;
    }
    EXPECT_GT(commands, 0);
}

}  // namespace
}  // namespace end_to_end::fault_table
