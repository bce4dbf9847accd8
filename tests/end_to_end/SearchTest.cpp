#include "EndToEndTest.h"

namespace end_to_end {
namespace {

const std::string anyRecord = "select AccountNo from ContSupp where RecType = &apos;C&apos; ";

std::string SqlOfAll(const std::string& phone) {
    return gmapi::Query(anyRecord + "and (phone = &apos;" + phone + "&apos; or fax = &apos;" +
                        phone + "&apos;)");
}

std::string SqlOfAccount(const std::string& account, const std::string& phone) {
    return gmapi::Query("select AccountNo from ContSupp where AccountNo = &apos;" + account +
                        "&apos; and RecType = &apos;C&apos; and (phone = &apos;" + phone +
                        "&apos; or fax = &apos;" + phone + "&apos;)");
}

struct SearchCase {
    const char* name;
    std::string goldMine;  // its options
    std::map<std::string, std::string> options;
    std::string callerId;
    Lines messages;
    Lines commands;
    std::string contact{};  // the one that stands in a window of its own afterwards
    Boxes boxes{};
};

const Lines phone1 = {gmapi::Macro("&amp;Phone1")};
const Lines phone12 = {gmapi::Macro("&amp;Phone1"), gmapi::Macro("&amp;Phone2")};
const std::string accountNo = gmapi::Macro("Contact1-&gt;AccountNo");
const std::map<std::string, std::string> additional = {{"chkSearchInAddlContacts", "1"}};
const std::map<std::string, std::string> additionalHere = {{"chkSearchInAddlContacts", "1"},
                                                           {"optPopCurrentWindow", "True"},
                                                           {"optPopNewWindow", "False"}};

std::string NotFound(const std::string& phone) {
    return "Did not find GoldMine contact for " + phone + ". Further call processing skipped.";
}

std::string NotFoundMsg(const std::string& phone) {
    return gmapi::StatusMsg("Corvane could not find a contact matching CallerID " + phone +
                            ". Further call processing skipped.");
}

std::string PositionFailed(const std::string& rest) {
    return "Corvane could not position to corresponding primary record" + rest;
}

const std::string noField =
    "There is no field number 1 delimited by a Carriage Return in the following record:\r\n";

std::string Phone1Of(const std::string& account) {
    return gmapi::Query("select Phone1 from Contact1 where AccountNo = &apos;" + account +
                        "&apos;");
}

// The commands that fetch the one row of the query before them; the area is GoldMine's.
Lines Fetched(const std::string& query, const std::string& area) {
    return {query, gmapi::Fetch(area), gmapi::CloseStream(area)};
}

class SearchTest : public EndToEndTest, public testing::WithParamInterface<SearchCase> {};

TEST_P(SearchTest, FindsOrMissesTheContact) {
    const SearchCase& each = GetParam();
    CloseGoldMine();  // areas are counted anew
    PracticeGoldMine& goldMine = GoldMine(each.goldMine);
    Set("chkCreateHistory", "0");
    SetAll(each.options);
    GoldMineIsSpoilt();
    const std::string commandLine = "/N:S /C:" + each.callerId + " /T:I /I:5";

    const Outcome run = Run(commandLine);

    Check(run, {.log = RunLog(
                    commandLine, "5",
                    Joined({{versionDetected,
                             "Inbound call search for CallerID:  requested while inbound call is "
                             "_ringing_.",
                             "Inbound call search for CallerID:  searching while incoming call is "
                             "ringing."},
                            each.messages,
                            {"Inbound call search for CallerID:  processing completed.",
                             "History creation:  no history creation requested.",
                             "Call processing completed in <seconds> seconds."}})),
                .commands = Joined({startUpCommands, each.commands}),
                .boxes = each.boxes});
    if (!each.contact.empty()) {
        EXPECT_NE(goldMine.WindowTitled(each.contact), nullptr);
    }
}

INSTANTIATE_TEST_SUITE_P(
    InGoldMine, SearchTest,
    testing::Values(
        SearchCase{"Phone1OfTheCurrentRecord",
                   "/Record:A0003",
                   {},
                   "2065550104",
                   {"Found (206)555-0104 in Phone1 of the current record."},
                   Joined({phone1,
                           {gmapi::StatusMsg(
                               "Corvane found (206)555-0104 in Phone1 of the current record.")}})},
        SearchCase{"Phone2OfTheCurrentRecord",
                   "/Record:A0003",
                   {},
                   "2065550102",
                   {"Found (206)555-0102 in Phone2 of the current record."},
                   Joined({phone12,
                           {gmapi::StatusMsg(
                               "Corvane found (206)555-0102 in Phone2 of the current record.")}})},
        SearchCase{"Phone3OfTheCurrentRecord",
                   "/Record:A0004",
                   {},
                   "2065550103",
                   {"Found (206)555-0103 in Phone3 of the current record."},
                   Joined({phoneCommands,
                           {gmapi::StatusMsg(
                               "Corvane found (206)555-0103 in Phone3 of the current record.")}})},
        SearchCase{
            "Phone1OnlyLooksNowhereElse",
            "/Record:A0003",
            {{"optPhone1Only", "True"}, {"optPhone123", "False"}},
            "2065550102",
            {NotFound("(206)555-0102")},
            Joined({phone1,
                    {gmapi::CallerID("(206)555-0102", "1", "0"), NotFoundMsg("(206)555-0102")}})},
        SearchCase{"Phone1OnlyFindsPhone1",
                   "",
                   {{"optPhone1Only", "True"}, {"optPhone123", "False"}},
                   "5551234567",
                   {"Found (555)123-4567 in a primary contact record."},
                   Joined({phone1,
                           {gmapi::CallerID("(555)123-4567", "1", "0"),
                            gmapi::StatusMsg(
                                "Corvane found (555)123-4567 in a primary contact record.")}})},
        SearchCase{"GoldMineFindsPhone2",
                   "",
                   {},
                   "2065550102",
                   {"Found (206)555-0102 in a primary contact record."},
                   Joined({phoneCommands,
                           {gmapi::CallerID("(206)555-0102", "1", "1"),
                            gmapi::StatusMsg(
                                "Corvane found (206)555-0102 in a primary contact record.")}})},
        SearchCase{"InTheCurrentWindow",
                   "",
                   {{"optPopCurrentWindow", "True"}, {"optPopNewWindow", "False"}},
                   "5551234567",
                   {"Found (555)123-4567 in a primary contact record."},
                   Joined({phoneCommands,
                           {gmapi::CallerID("(555)123-4567", "2", "1"),
                            gmapi::StatusMsg(
                                "Corvane found (555)123-4567 in a primary contact record.")}})},
        SearchCase{"NoOpenRecord",
                   "/NoRecord",
                   {},
                   "5551234567",
                   {"Found (555)123-4567 in a primary contact record."},
                   Joined({phone1,
                           {gmapi::CallerID("(555)123-4567", "1", "1"),
                            gmapi::StatusMsg(
                                "Corvane found (555)123-4567 in a primary contact record.")}})},
        SearchCase{
            "Unknown",
            "",
            {},
            "2065550999",
            {NotFound("(206)555-0999")},
            Joined({phoneCommands,
                    {gmapi::CallerID("(206)555-0999", "1", "1"), NotFoundMsg("(206)555-0999")}})},
        SearchCase{
            "AdditionalContactsAreNotSearchedUnasked",
            "",
            {},
            "2065550150",
            {NotFound("(206)555-0150")},
            Joined({phoneCommands,
                    {gmapi::CallerID("(206)555-0150", "1", "1"), NotFoundMsg("(206)555-0150")}})},
        SearchCase{
            "AdditionalContactOfTheCurrentRecord",
            "",
            additional,
            "2065550158",
            {"Found (206)555-0158 in an Additional Contact of the current record."},
            Joined({phoneCommands,
                    {accountNo},
                    Fetched(SqlOfAccount("A0001", "(206)555-0158"), "1"),
                    {gmapi::StatusMsg("Corvane found (206)555-0158 in an Additional Contact of "
                                      "the current record.")}})},
        SearchCase{"AdditionalContactInANewWindow",
                   "",
                   additional,
                   "2065550150",
                   {"Found (206)555-0150 in an Additional Contact record."},
                   Joined({phoneCommands,
                           {accountNo, SqlOfAccount("A0001", "(206)555-0150"),
                            gmapi::CallerID("(206)555-0150", "1", "1")},
                           Fetched(SqlOfAll("(206)555-0150"), "1"),
                           {gmapi::StatusMsg(
                               "Corvane found (206)555-0150 in an Additional Contact record.")},
                           Fetched(Phone1Of("A0011"), "2"),
                           {gmapi::CallerID("(206)555-0111", "1", "0")}}),
                   "Northgate Textiles - "},
        SearchCase{
            "AdditionalContactsFaxInTheCurrentWindow",
            "",
            additionalHere,
            "2065550151",
            {"Found (206)555-0151 in an Additional Contact record."},
            Joined(
                {phoneCommands,
                 {accountNo, SqlOfAccount("A0001", "(206)555-0151"),
                  gmapi::CallerID("(206)555-0151", "2", "1")},
                 Fetched(SqlOfAll("(206)555-0151"), "1"),
                 {gmapi::StatusMsg("Corvane found (206)555-0151 in an Additional Contact record."),
                  gmapi::RecordObj("SetObject", ""), gmapi::RecordObj("SetRecord", "Primary"),
                  gmapi::RecordObj("SetOrder", "ContAcc"), gmapi::RecordObj("Seek", "A0011")}})},
        SearchCase{"TwoAccountsAreNoMatch",
                   "",
                   additional,
                   "2065550152",
                   {NotFound("(206)555-0152")},
                   Joined({phoneCommands,
                           {accountNo, SqlOfAccount("A0001", "(206)555-0152"),
                            gmapi::CallerID("(206)555-0152", "1", "1")},
                           Fetched(SqlOfAll("(206)555-0152"), "1"),
                           {NotFoundMsg("(206)555-0152")}})},
        SearchCase{"OnlyAdditionalContactsCount",
                   "",
                   additional,
                   "2065550155",
                   {NotFound("(206)555-0155")},
                   Joined({phoneCommands,
                           {accountNo, SqlOfAccount("A0001", "(206)555-0155"),
                            gmapi::CallerID("(206)555-0155", "1", "1"), SqlOfAll("(206)555-0155"),
                            NotFoundMsg("(206)555-0155")}})},
        SearchCase{"AnAccountWithoutPhone1CannotBeShownInANewWindow",
                   "",
                   additional,
                   "2065550154",
                   {"Found (206)555-0154 in an Additional Contact record.", noField,
                    PositionFailed(
                        " in new window. Try setting Corvane to show contact in CURRENT window.")},
                   Joined({phoneCommands,
                           {accountNo, SqlOfAccount("A0001", "(206)555-0154"),
                            gmapi::CallerID("(206)555-0154", "1", "1")},
                           Fetched(SqlOfAll("(206)555-0154"), "1"),
                           {gmapi::StatusMsg(
                               "Corvane found (206)555-0154 in an Additional Contact record.")},
                           Fetched(Phone1Of("A0014"), "2"),
                           {gmapi::StatusMsg(PositionFailed(
                               " in new window. Try setting Corvane to show contact in CURRENT "
                               "window."))}}),
                   "",
                   {{noField, "OK", "exclamation"}}},
        SearchCase{
            "AnAccountNumberWithMarkup",
            "",
            additionalHere,
            "2065550157",
            {"Found (206)555-0157 in an Additional Contact record."},
            Joined(
                {phoneCommands,
                 {accountNo, SqlOfAccount("A0001", "(206)555-0157"),
                  gmapi::CallerID("(206)555-0157", "2", "1")},
                 Fetched(SqlOfAll("(206)555-0157"), "1"),
                 {gmapi::StatusMsg("Corvane found (206)555-0157 in an Additional Contact record."),
                  gmapi::RecordObj("SetObject", ""), gmapi::RecordObj("SetRecord", "Primary"),
                  gmapi::RecordObj("SetOrder", "ContAcc"),
                  gmapi::RecordObj("Seek", "A0018 &amp; Co")}})},
        SearchCase{"NoOpenRecordHasNoAdditionalContacts",
                   "/NoRecord",
                   additional,
                   "2065550150",
                   {"Found (206)555-0150 in an Additional Contact record."},
                   Joined({phone1,
                           {gmapi::CallerID("(206)555-0150", "1", "1")},
                           Fetched(SqlOfAll("(206)555-0150"), "1"),
                           {gmapi::StatusMsg(
                               "Corvane found (206)555-0150 in an Additional Contact record.")},
                           Fetched(Phone1Of("A0011"), "2"),
                           {gmapi::CallerID("(206)555-0111", "1", "0")}})}),
    NameOf);

class FailedSearchTest : public EndToEndTest {
protected:
    void SetUp() override {
        EndToEndTest::SetUp();
        Set("chkCreateHistory", "0");
        SetAll(additional);
        CloseGoldMine();
        GoldMineIsSpoilt();
    }

