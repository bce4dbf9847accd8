#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "AutomationClient.h"
#include "support/Lines.h"
#include "support/windows/BuiltFiles.h"
#include "support/windows/Encoding.h"
#include "support/windows/Files.h"
#include "support/windows/GoldMineData.h"
#include "support/windows/PracticeGoldMine.h"
#include "support/windows/Process.h"
#include "support/windows/TemporaryFolder.h"
#include "support/windows/Waiting.h"

namespace standin_tests {

using namespace test_support;

// A registered practice GoldMine and a fresh data folder; Start runs it.
class PracticeGoldMineTest : public testing::Test {
protected:
    static void SetUpTestSuite();
    static void TearDownTestSuite();
    void TearDown() override;

    // Waits until clients can connect.
    void Start(const std::string& options = {}, const Flavour& flavour = ordinary);
    // Closes the main window and waits for the end.
    void Close();
    // Waits for the end of one that ends by itself.
    void WaitForItsEnd();
    // The one that was started.
    const PracticeGoldMine& goldMine() const { return *goldMine_; }

    // What the ordinary program's own /Sql writes about a statement.
    std::string Sql(const std::string& statement) const;

private:
    TemporaryFolder folder_{L"standin tests"};
    std::unique_ptr<PracticeGoldMine> goldMine_;

protected:
    const GoldMineData data_{folder_.pathWithBackslash()};
};

}  // namespace standin_tests
