// What the practice GoldMine answers to each command about data.
#include "PracticeGoldMineTest.h"

namespace standin_tests {
namespace {

class CommandTest : public PracticeGoldMineTest {
protected:
    void SetUp() override { Start(); }

    std::wstring Query(Client& client, const std::wstring& sql) {
        return client.Send(gmapi::Query(gmapi::Escaped(sql)));
    }
    std::wstring Fetch(Client& client, const std::wstring& area) {
        return client.Send(gmapi::Fetch(area));
    }
    std::wstring Packet(const std::wstring& reply) {
        return Between(reply,
                       L"<data name=\"Return\"><data name=\"Rows\"><data name=\"RawReturn\">",
                       L"</data></data></data></GMAPI>");
    }
};

TEST_F(CommandTest, MacrosTellAboutTheSession) {
    Client client;

    EXPECT_EQ(client.Macro(L"&Version"), L"2014.1");
    EXPECT_EQ(client.Macro(L"&UserName"), L"MASTER");
    EXPECT_EQ(client.Macro(L"&ProgramDataDir"), data_.folder());
    EXPECT_EQ(client.Macro(L"&SysDir"), data_.folder());
}

TEST_F(CommandTest, SystemInformationListsItemsBelowOneElement) {
    Client client;

    const std::wstring reply = client.Ask(L"Macro", {{L"Macro", L"&SysInfo"}});

    EXPECT_NE(reply.find(L"</status><data name=\"System Information\"><data name=\"Program\">"),
              std::wstring::npos);
    EXPECT_EQ(Between(reply, L"<data name=\"UserName\">", L"</data>"), L"MASTER");
}

TEST_F(CommandTest, MacrosTellAboutTheOpenContact) {
    Client client;

    EXPECT_EQ(client.Macro(L"&Phone1"), L"(206)555-0100");
    EXPECT_EQ(client.Macro(L"&Phone2"), L"");
    EXPECT_EQ(client.Macro(L"&Phone3"), L"");
    EXPECT_EQ(client.Macro(L"Contact1->AccountNo"), L"A0001");
    EXPECT_EQ(client.Macro(L"Contact1->City"), L"Seattle");
}

TEST_F(CommandTest, UnknownMacroFails) {
    Client client;

    EXPECT_EQ(client.Ask(L"Macro", {{L"Macro", L"&Weather"}}),
              gmapi::Reply(L"Macro", L"0", L"Unknown macro."));
}

TEST_F(CommandTest, HistoryMacroFailsUntilThereIsAHistoryRecord) {
    Client client;

    EXPECT_EQ(client.Ask(L"Macro", {{L"Macro", L"ContHist->RecID"}}),
              gmapi::Reply(L"Macro", L"0", L"No history record is open."));
}

TEST_F(CommandTest, ValuesAreEscapedTwice) {
    Client client;
    client.Send(gmapi::CallerID(L"(206)555-0106", L"2", L"0"));

    const std::wstring reply = client.Ask(L"Macro", {{L"Macro", L"Contact1->Company"}});

    EXPECT_EQ(reply, gmapi::Reply(L"Macro", L"1",
                                  L"Smith &amp;amp; Sons &amp;lt;Roofing&amp;gt; "
                                  L"&amp;quot;Best&amp;quot;"));
}

TEST_F(CommandTest, TextOutsideAsciiArrivesUnchanged) {
    Client client;
    client.Send(gmapi::RecordObj(L"SetObject", L""));
    client.Send(gmapi::RecordObj(L"SetOrder", L"ContAcc"));
    client.Send(gmapi::RecordObj(L"Seek", L"A0006"));

    EXPECT_EQ(client.Macro(L"Contact1->Contact"), L"Zo\u00eb \u00c5ngstr\u00f6m-\u015awi\u0105tek");
}

TEST_F(CommandTest, QueryYieldsRowsInAPacket) {
    Client client;

    const std::wstring query =
        Query(client, L"select AccountNo, Company from Contact1 where AccountNo = 'A0002'");
    const std::wstring area = Between(query, L"<status code=\"1\">", L"</status>");
    const std::wstring fetched = Fetch(client, area);

    EXPECT_NE(area, L"0");
    EXPECT_EQ(Packet(fetched), L"3000-0001\nA0002\rBrightwater Ceramics");
    // The separator between the fields must survive an XML reader.
    EXPECT_NE(fetched.find(L"A0002&#13;Brightwater"), std::wstring::npos);
    EXPECT_EQ(client.Value(L"DataStream", {{L"Command", L"Close"}, {L"Area", area}}), L"1");
}

TEST_F(CommandTest, PacketHeaderCountsAllMatchesAndTellsOfMore) {
    Client client;
    const std::wstring area =
        Between(Query(client,
                      L"select AccountNo from ContSupp where RecType = 'C' and "
                      L"(phone = '(206)555-0152' or fax = '(206)555-0152')"),
                L"<status code=\"1\">", L"</status>");

    EXPECT_EQ(Packet(Fetch(client, area)), L"0000-0002\nA0012");
    EXPECT_EQ(Packet(Fetch(client, area)), L"3000-0002\nA0013");
    EXPECT_EQ(Packet(Fetch(client, area)), L"3000-0002");
}

TEST_F(CommandTest, QueryWithoutMatchesHasAreaZero) {
    Client client;

    EXPECT_EQ(Query(client, L"select AccountNo from Contact1 where AccountNo = 'none'"),
              gmapi::Reply(L"DataStream", L"1", L"0"));
}

TEST_F(CommandTest, SqlThatIsWrongFailsWithTheDatabasesMessage) {
    struct Case {
        const wchar_t* sql;
        const wchar_t* message;
    };
    const Case cases[] = {
        {L"select Shoe from Contact1", L"no such column: Shoe"},
        {L"select AccountNo from ContSupp where phone = 'O'Hara'",
         L"near &amp;quot;Hara&amp;quot;: syntax error"},
        {L"delete from Contact1", L"Only queries can be run."},
        {L"select 1; delete from Contact1", L"There is more than one SQL statement."},
        {L"", L"There is no SQL statement."},
    };
    Client client;

    for (const Case& entry : cases)
        EXPECT_EQ(Query(client, entry.sql), gmapi::Reply(L"DataStream", L"0", entry.message));
    EXPECT_EQ(Sql("select count(*) > 200 from Contact1"), "1\n");
}

TEST_F(CommandTest, AreasOfOneKindAreUnknownToTheOther) {
    Client client;
    const std::wstring table = client.Value(L"Open", {{L"Filename", L"CONTHIST"}});
    const std::wstring missing = L"There is no such area.";

    EXPECT_EQ(client.Ask(L"DataStream", {{L"Command", L"Close"}, {L"Area", table}}),
              gmapi::Reply(L"DataStream", L"0", missing));
    EXPECT_EQ(client.Ask(L"Close", {{L"Area", L"987654"}}), gmapi::Reply(L"Close", L"0", missing));
    EXPECT_EQ(client.Ask(L"Read", {{L"Area", L""}, {L"Field", L"Ref"}}),
              gmapi::Reply(L"Read", L"0", missing));
    EXPECT_EQ(Fetch(client, L"0"), gmapi::Reply(L"DataStream", L"0", missing));
}

TEST_F(CommandTest, InsertedHistoryIsStoredAndItsNotesCanBeReplacedAndAppendedTo) {
    Client client;
    const std::wstring id = client.Value(L"InsHist", {{L"AccNo", L"A0002"},
                                                      {L"Activity", L""},
                                                      {L"Duration", L""},
                                                      {L"OpRecID", L""},
                                                      {L"RecType", L"CI"},
                                                      {L"Ref", L"Ended incoming <call> & more"},
                                                      {L"ResultCode", L""},
                                                      {L"Notes", L""},
                                                      {L"User", L"MASTER"},
                                                      {L"Private", L""}});

    const std::wstring area = client.Value(L"Open", {{L"Filename", L"CONTHIST"}});
    const Client::Arguments toRecord = {{L"Area", area}, {L"Command", L"GOTO"}, {L"Parameter", id}};
    EXPECT_EQ(client.Value(L"Move", toRecord), L"1");
    const auto replace = [&](const wchar_t* text, const wchar_t* append) {
        return client.Value(
            L"Replace",
            {{L"Area", area}, {L"Field", L"Notes"}, {L"NewValue", text}, {L"Append", append}});
    };
    EXPECT_EQ(replace(L"first <b>&amp;", L"0"), L"1");
    EXPECT_EQ(replace(L" second", L"1"), L"1");
    EXPECT_EQ(client.Value(L"Read", {{L"Area", area}, {L"Field", L"Notes"}}),
              L"first <b>&amp; second");
    EXPECT_EQ(client.Value(L"Unlock", {{L"Area", area}}), L"1");
    EXPECT_EQ(client.Value(L"Close", {{L"Area", area}}), L"1");

    EXPECT_EQ(id.size(), 15u);
    EXPECT_EQ(id.find_first_of(L"ABCDEFGHIJKLMNOPQRSTUVWXYZ"), 0u) << Utf8(id);
    EXPECT_EQ(client.Macro(L"ContHist->RecID"), id);
    EXPECT_EQ(Sql("select AccountNo, RecType, Ref, Notes, UserID from ContHist "
                  "order by rowid desc limit 1"),
              "A0002\tCI\tEnded incoming <call> & more\tfirst <b>&amp; second\tMASTER\n");
}

TEST_F(CommandTest, HistoryForAnUnknownAccountAnswersZero) {
    Client client;

    EXPECT_EQ(client.Ask(L"InsHist", {{L"AccNo", L"nobody"}, {L"RecType", L"CI"}}),
              gmapi::Reply(L"InsHist", L"1", L"0"));
}

TEST_F(CommandTest, TextIsCutToItsFieldsWidth) {
    Client client;

    client.Value(L"InsHist", {{L"AccNo", L"A0002"}, {L"Ref", std::wstring(70, L'r')}});

    EXPECT_EQ(Sql("select length(Ref) from ContHist order by rowid desc limit 1"), "65\n");
}

TEST_F(CommandTest, MoveTellsHowTheCursorCameToItsRecord) {
    struct Case {
        const wchar_t* step;
        const wchar_t* parameter;
        const wchar_t* status;
    };
    const Case cases[] = {
        {L"TOP", L"", L"1"},
        {L"SKIP", L"-1", L"4"},
        {L"SKIP", L"1", L"1"},
        {L"BOTTOM", L"", L"1"},
        {L"SKIP", L"1", L"3"},
        {L"GOTO", L"HN8K$2&0000001H", L"1"},
        {L"GOTO", L"HN8K$2&0000001I", L"2"},
        {L"GOTO", L"ZZZ", L"3"},
    };
    Client client;
    const std::wstring area = client.Value(L"Open", {{L"Filename", L"CONTHIST"}});

    for (const Case& entry : cases) {
        EXPECT_EQ(client.Value(
                      L"Move",
                      {{L"Area", area}, {L"Command", entry.step}, {L"Parameter", entry.parameter}}),
                  entry.status)
            << Utf8(entry.step) << " " << Utf8(entry.parameter);
    }
}

TEST_F(CommandTest, WhatCannotBeOpenedOrReplacedFails) {
    Client client;
    const std::wstring area = client.Value(L"Open", {{L"Filename", L"contact1"}});

    EXPECT_EQ(client.Ask(L"Open", {{L"Filename", L"CALENDAR"}}),
              gmapi::Reply(L"Open", L"0", L"There is no such table."));
    EXPECT_EQ(client.Ask(L"Replace", {{L"Area", area}, {L"Field", L"Company"}}),
              gmapi::Reply(L"Replace", L"0", L"The area stands on no record."));
    client.Value(L"Move", {{L"Area", area}, {L"Command", L"TOP"}, {L"Parameter", L""}});
    EXPECT_EQ(client.Ask(L"Replace", {{L"Area", area}, {L"Field", L"x = 1 --"}}),
              gmapi::Reply(L"Replace", L"0", L"There is no such field that can be replaced."));
}

TEST_F(CommandTest, RecordObjectStepsMustComeInOrder) {
    Client client;
    const auto step = [&](const wchar_t* command, const wchar_t* argument) {
        return client.Ask(L"RecordObj", {{L"Command", command}, {L"Argument", argument}}).at(38);
    };

    EXPECT_EQ(step(L"Seek", L"A0002"), L'0');
    EXPECT_EQ(step(L"SetObject", L""), L'1');
    EXPECT_EQ(step(L"Seek", L"A0002"), L'0');
    EXPECT_EQ(step(L"SetRecord", L"Primary"), L'1');
    EXPECT_EQ(step(L"SetOrder", L"ContAcc"), L'1');
    EXPECT_EQ(step(L"Seek", L"nobody"), L'0');
    EXPECT_EQ(step(L"Seek", L"A0002"), L'1');
    EXPECT_EQ(client.Macro(L"Contact1->AccountNo"), L"A0002");
}

TEST_F(CommandTest, MalformedCommandsFailWithoutACall) {
    const std::wstring cases[] = {
        L"",
        L"hello",
        L"<GMAPI call=\"Macro\">",
        L"<GMAPI call=\"Macro\"></GMAPI><more/>",
        L"<GMAPI call=\"Macro\"><data name=\"Macro\">a & b</data></GMAPI>",
        L"<GMAPI/>",
        L"<OTHER call=\"Macro\"/>",
        L"<!DOCTYPE x []><GMAPI call=\"Macro\"/>",
        std::wstring(L"<GMAPI call=\"Macro\">\0</GMAPI>", 29),
        L"<GMAPI call=\"Macro\">&#xD800;</GMAPI>",
        L"<GMAPI call=\"Macro\">&#99999999999;</GMAPI>",
        std::wstring(100'000, L'<'),
    };
    Client client;

    for (const std::wstring& command : cases) {
        const std::wstring reply = client.Send(command);
        EXPECT_EQ(reply.substr(0, 30), L"<GMAPI call=\"\"><status code=\"0") << Utf8(reply);
    }
    std::wstring nested;
    for (int i = 0; i < 1000; ++i)
        nested += L"<data name=\"x\">";
    EXPECT_EQ(client.Send(L"<GMAPI call=\"Macro\">" + nested).substr(0, 15), L"<GMAPI call=\"\">");
    EXPECT_EQ(client.Macro(L"&UserName"), L"MASTER");
}

TEST_F(CommandTest, UnknownCallFailsUnderItsName) {
    Client client;

    EXPECT_EQ(client.Send(L"<GMAPI call=\"Dance\"/>"),
              gmapi::Reply(L"Dance", L"0", L"Unknown command."));
}

TEST_F(CommandTest, CommandOfAMegabyteIsAnswered) {
    Client client;

    EXPECT_EQ(client.Ask(L"StatusMsg", {{L"Message", std::wstring(1'000'000, L'm')}}),
              gmapi::Reply(L"StatusMsg", L"1", L"Success"));
}

}  // namespace
}  // namespace standin_tests
