#include "HistoryTest.h"

#include "support/windows/Files.h"

namespace end_to_end {

TEST_F(HistoryTest, TheNewItemIsOpenedByItsIdentifier) {
    PracticeGoldMine& goldMine = GoldMine();

    const Outcome run = Run(ended);

    const std::string recordId = goldMine.NewestHistory("RecID");
    Check(run, {.log = Log({"Created incoming call history.", "Opening history item window.",
                            "Opened history item window."}),
                .commands = Joined({startUpCommands,
                                    search,
                                    {accountNo, gmapi::InsHist("A0002", "CI", reference),
                                     gmapi::PopCalHistItem(gmapi::Escaped(recordId))}})});
    EXPECT_EQ(goldMine.NewestHistory("UserID, AccountNo, RecType, Ref, Notes"),
              "MASTER\tA0002\tCI\t" + reference + "\t");
}

TEST_F(HistoryTest, ANumericIdentifierIsAskedForAgain) {
    PracticeGoldMine& goldMine = GoldMine();
    goldMine.SetFaults("InsHist ids numeric\n");

    const Outcome run = Run(ended);

    const std::string recordId = goldMine.NewestHistory("RecID");
    Check(run, {.log = Log({"Created incoming call history.", "Opening history item window.",
                            "Opened history item window."}),
                .commands = Joined(
                    {startUpCommands,
                     search,
                     {accountNo, gmapi::InsHist("A0002", "CI", reference),
                      gmapi::Macro("ContHist-&gt;RecID"), gmapi::PopCalHistItem(recordId)}})});
}

TEST_F(HistoryTest, AnItemThatCannotBeOpenedStays) {
    PracticeGoldMine& goldMine = GoldMine();
    goldMine.SetFaults("PopCalHistItem status 0\n");

    const Outcome run = Run(ended);

    EXPECT_EQ(run.log, Log({"Created incoming call history.", "Opening history item window.",
                            "Could not open history item window."}));
    EXPECT_EQ(run.boxes, Boxes{});
    EXPECT_EQ(goldMine.NewestHistory("Ref"), reference);
}

TEST_F(HistoryTest, AnIdentifierOfZeroIsAFailure) {
    GoldMine().SetFaults("InsHist value 0\n");

    const Outcome run = Run(ended);

    Check(
        run,
        {.log = Log({"Could not insert call history.", "Failed to create history at end of call"}),
         .commands = Joined(
             {startUpCommands, search, {accountNo, gmapi::InsHist("A0002", "CI", reference)}}),
         .boxes = {{"Failed to create history at end of call"}}});
}

TEST_F(HistoryTest, WithoutAnAccountNumberNoHistoryIsCreated) {
    GoldMine().SetFaults("Macro:Contact1->AccountNo status 0\n");

    const Outcome run = Run(ended);

    const std::string failure =
        "Could not retrieve GoldMine AccountNo for current record, so no history created.";
    Check(run, {.log = Log({failure, "Failed to create history at end of call"}),
                .commands = Joined({startUpCommands, search, {accountNo}}),
                .boxes = {{failure}, {"Failed to create history at end of call"}}});
}

TEST_F(HistoryTest, TheUserOfTheStartIsTheItemsUser) {
    WriteFileText(std::wstring(dataFolder) + L"O'NEIL&.INI",
                  "[Modem]\r\nDeviceID=0\r\nDDEDial=&Dial,," + std::string(programPath) +
                      " %s\r\nTAPITranslation=0\r\n");
    PracticeGoldMine& goldMine = GoldMine("\"/User:O'NEIL&\"");
    Set("chkAutoOpenHistory", "0");

    const Outcome run = Run(ended);

    Check(run, {.log = Log({"Created incoming call history."}),
                .commands = Joined(
                    {startUpCommands,
                     search,
                     {accountNo, gmapi::InsHist("A0002", "CI", reference, "O&apos;NEIL&amp;")}})});
    EXPECT_EQ(goldMine.NewestHistory("UserID"), "O'NEIL&");
}

}  // namespace end_to_end
