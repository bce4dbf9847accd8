#include "gmapi/DataStream.h"

#include "GoldMineFixture.h"

namespace corvane::test {
namespace {

const std::wstring sql = L"select a from b where c < 1 & d > 2";
const std::wstring query =
    L"<GMAPI call=\"DataStream\"><data name=\"Command\">Query</data>"
    L"<data name=\"SQL\">select a from b where c &lt; 1 &amp; d &gt; 2</data>"
    L"<data name=\"Filter\"></data></GMAPI>";
const std::wstring fetch =
    L"<GMAPI call=\"DataStream\"><data name=\"Command\">Fetch</data><data name=\"Area\">12</data>"
    L"<data name=\"FetchCount\">1</data><data name=\"Raw\">1</data>"
    L"<data name=\"FieldDelimiter\"></data><data name=\"RowDelimiter\"></data></GMAPI>";
const std::wstring closeStream =
    L"<GMAPI call=\"DataStream\"><data name=\"Command\">Close</data>"
    L"<data name=\"Area\">12</data></GMAPI>";

class DataStreamTest : public GoldMineFixture {
protected:
    DataStreamTest() {
        goldMine.answers[query] =
            L"<GMAPI call=\"DataStream\"><status code=\"1\">12</status></GMAPI>";
        goldMine.answers[closeStream] =
            L"<GMAPI call=\"DataStream\"><status code=\"1\">1</status></GMAPI>";
        SetPacket(L"3000-0001&#10;A1&#13;x");
    }
    void SetPacket(const std::wstring& packet) {
        goldMine.answers[fetch] =
            L"<GMAPI call=\"DataStream\"><status code=\"1\">1</status><data name=\"Return\">"
            L"<data name=\"Rows\"><data name=\"RawReturn\">" +
            packet + L"</data></data></data></GMAPI>";
    }
    void ExpectReported(const std::wstring& text) {
        EXPECT_EQ(boxes.Take(), ShownBoxes{Notice(text, BoxIcon::Exclamation)});
        EXPECT_EQ(status.lines, Lines{text});
    }
};

TEST_F(DataStreamTest, AQueryIsSentFetchedAndClosed) {
    const auto rows = dataStream.RunQuery(sql);

    EXPECT_EQ(goldMine.commands, (Lines{query, fetch, closeStream}));
    ASSERT_TRUE(rows);
    EXPECT_EQ(rows->header, L"3000-0001");
    EXPECT_EQ(rows->rowCount, 1);
    EXPECT_EQ(rows->firstRow, L"A1\rx");
    ExpectNoLines();
}

TEST_F(DataStreamTest, TheAreaIsUnescapedAndEscapedAgain) {
    goldMine.answers[query] = Reply(L"DataStream", L"1", L"1&amp;amp;2");
    goldMine.answers[FetchCommand(L"1&amp;2")] = FetchReply(L"3000-0001&#10;A1");
    goldMine.answers[DataStreamCloseCommand(L"1&amp;2")] = Reply(L"DataStream", L"1", L"1");
    EXPECT_EQ(dataStream.FirstFieldOfQuery(sql), L"A1");
}

TEST_F(DataStreamTest, TheWaitPointerIsShownWhileGoldMineSearches) {
    std::vector<bool> waiting;
    goldMine.onSend = [&](const std::wstring&) { waiting.push_back(form.waiting()); };
    static_cast<void>(dataStream.RunQuery(sql));
    EXPECT_EQ(waiting, (std::vector<bool>{true, false, false}));
    EXPECT_FALSE(form.waiting());
}

TEST_F(DataStreamTest, TheWaitPointerGoesWhenTheQueryRaises) {
    goldMine.sendError = CompleteError(5);
    ErrorOf([&] { static_cast<void>(dataStream.RunQuery(sql)); });
    EXPECT_FALSE(form.waiting());
}

TEST_F(DataStreamTest, AFailedQueryIsReportedWithItsSql) {
    goldMine.answers[query] =
        L"<GMAPI call=\"DataStream\"><status code=\"0\">no such table</status></GMAPI>";

    EXPECT_EQ(dataStream.RunQuery(sql), std::nullopt);

    EXPECT_EQ(goldMine.commands, Lines{query});
    ExpectReported(
        L"Error calling DataStream Query function for this SQL query:\r\n"
        L"select a from b where c < 1 & d > 2\r\n"
        L"Result:\r\n"
        L"<GMAPI call=\"DataStream\"><status code=\"0\">no such table</status></GMAPI>");
}

TEST_F(DataStreamTest, AnAreaOfZeroFetchesAndClosesNothing) {
    goldMine.answers[query] = Reply(L"DataStream", L"1", L"0");
    EXPECT_EQ(dataStream.RunQuery(sql), std::nullopt);
    EXPECT_EQ(goldMine.commands, Lines{query});
    ExpectNoLines();
}

TEST_F(DataStreamTest, AFailedFetchIsReportedAndNothingIsClosed) {
    goldMine.answers[fetch] = L"False";
    EXPECT_EQ(dataStream.RunQuery(sql), std::nullopt);
    EXPECT_EQ(goldMine.commands, (Lines{query, fetch}));
    ExpectReported(L"Error calling DataStream Fetch function. Result:\r\nFalse");
}

TEST_F(DataStreamTest, AFailedCloseIsReportedAndTheRowStillCounts) {
    goldMine.answers[closeStream] =
        L"<GMAPI call=\"DataStream\"><status code=\"0\"></status></GMAPI>";
    EXPECT_EQ(dataStream.FirstFieldOfQuery(sql), L"A1");
    ExpectReported(
        L"Error calling DataStream Close function. Result:\r\n"
        L"<GMAPI call=\"DataStream\"><status code=\"0\"></status></GMAPI>");
}

TEST_F(DataStreamTest, AnEmptyRowIsReportedAndIsNoSuccess) {
    SetPacket(L"3000-0001&#10;");
    EXPECT_EQ(dataStream.FirstFieldOfQuery(sql), std::nullopt);
    ExpectReported(
        L"There is no field number 1 delimited by a Carriage Return in the following record:\r\n");
}

TEST_F(DataStreamTest, ACountWithoutRowsIsReportedLikeAnEmptyRow) {
    SetPacket(L"3000-0001");
    EXPECT_EQ(dataStream.FirstFieldOfQuery(sql), std::nullopt);
    ExpectReported(
        L"There is no field number 1 delimited by a Carriage Return in the following record:\r\n");
}

TEST_F(DataStreamTest, OfThousandsOfRowsTheHeaderCountsAndTheFirstIsTaken) {
    std::wstring packet = L"0000-1";
    for (int row = 0; row < 5000; ++row)
        packet += L"&#10;A" + std::to_wstring(row) + L"&#13;x";
    SetPacket(packet);
    EXPECT_EQ(dataStream.FirstFieldOfQuery(sql), L"A0");
    ExpectNoLines();
}

class UnreadableReplyTest : public DataStreamTest,
                            public testing::WithParamInterface<std::wstring> {};

TEST_P(UnreadableReplyTest, OfAFetchHasNoCountAndIsATypeMismatchAfterTheClose) {
    goldMine.answers[fetch] = GetParam();
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(dataStream.FirstFieldOfQuery(sql)); }).number, 13);
    EXPECT_EQ(goldMine.commands, (Lines{query, fetch, closeStream}));
}

