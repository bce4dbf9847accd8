#pragma once

#include <string>

#include "commands/Client.h"
#include "data/Areas.h"
#include "data/Database.h"
#include "envelope/Command.h"
#include "faults/Faults.h"
#include "shared/Options.h"
#include "windows/Desk.h"

namespace practice {

// All that the running of one command may touch.
struct CallContext {
    const Options& options;
    Database& database;
    Desk& desk;
    Areas& areas;
    Client& client;
    const FaultPlan& plan;
};

}  // namespace practice
