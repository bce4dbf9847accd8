// Every command that the program sends, in every kind of run, with every fault that GoldMine can
// have: FaultMatrix.txt holds what the user is told then, and here is what must hold in each case.
// The commands are those of the runs themselves, so a new one gets its cases by itself.

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "PlayedGoldMine.h"
#include "ProgramFixture.h"
#include "util/BuiltInHtmlDocument.h"
#include "util/Text.h"

namespace corvane::test {
namespace {

using gmapi = test_support::Gmapi<wchar_t>;
using Options = std::map<std::wstring, std::wstring>;

// The runs ----------------------------------------------------------------------------------------

// What the user typed into GoldMine's dialog before the program fills it in.
const PlayedGoldMine::Dialog typedByUser{L"About the boat", L"He rang before.\r\nCall back."};
const PlayedGoldMine::Dialog typedAsHtml{L"", L"<HTML><BODY>He rang &amp; rang.</BODY></HTML>"};

struct Scenario {
    std::string name;
    std::wstring arguments;
    Options options;
    std::function<void(FakeSurroundings&, PlayedGoldMine&)> setUp = {};
    std::function<void(Program&)> byHand = {};  // what the user does in the window that is shown
};

// The phones of the open record are somebody else's.
void OpenRecord(FakeSurroundings&, PlayedGoldMine& goldMine) {
    goldMine.macros[L"&Phone1"] = L"5550001";
    goldMine.macros[L"&Phone2"] = L"5550002";
    goldMine.macros[L"&Phone3"] = L"5550003";
    goldMine.macros[L"Contact1->AccountNo"] = L"A1";
}

void OpenRecordOfCaller(FakeSurroundings& around, PlayedGoldMine& goldMine) {
    OpenRecord(around, goldMine);
    goldMine.macros[L"&Phone1"] = L"5551234";
}

void AdditionalContact(FakeSurroundings& around, PlayedGoldMine& goldMine) {
    OpenRecord(around, goldMine);
    goldMine.packets[L"select AccountNo from ContSupp where RecType"] = L"3000-0001\nA2";
    goldMine.packets[L"select Phone1 from Contact1"] = L"3000-0001\n5550100";
    goldMine.phones = {L"5550100"};  // of the primary record, not of the caller
}

void Recording(FakeSurroundings& around) {
    around.files.folders.insert(L"R:\\rec");
    around.files.newest = {L"call (7).wav", around.clock.day + 0.5, 3};
}

void NotesAreHtml(FakeSurroundings& around) {
    around.iniFiles.files[L"C:\\GM\\GM.INI"][{L"GoldMine", L"HTML_Cal_Notes"}] = L"1";
}

const Options pop{{L"chkPopOnInboundCall", L"1"}, {L"chkCreateHistory", L"0"}};
const Options popAdditional{{L"chkPopOnInboundCall", L"1"},
                            {L"chkCreateHistory", L"0"},
                            {L"chkSearchInAddlContacts", L"1"},
                            {L"optPopCurrentWindow", L"True"},
                            {L"optPopNewWindow", L"False"}};
const Options popAdditionalInNewWindow{{L"chkPopOnInboundCall", L"1"},
                                       {L"chkCreateHistory", L"0"},
                                       {L"chkSearchInAddlContacts", L"1"}};
// At the connection, opened afterwards.
const Options saveAndOpen{
    {L"chkPopOnInboundCall", L"0"},          {L"chkCreateHistory", L"1"},
    {L"chkAutoOpenHistory", L"1"},           {L"optOpenHistoryBeforeSaving", L"False"},
    {L"optOpenHistoryAfterSaving", L"True"}, {L"chkCreateLink", L"1"},
    {L"txtLinkedItemPath", L"R:\\rec"}};
const Options openDialog{{L"chkPopOnInboundCall", L"0"}, {L"chkCreateHistory", L"1"},
                         {L"chkAutoOpenHistory", L"1"},  {L"optOpenHistoryBeforeSaving", L"True"},
                         {L"chkCreateLink", L"1"},       {L"txtLinkedItemPath", L"R:\\rec"}};

Options With(Options options, const Options& more) {
    for (const auto& [name, text] : more)
        options[name] = text;
    return options;
}

const std::vector<Scenario>& Scenarios() {
    static const std::vector<Scenario> scenarios = {
        {"settings", L"", {}},
        {"old folders",
         L"",
         {},
         [](auto&, auto& goldMine) {
             goldMine.macros.erase(L"&ProgramDataDir");
             goldMine.macros[L"&SysDir"] = L"C:\\GM\\";
         }},
        {"dial", L"(555) 010-0199", {}},
        {"pop additional", L"/N:S /C:5551234 /T:I /I:7", popAdditional, AdditionalContact},
        {"pop in new window", L"/N:S /C:5551234 /T:I /I:7", popAdditionalInNewWindow,
         AdditionalContact},
        {"pop by search", L"/N:S /C:5551234 /T:I /I:7", popAdditional,
         [](auto& around, auto& goldMine) {
             OpenRecord(around, goldMine);
             goldMine.phones = {L"5551234"};
         }},
        {"pop open record", L"/N:S /C:5551234 /T:I /I:7", pop,
         [](auto& around, auto& goldMine) {
             OpenRecord(around, goldMine);
             goldMine.macros[L"&Phone3"] = L"5551234";
         }},
        {"pop nobody", L"/N:S /C:5551234 /T:I /I:7", pop, OpenRecord},
        {"save", L"/N:C /C:5551234 /T:I /I:7", saveAndOpen,
         [](auto& around, auto& goldMine) {
             OpenRecordOfCaller(around, goldMine);
             Recording(around);
         }},
        {"save as HTML", L"/N:C /C:5551234 /T:I /I:7", saveAndOpen,
         [](auto& around, auto& goldMine) {
             OpenRecordOfCaller(around, goldMine);
             Recording(around);
             NotesAreHtml(around);
             goldMine.historyId = L"12";  // a number is none that GoldMine opens
             goldMine.macros[L"ContHist->RecID"] = L"HIST1";
         }},
        {"dialog", L"/N:C /C:5551234 /T:I /I:7", openDialog,
         [](auto& around, auto& goldMine) {
             OpenRecordOfCaller(around, goldMine);
             Recording(around);
             goldMine.dialog = typedByUser;
         }},
        {"late dialog, HTML", L"/N:C /C:5551234 /T:I /I:7", openDialog,
         [](auto& around, auto& goldMine) {
             OpenRecordOfCaller(around, goldMine);
             Recording(around);
             NotesAreHtml(around);
             goldMine.dialog = typedAsHtml;
             goldMine.dialogInCommand = false;
             around.clock.onPump = [&around, &goldMine] {
                 if (around.goldMine.connected() && around.clock.sleeps.size() > 1)
                     goldMine.ShowDialog();
             };
         }},
        {"no dialog", L"/N:E /C:5551234 /T:O /I:7",
         With(openDialog, {{L"optProcessConnect", L"False"}, {L"optProcessEnd", L"True"}}),
         [](auto& around, auto& goldMine) {
             OpenRecordOfCaller(around, goldMine);
             Recording(around);
             goldMine.dialogInCommand = false;
         }},
        {"by hand", L"/N:S /C:5551234 /T:I /I:7",
         With(saveAndOpen, {{L"chkPopOnInboundCall", L"1"},
                            {L"optProcessConnect", L"False"},
                            {L"optProcessStart", L"True"},
                            {L"chkCreateLink", L"0"},
                            {L"chkAlwaysShowForm", L"1"},
                            {L"chkAutoProcess", L"0"}}),
         OpenRecordOfCaller,
         [](Program& program) { program.actions.ButtonClicked(program.form.cmdProcessCall); }},
    };
    return scenarios;
}

// The faults --------------------------------------------------------------------------------------

RuntimeError Error(std::int64_t number, const std::wstring& description = {}) {
    RuntimeError error = MakeRuntimeError(number);
    error.source = L"GoldMine.UI";
    if (!description.empty())
        error.description = description;
    return error;
}

const RuntimeError denied = Error(ErrorNumber::PermissionDenied);
const RuntimeError lost = Error(ErrorNumber::RemoteServerUnavailable);
const RuntimeError died =
    Error(ErrorNumber::RemoteProcedureCallFailed, L"The remote procedure call failed.");
const RuntimeError busy =
    Error(-2147417846, L"The message filter indicated that the application is busy.");
const RuntimeError noRecord = Error(1001, L"No record is open.");
const RuntimeError notRegistered = Error(ErrorNumber::CannotCreateObject);
const RuntimeError noListening = Error(-2147467259, L"Unspecified error");

struct Fault {
    std::string name;
    bool done = true;      // GoldMine carried the command out
    int milliseconds = 0;  // how long it took
    std::function<std::wstring(const std::wstring& reply, const std::wstring& call)> reply = {};
    const RuntimeError* raised = nullptr;      // instead of a reply
    bool lasting = false;                      // so do all later commands
    bool gone = false;                         // GoldMine ends then, and does not start again
    const RuntimeError* connecting = nullptr;  // the object cannot be had: no command is sent
};

std::wstring WithCall(const std::wstring& reply, const std::wstring& call) {
    return ReplaceAll(reply, L"\"" + PlayedGoldMine::CallOf(reply) + L"\"", L"\"" + call + L"\"");
}

const std::vector<Fault>& Faults() {
    constexpr std::size_t megabyte = 500'000;  // of UTF-16
    static const std::vector<Fault> faults = {
        {.name = "failed status",
         .done = false,
         .reply = [](auto&, auto& call) { return gmapi::Reply(call, L"0", L"No"); }},
        {.name = "empty reply", .reply = [](auto&, auto&) { return std::wstring(); }},
        {.name = "no XML", .reply = [](auto&, auto&) { return std::wstring(L"Out of memory."); }},
        {.name = "cut off behind the status",
         .reply = [](auto&,
                     auto& call) { return L"<GMAPI call=\"" + call + L"\"><status code=\"1\">"; }},
        {.name = "reply to another call",
         .reply = [](auto&, auto&) { return gmapi::Reply(L"Beep", L"1", L"1"); }},
        {.name = "another name of the call",
         .reply = [](auto& reply, auto&) { return WithCall(reply, L"Beep"); }},
        {.name = "another letter case of the call",
         .reply =
             [](auto& reply, auto&) {
                 std::wstring other = PlayedGoldMine::CallOf(reply);
                 for (wchar_t& each : other) {
                     if (each != L'_')
                         each = static_cast<wchar_t>(each ^ L' ');
                 }
                 return WithCall(reply, other);
             }},
        {.name = "a megabyte",
         .reply =
             [](auto& reply, auto&) {
                 std::wstring longer = reply;
                 longer.insert(longer.find(L"</status>"), std::wstring(megabyte, L'x'));
                 return longer;
             }},
        {.name = "takes 2 s", .milliseconds = 2000},
        {.name = "takes 3 s", .milliseconds = 3000},
        {.name = "access denied", .done = false, .raised = &denied},
        {.name = "access denied from now on", .done = false, .raised = &denied, .lasting = true},
        {.name = "busy for ten seconds", .done = false, .milliseconds = 10000, .raised = &busy},
        {.name = "busy for ever",
         .done = false,
         .milliseconds = 10000,
         .raised = &busy,
         .lasting = true},
        {.name = "exception", .done = false, .raised = &noRecord},
        {.name = "lost and back", .done = false, .raised = &lost},
        {.name = "died in the command and back", .raised = &died},
        {.name = "gone before the command", .done = false, .raised = &lost, .gone = true},
        {.name = "gone in the command", .raised = &died, .gone = true},
        {.name = "gone after the command", .gone = true},
        {.name = "class not registered", .done = false, .connecting = &notRegistered},
        {.name = "listening refused", .done = false, .connecting = &noListening},
    };
    return faults;
}

// One run -----------------------------------------------------------------------------------------

// A text of the record: one line of ASCII, with long stretches of one letter told by their length.
std::string Printed(std::wstring_view text) {
    constexpr std::size_t longStretch = 100;
    const std::wstring plain =
        ReplaceAll(ReplaceAll(ReplaceAll(text, L"\r\n", L" | "), L"\n", L" \\n "), L"\r", L" \\r ");
    std::string printed;
    for (std::size_t at = 0; at < plain.size();) {
        const std::size_t end = std::min(plain.find_first_not_of(plain[at], at), plain.size());
        const char letter = plain[at] < 128 ? static_cast<char>(plain[at]) : '?';
        if (end - at < longStretch)
            printed.append(end - at, letter);
        else
            printed += '(' + std::to_string(end - at) + " times " + letter + ')';
        at = end;
    }
    if (printed.ends_with(' '))
        printed.replace(printed.size() - 1, 1, "(blank)");
    return printed;
}

// The command's call and values.
std::string Label(const std::wstring& command) {
    std::wstring label = PlayedGoldMine::CallOf(command);
    for (std::size_t at = command.find(L'>'); at < command.size();) {
        const std::size_t end = command.find(L'<', at);
        if (end > at + 1 && end != std::wstring::npos)
            label += L' ' + gmapi::Unescaped(command.substr(at + 1, end - at - 1));
        at = command.find(L'>', at + 1);
    }
    return Printed(label);
}

struct Record {
    // In order: "> " a command, "- " a status line, "[!] " a box, "= " what is shown.
    std::vector<std::string> entries;
    std::vector<std::string> left;      // in GoldMine in the end, where the run changed it
    std::vector<std::size_t> commands;  // where those stand
    RunOutcome outcome = RunOutcome::End;
    bool closed = false;     // the window, when there was one
    bool connected = false;  // in the end
    std::vector<PlayedGoldMine::HistoryEntry> history;
    PlayedGoldMine::Dialog dialog;
    std::string boxTwice;  // one that was shown twice for one attempt
};

class Run {
public:
    // Without a fault, or with one in the command of that index.
    explicit Run(const Scenario& scenario, const Fault* fault = nullptr, std::size_t index = 0)
        : scenario_(scenario), fault_(fault), index_(index) {
        around_.InstallThreeCX();
        around_.RunGoldMine();
        around_.clock.SetDay(2024, 3, 11);
        goldMine_.macros = {
            {L"&Version", L"2014.1"}, {L"&ProgramDataDir", L"C:\\GM\\"}, {L"&UserName", L"ANN"}};
        // What a default would make longer, and the line about slow commands.
        for (const auto& [name, text] : With({{L"chkFormatCallerID", L"0"},
                                              {L"chkDelayAddingLink", L"0"},
                                              {L"chkLogCOMCalls", L"1"},
                                              {L"txtCOMDurationSeconds", L"3"}},
                                             scenario.options)) {
            around_.StoreOption(name, text);
        }
        if (scenario.setUp)
            scenario.setUp(around_, goldMine_);
        typed_ = goldMine_.dialog;
        goldMine_.onDialog = [this] {
            around_.goldMine.RaiseWindowUpDown(L"DIALOGSCHEDULECOMPLETE", true,
                                               PlayedGoldMine::dialogHandle);
        };
        around_.goldMine.answerAll = [this](const std::wstring& command) {
            return Answer(command);
        };
        around_.boxes.onShow = [this] { AddBoxes(); };
        if (fault && fault->connecting)
            around_.goldMine.connectError = *fault->connecting;
    }

