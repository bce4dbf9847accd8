#include "check/number/Number.h"

#include <algorithm>

#include "check/Arguments.h"
#include "check/number/NumberParts.h"
#include "CheckFixture.h"
#include "Maskable.h"
#include "support/Gmapi.h"
#include "unit/PlayedGoldMine.h"
#include "util/Text.h"

namespace corvane::test {
namespace {

using SetUp = std::function<void(CheckedMachine&)>;

struct Told {
    int exitCode = 0;
    std::vector<std::wstring> lines;  // without the blanks around, and one blank between columns
};

// All but the rows that are numbers.
void ExpectNumberMaskable(const std::wstring& number, const SetUp& setUp) {
    On(setUp)([&](const CheckSurroundings& around) {
        for (const NumberPart& part :
             {AsCallerID(number, around), AsNumberToDial(number, around)}) {
            for (const auto& [what, text] : part.rows) {
                if (what != L"received" && what != L"digits" && what != L"searched as" &&
                    what != L"dialed") {
                    ExpectMaskable(text);
                }
            }
            for (const std::wstring& warning : part.warnings)
                ExpectMaskable(warning);
        }
    });
}

Told Number(const std::vector<std::wstring>& arguments, const SetUp& setUp) {
    FakeOutput output;
    Told told;
    told.exitCode = RunNumber(arguments, output, On(setUp));
    EXPECT_EQ(output.errors, L"");
    ExpectNumberMaskable(arguments.front(), setUp);
    for (std::wstring line : Split(output.written, L'\n')) {
        while (line.find(L"  ") != std::wstring::npos)
            line = ReplaceAll(line, L"  ", L" ");
        if (!line.empty())
            told.lines.emplace_back(TrimBlanks(line));
    }
    return told;
}

bool Says(const Told& told, std::wstring_view line) {
    return std::ranges::find(told.lines, line) != told.lines.end();
}

void Nothing(CheckedMachine&) {}

TEST(Number, BothWaysAreTold) {
    ExpectNumberMaskable(L"1 (555) 123-4567", &Nothing);
    FakeOutput output;
    EXPECT_EQ(
        RunNumber(std::vector<std::wstring>{L"1", L"(555)", L"123-4567"}, output, On(&Nothing)), 1);
    EXPECT_EQ(output.written,
              L"As a caller ID\n"
              L"  received     1 (555) 123-4567\n"
              L"  digits       15551234567\n"
              L"  length       11, at least 6 are wanted\n"
              L"  leading 1    left out\n"
              L"  searched as  (555)123-4567\n"
              L"  asked        Phone1 of the open record\n"
              L"  then         Phone2 of the open record\n"
              L"  then         Phone3 of the open record\n"
              L"  then         GoldMine's own look-up, which shows the contact: Phone1, Phone2 and "
              L"Phone3\n"
              L"\n"
              L"As a number to dial\n"
              L"  command line  CorvaneTo3CX.exe 1 (555) 123-4567\n"
              L"  digits        15551234567\n"
              L"  dialed        5551234567\n"
              L"  3CX is told   \"C:\\3CX\\CallTriggerCmd.exe\" -cmd makecall:5551234567\n"
              L"  warning       1 is cut off at the front, because only the last 10 digits are "
              L"dialed\n");
}

TEST(Number, ANumberWithoutSurprisesIsFine) {
    EXPECT_EQ(Number({L"(555)123-4567"}, &Nothing).exitCode, 0);
}

TEST(Number, TheSettingsDecideWhatIsAsked) {
    const Told told = Number({L"5551234567"}, [](CheckedMachine& m) {
        m.StoreOption(L"optPhone1Only", L"True");
        m.StoreOption(L"optPhone123", L"False");
        m.StoreOption(L"chkSearchInAddlContacts", L"1");
        m.StoreOption(L"chkFormatCallerID", L"0");
    });
    const std::vector<std::wstring> expected = {
        L"searched as 5551234567",
        L"asked Phone1 of the open record",
        L"then account of the open record",
        L"then query: select AccountNo from ContSupp where AccountNo = '[account]' and RecType = "
        L"'C' and (phone = '5551234567' or fax = '5551234567')",
        L"then GoldMine's own look-up, which shows the contact: Phone1",
        L"then query: select AccountNo from ContSupp where RecType = 'C' and (phone = '5551234567' "
        L"or fax = '5551234567')"};
    EXPECT_NE(std::ranges::search(told.lines, expected).begin(), told.lines.end())
        << testing::PrintToString(told.lines);
}

TEST(Number, AnIgnoredCallerIDIsTold) {
    EXPECT_TRUE(Says(Number({L"101"}, &Nothing), L"warning Ignored short CallerID: 101."));
    const Told told = Number({L"anonymous"}, &Nothing);
    EXPECT_TRUE(Says(told, L"warning Ignored non-numeric CallerID: anonymous."));
    EXPECT_TRUE(Says(told,
                     L"warning Number to dial \"anonymous\" contains no digits. Call "
                     L"processing terminated."));
    EXPECT_EQ(told.exitCode, 1);
}

TEST(Number, LossesOfDialingAreWarnedOf) {
    const struct {
        const wchar_t* number;
        const wchar_t* warning;
    } cases[] = {
        {L"+44 20 7946 0958",
         L"warning 44 is cut off at the front, because only the last 10 digits are dialed; it "
         L"looks "
         L"like a country code"},
        {L"0044 20 7946 0958",
         L"warning 0044 is cut off at the front, because only the last 10 digits are dialed; it "
         L"looks like a country code"},
        {L"(555)123-4567 x12",
         L"warning 12 looks like an extension: it is dialed as the end of the number"},
        {L"(555)123-4567 ext. 12",
         L"warning 55 is cut off at the front, because only the last 10 digits are dialed"},
        {L"555/123 4567",
         L"warning the \"/\" makes the program split this at its blanks and take it for 3CX's "
         L"switches: nothing is dialed"},
        {L" ", L"warning nothing to dial: the program would show its window"},
    };
    for (const auto& each : cases) {
        const Told told = Number({each.number}, &Nothing);
        EXPECT_TRUE(Says(told, each.warning)) << testing::PrintToString(told.lines);
        EXPECT_EQ(told.exitCode, 1);
    }
}

TEST(Number, AllIsDialedWithoutTrimming) {
    const Told told = Number({L"+44 20 7946 0958"}, [](CheckedMachine& m) {
        m.StoreOption(L"chkTrimOutboundPrefix", L"0");
    });
    EXPECT_TRUE(Says(told,
                     L"3CX is told \"C:\\3CX\\CallTriggerCmd.exe\" -cmd "
                     L"makecall:442079460958"));
    EXPECT_EQ(told.exitCode, 0);
    EXPECT_TRUE(Says(Number({L"555/1234567"}, &Nothing), L"dialed 5551234567"));
}

TEST(Number, WhatStopsItBesidesIsWarnedOf) {
    const Told told = Number({L"5551234567"}, [](CheckedMachine& m) {
        m.files.files.clear();
        m.StoreOption(L"chkGlobalEnable", L"0");
        m.StoreOption(L"chkPopOnInboundCall", L"0");
        m.StoreOption(L"chkCreateHistory", L"0");
        m.StoreOption(L"txtCallerIDMinLength", L"six");
    });
    for (const wchar_t* warning :
         {L"warning 3CX's call trigger is not there: see CorvaneCheck wiring",
          L"warning the master switch is off: nothing is dialed",
          L"warning the master switch is off: no call is handled",
          L"warning this user's settings neither search for callers nor keep a history",
          L"warning txtCallerIDMinLength is stored as \"six\", which does not convert; its default "
          L"counts here"}) {
        EXPECT_TRUE(Says(told, warning)) << testing::PrintToString(told.lines);
    }
}

TEST(Number, NothingIsLogged) {
    for (const wchar_t* number : {L"5551234567", L"555/123 4567 /X:1"}) {
        FakeOutput output;
        CheckedMachine machine;
        machine.StoreOption(L"chkWriteLog", L"1");
        static_cast<void>(RunNumber(std::vector<std::wstring>{number}, output,
                                    [&](const auto& body) { body(machine.ForCheck()); }));
        EXPECT_EQ(machine.files.files.size(), 3u);
        EXPECT_TRUE(machine.files.folders.empty());
    }
}

// A GoldMine that plays along, and what was asked of it.
struct Asked {
    SetUp setUp = [this](CheckedMachine& m) {
        m.processes.RunGoldMine();
        m.StoreOption(L"chkSearchInAddlContacts", L"1");
        m.goldMine.answerAll = [this](const std::wstring& command) {
            commands.push_back(command);
            return played.Do(command);
        };
        further(m);
    };
    SetUp further = &Nothing;
    PlayedGoldMine played;
    std::vector<std::wstring> commands;

