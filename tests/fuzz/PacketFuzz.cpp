// GoldMine's replies of any text: rows are taken apart or refused, an area that was opened is
// closed, and no error leaves but those that are known.
//
// First line: letters of the replies that stay as they should be; then the packet, or the reply.

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "fakes/FakeClock.h"
#include "fakes/FakeGoldMine.h"
#include "fakes/FakeMessageBoxes.h"
#include "fakes/FakeStatusWriter.h"
#include "fakes/TestXPathReader.h"
#include "fuzz/Input.h"
#include "gmapi/DataStream.h"
#include "gmapi/Envelope.h"
#include "gmapi/GMUI.h"
#include "gmapi/Macro.h"
#include "gmapi/Records.h"
#include "gmapi/WindowCommands.h"
#include "support/Gmapi.h"
#include "ui/form/Form.h"
#include "util/RuntimeError.h"

namespace {

using namespace corvane;
using namespace corvane::test;
using gmapi = test_support::Gmapi<wchar_t>;

constexpr auto npos = std::wstring::npos;

bool IsNumberError(const RuntimeError& error) {
    return error.number == ErrorNumber::TypeMismatch || error.number == ErrorNumber::Overflow;
}

void TakeApart(const std::wstring& packet) {
    // Of just its size, so that reading behind it is seen.
    const std::vector<wchar_t> exact(packet.begin(), packet.end());
    try {
        const RawRows rows = ParseRawReturn({exact.data(), exact.size()});
        EXPECT_EQ(rows.header.find(L'\n'), npos);
        EXPECT_EQ(rows.firstRow.find(L'\n'), npos);
        EXPECT_TRUE(packet.starts_with(rows.header));
        EXPECT_NE(packet.find(rows.firstRow), npos);
    } catch (const RuntimeError& error) {
        EXPECT_TRUE(IsNumberError(error)) << error.number;
    }
}

class Client {
public:
    Client(const std::wstring& asTheyShouldBe, const std::wstring& text)
        : asTheyShouldBe_(asTheyShouldBe), text_(text) {
        goldMine_.answerAll = [this](const std::wstring& command) {
            const auto is = [&](wchar_t letter, const wchar_t* name) {
                return Stays(letter) && command.find(name) != npos;
            };
            if (is(L'q', L">Query<"))
                return gmapi::Reply(L"DataStream", L"1", L"7");
            if (is(L'f', L">Fetch<"))
                return gmapi::FetchReply(gmapi::Escaped(text_));
            if (is(L'c', L">Close<"))
                return gmapi::Reply(L"DataStream", L"1", L"1");
            return text_;
        };
    }

    void AskForOneField() {
        std::optional<std::wstring> field;
        try {
            field = dataStream_.FirstFieldOfQuery(L"select 1");
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(IsNumberError(error)) << error.number;
        }
        const auto sent = [this](const wchar_t* name) {
            return std::count_if(
                goldMine_.commands.begin(), goldMine_.commands.end(),
                [name](const std::wstring& each) { return each.find(name) != npos; });
        };
        EXPECT_TRUE(!field || field->find_first_of(L"\r\n") == npos);
        EXPECT_EQ(sent(L">Query<"), 1);
        // Only an area that there is is fetched from; what was fetched, and only that, is closed.
        if (!Succeeds(L'q')) {
            EXPECT_EQ(sent(L">Fetch<"), 0);
        } else if (Stays(L'q')) {
            EXPECT_EQ(sent(L">Fetch<"), 1);
        }
        EXPECT_EQ(sent(L">Close<"), Succeeds(L'f') ? sent(L">Fetch<") : 0);
        EXPECT_TRUE(!field || sent(L">Close<") == 1);
        EXPECT_EQ(boxes_.Take().size(), status_.lines.size());
    }

    void AskForTheRest() {
        const std::optional<std::wstring> area = records_.Open(L"CONTHIST");
        EXPECT_EQ(area.has_value(), Succeeded(text_, L"Open"));
        const auto account = macro_.AccountNo();
        EXPECT_TRUE(!account || account->find_first_not_of(L' ') != npos);
        HistoryItem item;
        EXPECT_NE(records_.InsHist(item), L"0");
        EXPECT_LE(windows_.StatusMsg(L"x", 1).size(), 1U);
        try {
            static_cast<void>(windows_.GetControlText(L"5", L"1016"));
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(IsNumberError(error)) << error.number;
            EXPECT_TRUE(error.source.starts_with(L"GMUI_GetControlText: "));
        }
        EXPECT_TRUE(boxes_.Take().empty());
    }

private:
    [[nodiscard]] bool Stays(wchar_t letter) const { return asTheyShouldBe_.find(letter) != npos; }
    [[nodiscard]] bool Succeeds(wchar_t letter) const {
        return Stays(letter) || Succeeded(text_, L"DataStream");
    }

    const std::wstring& asTheyShouldBe_;
    const std::wstring& text_;
    FakeGoldMine goldMine_;
    TestXPathReader reader_;
    Form form_;
    FakeStatusWriter status_;
    FakeMessageBoxes boxes_;
    FakeClock clock_;
    GMUI gmui_{goldMine_, reader_, form_, status_, boxes_, clock_};
    DataStream dataStream_{gmui_, form_, status_, boxes_};
    Macro macro_{gmui_};
    Records records_{gmui_};
    WindowCommands windows_{gmui_};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::wstring asTheyShouldBe = input.Line();
    const std::wstring text = input.Rest();
    TakeApart(text);
    Client client(asTheyShouldBe, text);
    client.AskForOneField();
    client.AskForTheRest();
    return 0;
}
