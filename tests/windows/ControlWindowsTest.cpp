#include "windows/MainWindowTest.h"

namespace corvane::test {
namespace {

class ControlWindowsTest : public MainWindowTest {};

TEST_F(ControlWindowsTest, EveryControlHasItsIdClassAndCaption) {
    Show();
    for (const Control* control : form.controls()) {
        SCOPED_TRACE(testing::PrintToString(control->name()));
        const HWND native = Native(*control);
        ASSERT_NE(native, nullptr);
        switch (control->spec().kind) {
            case ControlKind::Label:
                EXPECT_EQ(ClassOf(native), L"Static");
                EXPECT_EQ(TextOf(native), control->spec().caption);
                break;
            case ControlKind::TextBox:
                EXPECT_EQ(ClassOf(native), L"Edit");
                EXPECT_EQ(TextOf(native), L"");
                break;
            case ControlKind::CheckBox:
            case ControlKind::OptionButton:
            case ControlKind::CommandButton:
                EXPECT_EQ(ClassOf(native), L"Button");
                EXPECT_EQ(TextOf(native), control->spec().caption);
                break;
            case ControlKind::TabStrip:
                EXPECT_EQ(ClassOf(native), L"SysTabControl32");
                break;
            case ControlKind::Frame:
                EXPECT_EQ(TextOf(native), control->spec().caption);
                break;
        }
    }
}

TEST_F(ControlWindowsTest, ButtonsHaveTheKindOfTheirControls) {
    Show();
    const auto kind = [this](const Control& control) {
        return GetWindowLongPtrW(Native(control), GWL_STYLE) & BS_TYPEMASK;
    };
    EXPECT_EQ(kind(form.chkGlobalEnable), BS_3STATE);
    EXPECT_EQ(kind(form.cmdSaveSettings), BS_PUSHBUTTON);
    EXPECT_EQ(kind(form.cmdProcessCall), BS_DEFPUSHBUTTON);
}

TEST_F(ControlWindowsTest, TabsBearTheirNamesInOrder) {
    Show();
    const auto tabs = [this](const Control& strip) {
        std::vector<std::wstring> names;
        const auto count = SendMessageW(Native(strip), TCM_GETITEMCOUNT, 0, 0);
        for (WPARAM tab = 0; tab < static_cast<WPARAM>(count); ++tab) {
            wchar_t text[100] = {};
            TCITEMW item{};
            item.mask = TCIF_TEXT;
            item.pszText = text;
            item.cchTextMax = 100;
            SendMessageW(Native(strip), TCM_GETITEMW, tab, reinterpret_cast<LPARAM>(&item));
            names.emplace_back(item.pszText);
        }
        return names;
    };
    EXPECT_EQ(tabs(form.tabstripOptions),
              (std::vector<std::wstring>{L"General", L"CallerID Handling", L"GoldMine History",
                                         L"Advanced", L"Status", L"About"}));
    EXPECT_EQ(tabs(form.tabstripParams),
              (std::vector<std::wstring>{L"Params from GoldMine", L"Params from 3CX", L"Paths",
                                         L"Registry"}));
}

TEST_F(ControlWindowsTest, WindowShowsTheStateThatTheFormHadBefore) {
    form.chkGlobalEnable.setChecked(true);
    form.optPhone1Only.setSelected(true);
    form.txtCallerIDFormat.setText(L"(###)###-####");
    form.txtOutboundMaxLength.setEnabled(false);
    form.cmdChangeLogLevel.setCaption(L"changed");

    Show();

    EXPECT_EQ(CheckState(Native(form.chkGlobalEnable)), BST_CHECKED);
    EXPECT_EQ(CheckState(Native(form.optPhone1Only)), BST_CHECKED);
    EXPECT_EQ(TextOf(Native(form.txtCallerIDFormat)), L"(###)###-####");
    EXPECT_FALSE(IsWindowEnabled(Native(form.txtOutboundMaxLength)));
    EXPECT_EQ(TextOf(Native(form.cmdChangeLogLevel)), L"changed");
}

TEST_F(ControlWindowsTest, ChangesOfTheFormAreShown) {
    Show();

    form.chkFillInRef.setValue(2);
    form.optPhone123.setSelected(true);
    form.optPhone1Only.setSelected(true);
    form.txtCallerID.setText(L"5551234");
    form.txtCallerID.setEnabled(false);
    form.lblParam(13).setCaption(L"Path:");
    form.setCaption(L"new title");

    EXPECT_EQ(CheckState(Native(form.chkFillInRef)), BST_INDETERMINATE);
    EXPECT_EQ(CheckState(Native(form.optPhone123)), BST_UNCHECKED);
    EXPECT_EQ(CheckState(Native(form.optPhone1Only)), BST_CHECKED);
    EXPECT_EQ(TextOf(Native(form.txtCallerID)), L"5551234");
    EXPECT_FALSE(IsWindowEnabled(Native(form.txtCallerID)));
    EXPECT_EQ(TextOf(Native(form.lblParam(13))), L"Path:");
    EXPECT_EQ(TextOf(window->handle()), L"new title");
    EXPECT_TRUE(actions.told.empty()) << "what the program does is no input";
}

TEST_F(ControlWindowsTest, ReadOnlyBoxesTakeNoTypingAndCanBeSelected) {
    form.txtAppPath.setText(L"C:\\x.exe");
    Show();
    Type(form.txtAppPath, L"y");
    EXPECT_EQ(TextOf(Native(form.txtAppPath)), L"C:\\x.exe");
    SendMessageW(Native(form.txtAppPath), EM_SETSEL, 0, -1);
    DWORD begin = 0;
    DWORD end = 0;
    SendMessageW(Native(form.txtAppPath), EM_GETSEL, reinterpret_cast<WPARAM>(&begin),
                 reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(end, 8U);
}

// The colour of a control's inside, painted for a picture.
COLORREF ColourOf(HWND control) {
    RECT area{};
    GetClientRect(control, &area);
    const HDC screen = GetDC(control);
    const HDC picture = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, area.right, area.bottom);
    const HGDIOBJ before = SelectObject(picture, bitmap);
    SendMessageW(control, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(picture),
                 PRF_CLIENT | PRF_ERASEBKGND);
    const COLORREF colour = GetPixel(picture, area.right / 2, area.bottom / 2);
    SelectObject(picture, before);
    DeleteObject(bitmap);
    DeleteDC(picture);
    ReleaseDC(control, screen);
    return colour;
}

TEST_F(ControlWindowsTest, FolderBoxIsGreyedWhileItCannotBeUsed) {
    form.SelectTab(form.tabstripOptions, OptionsTab::history);
    Show();
    ASSERT_NE(GetSysColor(COLOR_WINDOW), GetSysColor(COLOR_BTNFACE));
    form.txtLinkedItemPath.setEnabled(true);
    EXPECT_EQ(ColourOf(Native(form.txtLinkedItemPath)), GetSysColor(COLOR_WINDOW));
    form.txtLinkedItemPath.setEnabled(false);
    EXPECT_EQ(ColourOf(Native(form.txtLinkedItemPath)), GetSysColor(COLOR_BTNFACE));
    form.txtLinkedItemPath.setEnabled(true);
    EXPECT_EQ(ColourOf(Native(form.txtLinkedItemPath)), GetSysColor(COLOR_WINDOW));
}

TEST_F(ControlWindowsTest, TheCaptionOfAFrameIsGreyedWithIt) {
    Control& outbound = form.control(L"frameOutboundDialing");
    outbound.setEnabled(false);
    Show();
    const auto captionIsUsable = [this](const Control& frame) {
        return IsWindowEnabled(FindWindowExW(Native(frame), nullptr, WC_BUTTONW,
                                             frame.caption().c_str())) != FALSE;
    };
    EXPECT_FALSE(captionIsUsable(outbound));
    EXPECT_TRUE(captionIsUsable(form.frameGlobal));
    outbound.setEnabled(true);
    EXPECT_TRUE(captionIsUsable(outbound));
    outbound.setEnabled(false);
    EXPECT_FALSE(captionIsUsable(outbound));
}

TEST_F(ControlWindowsTest, LabelsAreWrittenInTheSystemsColour) {
    Show();
    const HWND label = Native(form.lblDelayAddingLinkSeconds);
    const HDC device = GetDC(label);
    SetTextColor(device, RGB(1, 2, 3));
    SendMessageW(GetParent(label), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(device),
                 reinterpret_cast<LPARAM>(label));
    EXPECT_EQ(GetTextColor(device), GetSysColor(COLOR_WINDOWTEXT));
    ReleaseDC(label, device);
}

TEST_F(ControlWindowsTest, AGroupOfOptionsHasOneTabStop) {
    const auto stops = [this] {
        std::vector<std::wstring> names;
        for (const OptionButton* option : form.GroupOf(form.optProcessEnd)) {
            if (GetWindowLongPtrW(Native(*option), GWL_STYLE) & WS_TABSTOP)
                names.push_back(option->name());
        }
        return names;
    };
    using Names = std::vector<std::wstring>;
    Show();
    EXPECT_EQ(stops(), Names{L"optProcessStart"}) << "none is selected";
    form.optProcessEnd.setSelected(true);
    EXPECT_EQ(stops(), Names{L"optProcessEnd"});
    form.optProcessEnd.setEnabled(false);
    EXPECT_EQ(stops(), Names{L"optProcessStart"}) << "the selected one cannot be used";
    form.optProcessStart.setEnabled(false);
    EXPECT_EQ(stops(), Names{L"optProcessConnect"});
    form.optProcessConnect.setEnabled(false);
    EXPECT_EQ(stops(), Names{});
}

}  // namespace
}  // namespace corvane::test
