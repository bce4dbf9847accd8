#pragma once

#include "commands/CallContext.h"

namespace practice {

// The commands on open tables. Each answers the text named here as its status value.
Answer RunOpen(CallContext& context, const Command& command);  // the area
Answer RunMove(CallContext& context, const Command& command);  // 1 there, 2 closest, 3 eof, 4 bof
Answer RunRead(CallContext& context, const Command& command);  // the field's text
Answer RunReplace(CallContext& context, const Command& command);  // 1
Answer RunUnlock(CallContext& context, const Command& command);   // 1
Answer RunClose(CallContext& context, const Command& command);    // 1

// Adds a history item. Answers its record id, or 0 when there is no such account.
Answer RunInsHist(CallContext& context, const Command& command);

// RecordObj: SetObject, SetRecord Primary, SetOrder ContAcc, Seek <account>, in that order; shows
// the account sought in the current window. Clients look at the status digit.
Answer RunRecordObj(CallContext& context, const Command& command);

}  // namespace practice
