#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/FakeClock.h"
#include "fakes/FakeGoldMine.h"
#include "fakes/FakeMessageBoxes.h"
#include "fakes/FakeStatusWriter.h"
#include "fakes/TestApartment.h"
#include "fakes/TestXPathReader.h"
#include "gmapi/DataStream.h"
#include "gmapi/GMUI.h"
#include "gmapi/Macro.h"
#include "gmapi/Records.h"
#include "gmapi/WindowCommands.h"
#include "support/Gmapi.h"
#include "TestErrors.h"
#include "ui/form/Form.h"
#include "util/RuntimeError.h"

namespace corvane::test {

using Lines = std::vector<std::wstring>;

using gmapi = test_support::Gmapi<wchar_t>;

// A reply as GoldMine writes it; the value stands in it as given.
inline std::wstring Reply(const std::wstring& call, const std::wstring& code,
                          const std::wstring& value) {
    return gmapi::Reply(call, code, value);
}

// The command that evaluates a macro; the name is given as it stands in the command.
inline std::wstring MacroCommand(const std::wstring& escapedName) {
    return gmapi::Macro(escapedName);
}

inline std::wstring StatusMsgCommand(const std::wstring& message) {
    return gmapi::StatusMsg(message);
}

inline std::wstring QueryCommand(const std::wstring& escapedSql) {
    return gmapi::Query(escapedSql);
}

inline std::wstring FetchCommand(const std::wstring& area) {
    return gmapi::Fetch(area);
}

inline std::wstring DataStreamCloseCommand(const std::wstring& area) {
    return gmapi::CloseStream(area);
}

// A packet in a Fetch reply.
inline std::wstring FetchReply(const std::wstring& packet) {
    return gmapi::FetchReply(packet);
}

// An error with every member set, to see which of them a procedure changes.
inline RuntimeError CompleteError(std::int32_t number) {
    RuntimeError error;
    error.number = number;
    error.source = L"GoldMine.UI";
    error.description = L"something broke";
    error.helpFile = L"gm.hlp";
    error.helpContext = 1234;
    return error;
}

// GoldMine's commands over a fake of GoldMine.
class GoldMineFixture : public testing::Test {
protected:
    void AnswerMacro(const std::wstring& escapedName, const std::wstring& value) {
        goldMine.answers[MacroCommand(escapedName)] = Reply(L"Macro", L"1", value);
    }
    void FailMacro(const std::wstring& escapedName) {
        goldMine.answers[MacroCommand(escapedName)] = Reply(L"Macro", L"0", L"");
    }
    // The whole dialogue of a query whose packet is fetched from area 7.
    void AnswerQuery(const std::wstring& escapedSql, const std::wstring& packet) {
        goldMine.answers[QueryCommand(escapedSql)] = Reply(L"DataStream", L"1", L"7");
        goldMine.answers[FetchCommand(L"7")] = FetchReply(packet);
        goldMine.answers[DataStreamCloseCommand(L"7")] = Reply(L"DataStream", L"1", L"1");
    }
    void ExpectNoLines() const { EXPECT_EQ(status.lines, Lines{}); }

    TestApartment apartment;
    TestXPathReader xpath;
    FakeGoldMine goldMine;
    FakeStatusWriter status;
    FakeMessageBoxes boxes;
    FakeClock clock;
    Form form;
    GMUI gmui{goldMine, xpath, form, status, boxes, clock};
    Macro macro{gmui};
    DataStream dataStream{gmui, form, status, boxes};
    Records records{gmui};
    WindowCommands windows{gmui};
};

}  // namespace corvane::test
