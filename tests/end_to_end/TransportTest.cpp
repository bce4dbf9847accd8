#include "EndToEndTest.h"
#include "support/windows/BuiltFiles.h"
#include "support/windows/Files.h"
#include "support/windows/Folders.h"

namespace end_to_end {
namespace {

const Box versionUnread{"Error retrieving GoldMine version.", "OK", "exclamation"};
const Lines linesBefore = {
    versionDetected,
    "Inbound call search for CallerID:  requested while inbound call is _ringing_.",
    "Inbound call search for CallerID:  searching while incoming call is ringing."};
const Lines linesAfter = {"Inbound call search for CallerID:  processing completed.",
                          "History creation:  no history creation requested.",
                          "Call processing completed in <seconds> seconds."};
const Lines searchCommands =
    Joined({startUpCommands, phoneCommands, {gmapi::CallerID("(555)123-4567", "1", "1")}});
const std::string shown =
    gmapi::StatusMsg("Corvane found (555)123-4567 in a primary contact record.");

class TransportTest : public EndToEndTest {
protected:
    void SetUp() override {
        EndToEndTest::SetUp();
        Set("chkCreateHistory", "0");
    }
};

TEST_F(TransportTest, AnUnregisteredGoldMineIsExplained) {
    GoldMine();
    UnregisterGoldMine(ordinaryGoldMine);

    const Outcome run = Run(ringingCall);

    RegisterGoldMine(ordinaryGoldMine);
    const std::string registration = "\"" + Utf8(StandinFile("gmw.exe")) + "\" /RegServer";
    const std::string advice =
        "GoldMine should be installed locally. If it already is, this error can usually be "
        "resolved by running the following command from a command prompt (opened with \"Run as "
        "administrator\"):";
    Check(run, {.log = RunLog(ringingCall, "7",
                              {"Could not connect to GoldMine's user interface. Error number:  429 "
                               "Error message:  ActiveX component can't create object " +
                                   advice + registration,
                               versionUnread.text}),
                .boxes = {{"Could not connect to GoldMine's user interface.\r\n"
                           "Error number:  429\r\n"
                           "Error message:  ActiveX component can't create object\r\n"
                           "\r\n" +
                               advice + "\r\n\r\n" + registration,
                           "OK", "critical"},
                          versionUnread,
                          loadingFailed}});
}

TEST_F(TransportTest, AccessDeniedMeansNotLoggedIn) {
    GoldMine().SetFaults("Macro:&Version access-denied\n");

    const Outcome run = Run(ringingCall);

    Check(run, {.log = RunLog(ringingCall, "7",
                              {"GoldMine may be running but you are not logged in. Log in to "
                               "GoldMine and re-try the operation. Error number:  70 Error "
                               "message:  Permission denied",
                               versionUnread.text}),
                .commands = {gmapi::Macro("&amp;Version")},
                .boxes = {{"GoldMine may be running but you are not logged in.\r\n"
                           "Log in to GoldMine and re-try the operation.\r\n"
                           "\r\n"
                           "Error number:  70\r\n"
                           "Error message:  Permission denied"},
                          versionUnread,
                          loadingFailed}});
}

TEST_F(TransportTest, TheCommandAfterADeniedOneConnectsAnew) {
    GoldMine().SetFaults("Macro:&Phone1 access-denied\n");

    const Outcome run = Run(ringingCall);

    Check(run,
          {.log = RunLog(ringingCall, "7",
                         Joined({linesBefore,
                                 {"GoldMine may be running but you are not logged in. Log in to "
                                  "GoldMine and re-try the operation. Error number:  70 Error "
                                  "message:  Permission denied",
                                  foundLine},
                                 linesAfter})),
           .commands = Joined(
               {startUpCommands,
                {gmapi::Macro("&amp;Phone1"), gmapi::CallerID("(555)123-4567", "1", "1"), shown}}),
           .boxes = {{"GoldMine may be running but you are not logged in.\r\n"
                      "Log in to GoldMine and re-try the operation.\r\n"
                      "\r\n"
                      "Error number:  70\r\n"
                      "Error message:  Permission denied"}}});
}

TEST_F(TransportTest, AGoldMineThatDiesInACallIsALostConnection) {
    GoldMine().SetFaults("Macro:&Version die\n");
    GoldMineIsSpoilt();

    const Outcome run = Run(ringingCall);

    ASSERT_EQ(run.boxes.size(), 3u);
    // Windows may find the server gone or the call broken.
    const std::string number =
        run.boxes[0].text.find("462") != std::string::npos ? "462" : "-2147023170";
    const std::string message = number == "462"
                                    ? "The remote server machine does not exist or is unavailable"
                                    : SystemText(0x800706BE);
    Check(run, {.log = RunLog(ringingCall, "7",
                              {"Lost connection to GoldMine's user interface. If you closed "
                               "GoldMine before closing Corvane, you can ignore this error. Error "
                               "number:  " +
                                   number + " Error message:  " + message,
                               versionUnread.text}),
                .commands = {gmapi::Macro("&amp;Version")},
                .boxes = {{"Lost connection to GoldMine's user interface. \r\n"
                           "If you closed GoldMine before closing Corvane, you can ignore this "
                           "error.\r\n"
                           "\r\n"
                           "Error number:  " +
                           number + "\r\nError message:  " + message},
                          versionUnread,
                          loadingFailed}});
}

TEST_F(TransportTest, ACommandSlowerThanTheThresholdIsLogged) {
    GoldMine().SetFaults("CallerID delay 5100\n");
    Set("txtCOMDurationSeconds", "5");

    const Outcome run = Run(ringingCall);

    Check(run, {.log = RunLog(ringingCall, "7",
                              Joined({linesBefore,
                                      {"> COM command > 5 second(s) (<seconds> seconds): '" +
                                           gmapi::CallerID("(555)123-4567", "1", "1") + "'",
                                       foundLine},
                                      linesAfter})),
                .commands = Joined({searchCommands, {shown}})});
}

TEST_F(TransportTest, AThresholdOfZeroLogsEveryCommand) {
    GoldMine();
    Set("txtCOMDurationSeconds", "0");

    const Outcome run = Run(ringingCall);

    Lines timed;
    for (const std::string& line : run.log) {
        if (line.find("> COM command > ") != std::string::npos)
            timed.push_back(line);
    }
    Lines expected;
    for (const std::string& command : Joined({searchCommands, {shown}})) {
        expected.push_back("[7]: > COM command > 0 second(s) (<seconds> seconds): '" + command +
                           "'");
    }
    EXPECT_EQ(timed, expected);
}

TEST_F(TransportTest, NothingIsTimedWhenThatIsOff) {
    GoldMine();
    SetAll({{"chkLogCOMCalls", "0"}, {"txtCOMDurationSeconds", "0"}});

    const Outcome run = Run(ringingCall);

    Check(run, {.log = RunLog(ringingCall, "7", Joined({linesBefore, {foundLine}, linesAfter})),
                .commands = Joined({searchCommands, {shown}})});
}

TEST_F(TransportTest, AnExceptionOfGoldMineIsARunTimeError) {
    GoldMine().SetFaults("CallerID exception 4711 GoldMine|The index is locked.\n");

    const Outcome run = Run(ringingCall);

    Check(run,
          {.log = RunLog(ringingCall, "7",
                         Joined({linesBefore,
                                 {"Run-time error '4711':  ProcessCall: The index is locked."}})),
           .commands = searchCommands,
           .boxes = {{"Run-time error '4711':\r\n\r\nProcessCall: The index is locked.", "OK",
                      "critical"}}});
}

TEST_F(TransportTest, AnotherFailureOfACallIsARunTimeError) {
    GoldMine().SetFaults("CallerID hresult 0x8007000D\n");

    const Outcome run = Run(ringingCall);

    const std::string description = "ProcessCall: " + SystemText(0x8007000D);
    Check(run,
          {.log = RunLog(ringingCall, "7",
                         Joined({linesBefore, {"Run-time error '-2147024883':  " + description}})),
           .commands = searchCommands,
           .boxes = {{"Run-time error '-2147024883':\r\n\r\n" + description, "OK", "critical"}}});
}

TEST_F(TransportTest, ABusyGoldMineIsAskedAgain) {
    GoldMine().SetFaults("CallerID busy 2\n");

    const Outcome run = Run(ringingCall);

    const std::string search = gmapi::CallerID("(555)123-4567", "1", "1");
    Check(run, {.log = RunLog(ringingCall, "7", Joined({linesBefore, {foundLine}, linesAfter})),
                .commands = Joined({searchCommands, {search, search, shown}})});
}

TEST_F(TransportTest, ASuccessWithoutMoreHasAnEmptyValue) {
    GoldMine().SetFaults("Macro:&Version reply <GMAPI call=\"Macro\"><status code=\"1\">\n");

    const Outcome run = Run(ringingCall);

    Check(run,
          {.log = RunLog(ringingCall, "7", {"Error parsing GoldMine version "}),
           .commands = {gmapi::Macro("&amp;Version")},
           .boxes = {{"Error parsing GoldMine version ", "OK", "exclamation"}, loadingFailed}});
}

class FailedReplyTest : public TransportTest, public testing::WithParamInterface<const char*> {};

TEST_P(FailedReplyTest, CountsAsFailure) {
    GoldMine().SetFaults(std::string("Macro:&Version reply ") + GetParam() + "\n");

    const Outcome run = Run(ringingCall);

    Check(run, {.log = RunLog(ringingCall, "7", {versionUnread.text}),
                .commands = {gmapi::Macro("&amp;Version")},
                .boxes = {versionUnread, loadingFailed}});
}

INSTANTIATE_TEST_SUITE_P(
    Replies, FailedReplyTest,
    testing::Values("<GMAPI call=\"Macro\"><status code=\"0\">2014.1</status></GMAPI>",
                    "<GMAPI call=\"macro\"><status code=\"1\">2014.1</status></GMAPI>",
                    "<GMAPI call=\"Macro\" ><status code=\"1\">2014.1</status></GMAPI>",
                    "<GMAPI call='Macro'><status code='1'>2014.1</status></GMAPI>", "no XML at all",
                    "False"));

class DiscoveryTest : public TransportTest {
protected:
    // The other practice GoldMine takes the ordinary one's place for a while. Of it the class, the
    // ids, the method and the event's id are all others.
    class Exchange {
    public:
        Exchange() {
            UnregisterGoldMine(ordinaryGoldMine);
            RegisterGoldMine(otherGoldMine);
        }
        Exchange(const Exchange&) = delete;
        Exchange& operator=(const Exchange&) = delete;
        ~Exchange() {
            UnregisterGoldMine(otherGoldMine);
            RegisterGoldMine(ordinaryGoldMine);
        }
    };

