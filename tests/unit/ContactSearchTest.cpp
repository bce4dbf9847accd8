#include "calls/ContactSearch.h"

#include <algorithm>

#include "GoldMineFixture.h"

namespace corvane::test {
namespace {

const std::wstring cid = L"(555)123-4567";

const std::wstring phone1 =
    L"<GMAPI call=\"Macro\"><data name=\"Macro\">&amp;Phone1</data></GMAPI>";
const std::wstring phone2 =
    L"<GMAPI call=\"Macro\"><data name=\"Macro\">&amp;Phone2</data></GMAPI>";
const std::wstring phone3 =
    L"<GMAPI call=\"Macro\"><data name=\"Macro\">&amp;Phone3</data></GMAPI>";
const std::wstring accountNo =
    L"<GMAPI call=\"Macro\"><data name=\"Macro\">Contact1-&gt;AccountNo</data></GMAPI>";

// GoldMine's own search for the caller ID.
std::wstring CallerIDCommand(const std::wstring& phone, const std::wstring& display,
                             const std::wstring& all) {
    return L"<GMAPI call=\"CallerID\"><data name=\"Phone\">" + phone +
           L"</data><data name=\"Description\"></data><data name=\"DisplayDialog\">" + display +
           L"</data><data name=\"All\">" + all + L"</data><data name=\"UPhone\">0</data></GMAPI>";
}

const std::wstring ofAccountSql =
    L"select AccountNo from ContSupp where AccountNo = &apos;A1&apos; and RecType = &apos;C&apos; "
    L"and (phone = &apos;(555)123-4567&apos; or fax = &apos;(555)123-4567&apos;)";
const std::wstring ofAllSql =
    L"select AccountNo from ContSupp where RecType = &apos;C&apos; "
    L"and (phone = &apos;(555)123-4567&apos; or fax = &apos;(555)123-4567&apos;)";
const std::wstring phone1Sql = L"select Phone1 from Contact1 where AccountNo = &apos;B2&apos;";

const std::wstring setObject =
    L"<GMAPI call=\"RecordObj\"><data name=\"Command\">SetObject</data></GMAPI>";
const std::wstring setRecord =
    L"<GMAPI call=\"RecordObj\"><data name=\"Command\">SetRecord</data>"
    L"<data name=\"Argument\">Primary</data></GMAPI>";
const std::wstring setOrder =
    L"<GMAPI call=\"RecordObj\"><data name=\"Command\">SetOrder</data>"
    L"<data name=\"Argument\">ContAcc</data></GMAPI>";
const std::wstring seek =
    L"<GMAPI call=\"RecordObj\"><data name=\"Command\">Seek</data>"
    L"<data name=\"Argument\">B2</data></GMAPI>";

// By default: Phone1 only, no Additional Contacts, current window, a record open that does not
// hold the number, GoldMine finds nothing.
class ContactSearchTest : public GoldMineFixture {
protected:
    ContactSearchTest() {
        form.txtCallerIDFormatted.setText(cid);
        form.optPhone1Only.setSelected(true);
        form.optPopCurrentWindow.setSelected(true);
        AnswerMacro(L"&amp;Phone1", L"(555)000-0001");
        AnswerMacro(L"&amp;Phone2", L"(555)000-0002");
        AnswerMacro(L"&amp;Phone3", L"(555)000-0003");
        AnswerMacro(L"Contact1-&gt;AccountNo", L"A1");
        for (const wchar_t* display : {L"1", L"2"}) {
            for (const wchar_t* all : {L"0", L"1"})
                AnswerCallerID(CallerIDCommand(cid, display, all), false);
        }
    }
    void AnswerCallerID(const std::wstring& command, bool found) {
        goldMine.answers[command] = Reply(L"CallerID", found ? L"1" : L"0", L"");
    }
    // Answers every status-bar message, and takes them out of the commands.
    void AcceptStatusMessages() {
        goldMine.answerAll = [this](const std::wstring& command) {
            if (command.starts_with(L"<GMAPI call=\"StatusMsg\">"))
                return Reply(L"StatusMsg", L"1", L"");
            const auto answer = goldMine.answers.find(command);
            if (answer != goldMine.answers.end())
                return answer->second;
            ADD_FAILURE() << "unexpected command " << testing::PrintToString(command);
            return std::wstring();
        };
    }
    void FindInAdditionalContactsOfAll() {
        form.chkSearchInAddlContacts.setChecked(true);
        AnswerQuery(ofAccountSql, L"3000-0000");
        AnswerAgain(ofAllSql, L"8", L"3000-0001&#10;B2");
    }
    // A second query in the same run, with an area of its own.
    void AnswerAgain(const std::wstring& escapedSql, const std::wstring& area,
                     const std::wstring& packet) {
        goldMine.answers[QueryCommand(escapedSql)] = Reply(L"DataStream", L"1", area);
        goldMine.answers[FetchCommand(area)] = FetchReply(packet);
        goldMine.answers[DataStreamCloseCommand(area)] = Reply(L"DataStream", L"1", L"1");
    }
    bool Search(ShowInGoldMine show = ShowInGoldMine::No) {
        AcceptStatusMessages();
        return search.SearchContact(show);
    }
    [[nodiscard]] bool Sent(const std::wstring& command) const {
        return std::find(goldMine.commands.begin(), goldMine.commands.end(), command) !=
               goldMine.commands.end();
    }
    [[nodiscard]] Lines StatusMessages() const {
        Lines messages;
        for (const std::wstring& command : goldMine.commands) {
            if (command.starts_with(L"<GMAPI call=\"StatusMsg\">"))
                messages.push_back(command);
        }
        return messages;
    }

