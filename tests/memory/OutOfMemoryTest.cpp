// Whole runs in which an allocation fails: each one in turn, and every third with all that follow
// it. The run ends in order and says why, GoldMine is let go, and no memory is lost.
//
// What the fakes allocate fails as well: a command that cannot be kept was not sent, a reply that
// cannot be made is lost. Only the message boxes take no memory, so that all is seen that they are
// to show.

#include <algorithm>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "Allocations.h"
#include "support/Gmapi.h"
#include "unit/ProgramFixture.h"
#include "util/BuiltInHtmlDocument.h"
#include "util/ErrorReport.h"

namespace corvane::test {
namespace {

using allocations::Failing;
using gmapi = test_support::Gmapi<wchar_t>;

constexpr std::wstring_view outOfMemory = L"Run-time error '7'";

// Shows nothing and keeps nothing but whether want of memory was told.
class ToldBoxes final : public MessageBoxes {
public:
    BoxAnswer Show(std::wstring_view text, BoxButtons, BoxIcon) override {
        told = told || text.find(outOfMemory) != std::wstring_view::npos;
        return BoxAnswer::Ok;
    }
    bool told = false;
};

struct Scenario {
    const char* name;
    std::wstring arguments;
    std::vector<std::pair<std::wstring, std::wstring>> settings;
    std::function<void(FakeSurroundings&)> prepare = [](FakeSurroundings&) {};
};

void PrintTo(const Scenario& scenario, std::ostream* out) {
    *out << scenario.name;
}

// What came of a run.
struct Outcome {
    std::size_t allocations = 0;
    bool told = false;  // by a box or a status line
    std::vector<std::wstring> commands;
    std::vector<std::wstring> started;
    bool connected = false;
    int openKeys = 0;
};

// GoldMine and 3CX for one run of a scenario.
class Site {
public:
    explicit Site(const Scenario& scenario) : scenario_(scenario) {
        around_.InstallThreeCX();
        around_.RunGoldMine();
        around_.iniFiles.files[L"C:\\GM\\GM.INI"][{L"GoldMine", L"HTML_Cal_Notes"}] = L"1";
        around_.files.folders.insert(L"C:\\Recordings");
        around_.files.newest = {
            .name = L"5551234567 (00042).wav", .modified = 45362.5, .filesSeen = 1};
        around_.StoreOption(L"chkWriteLog", L"1");
        for (const auto& [name, text] : scenario.settings)
            around_.StoreOption(name, text);
        scenario.prepare(around_);
        around_.goldMine.answerAll = [this](const std::wstring& command) {
            return Answer(command);
        };
    }

    Outcome Run(Failing failing, std::size_t which) {
        Outcome outcome;
        allocations::Start(failing, which);
        // As in app/main.cpp.
        try {
            Program program(Seams());
            static_cast<void>(program.Run());
            outcome.told = program.form.txtStatus.text().find(outOfMemory) != std::wstring::npos;
        } catch (...) {
            ErrorReport::ShowCurrentError(boxes_);
        }
        outcome.allocations = allocations::Stop();
        // An event that comes too late finds nobody.
        around_.goldMine.RaiseWindowUpDown(L"DIALOGSCHEDULECOMPLETE", true, 5);
        outcome.told = outcome.told || boxes_.told;
        outcome.commands = around_.goldMine.commands;
        outcome.started = around_.processes.started;
        outcome.connected = around_.goldMine.connected();
        outcome.openKeys = around_.registry.openHandles;
        return outcome;
    }

private:
    Surroundings Seams() {
        Surroundings seams = around_.Seams(scenario_.arguments, boxes_);
        seams.newHtmlDocument = [] { return std::make_unique<BuiltInHtmlDocument>(); };
        return seams;
    }

    std::wstring Answer(const std::wstring& command) {
        const auto known = around_.goldMine.answers.find(command);
        if (known != around_.goldMine.answers.end())
            return known->second;
        const std::size_t begin = command.find(L'"') + 1;
        const std::wstring call = command.substr(begin, command.find(L'"', begin) - begin);
        if (call == L"MenuCommand") {
            around_.goldMine.RaiseWindowUpDown(L"DIALOGSCHEDULECOMPLETE", true, 5);
            return gmapi::Reply(call, L"1", L"The command was executed.");
        }
        if (call == L"GetActiveWindowsList")
            return windows;
        if (call == L"SetControlText")
            return gmapi::Reply(L"GMUI_SetControlText", L"1", L"Success");
        if (call == L"RegisterWindowUpDown" || call == L"PopCalHistItem")
            return gmapi::Reply(call, L"1", L"Success");
        return gmapi::Reply(call, L"1", L"1");
    }