    // A run beside a GoldMine whose program has this name.
    Outcome RunBeside(const std::string& programName) {
        const std::wstring folder = std::wstring(dataFolder) + L"renamed\\";
        EmptyFolder(folder);
        const std::wstring program = folder + Wide(programName);
        CopyFileTo(StandinFile(ordinaryGoldMine), program);
        const PracticeGoldMine goldMine(program, dataFolder, "");
        return Run(ringingCall);
    }

    void SetUp() override {
        TransportTest::SetUp();
        CloseGoldMine();
    }
};

TEST_F(DiscoveryTest, AnyGoldMineIsFoundByItsTypeLibrary) {
    const Exchange exchange;
    const PracticeGoldMine other(StandinFile(otherGoldMine), dataFolder, "");

    const Outcome run = Run(ringingCall);

    Check(run, {.log = RunLog(ringingCall, "7", Joined({linesBefore, {foundLine}, linesAfter}))});
    Lines commands;
    for (const std::string& entry : other.Journal()) {
        if (entry.starts_with("> "))
            commands.push_back(entry.substr(2));
    }
    EXPECT_EQ(commands, Joined({searchCommands, {shown}}));
}

TEST_F(DiscoveryTest, AnyGoldMineReportsItsDialog) {
    const Exchange exchange;
    const PracticeGoldMine other(StandinFile(otherGoldMine), dataFolder, "");
    other.SetFaults("MenuCommand event before\n");
    Set("chkCreateHistory", "1");
    const std::string connected = "/N:C /C:5551234567 /T:I /I:7";

    const Outcome run = Run(connected);

    Check(run,
          {.log = RunLog(
               connected, "7",
               {versionDetected,
                "Inbound call search for CallerID:  requested while inbound call is _ringing_.",
                "Inbound call search for CallerID:  call connect (answered) event ignored.",
                "Inbound call search for CallerID:  processing completed.",
                "History creation:  requested at _connection_ of call.", foundLine,
                "Creating history at connection of call.",
                "Opening Complete Call dialog before saving in history.",
                "Finished opening Complete Call dialog before saving in history.",
                "Finishing creating history at connection of call.",
                "History creation:  processing completed.",
                "Call processing completed in <seconds> seconds."})});
}

TEST_F(DiscoveryTest, AProcessOfAnotherCaseIsNoGoldMine) {
    Check(RunBeside("GMW.EXE"),
          {.log = RunLog(ringingCall, "7",
                         {"GoldMine not running, so version unknown.",
                          "Parameters found but GoldMine not running. Exiting."})});
}

TEST_F(DiscoveryTest, OlderGoldMinesProgramNameIsFoundToo) {
    Check(RunBeside("gmw6.exe"),
          {.log = RunLog(ringingCall, "7", Joined({linesBefore, {foundLine}, linesAfter}))});
}

}  // namespace
}  // namespace end_to_end
