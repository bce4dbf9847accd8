#pragma once

#include <string>

#include "shared/Journal.h"
#include "shared/Options.h"

namespace practice {

// Dials as GoldMine does: by running the program that the user's INI file names.
//
// The dialing instruction is "DDEDial" in section "Modem": "&Dial,,<command line>", where the first
// %s of the command line stands for the number. A blank ends the path of the program, unless the
// path is in quotes. The instruction is read for each call, so that a new one counts at once.
class Dialer {
public:
    Dialer(const Options& options, Journal& journal);

    // Starts the program and does not wait for it. Answers "", or why nothing was started, as text
    // for the user. The journal gets the command line or that reason.
    std::wstring Dial(const std::wstring& number);

private:
    std::wstring Start(const std::wstring& number);

    const Options& options_;
    Journal& journal_;
};

}  // namespace practice
