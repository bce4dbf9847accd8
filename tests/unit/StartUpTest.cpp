#include "ProgramFixture.h"

namespace corvane::test {
namespace {

using StartUpTest = ProgramTest;

TEST_F(StartUpTest, WithoutParametersTheWindowIsShown) {
    around.InstallThreeCX();
    around.RunGoldMine();
    TestProgram& program = Make();

    EXPECT_EQ(program.Run(), RunOutcome::WindowShown);
    EXPECT_TRUE(program.form.visible());
}

}  // namespace
}  // namespace corvane::test
