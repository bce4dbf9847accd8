#include <algorithm>

#include "ui/window/ControlWindows.h"
#include "ui/window/Dpi.h"
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

// Measures text as a control draws it, in nine points: Windows' own message font has them, and the
// one of the machine that tests may be smaller.
class TextMeasure {
public:
    TextMeasure(HWND control, UINT dpi) : device_(GetDC(control)), control_(control) {
        LOGFONTW description{};
        const auto font = reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0));
        EXPECT_NE(GetObjectW(font, sizeof(description), &description), 0);
        constexpr int points = 9;
        constexpr int pointsPerInch = 72;
        const int height = MulDiv(points, static_cast<int>(dpi), pointsPerInch);
        description.lfHeight = std::min<LONG>(description.lfHeight, -height);
        font_ = UniqueFont(CreateFontIndirectW(&description));
        SelectObject(device_, font_.get());
    }
    ~TextMeasure() { ReleaseDC(control_, device_); }
    TextMeasure(const TextMeasure&) = delete;
    TextMeasure& operator=(const TextMeasure&) = delete;

    // Width and height, wrapped to a width if one is given.
    [[nodiscard]] SIZE Of(const std::wstring& text, LONG wrapWidth = 0) const {
        RECT place{0, 0, wrapWidth, 0};
        const UINT wrap = wrapWidth ? DT_WORDBREAK : 0;
        DrawTextW(device_, text.c_str(), -1, &place, DT_CALCRECT | wrap);
        return {place.right, place.bottom};
    }

private:
    HDC device_;
    HWND control_;
    UniqueFont font_;
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
        if (control.spec().has(ControlTrait::plain))
            return;
        // A frame's caption is that of the group box inside it.
        const bool isFrame = control.spec().kind == ControlKind::Frame;
        const TextMeasure measure(isFrame ? BorderOf(native) : native, dpi);
        const SIZE room = ClientSize(native);
        const std::wstring text = TextOf(native);
        const auto pixels = [dpi](int at96) { return MulDiv(at96, static_cast<int>(dpi), 96); };
        SIZE needed{};
        switch (control.spec().kind) {
            case ControlKind::Label:
                needed = measure.Of(text, room.cx);
                break;
            case ControlKind::CheckBox:
            case ControlKind::OptionButton: {
                const int mark = pixels(13 + 4);
                const bool wraps = control.spec().has(ControlTrait::multiLine);
                needed = measure.Of(text, wraps ? room.cx - mark : 0);
                needed.cx += mark;
                break;
            }
            case ControlKind::CommandButton:
                needed = measure.Of(text);
                needed.cx += pixels(12);
                needed.cy += pixels(4);
                break;
            case ControlKind::TextBox:
                needed = {0, measure.Of(L"Ag").cy};
                break;
            case ControlKind::Frame:
                EXPECT_EQ(TextOf(BorderOf(native)), text);
                needed = {measure.Of(text).cx + pixels(24), measure.Of(text).cy};
                break;
            case ControlKind::TabStrip: {
                RECT last{};
                const auto count = SendMessageW(native, TCM_GETITEMCOUNT, 0, 0);
                SendMessageW(native, TCM_GETITEMRECT, static_cast<WPARAM>(count - 1),
                             reinterpret_cast<LPARAM>(&last));
                EXPECT_EQ(SendMessageW(native, TCM_GETROWCOUNT, 0, 0), 1);
                needed.cx = last.right;
                break;
            }
        }
        EXPECT_LE(needed.cx, room.cx) << Described(control) << " at " << dpi;
        EXPECT_LE(needed.cy, room.cy) << Described(control) << " at " << dpi;
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
