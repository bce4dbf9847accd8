#pragma once

#include <map>
#include <string>

#include "EndToEndTest.h"

namespace end_to_end {

// History is created at the end of an inbound call, directly, and opened afterwards.
class HistoryTest : public EndToEndTest {
protected:
    static inline const std::string reference = "Ended incoming call from (555)123-4567";
    static inline const std::string ended = "/N:E /C:5551234567 /T:I /I:00042";
    static inline const std::string accountNo = gmapi::Macro("Contact1-&gt;AccountNo");
    static inline const Lines search =
        Joined({phoneCommands, {gmapi::CallerID("(555)123-4567", "1", "1")}});

    void SetUp() override {
        EndToEndTest::SetUp();
        SetAll({{"chkPopOnInboundCall", "0"},
                {"optProcessConnect", "False"},
                {"optProcessEnd", "True"},
                {"optOpenHistoryBeforeSaving", "False"},
                {"optOpenHistoryAfterSaving", "True"}});
    }

    // A run's log, of which these are the lines between found contact and finished history.
    static Lines Log(const Lines& messages, const std::string& commandLine = ended) {
        return RunLog(commandLine, "00042",
                      Joined({{versionDetected,
                               "Inbound call search for CallerID:  no searching requested on "
                               "inbound call.",
                               "History creation:  requested at _end_ of call.",
                               "Found (555)123-4567 in a primary contact record.",
                               "Creating history at end of call."},
                              messages,
                              {"Finishing creating history at end of call.",
                               "History creation:  processing completed.",
                               "Call processing completed in <seconds> seconds."}}));
    }
};

}  // namespace end_to_end
