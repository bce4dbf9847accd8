#include <algorithm>
#include <array>
#include <initializer_list>
#include <map>
#include <set>

#include "ui/window/ControlWindows.h"
#include "ui/window/Dpi.h"
#include "util/Text.h"
#include "windows/MainWindowTest.h"

namespace corvane::test {
namespace {

using Places = std::vector<RECT>;

// Of every control in its parent, in the order of the catalogue.
Places PlacesOf(const Form& form, const std::function<HWND(const Control&)>& native) {
    Places places;
    for (const Control* control : form.controls()) {
        RECT place{};
        GetWindowRect(native(*control), &place);
        MapWindowPoints(nullptr, GetParent(native(*control)), reinterpret_cast<POINT*>(&place), 2);
        places.push_back(place);
    }
    return places;
}

bool Same(const RECT& one, const RECT& other) {
    return EqualRect(&one, &other) != FALSE;
}

std::string Described(const RECT& rect) {
    return std::to_string(rect.left) + "," + std::to_string(rect.top) + " to " +
           std::to_string(rect.right) + "," + std::to_string(rect.bottom);
}

std::string Described(const Control& control) {
    const std::wstring name = control.name();
    return std::string(name.begin(), name.end()) + "(" + std::to_string(control.spec().index) + ")";
}

// What Windows' message font, Segoe UI in nine points, takes of the screen. Machines that test do
// not have it, and what they have is smaller: the widths of its characters are these figures,
// about, and so are the heights of its lines.
class MessageFont {
public:
    explicit MessageFont(UINT dpi) : dpi_(static_cast<int>(dpi)) {}

    [[nodiscard]] LONG Lines(int count) const {
        static const std::map<int, int> heights = {{96, 15}, {120, 20}, {144, 25}, {192, 32}};
        return heights.at(dpi_) * count;
    }
    [[nodiscard]] LONG Width(std::wstring_view text) const {
        LONG width = 0;
        for (const wchar_t character : text)
            width += WidthOf(character);
        return width;
    }
    // How many lines the text takes when it is wrapped at blanks.
    [[nodiscard]] int LinesOf(std::wstring_view text, LONG room) const {
        int lines = 1;
        LONG used = 0;
        while (!text.empty()) {
            const auto end = std::min(text.find_first_of(L" \n"), text.size());
            const LONG word = Width(text.substr(0, end));
            if (used > 0 && used + word > room) {
                ++lines;
                used = 0;
            }
            used += word;
            if (end == text.size())
                break;
            used += Width(text.substr(end, 1));
            if (text[end] == L'\n') {
                ++lines;
                used = 0;
            }
            text.remove_prefix(end + 1);
        }
        return lines;
    }

private:
    [[nodiscard]] LONG WidthOf(wchar_t character) const {
        // Of 2048 to the size of the font, for blank to tilde.
        constexpr std::array<int, 95> widths = {
            561,  582,  803,  1210, 1104, 1676, 1639, 471,  618,  618,  854,  1401, 444,  819,
            444,  797,  1104, 1104, 1104, 1104, 1104, 1104, 1104, 1104, 1104, 1104, 444,  444,
            1401, 1401, 1401, 918,  1956, 1321, 1174, 1268, 1436, 1036, 999,  1406, 1454, 545,
            731,  1188, 963,  1839, 1532, 1544, 1147, 1544, 1225, 1087, 1073, 1407, 1272, 1913,
            1208, 1132, 1169, 618,  776,  618,  1401, 850,  549,  1042, 1204, 946,  1206, 1071,
            641,  1206, 1158, 496,  496,  1018, 496,  1764, 1158, 1200, 1204, 1206, 711,  869,
            694,  1158, 981,  1479, 940,  991,  926,  618,  490,  618,  1401};
        if (character < L' ' || character > L'~')
            return 0;
        constexpr int unitsToTheEm = 2048;
        constexpr int points = 9;
        constexpr int pointsPerInch = 72;
        const int em = MulDiv(points, dpi_, pointsPerInch);
        return MulDiv(widths[static_cast<std::size_t>(character - L' ')], em, unitsToTheEm);
    }