    Asked() {
        played.macros = {{L"&Phone1", L"1"},
                         {L"&Phone2", L"2"},
                         {L"&Phone3", L"(555)123-4567"},
                         {L"Contact1->AccountNo", L"A1"}};
    }
    Told Number(const std::wstring& number) {
        Told told = test::Number({number, L"--ask"}, setUp);
        for (const std::wstring& command : commands) {
            const std::wstring call = PlayedGoldMine::CallOf(command);
            EXPECT_TRUE(call == L"Macro" || call == L"DataStream")
                << testing::PrintToString(command);
        }
        return told;
    }
};

constexpr const wchar_t* phoneQuery =
    L"query select AccountNo from Contact1 where Phone1 = '(555)765-4321' or Phone2 = "
    L"'(555)765-4321' or Phone3 = '(555)765-4321'";

TEST(NumberAsked, TheOpenRecordIsAskedFirst) {
    Asked asked;
    const Told told = asked.Number(L"5551234567");
    EXPECT_TRUE(Says(told, L"result Found (555)123-4567 in Phone3 of the current record."))
        << testing::PrintToString(told.lines);
    EXPECT_EQ(told.exitCode, 0);
    EXPECT_EQ(asked.commands.size(), 3u);
}

TEST(NumberAsked, AQueryStandsInForGoldMinesLookUp) {
    Asked asked;
    asked.played.packets[L"select AccountNo from Contact1"] = L"3000-0001\nA2\r";
    const Told told = asked.Number(L"5557654321");
    const std::vector<std::wstring> expected = {
        L"In GoldMine", phoneQuery, L"matches 1",
        L"result Found (555)765-4321 in a primary contact record.",
        L"note GoldMine's own look-up shows the contact, so it was not asked; it may match more"};
    EXPECT_NE(std::ranges::search(told.lines, expected).begin(), told.lines.end())
        << testing::PrintToString(told.lines);
    EXPECT_EQ(told.exitCode, 0);
}

TEST(NumberAsked, SeveralContactsAreWarnedOf) {
    Asked asked;
    asked.played.packets[L"select AccountNo from Contact1"] = L"3000-0002\nA2\r";
    const Told told = asked.Number(L"5557654321");
    EXPECT_TRUE(
        Says(told, L"warning several contacts have this number: GoldMine chooses one of them"));
    EXPECT_EQ(told.exitCode, 1);
}

TEST(NumberAsked, AdditionalContactsAreAskedByTheProgramsOwnQuery) {
    Asked asked;
    asked.played.packets[L"select AccountNo from ContSupp where RecType"] = L"3000-0001\nA3\r";
    asked.played.packets[L"select Phone1 from Contact1"] = L"3000-0001\n555\r";
    const Told told = asked.Number(L"5557654321");
    EXPECT_TRUE(Says(told, phoneQuery));
    EXPECT_TRUE(Says(told, L"matches 0"));
    EXPECT_TRUE(Says(told, L"result Found (555)765-4321 in an Additional Contact record."))
        << testing::PrintToString(told.lines);
}

TEST(NumberAsked, NobodyIsFound) {
    Asked asked;
    const Told told = asked.Number(L"5557654321");
    EXPECT_TRUE(Says(told,
                     L"result Did not find GoldMine contact for (555)765-4321. Further call "
                     L"processing skipped."));
    EXPECT_TRUE(Says(told, L"warning no contact was found this way"));
    EXPECT_EQ(told.exitCode, 1);
}

TEST(NumberAsked, AQuoteInTheNumberStaysInTheQuery) {
    Asked asked;
    asked.further = [](CheckedMachine& m) { m.StoreOption(L"txtCallerIDFormat", L"'#"); };
    const Told told = asked.Number(L"5557654321");
    EXPECT_TRUE(std::ranges::any_of(told.lines, [](const std::wstring& line) {
        return line.starts_with(L"query select AccountNo from Contact1 where Phone1 = '''");
    })) << testing::PrintToString(told.lines);
}

TEST(NumberAsked, AnIgnoredOneIsNotAsked) {
    Asked asked;
    const Told told = asked.Number(L"101");
    EXPECT_TRUE(Says(told, L"GoldMine is not asked"));
    EXPECT_TRUE(asked.commands.empty());
}

TEST(NumberAsked, WithoutGoldMineNoneIsStarted) {
    Asked asked;
    asked.further = [](CheckedMachine& m) { m.processes.entries.clear(); };
    const Told told = asked.Number(L"5557654321");
    EXPECT_TRUE(Says(told, L"GoldMine is not running in this session"));
    EXPECT_EQ(told.exitCode, 2);
    EXPECT_TRUE(asked.commands.empty());
}

TEST(NumberAsked, AnAdministratorConnectsToNobodyElsesGoldMine) {
    Asked asked;
    asked.further = [](CheckedMachine& m) { m.survey.elevated[m.processes.own] = true; };
    const Told told = asked.Number(L"5557654321");
    EXPECT_TRUE(Says(told,
                     L"GoldMine runs without an administrator's rights: start CorvaneCheck "
                     L"without them, too"));
    EXPECT_TRUE(asked.commands.empty());
}

TEST(NumberAsked, AGoldMineThatCannotBeAskedIsTold) {
    Asked asked;
    asked.further = [](CheckedMachine& m) {
        m.goldMine.sendError = MakeRuntimeError(ErrorNumber::PermissionDenied);
    };
    const Told told = asked.Number(L"5557654321");
    EXPECT_EQ(told.exitCode, 2);
    EXPECT_TRUE(Says(told, L"GoldMine cannot be asked: Permission denied"))
        << testing::PrintToString(told.lines);
}

TEST(Number, WithoutANumberItIsAskedFor) {
    FakeOutput output;
    EXPECT_THROW(static_cast<void>(RunNumber({}, output, On(&Nothing))), WrongUse);
    EXPECT_THROW(static_cast<void>(
                     RunNumber(std::vector<std::wstring>{L"--aks", L"5"}, output, On(&Nothing))),
                 WrongUse);
}

}  // namespace
}  // namespace corvane::test