    ContactSearch search{form, macro, dataStream, windows, status, boxes};
};

const std::wstring notFoundLine =
    L"Did not find GoldMine contact for (555)123-4567. Further call processing skipped.";
const std::wstring notFoundMessage =
    L"<GMAPI call=\"StatusMsg\"><data name=\"Message\">Corvane could not find a contact matching "
    L"CallerID (555)123-4567. Further call processing skipped.</data>"
    L"<data name=\"Delay\">10</data></GMAPI>";

class NotFoundTest : public ContactSearchTest,
                     public testing::WithParamInterface<ShowInGoldMine> {};

TEST_P(NotFoundTest, IsToldInBothWaysWhateverTheFlag) {
    EXPECT_FALSE(Search(GetParam()));
    EXPECT_EQ(status.lines, Lines{notFoundLine});
    EXPECT_EQ(StatusMessages(), Lines{notFoundMessage});
}

INSTANTIATE_TEST_SUITE_P(Flags, NotFoundTest,
                         testing::Values(ShowInGoldMine::No, ShowInGoldMine::Yes));

TEST_F(ContactSearchTest, TheOpenRecordIsLookedAtFirstThenGoldMineIsAsked) {
    form.optPhone123.setSelected(true);
    EXPECT_FALSE(Search());
    EXPECT_EQ(goldMine.commands,
              (Lines{phone1, phone2, phone3, CallerIDCommand(cid, L"2", L"1"), notFoundMessage}));
}

TEST_F(ContactSearchTest, AdditionalContactsOfTheRecordComeBeforeGoldMineAndThoseOfAllAfterIt) {
    form.chkSearchInAddlContacts.setChecked(true);
    AnswerQuery(ofAccountSql, L"3000-0000");
    AnswerAgain(ofAllSql, L"0", L"");
    EXPECT_FALSE(Search());
    EXPECT_EQ(goldMine.commands,
              (Lines{phone1, accountNo, QueryCommand(ofAccountSql), FetchCommand(L"7"),
                     DataStreamCloseCommand(L"7"), CallerIDCommand(cid, L"2", L"0"),
                     QueryCommand(ofAllSql), notFoundMessage}));
    EXPECT_EQ(status.lines, Lines{notFoundLine});
}

struct PhoneField {
    std::wstring macroName;
    std::wstring line;
    std::wstring message;
};

class CurrentRecordTest : public ContactSearchTest,
                          public testing::WithParamInterface<PhoneField> {};

TEST_P(CurrentRecordTest, ANumberInAPhoneFieldIsFound) {
    form.optPhone123.setSelected(true);
    AnswerMacro(GetParam().macroName, cid);
    EXPECT_TRUE(Search(ShowInGoldMine::No));
    EXPECT_EQ(status.lines, Lines{GetParam().line});
    EXPECT_EQ(StatusMessages(), Lines{});
    EXPECT_EQ(goldMine.commands.back(), MacroCommand(GetParam().macroName));
}

TEST_P(CurrentRecordTest, TheFindIsShownInGoldMineWhenAsked) {
    form.optPhone123.setSelected(true);
    AnswerMacro(GetParam().macroName, cid);
    EXPECT_TRUE(Search(ShowInGoldMine::Yes));
    EXPECT_EQ(StatusMessages(), Lines{GetParam().message});
    EXPECT_EQ(status.lines, Lines{GetParam().line});
}

TEST_P(CurrentRecordTest, AFailingMacroEndsTheSearchOfTheRecordOnly) {
    form.optPhone123.setSelected(true);
    form.chkSearchInAddlContacts.setChecked(true);
    FailMacro(GetParam().macroName);
    AnswerCallerID(CallerIDCommand(cid, L"2", L"1"), true);
    EXPECT_TRUE(Search());
    EXPECT_EQ(status.lines, Lines{L"Found (555)123-4567 in a primary contact record."});
    EXPECT_FALSE(Sent(accountNo));
    ASSERT_GE(goldMine.commands.size(), 2U);
    EXPECT_EQ(goldMine.commands[goldMine.commands.size() - 2], MacroCommand(GetParam().macroName));
}

INSTANTIATE_TEST_SUITE_P(
    Fields, CurrentRecordTest,
    testing::Values(
        PhoneField{L"&amp;Phone1", L"Found (555)123-4567 in Phone1 of the current record.",
                   L"<GMAPI call=\"StatusMsg\"><data name=\"Message\">Corvane found "
                   L"(555)123-4567 in Phone1 of the current record.</data>"
                   L"<data name=\"Delay\">10</data></GMAPI>"},
        PhoneField{L"&amp;Phone2", L"Found (555)123-4567 in Phone2 of the current record.",
                   L"<GMAPI call=\"StatusMsg\"><data name=\"Message\">Corvane found "
                   L"(555)123-4567 in Phone2 of the current record.</data>"
                   L"<data name=\"Delay\">10</data></GMAPI>"},
        PhoneField{L"&amp;Phone3", L"Found (555)123-4567 in Phone3 of the current record.",
                   L"<GMAPI call=\"StatusMsg\"><data name=\"Message\">Corvane found "
                   L"(555)123-4567 in Phone3 of the current record.</data>"
                   L"<data name=\"Delay\">10</data></GMAPI>"}));

TEST_F(ContactSearchTest, WithPhone1OnlyTheOtherPhonesOfTheRecordAreNotLookedAt) {
    AnswerMacro(L"&amp;Phone2", cid);
    AnswerMacro(L"&amp;Phone3", cid);
    EXPECT_FALSE(Search());
    EXPECT_EQ(goldMine.commands,
              (Lines{phone1, CallerIDCommand(cid, L"2", L"0"), notFoundMessage}));
}

class NearMissTest : public ContactSearchTest, public testing::WithParamInterface<std::wstring> {};

TEST_P(NearMissTest, OnlyTheWholeNumberCounts) {
    form.txtCallerIDFormatted.setText(L"555a");
    AnswerMacro(L"&amp;Phone1", GetParam());
    AnswerCallerID(CallerIDCommand(L"555a", L"2", L"0"), false);
    EXPECT_FALSE(Search());
}

INSTANTIATE_TEST_SUITE_P(Values, NearMissTest,
                         testing::Values(L"555A", L"5 55a", L"555", L"555a1", L""));

TEST_F(ContactSearchTest, BlanksAroundGoldMinesValueDoNotCount) {
    AnswerMacro(L"&amp;Phone1", L" (555)123-4567 ");
    EXPECT_TRUE(Search());
    EXPECT_EQ(status.lines, Lines{L"Found (555)123-4567 in Phone1 of the current record."});
}

// It would equal the empty phone fields of whoever is open in GoldMine.
TEST_F(ContactSearchTest, AnEmptyCallerIDIsNobodys) {
    form.chkSearchInAddlContacts.setChecked(true);
    for (const wchar_t* caller : {L"", L"   "}) {
        goldMine.commands.clear();
        status.lines.clear();
        form.txtCallerIDFormatted.setText(caller);
        const std::wstring message = std::wstring(
                                         L"Corvane could not find a contact matching "
                                         L"CallerID ") +
                                     caller + L". Further call processing skipped.";
        goldMine.answers[StatusMsgCommand(message)] = Reply(L"StatusMsg", L"1", L"");

        EXPECT_FALSE(Search());

        EXPECT_EQ(goldMine.commands, Lines{StatusMsgCommand(message)});
        EXPECT_EQ(status.lines, Lines{std::wstring(L"Did not find GoldMine contact for ") + caller +
                                      L". Further call processing skipped."});
    }
}

struct GoldMineSearch {
    bool currentWindow;
    bool phone1Only;
    std::wstring display;
    std::wstring all;
};

class GoldMineSearchTest : public ContactSearchTest,
                           public testing::WithParamInterface<GoldMineSearch> {
protected:
    GoldMineSearchTest() {
        (GetParam().currentWindow ? static_cast<OptionButton&>(form.optPopCurrentWindow)
                                  : form.optPopNewWindow)
            .setSelected(true);
        (GetParam().phone1Only ? static_cast<OptionButton&>(form.optPhone1Only) : form.optPhone123)
            .setSelected(true);
        command = CallerIDCommand(cid, GetParam().display, GetParam().all);
    }
    std::wstring command;
};

TEST_P(GoldMineSearchTest, AsksForTheWindowAndThePhoneFieldsConfigured) {
    AnswerCallerID(command, true);
    EXPECT_TRUE(Search(ShowInGoldMine::No));
    EXPECT_EQ(goldMine.commands.back(), command);
    EXPECT_EQ(status.lines, Lines{L"Found (555)123-4567 in a primary contact record."});
}

TEST_P(GoldMineSearchTest, TheFindIsShownInGoldMineWhenAsked) {
    AnswerCallerID(command, true);
    EXPECT_TRUE(Search(ShowInGoldMine::Yes));
    EXPECT_EQ(goldMine.commands.back(),
              L"<GMAPI call=\"StatusMsg\"><data name=\"Message\">Corvane found (555)123-4567 in a "
              L"primary contact record.</data><data name=\"Delay\">10</data></GMAPI>");
    EXPECT_EQ(status.lines, Lines{L"Found (555)123-4567 in a primary contact record."});
}

INSTANTIATE_TEST_SUITE_P(Settings, GoldMineSearchTest,
                         testing::Values(GoldMineSearch{true, true, L"2", L"0"},
                                         GoldMineSearch{true, false, L"2", L"1"},
                                         GoldMineSearch{false, true, L"1", L"0"},
                                         GoldMineSearch{false, false, L"1", L"1"}));

TEST_F(ContactSearchTest, ANumberInAnAdditionalContactOfTheRecordIsFoundWithoutPositioning) {
    form.chkSearchInAddlContacts.setChecked(true);
    AnswerQuery(ofAccountSql, L"3000-0001&#10;A1");
    EXPECT_TRUE(Search(ShowInGoldMine::Yes));
    EXPECT_EQ(status.lines,
              Lines{L"Found (555)123-4567 in an Additional Contact of the current record."});
    EXPECT_EQ(goldMine.commands.back(),
              L"<GMAPI call=\"StatusMsg\"><data name=\"Message\">Corvane found (555)123-4567 in an "
              L"Additional Contact of the current record.</data><data name=\"Delay\">10</data>"
              L"</GMAPI>");
}

TEST_F(ContactSearchTest, AFindInTheRecordsAdditionalContactsIsNotShownUnlessAsked) {
    form.chkSearchInAddlContacts.setChecked(true);
    AnswerQuery(ofAccountSql, L"3000-0001&#10;A1");
    EXPECT_TRUE(Search(ShowInGoldMine::No));
    EXPECT_EQ(StatusMessages(), Lines{});
}

TEST_F(ContactSearchTest, WithoutItsAccountNumberTheRecordsAdditionalContactsAreNotSearched) {
    form.chkSearchInAddlContacts.setChecked(true);
    FailMacro(L"Contact1-&gt;AccountNo");
    AnswerCallerID(CallerIDCommand(cid, L"2", L"0"), true);

    EXPECT_TRUE(Search());

    const std::wstring failure =
        L"Could not retrieve GoldMine AccountNo for current record, so can't check Additional "
        L"Contacts for CallerID.";
    EXPECT_EQ(boxes.Take(), ShownBoxes{Notice(failure)});
    EXPECT_EQ(status.lines, (Lines{failure, L"Found (555)123-4567 in a primary contact record."}));
}

TEST_F(ContactSearchTest, ValuesStandInTheSqlAsTheyAre) {
    form.chkSearchInAddlContacts.setChecked(true);
    form.txtCallerIDFormatted.setText(L"O'x");
    AnswerMacro(L"Contact1-&gt;AccountNo", L"A'1");
    AnswerQuery(
        L"select AccountNo from ContSupp where AccountNo = &apos;A&apos;1&apos; and RecType = "
        L"&apos;C&apos; and (phone = &apos;O&apos;x&apos; or fax = &apos;O&apos;x&apos;)",
        L"3000-0001&#10;A1");
    EXPECT_TRUE(Search());
}

TEST_F(ContactSearchTest, ANumberInAnyAdditionalContactIsFoundAndItsRecordPositioned) {
    FindInAdditionalContactsOfAll();
    for (const std::wstring& command : {setObject, setRecord, setOrder, seek})
        goldMine.answers[command] = Reply(L"RecordObj", L"1", L"");

    EXPECT_TRUE(Search(ShowInGoldMine::Yes));

    EXPECT_EQ(status.lines, Lines{L"Found (555)123-4567 in an Additional Contact record."});
    EXPECT_EQ(Lines(goldMine.commands.end() - 5, goldMine.commands.end()),
              (Lines{L"<GMAPI call=\"StatusMsg\"><data name=\"Message\">Corvane found "
                     L"(555)123-4567 in an Additional Contact record.</data>"
                     L"<data name=\"Delay\">10</data></GMAPI>",
                     setObject, setRecord, setOrder, seek}));
}

TEST_F(ContactSearchTest, AFindInAnyAdditionalContactIsNotShownUnlessAsked) {
    FindInAdditionalContactsOfAll();
    for (const std::wstring& command : {setObject, setRecord, setOrder, seek})
        goldMine.answers[command] = Reply(L"RecordObj", L"1", L"");
    EXPECT_TRUE(Search(ShowInGoldMine::No));
    EXPECT_EQ(StatusMessages(), Lines{});
}

TEST_F(ContactSearchTest, AdditionalContactsAreNotSearchedUnlessConfigured) {
    form.chkSearchInAddlContacts.setChecked(false);
    EXPECT_FALSE(Search());
    EXPECT_FALSE(Sent(accountNo));
    EXPECT_FALSE(Sent(QueryCommand(ofAllSql)));
}

class NotOneMatchTest : public ContactSearchTest,
                        public testing::WithParamInterface<std::wstring> {};

TEST_P(NotOneMatchTest, CountsAsNotFound) {
    form.chkSearchInAddlContacts.setChecked(true);
    AnswerQuery(ofAccountSql, L"3000-0000");
    AnswerAgain(ofAllSql, L"8", GetParam());
    EXPECT_FALSE(Search());
    EXPECT_EQ(status.lines, Lines{notFoundLine});
}

INSTANTIATE_TEST_SUITE_P(Packets, NotOneMatchTest,
                         testing::Values(L"3000-0000", L"0000-0002&#10;B2", L"0000-0150&#10;B2"));

TEST_F(ContactSearchTest, AFailedQueryIsReportedAndCountsAsNotFound) {
    form.chkSearchInAddlContacts.setChecked(true);
    AnswerQuery(ofAccountSql, L"3000-0000");
    goldMine.answers[QueryCommand(ofAllSql)] = L"bad SQL";

    EXPECT_FALSE(Search());

    const std::wstring failure =
        L"Error calling DataStream Query function for this SQL query:\r\n"
        L"select AccountNo from ContSupp where RecType = 'C' and (phone = '(555)123-4567' or fax = "
        L"'(555)123-4567')\r\nResult:\r\nbad SQL";
    EXPECT_EQ(boxes.Take(), ShownBoxes{Notice(failure, BoxIcon::Exclamation)});
    EXPECT_EQ(status.lines, (Lines{failure, notFoundLine}));
}

// How many of the four record commands succeed before one fails.
class PositioningTest : public ContactSearchTest,
                        public testing::WithParamInterface<std::size_t> {};

TEST_P(PositioningTest, StopsAtTheFirstFailureAndTheContactIsStillFound) {
    FindInAdditionalContactsOfAll();
    const Lines recordCommands = {setObject, setRecord, setOrder, seek};
    for (std::size_t each = 0; each < recordCommands.size(); ++each) {
        goldMine.answers[recordCommands[each]] =
            Reply(L"RecordObj", each == GetParam() ? L"0" : L"1", L"");
    }

    EXPECT_TRUE(Search(ShowInGoldMine::No));

    EXPECT_EQ(status.lines,
              (Lines{L"Found (555)123-4567 in an Additional Contact record.",
                     L"Corvane could not position to corresponding primary record."}));
    EXPECT_EQ(StatusMessages(),
              Lines{L"<GMAPI call=\"StatusMsg\"><data name=\"Message\">Corvane could not position "
                    L"to corresponding primary record.</data><data name=\"Delay\">10</data>"
                    L"</GMAPI>"});
    for (std::size_t each = 0; each < recordCommands.size(); ++each)
        EXPECT_EQ(Sent(recordCommands[each]), each <= GetParam()) << each;
}

INSTANTIATE_TEST_SUITE_P(Steps, PositioningTest, testing::Values(0U, 1U, 2U, 3U));

class NewWindowTest : public ContactSearchTest {
protected:
    NewWindowTest() {
        form.optPopNewWindow.setSelected(true);
        FindInAdditionalContactsOfAll();
    }
    void ExpectPositionFailure() {
        EXPECT_EQ(status.lines.back(),
                  L"Corvane could not position to corresponding primary record in new window. Try "
                  L"setting Corvane to show contact in CURRENT window.");
        EXPECT_EQ(goldMine.commands.back(),
                  L"<GMAPI call=\"StatusMsg\"><data name=\"Message\">Corvane could not position to "
                  L"corresponding primary record in new window. Try setting Corvane to show "
                  L"contact in CURRENT window.</data><data name=\"Delay\">10</data></GMAPI>");
    }
};

TEST_F(NewWindowTest, ThePrimaryRecordIsFoundByItsPhone1) {
    AnswerAgain(phone1Sql, L"9", L"3000-0001&#10;555 99 &amp;amp; 1");
    const std::wstring pop = CallerIDCommand(L"555 99 &amp; 1", L"1", L"0");
    AnswerCallerID(pop, true);

    EXPECT_TRUE(Search());

    EXPECT_EQ(goldMine.commands.back(), pop);
    EXPECT_EQ(status.lines, Lines{L"Found (555)123-4567 in an Additional Contact record."});
}

TEST_F(NewWindowTest, OnlyPhone1IsSearchedWhateverIsConfigured) {
    form.optPhone123.setSelected(true);
    AnswerAgain(phone1Sql, L"9", L"3000-0001&#10;5559901");
    const std::wstring pop = CallerIDCommand(L"5559901", L"1", L"0");
    AnswerCallerID(pop, true);
    EXPECT_TRUE(Search());
    EXPECT_EQ(goldMine.commands.back(), pop);
}

TEST_F(NewWindowTest, ARecordThatGoldMineDoesNotFindIsReportedAndTheContactIsStillFound) {
    AnswerAgain(phone1Sql, L"9", L"3000-0001&#10;5559901");
    AnswerCallerID(CallerIDCommand(L"5559901", L"1", L"0"), false);
    EXPECT_TRUE(Search());
    ExpectPositionFailure();
}

class NoPhone1Test : public NewWindowTest, public testing::WithParamInterface<std::wstring> {};

TEST_P(NoPhone1Test, NothingIsPoppedWithoutAPhone1) {
    AnswerAgain(phone1Sql, L"9", GetParam());
    EXPECT_TRUE(Search());
    ExpectPositionFailure();
}

INSTANTIATE_TEST_SUITE_P(Packets, NoPhone1Test,
                         testing::Values(L"3000-0000", L"3000-0002&#10;5559901",
                                         L"3000-0001&#10;&#13;x"));

TEST_F(NewWindowTest, AFailedQueryForThePhone1IsReportedAndTheContactIsStillFound) {
    goldMine.answers[QueryCommand(phone1Sql)] = L"bad SQL";

    EXPECT_TRUE(Search());

    const std::wstring failure =
        L"Error calling DataStream Query function for this SQL query:\r\n"
        L"select Phone1 from Contact1 where AccountNo = 'B2'\r\nResult:\r\nbad SQL";
    EXPECT_EQ(boxes.Take(), ShownBoxes{Notice(failure, BoxIcon::Exclamation)});
    ASSERT_EQ(status.lines.size(), 3U);
    EXPECT_EQ(status.lines[0], L"Found (555)123-4567 in an Additional Contact record.");
    EXPECT_EQ(status.lines[1], failure);
    ExpectPositionFailure();
}

// The search of an account whose number is empty would be the search of all accounts.
TEST_F(ContactSearchTest, ARecordWithoutAnAccountNumberHasNoAdditionalContacts) {
    form.chkSearchInAddlContacts.setChecked(true);
    for (const wchar_t* account : {L"", L"  "}) {
        goldMine.commands.clear();
        status.lines.clear();
        AnswerMacro(L"Contact1-&gt;AccountNo", account);
        AnswerCallerID(CallerIDCommand(cid, L"2", L"0"), true);

        EXPECT_TRUE(Search());

        EXPECT_EQ(goldMine.commands, (Lines{phone1, accountNo, CallerIDCommand(cid, L"2", L"0")}));
        const std::wstring failure =
            L"Could not retrieve GoldMine AccountNo for current record, so can't check Additional "
            L"Contacts for CallerID.";
        EXPECT_EQ(status.lines,
                  (Lines{failure, L"Found (555)123-4567 in a primary contact record."}));
        EXPECT_EQ(boxes.Take(), ShownBoxes{Notice(failure)});
    }
}

TEST_F(ContactSearchTest, AnAdditionalContactWithoutAnAccountNumberIsFoundAllTheSame) {
    FindInAdditionalContactsOfAll();
    AnswerAgain(ofAllSql, L"8", L"3000-0001&#10;&#13;x");
    const std::wstring seekNothing =
        L"<GMAPI call=\"RecordObj\"><data name=\"Command\">Seek</data></GMAPI>";
    for (const std::wstring& command : {setObject, setRecord, setOrder})
        goldMine.answers[command] = Reply(L"RecordObj", L"1", L"");
    goldMine.answers[seekNothing] = Reply(L"RecordObj", L"0", L"");

    EXPECT_TRUE(Search());

    EXPECT_TRUE(Sent(seekNothing));
    EXPECT_EQ(status.lines,
              (Lines{L"Found (555)123-4567 in an Additional Contact record.",
                     L"Corvane could not position to corresponding primary record."}));
}

}  // namespace
}  // namespace corvane::test
