#include "app/Program.h"

#include <utility>

#include "seams/GoldMine.h"

namespace corvane {

Program::Program(Surroundings surroundings) : around(std::move(surroundings)) {
    around.goldMine.setListener(&dialog);
    around.view.Attach(form, actions);
}

Program::~Program() {
    // GoldMine's last event must find nobody rather than what is being taken down.
    around.goldMine.setListener(nullptr);
    around.goldMine.Release();
    around.view.Detach();
}

RunOutcome Program::Run() {
    RunOutcome outcome = RunOutcome::End;
    errors.Guard([&] { outcome = startUp.Run(); });
    // Nothing was shown, so nothing is asked and nothing can be cancelled.
    if (outcome == RunOutcome::End)
        errors.Guard([this] { static_cast<void>(shutdown.Unload()); });
    return outcome;
}

}  // namespace corvane
