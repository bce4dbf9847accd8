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
#include "TestErrors.h"
#include "ui/form/Form.h"
#include "util/RuntimeError.h"

namespace corvane::test {

using Lines = std::vector<std::wstring>;

// A reply as GoldMine writes it; the value stands in it as given.
inline std::wstring Reply(const std::wstring& call, const std::wstring& code,
                          const std::wstring& value) {
    return L"<GMAPI call=\"" + call + L"\"><status code=\"" + code + L"\">" + value +
           L"</status></GMAPI>";
}

// The command that evaluates a macro; the name is given as it stands in the command.
inline std::wstring MacroCommand(const std::wstring& escapedName) {
    return L"<GMAPI call=\"Macro\"><data name=\"Macro\">" + escapedName + L"</data></GMAPI>";
}

inline std::wstring StatusMsgCommand(const std::wstring& message) {
    return L"<GMAPI call=\"StatusMsg\"><data name=\"Message\">" + message +
           L"</data><data name=\"Delay\">10</data></GMAPI>";
}

inline std::wstring QueryCommand(const std::wstring& escapedSql) {
    return L"<GMAPI call=\"DataStream\"><data name=\"Command\">Query</data><data name=\"SQL\">" +
           escapedSql + L"</data><data name=\"Filter\"></data></GMAPI>";
}

inline std::wstring FetchCommand(const std::wstring& area) {
    return L"<GMAPI call=\"DataStream\"><data name=\"Command\">Fetch</data><data name=\"Area\">" +
           area +
           L"</data><data name=\"FetchCount\">1</data><data name=\"Raw\">1</data>"
           L"<data name=\"FieldDelimiter\"></data><data name=\"RowDelimiter\"></data></GMAPI>";
}

inline std::wstring DataStreamCloseCommand(const std::wstring& area) {
    return L"<GMAPI call=\"DataStream\"><data name=\"Command\">Close</data><data name=\"Area\">" +
           area + L"</data></GMAPI>";
}

// A packet in a Fetch reply. XML turns a raw CR into LF, so GoldMine writes it as a reference.
inline std::wstring FetchReply(const std::wstring& packet) {
    return L"<GMAPI call=\"DataStream\"><status code=\"1\">1</status><data name=\"Return\">"
           L"<data name=\"Rows\"><data name=\"RawReturn\">" +
           packet + L"</data></data></data></GMAPI>";
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
