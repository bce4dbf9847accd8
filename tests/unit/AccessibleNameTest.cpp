#include "ui/form/AccessibleName.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane::test {
namespace {

struct NamedControl {
    const wchar_t* control;
    const wchar_t* name;
};

class SpokenNameTest : public testing::TestWithParam<NamedControl> {};

TEST_P(SpokenNameTest, SaysWhatStandsAroundTheControl) {
    EXPECT_EQ(AccessibleName(FindControl(GetParam().control)), GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(
    Controls, SpokenNameTest,
    testing::Values(
        NamedControl{L"txtOutboundMaxLength",
                     L"Trim all but the last digits before dialing outbound number"},
        NamedControl{L"txtCallerIDMinLength",
                     L"Ignore invocation from 3CX if CallerID is fewer than digits"},
        NamedControl{L"txtCallerIDFormat", L"Format CallerID before searching:"},
        NamedControl{L"txtLinkedItemPath",
                     L"In history item's Notes, add link to most recent file in this folder:"},
        NamedControl{L"txtDelayAddingLinkSeconds",
                     L"Delay adding link for seconds (give 3CX time to create)"},
        NamedControl{L"txtRecordingFileMaxAgeSeconds",
                     L"Only add link if file was created in the last seconds"},
        NamedControl{L"txtCOMDurationSeconds", L"Log GoldMine interactions longer than seconds"},
        NamedControl{L"txtStatus", L"Status"}, NamedControl{L"txtAbout", L"About"},
        NamedControl{L"tabstripOptions", L"Options"},
        NamedControl{L"tabstripParams", L"Parameters"},
        NamedControl{L"cmdOpenLog", L"Open this program's log file"},
        NamedControl{L"cmdOpenGMINI", L"Open the GoldMine GM.INI file"},
        NamedControl{L"subframePopMoment",
                     L"Search on inbound call even if not creating GoldMine history:"},
        NamedControl{L"subframeHistoryMoment",
                     L"If contact found, create GoldMine Call History item when call"},
        NamedControl{L"subframeContactWindow", L"Show GoldMine contact in"},
        NamedControl{L"subFrameHistoryType", L"Open before saving in history"},
        // Their captions and labels say it already.
        NamedControl{L"subframeHistorySequence", L""}, NamedControl{L"cmdExit", L""},
        NamedControl{L"chkGlobalEnable", L""}, NamedControl{L"txtCallerID", L""},
        NamedControl{L"txtLogPath", L""}));

TEST(AccessibleNameTest, NoControlThatCanHaveTheFocusIsNameless) {
    for (std::size_t row = 0; row < controlCatalogue.size(); ++row) {
        const ControlSpec& spec = controlCatalogue[row];
        if (spec.kind == ControlKind::Label || spec.kind == ControlKind::Frame)
            continue;
        const bool labelled = row > 0 && spec.kind == ControlKind::TextBox &&
                              controlCatalogue[row - 1].kind == ControlKind::Label;
        const bool hasCaption = spec.kind != ControlKind::TextBox && !spec.caption.empty();
        EXPECT_TRUE(labelled || hasCaption || !AccessibleName(row).empty())
            << std::string(spec.name.begin(), spec.name.end());
    }
}

}  // namespace
}  // namespace corvane::test