    Record Take() {
        Surroundings seams = around_.Seams(scenario_.arguments);
        seams.newHtmlDocument = [] { return std::make_unique<BuiltInHtmlDocument>(); };
        Program program(std::move(seams));
        around_.view.onChange = [&](const Control& changed) {
            if (&changed == &program.form.txtStatus)
                AddLine(program.form.txtStatus.text());
        };
        record_.outcome = program.Run();
        if (record_.outcome == RunOutcome::WindowShown) {
            Add("= The window is shown.");
            if (scenario_.byHand)
                scenario_.byHand(program);
            around_.view.Close();
        }
        record_.closed = around_.view.closed;
        record_.connected = around_.goldMine.connected();
        record_.history = goldMine_.history;
        record_.dialog = goldMine_.dialog;
        for (const auto& [ref, notes] : goldMine_.history)
            Leave("History ", ref, notes);
        if (goldMine_.dialog != typed_)
            Leave("Dialog ", goldMine_.dialog.ref, goldMine_.dialog.notes);
        return std::move(record_);
    }

private:
    std::wstring Answer(const std::wstring& command) {
        const bool faulty = fault_ && sent_ == index_;
        const bool lasting = fault_ && fault_->lasting && sent_ > index_;
        ++sent_;
        record_.commands.push_back(record_.entries.size());
        Add("> " + Label(command));
        if (gone_)
            throw lost;
        if (!faulty && !lasting) {
            const int deaths = deaths_;
            const std::wstring reply = goldMine_.Do(command);
            if (deaths_ != deaths)  // within the command
                throw died;
            return reply;
        }
        around_.clock.Advance(fault_->milliseconds);
        const std::wstring reply = fault_->done ? goldMine_.Do(command) : std::wstring();
        if (fault_->gone || fault_->raised == &lost || fault_->raised == &died)
            EndGoldMine();
        if (fault_->raised)
            throw *fault_->raised;
        return fault_->reply ? fault_->reply(reply, PlayedGoldMine::CallOf(command)) : reply;
    }
    void EndGoldMine() {
        ++deaths_;
        goldMine_.Restart();
        if (!fault_->gone)
            return;
        gone_ = true;
        around_.processes.entries.clear();
        around_.goldMine.connectError = notRegistered;
    }

