#include "calls/HtmlNotes.h"

#include <algorithm>
#include <string>
#include <vector>

#include "fakes/FakeHtmlDocument.h"
#include "GoldMineFixture.h"

namespace corvane::test {
namespace {

class HtmlNotesTest : public testing::Test {
protected:
    FakeStatusWriter status;
    FakeClock clock;
    HtmlScript html;
    HtmlNotes notes{status, clock, [this] { return std::make_unique<FakeHtmlDocument>(html); },
                    L"CorvaneTo3CX"};
};

struct Waiting {
    int pollsUntilComplete;
    std::size_t waits;
};

class WaitingTest : public HtmlNotesTest, public testing::WithParamInterface<Waiting> {};

TEST_P(WaitingTest, ADocumentIsWaitedForSecondBySecond) {
    html.serialised = L"<done>";
    html.pollsUntilComplete = GetParam().pollsUntilComplete;
    EXPECT_EQ(notes.PrependHTMLToBody(L"old", L"new"), L"<done>");
    EXPECT_EQ(clock.sleeps, std::vector<std::uint32_t>(GetParam().waits, 1000));
    EXPECT_EQ(clock.pumps, static_cast<int>(GetParam().waits));
    EXPECT_EQ(status.lines, Lines{});
}

INSTANTIATE_TEST_SUITE_P(Documents, WaitingTest,
                         testing::Values(Waiting{0, 0}, Waiting{1, 1}, Waiting{10, 10}));

const std::wstring timeOut =
    L"Timed out after 10 seconds trying to insert HTML string before existing HTML Body.";

// A document that completes with the eleventh wait is too late as well.
class TimeOutTest : public HtmlNotesTest, public testing::WithParamInterface<int> {
protected:
    TimeOutTest() { html.pollsUntilComplete = GetParam(); }
    void ExpectTimeOut(const RuntimeError& error, const std::wstring& description) {
        EXPECT_EQ(error.number, 2147746306);
        EXPECT_EQ(error.source, L"CorvaneTo3CX.frmCorvaneTo3CX.PrependHTMLToBody");
        EXPECT_EQ(error.description, description);
        EXPECT_EQ(clock.sleeps, std::vector<std::uint32_t>(11, 1000));
        EXPECT_EQ(clock.pumps, 11);
        EXPECT_EQ(status.lines, Lines{timeOut});
        EXPECT_EQ(std::count(html.calls.begin(), html.calls.end(), L"serialise"), 0);
    }
};

TEST_P(TimeOutTest, IsAnErrorAfterElevenWaits) {
    ExpectTimeOut(ErrorOf([&] { static_cast<void>(notes.PrependHTMLToBody(L"old", L"new")); }),
                  L"PrependHTMLToBody: Timed out after 10 seconds trying to insert HTML string "
                  L"before existing HTML Body.");
}

INSTANTIATE_TEST_SUITE_P(Documents, TimeOutTest, testing::Values(-1, 11, 12));

TEST_F(HtmlNotesTest, AnErrorOfTheHtmlEngineCarriesTheProcedureBeforeItsDescription) {
    HtmlNotes broken(
        status, clock, []() -> std::unique_ptr<HtmlDocument> { throw CompleteError(429); },
        L"CorvaneTo3CX");
    const RuntimeError error =
        ErrorOf([&] { static_cast<void>(broken.PrependHTMLToBody(L"old", L"new")); });
    EXPECT_EQ(error.number, 429);
    EXPECT_EQ(error.source, L"GoldMine.UI");
    EXPECT_EQ(error.description, L"PrependHTMLToBody: something broke");
    EXPECT_EQ(error.helpContext, 1234);
}

TEST_F(HtmlNotesTest, TheVisibleTextIsTheEngines) {
    html.visibleText = L"seen";
    EXPECT_EQ(notes.HTMLToText(L"<b>seen</b>"), L"seen");
    EXPECT_EQ(html.calls, Lines{L"text of [<b>seen</b>]"});
}

}  // namespace
}  // namespace corvane::test
