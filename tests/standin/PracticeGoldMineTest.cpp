#include "PracticeGoldMineTest.h"

namespace standin_tests {

void PracticeGoldMineTest::SetUpTestSuite() {
    RegisterGoldMine(ordinary.program);
}

void PracticeGoldMineTest::TearDownTestSuite() {
    UnregisterGoldMine(ordinary.program);
}

void PracticeGoldMineTest::TearDown() {
    if (goldMine_)
        Close();
}

void PracticeGoldMineTest::Start(const std::string& options, const Flavour& flavour) {
    goldMine_ =
        std::make_unique<PracticeGoldMine>(StandinFile(flavour.program), data_.folder(), options);
}

void PracticeGoldMineTest::Close() {
    goldMine_->Close();
    goldMine_.reset();
}

void PracticeGoldMineTest::WaitForItsEnd() {
    EXPECT_TRUE(goldMine_->WaitForEnd());
    goldMine_.reset();
}

std::string PracticeGoldMineTest::Sql(const std::string& statement) const {
    return data_.Sql(StandinFile(ordinary.program), statement);
}

}  // namespace standin_tests