    // The time that the fault took is no difference.
    static std::wstring ProcessedIn(int milliseconds) {
        return L"Call processing completed in " + std::to_wstring(milliseconds / 1000) + L".000 ";
    }
    void AddLine(const std::wstring& status) {
        if (status.size() < seen_)
            seen_ = 0;  // the box was emptied
        std::wstring_view line = std::wstring_view(status).substr(seen_);
        if (line.starts_with(lineBreak))
            line.remove_prefix(lineBreak.size());
        if (!status.empty())
            Add("- " + Printed(ReplaceAll(line, ProcessedIn(fault_ ? fault_->milliseconds : 0),
                                          ProcessedIn(0))));
        seen_ = status.size();
    }
    void AddBoxes() {
        for (const ShownBox& box : around_.boxes.Take()) {
            constexpr std::array icons{"[ ] ", "[x] ", "[!] "};
            Add(icons.at(static_cast<std::size_t>(box.icon)) + Printed(box.text));
            EXPECT_EQ(box.buttons, BoxButtons::Ok) << scenario_.name;
            if (!boxes_.insert({Attempts(), box.text}).second)
                record_.boxTwice = Printed(box.text);
        }
    }
    // How often a command or a connection was tried: each may fail, and say so.
    [[nodiscard]] std::size_t Attempts() const {
        return sent_ + static_cast<std::size_t>(around_.goldMine.connects);
    }
    void Leave(const std::string& where, const std::wstring& ref, const std::wstring& notes) {
        record_.left.push_back("= " + where + '[' + Printed(ref) + "] Notes [" + Printed(notes) +
                               ']');
    }
    void Add(std::string entry) { record_.entries.push_back(std::move(entry)); }