INSTANTIATE_TEST_SUITE_P(
    Replies, UnreadableReplyTest,
    testing::Values(L"<GMAPI call=\"DataStream\"><status code=\"1\">",
                    L"<GMAPI call=\"DataStream\"><status "
                    L"code=\"1\">1</status><data name=\"Return\"><data name=\"Rows\"></GMAPI>",
                    L"<GMAPI call=\"DataStream\"><status code=\"1\">1</status></GMAPI>"));

TEST_F(DataStreamTest, TheFirstFieldIsUnescaped) {
    SetPacket(L"3000-0001&#10;A &amp;amp; B&#13;x");
    EXPECT_EQ(dataStream.FirstFieldOfQuery(sql), L"A & B");
}

struct FirstField {
    std::wstring packet;
    std::optional<std::wstring> field;
};

class FirstFieldTest : public DataStreamTest, public testing::WithParamInterface<FirstField> {};

TEST_P(FirstFieldTest, IsHadOnlyWhenExactlyOneRowMatched) {
    SetPacket(GetParam().packet);
    EXPECT_EQ(dataStream.FirstFieldOfQuery(sql), GetParam().field);
    ExpectNoLines();
}

INSTANTIATE_TEST_SUITE_P(
    Packets, FirstFieldTest,
    testing::Values(
        FirstField{L"3000-0001&#10;A1&#13;x", L"A1"},
        FirstField{L"3000-0001&#13;&#10;A1&#13;x", L"A1"}, FirstField{L"3000-0001&#10;A1", L"A1"},
        FirstField{L"3000-0001&#10;A1&#13;", L"A1"},
        FirstField{L"3000-0001&#10;A1&#13;&#10;", L"A1"}, FirstField{L"3000-0001&#10;&#13;x", L""},
        FirstField{L"3000-0001&#10; A1 &#13;x", L" A1 "}, FirstField{L"1&#10;A1", L"A1"},
        FirstField{L"-1&#10;A1", L"A1"}, FirstField{L"3000-0002&#10;A1&#13;x", std::nullopt},
        FirstField{L"3000-0000", std::nullopt}, FirstField{L"3000-0000&#10;", std::nullopt},
        FirstField{L"2&#10;A1", std::nullopt}, FirstField{L"3000--1&#10;A1", std::nullopt}));

