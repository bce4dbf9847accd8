// Every target states what it holds with GoogleTest's expectations; here one that does not hold
// stops the process, so that the input at hand is the find.

#include <gtest/gtest.h>

#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace {

class StopAtFailure final : public testing::EmptyTestEventListener {
    void OnTestPartResult(const testing::TestPartResult& result) override {
        if (result.failed())
            std::abort();
    }
};

}  // namespace

int LLVMFuzzerInitialize(int*, char***) {
    // It is behind the listener that prints, and belongs to GoogleTest.
    testing::UnitTest::GetInstance()->listeners().Append(new StopAtFailure);
    return 0;
}
