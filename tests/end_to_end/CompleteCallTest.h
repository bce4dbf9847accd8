#pragma once

#include <string>

#include "EndToEndTest.h"

namespace end_to_end {

// The default: an answered call opens GoldMine's dialog.
class CompleteCallTest : public EndToEndTest {
protected:
    static inline const std::string connected = "/N:C /C:5551234567 /T:I /I:9";
    static inline const std::string reference = "Connected incoming call from (555)123-4567";
    static inline const std::string opening =
        "[9]: Opening Complete Call dialog before saving in history.";
    static inline const std::string opened =
        "[9]: Finished opening Complete Call dialog before saving in history.";
    static inline const std::string waiting =
        "[9]: Waiting for history Ref and Notes to be filled in: ";
    static constexpr int referenceId = 1016;
    static constexpr int notesId = 1017;

    void SetUp() override {
        EndToEndTest::SetUp();
        Set("chkPopOnInboundCall", "0");
    }

    // The handle of the dialog, as GoldMine reported it.
    static HWND Dialog(const PracticeGoldMine& goldMine) {
        const std::string mark = "! WindowUpDown DIALOGSCHEDULECOMPLETE 1 ";
        HWND dialog = nullptr;
        for (const std::string& line : goldMine.Journal()) {
            if (line.starts_with(mark)) {
                dialog = reinterpret_cast<HWND>(
                    static_cast<INT_PTR>(std::atol(line.c_str() + mark.size())));
            }
        }
        return dialog;
    }
    static std::string HandleText(HWND window) {
        return std::to_string(static_cast<long>(reinterpret_cast<INT_PTR>(window)));
    }
    static std::string FieldOf(HWND dialog, int id) { return Utf8(TextOf(GetDlgItem(dialog, id))); }

    // Up to the search, and the lines before and behind what the dialog does.
    static Lines Log(const Lines& atOpening, const Lines& atTheEnd) {
        Lines log = RunLog(connected, "9",
                           {versionDetected,
                            "Inbound call search for CallerID:  no searching requested on inbound "
                            "call.",
                            "History creation:  requested at _connection_ of call.",
                            "Found (555)123-4567 in a primary contact record.",
                            "Creating history at connection of call."});
        const std::string last = log.back();
        log.pop_back();
        return Joined({log,
                       atOpening,
                       {"[9]: Finishing creating history at connection of call.",
                        "[9]: History creation:  processing completed.",
                        "[9]: Call processing completed in <seconds> seconds."},
                       atTheEnd,
                       {last}});
    }
    static Lines CommandsUntilMenu(const std::string& menuCommand) {
        return Joined({startUpCommands,
                       phoneCommands,
                       {gmapi::CallerID("(555)123-4567", "1", "1"), gmapi::Register("1"),
                        gmapi::MenuCommand(menuCommand)}});
    }
    static Lines FillIn(HWND dialog, const std::string& text) {
        return {gmapi::WindowsList(), gmapi::SetControlText(HandleText(dialog), "1016", text)};
    }
    // Takes the waiting lines out of a log and answers how many there were, counted rightly.
    static int TakeWaits(Lines& log) {
        int count = 0;
        std::erase_if(log, [&](const std::string& line) {
            if (!line.starts_with(waiting))
                return false;
            EXPECT_EQ(line, waiting + std::to_string(++count) + " second(s)");
            return true;
        });
        return count;
    }

    static inline const std::string incoming = "CompleteUnscheduledIncomingCall";
};

}  // namespace end_to_end
