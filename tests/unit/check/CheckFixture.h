#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

#include "check/CheckSurroundings.h"
#include "fakes/FakeOutput.h"
#include "fakes/FakeSurvey.h"
#include "unit/ProgramFixture.h"

namespace corvane::test {

// A machine as a check meets it.
struct CheckedMachine : FakeSurroundings {
    CheckedMachine() {
        InstallThreeCX();
        files.files[info.ExecutablePath()];
    }
    [[nodiscard]] CheckSurroundings ForCheck() {
        return {.program = info,
                .registry = registry,
                .otherRegistry = otherRegistry,
                .iniFiles = iniFiles,
                .files = files,
                .processes = processes,
                .shell = shell,
                .clock = clock,
                .survey = survey,
                .goldMine = goldMine,
                .xpath = xpath};
    }

    FakeRegistry otherRegistry;
    FakeSurvey survey;
};

// Surroundings of a machine that is set up anew for each thread that asks for them: the fakes know
// no threads.
inline InSurroundings On(std::function<void(CheckedMachine&)> setUp) {
    return [setUp = std::move(setUp)](const std::function<void(const CheckSurroundings&)>& body) {
        CheckedMachine machine;
        setUp(machine);
        body(machine.ForCheck());
        EXPECT_TRUE(machine.registry.writes.empty());
        EXPECT_TRUE(machine.iniFiles.writes.empty());
        EXPECT_TRUE(machine.processes.started.empty());
    };
}

}  // namespace corvane::test
