#pragma once

#include "commands/CallContext.h"

namespace practice {

// DataStream: runs a query, hands its rows out in raw packets, closes it.
//
// A packet is a header, LF, and the rows. The header's first digit is 0 when more rows can be
// fetched and 3 at the end; the number behind its dash counts all rows of the query. Unless asked
// otherwise, CR separates fields and LF separates rows.
Answer RunDataStream(CallContext& context, const Command& command);

}  // namespace practice
