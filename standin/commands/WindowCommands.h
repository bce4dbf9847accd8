#pragma once

#include "commands/CallContext.h"

namespace practice {

// Finds the contact with exactly this phone number in Phone1 (in Phone1 to Phone3 when All is 1)
// and shows it: DisplayDialog 1 in a new window, 2 in the current one. Status digit 1 when found.
Answer RunCallerID(CallContext& context, const Command& command);

// Shows a message in the status bar, for Delay seconds when given.
Answer RunStatusMsg(CallContext& context, const Command& command);

// Begins or ends watching windows of a name for this client.
Answer RunRegisterWindowUpDown(CallContext& context, const Command& command);

// Lists GoldMine's windows with their controls, and sets the text of a control.
Answer RunGetActiveWindowsList(CallContext& context, const Command& command);
Answer RunSetControlText(CallContext& context, const Command& command);

// Opens the Complete Call dialog in one of its three kinds.
Answer RunMenuCommand(CallContext& context, const Command& command);

// Opens a history item in a window.
Answer RunPopCalHistItem(CallContext& context, const Command& command);

}  // namespace practice