    static inline const std::wstring windows =
        L"<GMAPI call=\"GetActiveWindowsList\"><status code=\"1\">1</status>"
        L"<data name=\"WindowsList\"><data name=\"window\"><data name=\"hWnd\">5</data>"
        L"<data name=\"Controls\"><data name=\"Control\"><data name=\"ID\">1017</data>"
        L"<data name=\"Text\">&amp;lt;b&amp;gt;old&amp;lt;/b&amp;gt;</data></data></data></data>"
        L"</data></GMAPI>";

    const Scenario& scenario_;
    FakeSurroundings around_;
    ToldBoxes boxes_;
};

class OutOfMemoryTest : public testing::TestWithParam<Scenario> {
protected:
    // The run with nothing missing, which also fills the caches of the libraries.
    OutOfMemoryTest() { Site(GetParam()).Run(Failing::None, 0); }

    // The run with its allocations failing in turn, each or every so many.
    static void FailInTurn(Failing failing, std::size_t step) {
        const Outcome whole = Site(GetParam()).Run(Failing::None, 0);
        ASSERT_FALSE(whole.told);
        ASSERT_GT(whole.allocations, 100U);
        for (std::size_t which = 0; which < whole.allocations && !HasFailure(); which += step) {
            SCOPED_TRACE(which);
            const std::size_t live = allocations::Live();
            RunOne(failing, which, whole);
            EXPECT_EQ(allocations::Live(), live) << "blocks were lost";
        }
        RecordProperty("allocations", static_cast<int>(whole.allocations));
    }

private:
    static void RunOne(Failing failing, std::size_t which, const Outcome& whole) {
        Site site(GetParam());
        const Outcome outcome = site.Run(failing, which);
        EXPECT_TRUE(outcome.told ||
                    (outcome.commands == whole.commands && outcome.started == whole.started))
            << "the run was cut short and nobody was told";
        EXPECT_LE(std::count_if(outcome.commands.begin(), outcome.commands.end(),
                                [](const std::wstring& command) {
                                    return command.starts_with(L"<GMAPI call=\"InsHist\">");
                                }),
                  1);
        EXPECT_LE(outcome.started.size(), 1U);
        EXPECT_FALSE(outcome.connected);
        EXPECT_LE(outcome.openKeys, whole.openKeys);
    }
};

TEST_P(OutOfMemoryTest, AnAllocationThatFailsEndsTheRunInOrder) {
    FailInTurn(Failing::One, 1);
}

TEST_P(OutOfMemoryTest, SoDoesMemoryThatStaysAway) {
    FailInTurn(Failing::AllFrom, 3);
}

INSTANTIATE_TEST_SUITE_P(
    Runs, OutOfMemoryTest,
    testing::Values(
        Scenario{"Ringing",
                 L"/N:S /C:5551234567 /T:I /I:00042",
                 {{L"chkPopOnInboundCall", L"1"}, {L"optPopOnInboundCallStart", L"True"}}},
        Scenario{"Answered",
                 L"/N:C /C:5551234567 /T:I /I:00042",
                 {{L"chkCreateHistory", L"1"},
                  {L"optProcessConnect", L"True"},
                  {L"chkFillInRef", L"1"},
                  {L"chkAutoOpenHistory", L"1"},
                  {L"optOpenHistoryAfterSaving", L"True"},
                  {L"chkCreateLink", L"1"},
                  {L"txtLinkedItemPath", L"C:\\Recordings"},
                  {L"chkConfirmLinkCallIdentifier", L"1"}}},
        Scenario{"Ended",
                 L"/N:E /C:5551234567 /T:I /I:00042",
                 {{L"chkCreateHistory", L"1"},
                  {L"optProcessEnd", L"True"},
                  {L"chkFillInRef", L"1"},
                  {L"chkAutoOpenHistory", L"1"},
                  {L"optOpenHistoryBeforeSaving", L"True"},
                  {L"chkCreateLink", L"1"},
                  {L"txtLinkedItemPath", L"C:\\Recordings"}}},
        Scenario{"Dialled", L"(555) 123-4567", {}},
        Scenario{"ShownWithoutLog",
                 L"(555) 123-4567",
                 {{L"chkAlwaysShowForm", L"1"}, {L"chkAutoProcess", L"1"}},
                 [](FakeSurroundings& around) {
                     around.files.appendError = MakeRuntimeError(ErrorNumber::PermissionDenied);
                 }},
        Scenario{"KeysThatDoNotClose",
                 L"(555) 123-4567",
                 {},
                 [](FakeSurroundings& around) { around.registry.closingFails = true; }}),
    [](const testing::TestParamInfo<Scenario>& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace corvane::test
