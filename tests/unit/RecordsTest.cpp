#include "gmapi/Records.h"

#include "GoldMineFixture.h"

namespace corvane::test {
namespace {

HistoryItem CompleteItem() {
    HistoryItem item;
    item.AccNo = L"A<1>";
    item.Activity = L"b&";
    item.Duration = L"c";
    item.OpRecID = L"d";
    item.RecType = L"CI";
    item.Ref = L"e'";
    item.ResultCode = L"f";
    item.Notes = L"\"g\"";
    item.User = L"ANN";
    item.Private = L"h";
    return item;
}

// One of the record commands: what it sends for these arguments, and how its success begins.
struct RecordCommand {
    std::wstring command;
    std::wstring prefix;
    Records::Result (*run)(Records&);
};

class RecordCommandTest : public GoldMineFixture,
                          public testing::WithParamInterface<RecordCommand> {
protected:
    void Answer(const std::wstring& reply) { goldMine.answers[GetParam().command] = reply; }
    Records::Result Run() { return GetParam().run(records); }
};

TEST_P(RecordCommandTest, SendsItsDataInOrderAndEscaped) {
    Answer(GetParam().prefix + L"5</status></GMAPI>");
    static_cast<void>(Run());
    EXPECT_EQ(goldMine.commands, Lines{GetParam().command});
}

TEST_P(RecordCommandTest, TheUnescapedStatusTextIsTheValue) {
    Answer(GetParam().prefix + L"a &amp;lt; b</status></GMAPI>");
    EXPECT_EQ(Run(), L"a < b");
}

TEST_P(RecordCommandTest, ThePrefixAloneIsASuccess) {
    Answer(GetParam().prefix);
    EXPECT_EQ(Run(), L"");
}

TEST_P(RecordCommandTest, AnyOtherReplyIsAFailureWithoutAValue) {
    std::wstring zero = GetParam().prefix + L"5</status></GMAPI>";
    zero.replace(zero.find(L"code=\"1\""), 8, L"code=\"0\"");
    for (const std::wstring& reply :
         {zero, std::wstring(L"False"), std::wstring(), GetParam().prefix.substr(1),
          GetParam().prefix.substr(0, GetParam().prefix.size() - 1)}) {
        Answer(reply);
        EXPECT_EQ(Run(), std::nullopt) << testing::PrintToString(reply);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Commands, RecordCommandTest,
    testing::Values(
        RecordCommand{L"<GMAPI call=\"Open\"><data name=\"Filename\">CONTHIST</data></GMAPI>",
                      L"<GMAPI call=\"Open\"><status code=\"1\">",
                      [](Records& records) { return records.Open(L"CONTHIST"); }},
        RecordCommand{L"<GMAPI call=\"Move\"><data name=\"Area\">7</data>"
                      L"<data name=\"Command\">GOTO</data>"
                      L"<data name=\"Parameter\">R&amp;1</data></GMAPI>",
                      L"<GMAPI call=\"Move\"><status code=\"1\">",
                      [](Records& records) { return records.Move(L"7", L"GOTO", L"R&1"); }},
        RecordCommand{L"<GMAPI call=\"Read\"><data name=\"Area\">7</data>"
                      L"<data name=\"Field\">Notes</data></GMAPI>",
                      L"<GMAPI call=\"Read\"><status code=\"1\">",
                      [](Records& records) { return records.Read(L"7", L"Notes"); }},
        RecordCommand{
            L"<GMAPI call=\"Replace\"><data name=\"Area\">7</data><data name=\"Field\">Notes</data>"
            L"<data name=\"NewValue\">a &lt; b &amp; c</data><data "
            L"name=\"Append\">0</data></GMAPI>",
            L"<GMAPI call=\"Replace\"><status code=\"1\">",
            [](Records& records) { return records.Replace(L"7", L"Notes", L"a < b & c", false); }},
        RecordCommand{
            L"<GMAPI call=\"Replace\"><data name=\"Area\">7</data><data name=\"Field\">Notes</data>"
            L"<data name=\"NewValue\">more</data><data name=\"Append\">1</data></GMAPI>",
            L"<GMAPI call=\"Replace\"><status code=\"1\">",
            [](Records& records) { return records.Replace(L"7", L"Notes", L"more", true); }},
        RecordCommand{L"<GMAPI call=\"Unlock\"><data name=\"Area\">7</data></GMAPI>",
                      L"<GMAPI call=\"Unlock\"><status code=\"1\">",
                      [](Records& records) { return records.Unlock(L"7"); }},
        RecordCommand{L"<GMAPI call=\"Close\"><data name=\"Area\">7</data></GMAPI>",
                      L"<GMAPI call=\"Close\"><status code=\"1\">",
                      [](Records& records) { return records.Close(L"7"); }},
        RecordCommand{L"<GMAPI call=\"InsHist\"><data name=\"AccNo\">A&lt;1&gt;</data>"
                      L"<data name=\"Activity\">b&amp;</data><data name=\"Duration\">c</data>"
                      L"<data name=\"OpRecID\">d</data><data name=\"RecType\">CI</data>"
                      L"<data name=\"Ref\">e&apos;</data><data name=\"ResultCode\">f</data>"
                      L"<data name=\"Notes\">&quot;g&quot;</data><data name=\"User\">ANN</data>"
                      L"<data name=\"Private\">h</data></GMAPI>",
                      L"<GMAPI call=\"InsHist\"><status code=\"1\">",
                      [](Records& records) { return records.InsHist(CompleteItem()); }}));

class RecordsTest : public GoldMineFixture {};

struct StatusZero {
    Records::Result (*run)(Records&);
    Records::Result value;
};

class StatusZeroTest : public GoldMineFixture, public testing::WithParamInterface<StatusZero> {};

TEST_P(StatusZeroTest, OnlyForInsHistIsItAFailure) {
    goldMine.answerAll = [](const std::wstring& command) {
        return command.substr(0, command.find(L'>') + 1) + L"<status code=\"1\">0</status></GMAPI>";
    };
    EXPECT_EQ(GetParam().run(records), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Commands, StatusZeroTest,
    testing::Values(
        StatusZero{[](Records& records) { return records.InsHist({}); }, std::nullopt},
        StatusZero{[](Records& records) { return records.Open(L"CONTHIST"); }, L"0"},
        StatusZero{[](Records& records) { return records.Move(L"7", L"GOTO", L"1"); }, L"0"},
        StatusZero{[](Records& records) { return records.Replace(L"7", L"Notes", L"", true); },
                   L"0"}));

TEST_F(RecordsTest, EmptyHistoryFieldsAreSentEmpty) {
    goldMine.answers
        [L"<GMAPI call=\"InsHist\"><data name=\"AccNo\"></data>"
         L"<data name=\"Activity\"></data><data name=\"Duration\"></data>"
         L"<data name=\"OpRecID\"></data><data name=\"RecType\"></data>"
         L"<data name=\"Ref\"></data><data name=\"ResultCode\"></data>"
         L"<data name=\"Notes\"></data><data name=\"User\"></data>"
         L"<data name=\"Private\"></data></GMAPI>"] = Reply(L"InsHist", L"1", L"R5");
    EXPECT_EQ(records.InsHist({}), L"R5");
}

}  // namespace
}  // namespace corvane::test