    static Lines Log(const std::string& commandLine, const Lines& messages) {
        return RunLog(
            commandLine, "5",
            Joined({{versionDetected,
                     "Inbound call search for CallerID:  requested while inbound call is "
                     "_ringing_.",
                     "Inbound call search for CallerID:  searching while incoming call is "
                     "ringing."},
                    messages,
                    {"Inbound call search for CallerID:  processing completed.",
                     "History creation:  no history creation requested.",
                     "Call processing completed in <seconds> seconds."}}));
    }
};

TEST_F(FailedSearchTest, AnAccountNumberThatCannotBeHadIsTold) {
    GoldMine().SetFaults("Macro:Contact1->AccountNo status 0\nCallerID status 0\n");

    const Outcome run = Run("/N:S /C:2065550155 /T:I /I:5");

    const std::string failure =
        "Could not retrieve GoldMine AccountNo for current record, so can't check Additional "
        "Contacts for CallerID.";
    Check(run, {.log = Log("/N:S /C:2065550155 /T:I /I:5", {failure, NotFound("(206)555-0155")}),
                .commands = Joined({startUpCommands,
                                    phoneCommands,
                                    {accountNo, gmapi::CallerID("(206)555-0155", "1", "1"),
                                     SqlOfAll("(206)555-0155"), NotFoundMsg("(206)555-0155")}}),
                .boxes = {{failure}}});
}

TEST_F(FailedSearchTest, AnErrorOfTheDatabaseIsTold) {
    GoldMine("/NoRecord");
    Set("txtCallerIDFormat", "###'####");

    const Outcome run = Run("/N:S /C:5551234 /T:I /I:5");

    ASSERT_EQ(run.boxes.size(), 1u);
    const std::string sql =
        "select AccountNo from ContSupp where RecType = 'C' and (phone = '555'1234' or fax = "
        "'555'1234')";
    const std::string begin =
        "Error calling DataStream Query function for this SQL query:\r\n" + sql + "\r\nResult:\r\n";
    const std::string& text = run.boxes[0].text;
    EXPECT_EQ(run.boxes[0].icon, "exclamation");
    EXPECT_TRUE(text.starts_with(begin + "<GMAPI call=\"DataStream\"><status code=\"0\">")) << text;
    EXPECT_EQ(run.commands, Joined({startUpCommands,
                                    phone1,
                                    {gmapi::CallerID("555&apos;1234", "1", "1"),
                                     SqlOfAll("555&apos;1234"), NotFoundMsg("555&apos;1234")}}));
}

struct StreamFault {
    const char* name;
    std::string faults;
    Lines messages;
    Lines streamCommands;
    Lines lastCommands;
    Boxes boxes;
};

const std::string refused =
    "<GMAPI call=\"DataStream\"><status code=\"0\">Refused</status></GMAPI>";

class DataStreamFaultTest : public FailedSearchTest,
                            public testing::WithParamInterface<StreamFault> {};

TEST_P(DataStreamFaultTest, IsTold) {
    const StreamFault& each = GetParam();
    GoldMine("/NoRecord").SetFaults(each.faults);
    SetAll(additionalHere);

    ProgramRun run = Start("/N:S /C:2065550150 /T:I /I:5");
    run.Finish();

    EXPECT_EQ(Commands(), Joined({startUpCommands,
                                  phone1,
                                  {gmapi::CallerID("(206)555-0150", "2", "1")},
                                  each.streamCommands,
                                  each.lastCommands}));
    EXPECT_EQ(run.boxes(), each.boxes);
    for (const std::string& message : each.messages)
        EXPECT_NE(LogText().find("\t[5]:\t" + message + "\r\n"), std::string::npos) << message;
}

const Lines positioning = {
    gmapi::StatusMsg("Corvane found (206)555-0150 in an Additional Contact record."),
    gmapi::RecordObj("SetObject", ""), gmapi::RecordObj("SetRecord", "Primary"),
    gmapi::RecordObj("SetOrder", "ContAcc"), gmapi::RecordObj("Seek", "A0011")};

const std::string queryFailed =
    "Error calling DataStream Query function for this SQL query:\r\nselect AccountNo from ContSupp "
    "where RecType = 'C' and (phone = '(206)555-0150' or fax = '(206)555-0150')\r\nResult:\r\n";

std::string ReplyOfRows(int count) {
    std::string rows = "3000-" + std::to_string(count);
    for (int row = 0; row < count; ++row)
        rows += "\\nA" + std::to_string(row) + "&#13;x";
    return "<GMAPI call=\"DataStream\"><status code=\"1\">1</status><data name=\"Return\">"
           "<data name=\"Rows\"><data name=\"RawReturn\">" +
           rows + "</data></data></data></GMAPI>";
}
const std::string thousandsOfRows = ReplyOfRows(5000);

INSTANTIATE_TEST_SUITE_P(
    Faults, DataStreamFaultTest,
    testing::Values(
        StreamFault{"Query",
                    "DataStream:Query status 0 Refused\n",
                    {queryFailed + refused, NotFound("(206)555-0150")},
                    {SqlOfAll("(206)555-0150")},
                    {NotFoundMsg("(206)555-0150")},
                    {{queryFailed + refused, "OK", "exclamation"}}},
        StreamFault{"Fetch",
                    "DataStream:Fetch status 0 Refused\n",
                    {"Error calling DataStream Fetch function. Result:\r\n" + refused,
                     NotFound("(206)555-0150")},
                    {SqlOfAll("(206)555-0150"), gmapi::Fetch("1")},
                    {NotFoundMsg("(206)555-0150")},
                    {{"Error calling DataStream Fetch function. Result:\r\n" + refused, "OK",
                      "exclamation"}}},
        StreamFault{"CloseStillCountsTheRow",
                    "DataStream:Close status 0 Refused\n",
                    {"Error calling DataStream Close function. Result:\r\n" + refused,
                     "Found (206)555-0150 in an Additional Contact record."},
                    Fetched(SqlOfAll("(206)555-0150"), "1"),
                    positioning,
                    {{"Error calling DataStream Close function. Result:\r\n" + refused, "OK",
                      "exclamation"}}},
        StreamFault{"QueryWithoutAnArea",
                    "DataStream:Query reply <GMAPI call=\"DataStream\"><status code=\"1\">7\n"
                    "DataStream:Fetch status 0 Refused\n",
                    {"Error calling DataStream Fetch function. Result:\r\n" + refused,
                     NotFound("(206)555-0150")},
                    {SqlOfAll("(206)555-0150"), gmapi::Fetch("")},
                    {NotFoundMsg("(206)555-0150")},
                    {{"Error calling DataStream Fetch function. Result:\r\n" + refused, "OK",
                      "exclamation"}}},
        StreamFault{"ThousandsOfRows",
                    "DataStream:Fetch reply " + thousandsOfRows + "\n",
                    {NotFound("(206)555-0150")},
                    Fetched(SqlOfAll("(206)555-0150"), "1"),
                    {NotFoundMsg("(206)555-0150")},
                    {}},
        StreamFault{"PositioningStopsAtTheFirstRefusal",
                    "RecordObj:SetOrder status 0\n",
                    {"Found (206)555-0150 in an Additional Contact record.", PositionFailed(".")},
                    Fetched(SqlOfAll("(206)555-0150"), "1"),
                    {positioning[0], positioning[1], positioning[2], positioning[3],
                     gmapi::StatusMsg(PositionFailed("."))},
                    {}}),
    NameOf);

TEST_F(FailedSearchTest, AnUnreadableFetchIsARuntimeErrorAfterTheStreamWasClosed) {
    GoldMine("/NoRecord")
        .SetFaults(
            "DataStream:Fetch reply <GMAPI call=\"DataStream\"><status "
            "code=\"1\">1</status><data\n");
    const std::string commandLine = "/N:S /C:2065550150 /T:I /I:5";

    const Outcome run = Run(commandLine);

    Check(
        run,
        {.log = RunLog(commandLine, "5",
                       {versionDetected,
                        "Inbound call search for CallerID:  requested while inbound call is "
                        "_ringing_.",
                        "Inbound call search for CallerID:  searching while incoming call is "
                        "ringing.",
                        "Run-time error '13':  ProcessCall: Type mismatch"}),
         .commands = Joined({startUpCommands,
                             phone1,
                             {gmapi::CallerID("(206)555-0150", "1", "1")},
                             Fetched(SqlOfAll("(206)555-0150"), "1")}),
         .boxes = {{"Run-time error '13':\r\n\r\nProcessCall: Type mismatch", "OK", "critical"}}});
}

}  // namespace
}  // namespace end_to_end
