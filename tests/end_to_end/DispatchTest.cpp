#include "EndToEndTest.h"

namespace end_to_end {

class DispatchTest : public EndToEndTest {};

TEST_F(DispatchTest, RingingInboundCallSearchesAndShowsTheContact) {
    GoldMine();

    const Outcome run = Run("/N:S /C:5551234567 /T:I /I:00042");

    Check(run,
          {.log = RunLog("/N:S /C:5551234567 /T:I /I:00042", "00042",
                         {versionDetected,
                          "Inbound call search for CallerID:  requested while inbound call is "
                          "_ringing_.",
                          "Inbound call search for CallerID:  searching while incoming call is "
                          "ringing.",
                          "Found (555)123-4567 in a primary contact record.",
                          "Inbound call search for CallerID:  processing completed.",
                          "History creation:  requested at _connection_ of call.",
                          "History creation:  call start event ignored.",
                          "History creation:  processing completed.",
                          "Call processing completed in <seconds> seconds."}),
           .commands = Joined(
               {startUpCommands,
                phoneCommands,
                {gmapi::CallerID("(555)123-4567", "1", "1"),
                 gmapi::StatusMsg("Corvane found (555)123-4567 in a primary contact record.")}})});
}

}  // namespace end_to_end