    int dpi_;
};

SIZE ClientSize(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return {client.right, client.bottom};
}

// The longest captions that the window ever shows.
void SetLongestCaptions(Form& form) {
    form.cmdChangeLogLevel.setCaption(L"Set to log only ImportantEvents");
    form.lblParam(13).setCaption(L"Path to GoldMine executable:");
    form.lblParam(17).setCaption(
        L"3CX calls this program to handle inbound and outbound call events:\r\n"
        L"HKLM\\Software\\3CX\\CRM\\CallNotifierPath");
    form.lblParam(19).setCaption(
        L"CorvaneTo3CX calls this program to dial out via 3CX:\r\n"
        L"HKLM\\Software\\3CX\\3CXPhone for Windows\\Path + CallTriggerCmd.exe");
    form.lblParam(30).setCaption(
        L"3CX uses this plugin to call CorvaneTo3CX.exe:\r\n"
        L"HKLM\\Software\\3CX\\3CXPhone for Windows\\Path + CommandLineAPIPlugin.dll");
    form.lblParam(32).setCaption(
        L"3CX Command Line API Plugin log level:\r\n"
        L"HKLM\\Software\\3CX\\CRM\\CommandLineAPILogLevel");
    form.lblParam(33).setCaption(
        L"Path to 3CX Command Line API Plugin log file:\r\n"
        L"HKLM\\Software\\3CX\\CRM\\CommandLineAPILogPath");
    form.lbl3CXInfo.setCaption(L"3CX MyPhone defined in registry. Assuming 3CX 10 or 11.");
}

HWND BorderOf(HWND frame) {
    HWND child = nullptr;
    while ((child = FindWindowExW(frame, child, WC_BUTTONW, nullptr))) {
        if ((GetWindowLongPtrW(child, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX)
            break;
    }
    return child;
}

class WindowLayoutTest : public MainWindowTest {
protected:
    // As Windows does it when the window comes to a monitor of this resolution.
    void MoveToMonitor(UINT dpi) const {
        const RECT suggested{10, 20, 10 + PixelsFromTwips(form.width(), dpi),
                             20 + PixelsFromTwips(windowHeight, dpi)};
        SendMessageW(window->handle(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi),
                     reinterpret_cast<LPARAM>(&suggested));
    }
    [[nodiscard]] Places PlacesNow() const {
        return PlacesOf(form, [this](const Control& control) { return Native(control); });
    }
    void ExpectCaptionFits(const Control& control, UINT dpi) const {
        const HWND native = Native(control);
        const ControlSpec& spec = control.spec();
        if (spec.has(ControlTrait::plain))
            return;
        const MessageFont font(dpi);
        SIZE room = ClientSize(native);
        // Such a caption takes of its place what it needs in the machine's own font.
        if (spec.has(ControlTrait::atBottom))
            room.cy = Pixels(spec.place.top + spec.place.height, dpi) - Pixels(spec.place.top, dpi);
        std::wstring text = TextOf(native);
        if (spec.kind != ControlKind::Label)
            std::erase(text, L'&');
        SIZE needed{font.Width(text), font.Lines(1)};
        switch (spec.kind) {
            case ControlKind::Label:
                needed = {0, font.Lines(font.LinesOf(text, room.cx))};
                break;
            case ControlKind::CheckBox:
            case ControlKind::OptionButton:
                if (spec.has(ControlTrait::multiLine))
                    needed = {0, font.Lines(font.LinesOf(text, room.cx - Mark(dpi)))};
                else
                    needed.cx += Mark(dpi);
                break;
            case ControlKind::CommandButton:
                needed.cx += At(12, dpi);
                needed.cy += At(4, dpi);
                break;
            case ControlKind::TextBox:
                needed.cx = 0;
                break;
            case ControlKind::Frame:
                // Its caption is that of the group box inside it.
                EXPECT_EQ(TextOf(BorderOf(native)), text);
                needed.cx += At(24, dpi);
                break;
            case ControlKind::TabStrip:
                needed = {TabsWidth(control, font, dpi), 0};
                EXPECT_EQ(SendMessageW(native, TCM_GETROWCOUNT, 0, 0), 1);
                break;
        }
        EXPECT_LE(needed.cx, room.cx) << Described(control) << " at " << dpi;
        EXPECT_LE(needed.cy, room.cy) << Described(control) << " at " << dpi;
    }
    // A figure that is so many pixels at 96 dots per inch.
    static int At(int pixels, UINT dpi) { return MulDiv(pixels, static_cast<int>(dpi), 96); }
    static int Pixels(int twips, UINT dpi) { return MulDiv(twips, static_cast<int>(dpi), 1440); }
    // The box or the circle before a caption, with the gap behind it.
    static int Mark(UINT dpi) { return At(13 + 4, dpi); }
    [[nodiscard]] LONG TabsWidth(const Control& strip, const MessageFont& font, UINT dpi) const {
        LONG width = 0;
        for (int tab = 0;
             RowOfControl(Form::FramesOf(static_cast<const TabStrip&>(strip)), tab) != noControl;
             ++tab) {
            const Control& page =
                form.control(Form::FramesOf(static_cast<const TabStrip&>(strip)), tab);
            width += font.Width(page.caption()) + At(12, dpi);
        }
        return width;
    }
    void ExpectNoOverlap(const Places& places, UINT dpi) const {
        const auto& controls = form.controls();
        for (std::size_t one = 0; one < controls.size(); ++one) {
            const SIZE room = ClientSize(GetParent(Native(*controls[one])));
            EXPECT_LE(places[one].bottom, room.cy) << Described(*controls[one]) << " at " << dpi;
            for (std::size_t other = one + 1; other < controls.size(); ++other) {
                RECT common{};
                const ControlSpec& first = controls[one]->spec();
                const ControlSpec& second = controls[other]->spec();
                if (first.parent != second.parent || first.parentIndex != second.parentIndex ||
                    IsPageOrStrip(*controls[one]) || IsPageOrStrip(*controls[other])) {
                    continue;
                }
                EXPECT_FALSE(IntersectRect(&common, &places[one], &places[other]))
                    << Described(*controls[one]) << " and " << Described(*controls[other]) << " at "
                    << dpi;
            }
        }
    }
    // Pages lie over each other inside their strip.
    static bool IsPageOrStrip(const Control& control) {
        return control.spec().kind == ControlKind::TabStrip || control.name() == L"frameOptions" ||
               control.name() == L"frameParams";
    }
};

// The places in a window that was made for the resolution.
Places PlacesMadeFor(UINT dpi) {
    Form form;
    SetLongestCaptions(form);
    const HWND parent = CreateWindowExW(0, WC_STATICW, L"", WS_POPUP, 0, 0, 3000, 3000, nullptr,
                                        nullptr, GetModuleHandleW(nullptr), nullptr);
    ControlWindows controls(form, GetModuleHandleW(nullptr));
    controls.Create(parent, dpi);
    Places places =
        PlacesOf(form, [&controls](const Control& control) { return controls.of(control); });
    DestroyWindow(parent);
    return places;
}

void ExpectSame(const Form& form, const Places& actual, const Places& expected, UINT dpi) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t row = 0; row < actual.size(); ++row) {
        EXPECT_TRUE(Same(actual[row], expected[row]))
            << Described(*form.controls()[row]) << " at " << dpi << ": " << Described(actual[row])
            << " and not " << Described(expected[row]);
    }
}

TEST_F(WindowLayoutTest, MovedFromMonitorToMonitorItIsAsIfMadeForEach) {
    form.ToggleParams();
    SetLongestCaptions(form);
    Show();
    const UINT dpiAtStart = DpiOfWindow(window->handle());
    const Places atStart = PlacesNow();

    for (const UINT dpi : {120U, 144U, 192U, 96U, 192U, 120U, 144U, 96U}) {
        MoveToMonitor(dpi);

        const Places places = PlacesNow();
        ExpectSame(form, places, PlacesMadeFor(dpi), dpi);
        ExpectNoOverlap(places, dpi);
        for (const Control* control : form.controls())
            ExpectCaptionFits(*control, dpi);
        RECT outer{};
        GetWindowRect(window->handle(), &outer);
        EXPECT_EQ(outer.left, 10);
        EXPECT_EQ(outer.top, 20);
        EXPECT_EQ(outer.right - outer.left, MulDiv(13920, static_cast<int>(dpi), 1440));
        EXPECT_EQ(outer.bottom - outer.top, MulDiv(7800, static_cast<int>(dpi), 1440));
    }
    MoveToMonitor(dpiAtStart);
    ExpectSame(form, PlacesNow(), atStart, dpiAtStart);
}

// The edge of a control on its page, in twips.
int LeftOnPage(const Form& form, const Control& control) {
    int left = 0;
    for (const Control* at = &control;
         !at->spec().has(ControlTrait::plain) ||
         (at->name() != L"frameOptions" && at->name() != L"frameParams");
         at = &form.control(at->spec().parent, at->spec().parentIndex)) {
        left += at->spec().place.left;
    }
    return left;
}

TEST_F(WindowLayoutTest, ColumnsOfOptionsLineUp) {
    const auto lefts = [this](std::initializer_list<const Control*> controls) {
        std::set<int> different;
        for (const Control* control : controls)
            different.insert(LeftOnPage(form, *control));
        return different;
    };
    EXPECT_EQ(lefts({&form.optPhone123, &form.optPopOnInboundCallConnect, &form.optPopCurrentWindow,
                     &form.optProcessEnd}),
              std::set<int>{3000});
    EXPECT_EQ(lefts({&form.optPopOnInboundCallStart, &form.optProcessStart}), std::set<int>{480});
    EXPECT_EQ(lefts({&form.optOpenHistoryBeforeSaving, &form.optOpenHistoryAfterSaving}),
              std::set<int>{600});
    EXPECT_EQ(lefts({&form.txtLinkedItemPath, &form.chkDelayAddingLink,
                     &form.chkConfirmRecentRecordingFile, &form.chkConfirmLinkCallIdentifier,
                     &form.chkAutoProcess}),
              std::set<int>{420});
}

TEST_F(WindowLayoutTest, BoxesStandRightBehindTheirWords) {
    constexpr int atMost = 270;  // twips
    const auto& controls = form.controls();
    int boxes = 0;
    for (std::size_t row = 1; row < controls.size(); ++row) {
        const ControlSpec& words = controls[row - 1]->spec();
        const Place& box = controls[row]->spec().place;
        if (words.kind != ControlKind::CheckBox ||
            controls[row]->spec().kind != ControlKind::TextBox || box.top > words.place.top)
            continue;
        ++boxes;
        for (const UINT dpi : {96U, 120U, 144U, 192U}) {
            const LONG end = Pixels(words.place.left, dpi) + Mark(dpi) +
                             MessageFont(dpi).Width(TrimBlanks(words.caption));
            const LONG gap = Pixels(box.left, dpi) - end;
            EXPECT_GE(gap, Pixels(60, dpi)) << Described(*controls[row]);
            EXPECT_LE(gap, Pixels(atMost, dpi)) << Described(*controls[row]);
        }
    }
    EXPECT_EQ(boxes, 6);
}

TEST_F(WindowLayoutTest, CaptionsEndAtTheirBoxesHoweverManyLinesTheyTake) {
    form.ToggleParams();
    Show();
    int captions = 0;
    const auto expectNoHole = [&](const char* when) {
        const auto& controls = form.controls();
        captions = 0;
        for (std::size_t row = 0; row + 1 < controls.size(); ++row) {
            if (!controls[row]->spec().has(ControlTrait::atBottom))
                continue;
            ++captions;
            const Places places = PlacesNow();
            const UINT dpi = DpiOfWindow(window->handle());
            EXPECT_LE(places[row + 1].top - places[row].bottom, Pixels(30, dpi)) << when;
            const LONG height = places[row].bottom - places[row].top;
            TEXTMETRICW metrics{};
            const HDC device = GetDC(Native(*controls[row]));
            SelectObject(device, reinterpret_cast<HGDIOBJ>(
                                     SendMessageW(Native(*controls[row]), WM_GETFONT, 0, 0)));
            GetTextMetricsW(device, &metrics);
            ReleaseDC(Native(*controls[row]), device);
            const std::wstring text = TextOf(Native(*controls[row]));
            const auto breaks = std::count(text.begin(), text.end(), L'\n');
            EXPECT_GE(height, metrics.tmHeight * (breaks + 1)) << Described(*controls[row]) << when;
            EXPECT_LE(height, metrics.tmHeight * (breaks + 2)) << Described(*controls[row]) << when;
        }
    };
    expectNoHole("as they come");
    SetLongestCaptions(form);
    expectNoHole("when they grow");
    form.lblParam(ParamLabel::plugin).setCaption(L"one line");
    expectNoHole("when they shrink");
    EXPECT_EQ(captions, 5);
}

TEST_F(WindowLayoutTest, ThePanelOpensInTheWidthOfTheMonitor) {
    Show();
    MoveToMonitor(144);
    Click(form.cmdParams);
    RECT outer{};
    GetWindowRect(window->handle(), &outer);
    EXPECT_EQ(outer.right - outer.left, 1392);
    Click(form.cmdParams);
    GetWindowRect(window->handle(), &outer);
    EXPECT_EQ(outer.right - outer.left, 780);
}

TEST_F(WindowLayoutTest, WhatTheUserDidStaysOnAnotherMonitor) {
    Show();
    form.SelectTab(form.tabstripOptions, OptionsTab::callerID);
    form.txtCallerIDFormat.setText(L"typed");
    SetFocus(Native(form.txtCallerIDFormat));
    MoveToMonitor(192);
    EXPECT_EQ(TextOf(Native(form.txtCallerIDFormat)), L"typed");
    EXPECT_EQ(GetFocus(), Native(form.txtCallerIDFormat));
    EXPECT_TRUE(IsWindowVisible(Native(form.frameOptions(1))));
    EXPECT_FALSE(IsWindowVisible(Native(form.frameOptions(0))));
}

}  // namespace
}  // namespace corvane::test
