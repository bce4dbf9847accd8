#pragma once

#include <algorithm>
#include <memory>
#include <string>

#include "calls/CallHistory.h"
#include "calls/CallInProgress.h"
#include "calls/CompleteCallDialog.h"
#include "calls/ContactSearch.h"
#include "calls/Dispatcher.h"
#include "calls/HtmlNotes.h"
#include "calls/RecordingLink.h"
#include "dialing/Dialer.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakeHtmlDocument.h"
#include "fakes/FakeProcesses.h"
#include "GoldMineFixture.h"
#include "util/ErrorReport.h"

namespace corvane::test {

inline const std::wstring phone1Command =
    L"<GMAPI call=\"Macro\"><data name=\"Macro\">&amp;Phone1</data></GMAPI>";

// A dispatcher over a GoldMine whose open record holds the caller's number, or which knows no
// contact at all. Every search begins with the Phone1 of the open record.
class DispatcherFixture : public GoldMineFixture {
protected:
    DispatcherFixture() {
        form.txtCallerIDFormatted.setText(L"555");
        form.optPhone1Only.setSelected(true);
        form.GoldMineUserName = L"ANN";
        goldMine.answerAll = [this](const std::wstring& command) { return Answer(command); };
    }
    std::wstring Answer(const std::wstring& command) {
        if (command == phone1Command)
            return Reply(L"Macro", contactKnown ? L"1" : L"0", L"555");
        if (command.starts_with(L"<GMAPI call=\"StatusMsg\">")) {
            if (command.find(L"Corvane found") != std::wstring::npos)
                ++shownInGoldMine;
            return Reply(L"StatusMsg", L"1", L"");
        }
        if (command.starts_with(L"<GMAPI call=\"CallerID\">"))
            return Reply(L"CallerID", L"0", L"");
        if (command.starts_with(L"<GMAPI call=\"Macro\">"))
            return Reply(L"Macro", L"1", L"A1");
        if (command.starts_with(L"<GMAPI call=\"InsHist\">"))
            return Reply(L"InsHist", L"1", L"HR1");
        if (command.starts_with(L"<GMAPI call=\"RegisterWindowUpDown\">"))
            return Reply(L"RegisterWindowUpDown", L"1", L"Success");
        if (command.starts_with(L"<GMAPI call=\"MenuCommand\">"))
            return Reply(L"MenuCommand", L"1", L"The command was executed.");
        if (command == L"<GMAPI call=\"GetActiveWindowsList\"/>")
            return Reply(L"GetActiveWindowsList", L"1", L"");
        if (command.starts_with(L"<GMAPI call=\"SetControlText\">"))
            return Reply(L"GMUI_SetControlText", L"1", L"Success");
        ADD_FAILURE() << "unexpected command " << testing::PrintToString(command);
        return {};
    }
    [[nodiscard]] std::ptrdiff_t Searches() const {
        return std::count(goldMine.commands.begin(), goldMine.commands.end(), phone1Command);
    }
    // The first command of that call; empty when there is none.
    [[nodiscard]] std::wstring Sent(const std::wstring& call) const {
        for (const std::wstring& command : goldMine.commands) {
            if (command.starts_with(L"<GMAPI call=\"" + call + L"\">"))
                return command;
        }
        return {};
    }
    [[nodiscard]] std::wstring SentRef() const {
        const std::wstring command = Sent(L"InsHist");
        const std::wstring begin = L"<data name=\"Ref\">";
        const auto at = command.find(begin);
        if (at == std::wstring::npos)
            return L"(no history)";
        const auto from = at + begin.size();
        return command.substr(from, command.find(L"</data>", from) - from);
    }

    bool contactKnown = true;
    int shownInGoldMine = 0;
    FakeFileSystem files;
    FakeProcesses processes;
    HtmlScript html;
    Dialer dialer{form, processes, status, boxes};
    ContactSearch search{form, macro, dataStream, windows, status, boxes};
    CallHistory history{form, gmui, macro, records, status, boxes};
    RecordingLink recordingLink{form, files, status, boxes, clock};
    HtmlNotes notes{status, clock, [this] { return std::make_unique<FakeHtmlDocument>(html); },
                    L"CorvaneTo3CX"};
    ErrorReport errors{status, boxes};
    CallInProgress inProgress{form};
    CompleteCallDialog dialog{{form, gmui, windows, notes, inProgress, status, errors, clock}};
    Dispatcher dispatcher{
        {form, dialer, search, history, dialog, recordingLink, inProgress, status, clock}};
};

}  // namespace corvane::test
