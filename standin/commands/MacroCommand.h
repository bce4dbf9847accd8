#pragma once

#include "commands/CallContext.h"

namespace practice {

// Macro: GoldMine's own values (&Version, &UserName, ...) and fields of the open contact or of the
// history record last inserted or opened ("Contact1->Company", "ContHist->RecID").
Answer RunMacro(CallContext& context, const Command& command);

}  // namespace practice