struct Packet {
    std::wstring raw;
    std::wstring header;
    std::int32_t rowCount;
    std::wstring firstRow;
};

class ParseRawReturnTest : public testing::TestWithParam<Packet> {};

TEST_P(ParseRawReturnTest, TakesThePacketApart) {
    const RawRows rows = ParseRawReturn(GetParam().raw);
    EXPECT_EQ(rows.header, GetParam().header);
    EXPECT_EQ(rows.rowCount, GetParam().rowCount);
    EXPECT_EQ(rows.firstRow, GetParam().firstRow);
}

INSTANTIATE_TEST_SUITE_P(
    Packets, ParseRawReturnTest,
    testing::Values(Packet{L"3000-0001\nA1\rx", L"3000-0001", 1, L"A1\rx"},
                    Packet{L"3000-0001\r\nA1\rx\r\n", L"3000-0001", 1, L"A1\rx\r"},
                    Packet{L"3000-0000", L"3000-0000", 0, L""},
                    Packet{L"3000-0000\n", L"3000-0000", 0, L""},
                    Packet{L"0000-0042\nfirst\nsecond", L"0000-0042", 42, L"first"},
                    Packet{L"7\nrow", L"7", 7, L"row"}, Packet{L"-3\nrow", L"-3", 3, L"row"},
                    Packet{L"3000-9999\n\nsecond", L"3000-9999", 9999, L""}));

class BadHeaderTest : public testing::TestWithParam<std::wstring> {};

TEST_P(BadHeaderTest, ACountThatIsNoNumberIsATypeMismatch) {
    EXPECT_EQ(ErrorOf([] { static_cast<void>(ParseRawReturn(GetParam())); }).number, 13);
}

INSTANTIATE_TEST_SUITE_P(Headers, BadHeaderTest,
                         testing::Values(L"", L"3000-", L"none\nrow", L"3000-x\nrow"));

}  // namespace
}  // namespace corvane::test