    const Scenario& scenario_;
    const Fault* fault_;
    std::size_t index_;
    std::size_t sent_ = 0;
    int deaths_ = 0;     // of GoldMine
    bool gone_ = false;  // for good
    std::size_t seen_ = 0;
    std::set<std::pair<std::size_t, std::wstring>> boxes_;
    Record record_;
    PlayedGoldMine goldMine_;
    PlayedGoldMine::Dialog typed_;
    FakeSurroundings around_;
};

// The matrix --------------------------------------------------------------------------------------

struct Cell {
    const Scenario* scenario;
    const Fault* fault;
    std::string command;  // its label, with its place where the run sends it more than once
    std::size_t index;    // among the run's commands
    Record record;
};

struct Matrix {
    std::map<const Scenario*, Record> runs;  // without a fault
    std::vector<Cell> cells;
};

// The run up to a command, which the faults of another that began alike need not repeat. The values
// of the command line make no difference.
std::vector<std::string> SoFar(const Record& run, std::size_t place) {
    std::vector<std::string> entries(run.entries.begin(),
                                     run.entries.begin() + std::ptrdiff_t(place) + 1);
    entries.front().resize(entries.front().find("param"));
    return entries;
}

Matrix MakeMatrix() {
    Matrix matrix;
    std::set<std::vector<std::string>> told;
    for (const Scenario& scenario : Scenarios()) {
        const Record& run = matrix.runs.emplace(&scenario, Run(scenario).Take()).first->second;
        std::map<std::string, int> seen;
        for (std::size_t index = 0; index < run.commands.size(); ++index) {
            std::string command = run.entries[run.commands[index]].substr(2);
            if (const int times = ++seen[command]; times > 1)
                command += " (" + std::to_string(times) + ')';
            if (!told.insert(SoFar(run, run.commands[index])).second)
                continue;
            for (const Fault& fault : Faults()) {
                // Only the first command of a run connects.
                if (!fault.connecting || index == 0) {
                    matrix.cells.push_back(
                        {&scenario, &fault, command, index, Run(scenario, &fault, index).Take()});
                }
            }
        }
    }
    return matrix;
}

const Matrix& TheMatrix() {
    static const Matrix matrix = MakeMatrix();
    return matrix;
}

std::string NameOf(const Cell& cell) {
    return cell.scenario->name + ": " + cell.command + ": " + cell.fault->name;
}

// An error is told in a box and in a line; the matrix says the two in short.
struct Report {
    std::string name;
    const RuntimeError* error;
    std::vector<std::string> entries;
};

std::string NumberOf(const RuntimeError& error) {
    return " (" + std::to_string(error.number) + ')';
}

std::string ToldOf(const RuntimeError& error, const std::string& between) {
    return "Error number:  " + std::to_string(error.number) + between +
           "Error message:  " + Printed(error.description);
}

Report NotLoggedIn() {
    return {"ERROR",
            &denied,
            {"[ ] GoldMine may be running but you are not logged in. | Log in to GoldMine and "
             "re-try the operation. |  | " +
                 ToldOf(denied, " | "),
             "- GoldMine may be running but you are not logged in. Log in to GoldMine and re-try "
             "the operation. " +
                 ToldOf(denied, " ")}};
}

Report ConnectionLost(const RuntimeError& error) {
    return {"ERROR",
            &error,
            {"[ ] Lost connection to GoldMine's user interface.  | If you closed GoldMine before "
             "closing Corvane, you can ignore this error. |  | " +
                 ToldOf(error, " | "),
             "- Lost connection to GoldMine's user interface. If you closed GoldMine before "
             "closing Corvane, you can ignore this error. " +
                 ToldOf(error, " ")}};
}

Report NoObject(const RuntimeError& error) {
    const std::string advice =
        "GoldMine should be installed locally. If it already is, this error can usually be "
        "resolved by running the following command from a command prompt (opened with \"Run as "
        "administrator\"):";
    const std::string command = "\"C:\\GoldMine\\gmw.exe\" /RegServer";
    return {"NO OBJECT",
            &error,
            {"[x] Could not connect to GoldMine's user interface. | " + ToldOf(error, " | ") +
                 " |  | " + advice + " |  | " + command,
             "- Could not connect to GoldMine's user interface. " + ToldOf(error, " ") + ' ' +
                 advice + command}};
}

// With the names of the procedures that it went through.
Report RunTimeError(const RuntimeError& error, const std::string& procedures) {
    const std::string begin = "Run-time error '" + std::to_string(error.number) + "': ";
    const std::string end =
        (procedures.empty() ? "" : procedures + ": ") + Printed(error.description);
    return {"RUN-TIME ERROR" + (procedures.empty() ? "" : " in " + procedures),
            &error,
            {"- " + begin + ' ' + end, "[x] " + begin + "|  | " + end}};
}

const std::vector<Report>& Reports() {
    static const std::vector<Report> reports = [] {
        std::vector<Report> all = {NotLoggedIn(), ConnectionLost(lost), ConnectionLost(died),
                                   NoObject(notRegistered), NoObject(noListening)};
        for (const RuntimeError* error : {&busy, &noRecord}) {
            for (const char* procedures : {"ProcessCall", "ProcessCall: CreateHistoryForEvent",
                                           "AddRefAndNotesToOpenCallDialog", ""}) {
                all.push_back(RunTimeError(*error, procedures));
            }
        }
        return all;
    }();
    return reports;
}

// Boxes and lines that say the same in one: a report by its name, a text that stands in both by
// itself.
std::vector<std::string> Folded(const std::vector<std::string>& entries, const Fault& fault) {
    std::vector<std::string> folded;
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        const auto next = std::next(entry);
        const auto report =
            next == entries.end()
                ? Reports().end()
                : std::find_if(Reports().begin(), Reports().end(), [&](const Report& each) {
                      return each.entries == std::vector<std::string>{*entry, *next};
                  });
        if (report != Reports().end()) {
            const bool own = report->error == fault.raised || report->error == fault.connecting;
            folded.push_back("[...]- " + report->name + (own ? "" : NumberOf(*report->error)));
            ++entry;
        } else if (next != entries.end() && entry->starts_with('[') &&
                   *next == "- " + entry->substr(4)) {
            folded.push_back(entry->substr(0, 3) + *next);
            ++entry;
        } else {
            folded.push_back(*entry);
        }
    }
    return folded;
}

// What follows the faulty command.
std::vector<std::string> Behind(const Record& record, std::size_t place) {
    return {record.entries.begin() +
                static_cast<std::ptrdiff_t>(std::min(place, record.entries.size())),
            record.entries.end()};
}

// What becomes of a cell, from its command on; where it meets the run without the fault again, that
// stands for the rest.
std::string Outcome(const Cell& cell) {
    const Record& run = TheMatrix().runs.at(cell.scenario);
    // A command that could not be sent has no entry of its own.
    const std::size_t place = run.commands[cell.index];
    const auto expected = Behind(run, place + 1);
    const auto got = Behind(cell.record, place + (cell.fault->connecting ? 0 : 1));
    const auto same = static_cast<std::size_t>(
        std::mismatch(expected.rbegin(), expected.rend(), got.rbegin(), got.rend()).first -
        expected.rbegin());
    // The last line alone stands for itself.
    const std::size_t own = got.size() - (same == 1 && expected.size() > 1 ? 0 : same);
    std::string text;
    for (const std::string& each :
         Folded({got.begin(), got.begin() + std::ptrdiff_t(own)}, *cell.fault))
        text += "    " + each + '\n';
    if (own < got.size()) {
        text += "    ... as without it";
        if (same < expected.size()) {
            const std::string& from = expected[expected.size() - same];
            text += " from: " + from;
            if (std::count(expected.begin(), expected.end(), from) > 1)
                text += " (the last " + std::to_string(same) + ')';
        }
        text += '\n';
    }
    if (cell.record.left != run.left) {
        for (const std::string& each : cell.record.left)
            text += "    " + each + '\n';
        if (cell.record.left.empty())
            text += "    = GoldMine as it was\n";
    }
    return text;
}

std::string Listed(const std::set<std::string>& names) {
    std::string list;
    for (const std::string& name : names)
        list += (list.empty() ? "" : ", ") + name;
    return list;
}

// The matrix as text: the runs without a fault, then each command with what its faults lead to.
std::string Text() {
    std::ostringstream text;
    text << "What the user is told when GoldMine fails. Written by FaultMatrixTest.\n"
            "> a command   - a status line   [ ] [!] [x] a box and its icon   [!]- both"
            "   = what is shown, or left in GoldMine\n"
            "\nIn short, and without the number where the error is the fault's own:\n";
    for (const Report& report : Reports()) {
        text << "\n[...]- " << report.name << NumberOf(*report.error) << '\n';
        for (const std::string& entry : report.entries)
            text << "    " << entry << '\n';
    }
    for (const Scenario& scenario : Scenarios()) {
        text << "\n== " << scenario.name << ": without a fault\n";
        for (const std::string& entry : TheMatrix().runs.at(&scenario).entries)
            text << "    " << entry << '\n';
        for (const std::string& entry : TheMatrix().runs.at(&scenario).left)
            text << "    " << entry << '\n';
    }

    // By command and outcome: the faults that lead there, with the runs in which they do.
    std::vector<std::string> commands;
    std::map<std::string, std::set<std::string>> runsOf;
    std::map<std::string, std::vector<std::string>> outcomesOf;
    std::map<std::pair<std::string, std::string>, std::map<const Fault*, std::set<std::string>>>
        faultsOf;
    for (const Cell& cell : TheMatrix().cells) {
        const std::string outcome = Outcome(cell);
        if (runsOf[cell.command].empty())
            commands.push_back(cell.command);
        runsOf[cell.command].insert(cell.scenario->name);
        auto& faults = faultsOf[{cell.command, outcome}];
        if (faults.empty())
            outcomesOf[cell.command].push_back(outcome);
        faults[cell.fault].insert(cell.scenario->name);
    }
    for (const std::string& command : commands) {
        text << "\n>> " << command << '\n';
        for (const std::string& outcome : outcomesOf[command]) {
            // Faults of the same runs stand together.
            std::map<std::set<std::string>, std::string> faultsIn;
            for (const auto& [fault, runs] : faultsOf[{command, outcome}]) {
                std::string& names = faultsIn[runs];
                names += (names.empty() ? "" : ", ") + fault->name;
            }
            for (const auto& [runs, faults] : faultsIn) {
                text << "  " << faults;
                if (runs != runsOf[command])
                    text << "  (" << Listed(runs) << ')';
                text << '\n';
            }
            text << outcome;
        }
    }
    return text.str();
}

std::vector<std::string> LinesOf(std::istream& in) {
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

TEST(FaultMatrixTest, EveryCaseReadsAsItIsWritten) {
    const std::string text = Text();
    if (std::getenv("CORVANE_WRITE_FAULT_MATRIX")) {
        std::ofstream(FAULT_MATRIX, std::ios::binary) << text;
        FAIL() << "The cases were written anew: read them all, then test again.";
    }
    std::ifstream file(FAULT_MATRIX, std::ios::binary);
    const std::vector<std::string> expected = LinesOf(file);
    std::istringstream stream(text);
    const std::vector<std::string> got = LinesOf(stream);
    const auto at = static_cast<std::size_t>(
        std::mismatch(expected.begin(), expected.end(), got.begin(), got.end()).first -
        expected.begin());
    const auto from = [&](const std::vector<std::string>& lines) {
        std::string part;
        for (std::size_t each = at; each < std::min(at + 12, lines.size()); ++each)
            part += '\n' + lines[each];
        return part;
    };
    EXPECT_TRUE(at == expected.size() && at == got.size())
        << FAULT_MATRIX << ":" << at + 1 << " says" << from(expected) << "\n\nbut it is"
        << from(got) << "\n\nCORVANE_WRITE_FAULT_MATRIX=1 writes it anew.";
}

TEST(FaultMatrixTest, EveryRunEndsAndEveryWindowCloses) {
    for (const Cell& cell : TheMatrix().cells) {
        const Record& record = cell.record;
        EXPECT_EQ(record.closed, record.outcome == RunOutcome::WindowShown) << NameOf(cell);
        EXPECT_EQ(record.entries.back(), "- Finished unloading form and closing program.")
            << NameOf(cell);
    }
}

TEST(FaultMatrixTest, GoldMineIsLetGoAtTheEnd) {
    for (const Cell& cell : TheMatrix().cells)
        EXPECT_FALSE(cell.record.connected) << NameOf(cell);
}

TEST(FaultMatrixTest, NoHistoryItemIsCreatedTwice) {
    for (const Cell& cell : TheMatrix().cells)
        EXPECT_LE(cell.record.history.size(), 1u) << NameOf(cell);
}

TEST(FaultMatrixTest, WhatTheUserTypedIntoTheDialogIsKept) {
    for (const Cell& cell : TheMatrix().cells) {
        const PlayedGoldMine::Dialog& before = TheMatrix().runs.at(cell.scenario).dialog;
        const PlayedGoldMine::Dialog& after = cell.record.dialog;
        if (before.notes.empty())
            continue;
        const bool plain = cell.scenario->name == "dialog";
        if (plain) {
            EXPECT_EQ(after.ref, typedByUser.ref) << NameOf(cell);
        }
        const std::wstring typed = plain ? typedByUser.notes : L"He rang &amp; rang.";
        EXPECT_NE(after.notes.find(typed), std::wstring::npos)
            << NameOf(cell) << testing::PrintToString(after.notes);
    }
}

// The lines and boxes.
std::multiset<std::string> Told(const Record& record) {
    std::multiset<std::string> told;
    for (const std::string& entry : record.entries) {
        if (entry[0] == '-' || entry[0] == '[')
            told.insert(entry);
    }
    return told;
}

// The faults that nothing is said of, by the beginning of the command's label.
struct Silent {
    std::string command;
    std::set<std::string> faults;
    std::string reason;
};

const std::set<std::string> noSuccess = {"failed status",
                                         "empty reply",
                                         "no XML",
                                         "reply to another call",
                                         "another name of the call",
                                         "another letter case of the call"};
const std::set<std::string> successByItsBeginning = {"cut off behind the status", "a megabyte"};

const std::vector<Silent>& SilentCases() {
    static const std::vector<Silent> cases = {
        {"", {"takes 2 s"}, "commands count as slow from three seconds on"},
        {"", {"gone after the command"}, "the run asked GoldMine for nothing more"},
        {"StatusMsg", noSuccess, "a line of the program's own says the same"},
        {"RegisterWindowUpDown DIALOGSCHEDULECOMPLETE 0", noSuccess, "the program ends"},
        {"RegisterWindowUpDown DIALOGSCHEDULECOMPLETE 0", successByItsBeginning, "the same"},
        {"Macro &Phone", noSuccess, "no record is open: the search goes on elsewhere"},
        {"Macro &Phone", successByItsBeginning, "another number: the search goes on"},
        {"Macro Contact1->AccountNo", {"a megabyte"}, "one without Additional Contacts"},
        {"CallerID", noSuccess, "not found: the search goes on, or says so"},
        {"CallerID", successByItsBeginning, "found, whatever the value"},
        {"StatusMsg", successByItsBeginning, "shown, whatever the value"},
        {"DataStream Fetch", {"a megabyte"}, "the rows are whole"},
        {"DataStream Close", successByItsBeginning, "closed, whatever the value"},
        {"Replace", successByItsBeginning, "written, whatever the value"},
        {"Unlock", successByItsBeginning, "unlocked, whatever the value"},
        {"Close", successByItsBeginning, "closed, whatever the value"},
        {"RecordObj", successByItsBeginning, "the status digit alone counts"},
        {"RecordObj", {"another letter case of the call"}, "the same"},
        {"GetActiveWindowsList",
         {"another name of the call", "another letter case of the call", "a megabyte"},
         "the list is whole"},
    };
    return cases;
}

TEST(FaultMatrixTest, TheFailureIsSaid) {
    std::set<const Silent*> met;
    for (const Cell& cell : TheMatrix().cells) {
        std::multiset<std::string> told = Told(cell.record);
        for (const std::string& each : Told(TheMatrix().runs.at(cell.scenario))) {
            if (const auto same = told.find(each); same != told.end())
                told.erase(same);
        }
        if (!told.empty())
            continue;
        const auto silent =
            std::find_if(SilentCases().begin(), SilentCases().end(), [&](const Silent& each) {
                return cell.command.starts_with(each.command) &&
                       each.faults.contains(cell.fault->name);
            });
        if (silent == SilentCases().end())
            ADD_FAILURE() << NameOf(cell);
        else
            met.insert(&*silent);
    }
    for (const Silent& each : SilentCases())
        EXPECT_TRUE(met.contains(&each)) << each.command << " is never silent: " << each.reason;
}

TEST(FaultMatrixTest, NoBoxIsShownTwiceForOneFailure) {
    for (const Cell& cell : TheMatrix().cells)
        EXPECT_EQ(cell.record.boxTwice, "") << NameOf(cell);
}

}  // namespace
}  // namespace corvane::test
