#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <string>

#include "ShownWindows.h"
#include "support/windows/NativeWindow.h"

namespace corvane::test {
namespace {

using test_support::TextOf;

// A busy machine slows a measurement down, never up: the best of several is what the work costs.
constexpr int measurements = 25;

TEST(WindowSpeedTest, WindowAppearsNearlyAsFastAsABareOneWithAsManyControls) {
    constexpr double allowedRatio = 1.5;
    constexpr int enough = 5;
    double bare = std::numeric_limits<double>::max();
    double shown = std::numeric_limits<double>::max();
    { const BareWindow warmUp; }
    { const ShownWindow warmUp; }

    for (int i = 0; i < enough || (i < measurements && shown > allowedRatio * bare); ++i) {
        std::unique_ptr<BareWindow> plain;
        bare = std::min(bare, Milliseconds([&] { plain = std::make_unique<BareWindow>(); }));
        plain.reset();
        std::unique_ptr<ShownWindow> full;
        shown = std::min(shown, Milliseconds([&] { full = std::make_unique<ShownWindow>(); }));
        ASSERT_TRUE(IsWindowVisible(full->window->handle()));
    }

    EXPECT_LE(shown, allowedRatio * bare) << "bare " << bare << " ms, shown " << shown << " ms";
}

// The status box on its tab, where every line is seen, and hidden on another.
class StatusSpeedTest : public testing::TestWithParam<int> {
protected:
    [[nodiscard]] HWND NativeStatus() const {
        const HWND frame = GetDlgItem(
            shown_.window->handle(), ControlId(shown_.form.frameOptions(OptionsTab::status).row()));
        return GetDlgItem(frame, ControlId(shown_.form.txtStatus.row()));
    }

    // Milliseconds until all lines are in the native box.
    [[nodiscard]] double TimeOfLines(int count) {
        return Milliseconds([&] {
            for (int line = 0; line < count; ++line) {
                const std::wstring text =
                    L"Inbound call search for CallerID:  searching, line " + std::to_wstring(line);
                shown_.form.txtStatus.Append(whole_.empty() ? text : L"\r\n" + text);
                whole_ += whole_.empty() ? text : L"\r\n" + text;
            }
            EXPECT_EQ(GetWindowTextLengthW(NativeStatus()), static_cast<int>(whole_.size()));
            ServeWaitingMessages();
        });
    }

    ShownWindow shown_;
    std::wstring whole_;
};

TEST_P(StatusSpeedTest, TheTenThousandthStatusLineCostsAsMuchAsTheFirst) {
    constexpr int lines = 1000;
    constexpr double allowedRatio = 2;
    constexpr int enough = 3;
    double first = std::numeric_limits<double>::max();
    double last = std::numeric_limits<double>::max();
    shown_.form.SelectTab(shown_.form.tabstripOptions, GetParam());
    ServeWaitingMessages();

    for (int i = 0; i < enough || (i < measurements && last > allowedRatio * first); ++i) {
        shown_.form.txtStatus.setText(L"");
        whole_.clear();
        first = std::min(first, TimeOfLines(lines));
        static_cast<void>(TimeOfLines(8 * lines));
        last = std::min(last, TimeOfLines(lines));
    }

    EXPECT_EQ(TextOf(NativeStatus()), whole_);
    EXPECT_LE(last, allowedRatio * first) << "first " << first << " ms, last " << last << " ms";
}

INSTANTIATE_TEST_SUITE_P(Tabs, StatusSpeedTest,
                         testing::Values(OptionsTab::general, OptionsTab::status));

}  // namespace
}  // namespace corvane::test
