#pragma once

#include <string>

#include "Areas.h"
#include "Client.h"
#include "Command.h"
#include "Database.h"
#include "Desk.h"
#include "Faults.h"
#include "Options.h"

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
