#pragma once

#include <functional>
#include <string_view>

#include "commands/Client.h"
#include "data/Areas.h"
#include "data/Database.h"
#include "envelope/Command.h"
#include "events/EventRaiser.h"
#include "faults/Faults.h"
#include "shared/Journal.h"
#include "shared/Options.h"
#include "windows/Desk.h"

namespace practice {

// Takes every command: journals it, applies the faults, lets the right routine answer it.
class CommandRouter {
public:
    CommandRouter(const Options& options, Database& database, Desk& desk, Faults& faults,
                  Journal& journal, EventRaiser& events);

    // Called in mid-command when a fault wants the process to die.
    std::function<void()> onDie;

    // Never throws; whatever goes wrong becomes a failure reply.
    Answer Run(std::wstring_view text, Client& client);
    // Whether a client may hear events; fails when a fault wants that.
    HRESULT Listen();

private:
    Answer Perform(const Command& command, const FaultPlan& plan, Client& client);

    const Options& options_;
    Database& database_;
    Desk& desk_;
    Faults& faults_;
    Journal& journal_;
    EventRaiser& events_;
    Areas areas_;
};

}  // namespace practice
