#include "windows/MainWindowTest.h"

namespace corvane::test {
namespace {

class StatusBoxTest : public MainWindowTest {};

TEST_F(StatusBoxTest, StatusBoxTakesMoreThan64KiloAndAppendsAtItsEnd) {
    Show();
    const std::wstring line = std::wstring(98, L'x') + L"\r\n";
    std::wstring whole;
    for (int count = 0; count < 1000; ++count) {
        form.txtStatus.Append(line);
        whole += line;
    }
    form.txtStatus.Append(L"the last line");
    whole += L"the last line";

    EXPECT_EQ(TextOf(Native(form.txtStatus)), whole);
    DWORD begin = 0;
    DWORD end = 0;
    SendMessageW(Native(form.txtStatus), EM_GETSEL, reinterpret_cast<WPARAM>(&begin),
                 reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(end, whole.size()) << "the newest line is where the box stands";
    EXPECT_EQ(begin, end) << "and nothing is selected";
}

TEST_F(StatusBoxTest, TextThatTheStatusBoxHadBeforeIsContinued) {
    form.txtStatus.Append(L"before\r\n");
    Show();
    form.txtStatus.Append(L"after\r\n");
    EXPECT_EQ(TextOf(Native(form.txtStatus)), L"before\r\nafter\r\n");
    form.txtStatus.setText(L"");
    form.txtStatus.Append(L"anew");
    EXPECT_EQ(TextOf(Native(form.txtStatus)), L"anew");
}

TEST_F(StatusBoxTest, AnyFloodOfStatusLinesIsReadWhole) {
    Show();
    std::wstring whole;
    for (int line = 0; line < 500; ++line) {
        form.txtStatus.Append(L"line\r\n");
        whole += L"line\r\n";
        ASSERT_EQ(static_cast<std::size_t>(GetWindowTextLengthW(Native(form.txtStatus))),
                  whole.size());
    }
    for (int line = 0; line < 500; ++line) {
        form.txtStatus.Append(L"more\r\n");
        whole += L"more\r\n";
    }
    EXPECT_EQ(TextOf(Native(form.txtStatus)), whole);
}

}  // namespace
}  // namespace corvane::test
