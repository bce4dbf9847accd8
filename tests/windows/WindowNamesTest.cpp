#include <map>
#include <set>

#include "platform/kit/ComApartment.h"
#include "platform/kit/ComObject.h"
#include "windows/MainWindowTest.h"

#include <oleacc.h>
#include <oleauto.h>

// The header of MinGW does not tie the interface to its id.
__CRT_UUID_DECL(IAccPropServices, 0x6e26e776, 0x04f0, 0x495d, 0x80, 0xe4, 0x33, 0x30, 0x35, 0x2e,
                0x31, 0x69)

namespace corvane::test {
namespace {

using Names = std::map<HWND, std::wstring>;

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"  // of the interfaces

// Keeps the names that are given to windows. Windows keeps them for the screen readers; Wine has
// nobody to keep them.
class NameKeeper final : public ComObject<IAccPropServices> {
public:
    explicit NameKeeper(Names& names) : names_(names) {}
    HRESULT WINAPI SetHwndPropStr(HWND window, DWORD object, DWORD child, MSAAPROPID property,
                                  LPCWSTR text) override {
        EXPECT_EQ(object, static_cast<DWORD>(OBJID_CLIENT));
        EXPECT_EQ(child, static_cast<DWORD>(CHILDID_SELF));
        EXPECT_TRUE(IsEqualGUID(property, PROPID_ACC_NAME));
        names_[window] = text;
        return S_OK;
    }
    HRESULT WINAPI SetPropValue(const BYTE*, DWORD, MSAAPROPID, VARIANT) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI SetPropServer(const BYTE*, DWORD, const MSAAPROPID*, int, IAccPropServer*,
                                 AnnoScope) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI ClearProps(const BYTE*, DWORD, const MSAAPROPID*, int) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI SetHwndProp(HWND, DWORD, DWORD, MSAAPROPID, VARIANT) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI SetHwndPropServer(HWND, DWORD, DWORD, const MSAAPROPID*, int, IAccPropServer*,
                                     AnnoScope) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI ClearHwndProps(HWND, DWORD, DWORD, const MSAAPROPID*, int) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI ComposeHwndIdentityString(HWND, DWORD, DWORD, BYTE**, DWORD*) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI DecomposeHwndIdentityString(const BYTE*, DWORD, HWND*, DWORD*, DWORD*) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI SetHmenuProp(HMENU, DWORD, MSAAPROPID, VARIANT) override { return E_NOTIMPL; }
    HRESULT WINAPI SetHmenuPropStr(HMENU, DWORD, MSAAPROPID, LPCWSTR) override { return E_NOTIMPL; }
    HRESULT WINAPI SetHmenuPropServer(HMENU, DWORD, const MSAAPROPID*, int, IAccPropServer*,
                                      AnnoScope) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI ClearHmenuProps(HMENU, DWORD, const MSAAPROPID*, int) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI ComposeHmenuIdentityString(HMENU, DWORD, BYTE**, DWORD*) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI DecomposeHmenuIdentityString(const BYTE*, DWORD, HMENU*, DWORD*) override {
        return E_NOTIMPL;
    }

private:
    Names& names_;
};

class NameKeeperFactory final : public ComObject<IClassFactory> {
public:
    explicit NameKeeperFactory(Names& names) : names_(names) {}
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override {
        return MakeComObject<NameKeeper>(names_)->QueryInterface(id, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    Names& names_;
};

#pragma GCC diagnostic pop

class WindowNamesTest : public MainWindowTest {
protected:
    WindowNamesTest() {
        EXPECT_EQ(CoRegisterClassObject(CLSID_AccPropServices,
                                        MakeComObject<NameKeeperFactory>(given_).Get(),
                                        CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_),
                  S_OK);
    }
    ~WindowNamesTest() override {
        window.reset();
        CoRevokeClassObject(cookie_);
    }

    // What a screen reader calls the control: the name that it was given, else what the system
    // makes of its text and of the label before it.
    [[nodiscard]] std::wstring Spoken(const Control& control) const {
        const HWND native = Native(control);
        if (const auto given = given_.find(native); given != given_.end())
            return given->second;
        Microsoft::WRL::ComPtr<IAccessible> accessible;
        EXPECT_EQ(
            AccessibleObjectFromWindow(native, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                       reinterpret_cast<void**>(accessible.GetAddressOf())),
            S_OK);
        VARIANT self{};
        self.vt = VT_I4;
        self.lVal = CHILDID_SELF;
        BSTR name = nullptr;
        accessible->get_accName(self, &name);
        const std::wstring spoken(name ? name : L"", SysStringLen(name));
        SysFreeString(name);
        return spoken;
    }

    ComApartment apartment;

private:
    Names given_;
    DWORD cookie_ = 0;
};

struct SpokenControl {
    const wchar_t* control;
    const wchar_t* name;
};

// Every control that the focus can come to, and the groups around them.
constexpr SpokenControl spokenControls[] = {
    {L"tabstripOptions", L"Options"},
    {L"frameGlobal", L"Global \"Master Switch\""},
    {L"chkGlobalEnable", L"Enable link between GoldMine and 3CX"},
    {L"frameOutboundDialing", L"Outbound Dialing"},
    {L"chkTrimOutboundPrefix", L"Trim all but the last"},
    {L"txtOutboundMaxLength", L"Trim all but the last digits before dialing outbound number"},
    {L"optPhone1Only", L"Search Phone1 only"},
    {L"optPhone123", L"Search Phone1, Phone2, and Phone3"},
    {L"chkSearchInAddlContacts",
     L"Search for CallerID in Additional Contacts if not found in Primary "},
    {L"chkIgnoreShortCallerID", L"Ignore invocation from 3CX if CallerID is fewer than "},
    {L"txtCallerIDMinLength", L"Ignore invocation from 3CX if CallerID is fewer than digits"},
    {L"chkFormatCallerID", L"Format CallerID before searching:"},
    {L"txtCallerIDFormat", L"Format CallerID before searching:"},
    {L"chkCallerIDIgnoreLeading1", L"Ignore leading \"1\" if CallerID is 11 digits long"},
    {L"chkCallerIDRemoveSpaces", L"Remove spaces from CallerID"},
    {L"chkPopOnInboundCall", L"Search on inbound call even if not creating GoldMine history:"},
    {L"subframePopMoment", L"Search on inbound call even if not creating GoldMine history:"},
    {L"optPopOnInboundCallStart", L"while call is ringing or"},
    {L"optPopOnInboundCallConnect", L"when you answer the call"},
    {L"subframeContactWindow", L"Show GoldMine contact in"},
    {L"optPopCurrentWindow", L"current window"},
    {L"optPopNewWindow", L"a new window"},
    {L"chkCreateHistory", L"If contact found, create GoldMine Call History item when call"},
    {L"subframeHistoryMoment", L"If contact found, create GoldMine Call History item when call"},
    {L"optProcessStart", L"starts"},
    {L"optProcessConnect", L"connects or"},
    {L"optProcessEnd", L"ends"},
    {L"chkFillInRef", L"Fill in Ref with text showing incoming/outgoing and CallerID"},
    {L"chkAutoOpenHistory", L"Automatically open history item for editing"},
    {L"subframeHistorySequence", L"Open History"},
    {L"optOpenHistoryBeforeSaving", L"Open before saving in history"},
    {L"subFrameHistoryType", L"Open before saving in history"},
    {L"optCompleteCallByType",
     L"Complete Scheduled Call on outbound calls and  Unscheduled Call on inbound calls"},
    {L"optCompleteScheduledCall", L"Always complete Scheduled Call"},
    {L"optCompleteUnscheduledCall", L"Always complete Unscheduled Call"},
    {L"optOpenHistoryAfterSaving", L"Save as Unscheduled Call first, then open for editing"},
    {L"chkCreateLink", L"In history item's Notes, add link to most recent file in this folder:"},
    {L"txtLinkedItemPath",
     L"In history item's Notes, add link to most recent file in this folder:"},
    {L"chkDelayAddingLink", L"Delay adding link for"},
    {L"txtDelayAddingLinkSeconds", L"Delay adding link for seconds (give 3CX time to create)"},
    {L"chkConfirmRecentRecordingFile", L"Only add link if file was created in the last"},
    {L"txtRecordingFileMaxAgeSeconds", L"Only add link if file was created in the last seconds"},
    {L"chkConfirmLinkCallIdentifier",
     L"Only add link if file name includes the 3CX Call Identifier no."},
    {L"chkAlwaysShowForm", L"Always show form"},
    {L"chkAutoProcess", L"Auto-process call if form shown"},
    {L"frameDebugging", L"Debugging"},
    {L"chkWriteLog", L"Write Status messages to a log file"},
    {L"chkLogCOMCalls", L"Log GoldMine interactions longer than"},
    {L"txtCOMDurationSeconds", L"Log GoldMine interactions longer than seconds"},
    {L"txtStatus", L"Status"},
    {L"txtAbout", L"About"},
    {L"cmdParams", L"Params >>"},
    {L"cmdDefaults", L"Restore Defaults"},
    {L"cmdSaveSettings", L"Save Settings"},
    {L"cmdProcessCall", L"Process Call"},
    {L"cmdExit", L"Exit"},
    {L"tabstripParams", L"Parameters"},
    {L"txtOutboundPhone", L"Outbound Phone:"},
    {L"txtOutboundPhoneAsDialed", L"Outbound to Dial:"},
    {L"txtNotifType", L"Notification Type:"},
    {L"txtCallerID", L"Caller ID:"},
    {L"txtCallType", L"Call Type:"},
    {L"txtCallIdentifier", L"Call Identifier:"},
    {L"txtCallerIDDigits", L"Caller ID Digits:"},
    {L"txtCallerIDFormatted", L"Formatted Caller ID:"},
    {L"txtAppPath", L"Path to this program:"},
    {L"txtGMInstallDir", L"Path to GoldMine installation (including gmw.exe):"},
    {L"txtGoldMineUserIniPath", L"Path to GoldMine <user>.INI file:"},
    {L"cmdOpenUserINI", L"Open the GoldMine <user>.INI file"},
    {L"txtGoldMineGMIniPath", L"Path to GoldMine GM.INI file:"},
    {L"cmdOpenGMINI", L"Open the GoldMine GM.INI file"},
    {L"txtLogPath", L"Path to this program's log file:"},
    {L"cmdOpenLog", L"Open this program's log file"},
    {L"txtCommandLineAPILogLevel", L"3CX Command Line API Plugin log level:"},
    {L"cmdChangeLogLevel", L"Set to log AllEvents"},
    {L"txtCommandLineAPILogPath", L"Path to 3CX Command Line API Plugin log file:"},
    {L"cmdOpenPluginLog", L"Open the 3CX Command Line API Plugin log file"},
    {L"txt3CXCRMCallNotifierPath",
     L"3CX calls this program to handle inbound and outbound call events:"},
    {L"txt3CXOutboundCallNotifierPath", L"CorvaneTo3CX calls this program to dial out via 3CX:"},
    {L"txtCommandLineAPIPluginDLLPath", L"3CX uses this plugin to call CorvaneTo3CX.exe:"},
};

TEST_F(WindowNamesTest, AScreenReaderHearsTheNameOfEveryControl) {
    Show();
    std::set<std::wstring> checked;
    for (const SpokenControl& each : spokenControls) {
        EXPECT_EQ(Spoken(form.control(each.control)), each.name)
            << testing::PrintToString(std::wstring(each.control));
        checked.insert(each.control);
    }
    for (const Control* control : form.controls()) {
        const bool isPage = control->name() == L"frameOptions" || control->name() == L"frameParams";
        if (isPage || control->spec().kind == ControlKind::Label) {
            const bool isEmpty = control->caption().empty();
            EXPECT_TRUE(isEmpty || Spoken(*control) == control->caption());
        } else {
            EXPECT_TRUE(checked.contains(control->name()))
                << testing::PrintToString(std::wstring(control->name()));
        }
    }
}

TEST_F(WindowNamesTest, ABoxIsCalledByItsLabelAlsoWhenThatChanges) {
    Show();
    form.lblParam(13).setCaption(L"Path to GoldMine executable:");
    EXPECT_EQ(Spoken(form.txtGMInstallDir), L"Path to GoldMine executable:");
}

BOOL CALLBACK AddIfVisible(HWND child, LPARAM visible) {
    if (IsWindowVisible(child))
        reinterpret_cast<std::vector<HWND>*>(visible)->push_back(child);
    return TRUE;
}

// The letters that Alt presses, as the window shows them now.
std::wstring LettersOf(HWND window) {
    std::vector<HWND> visible;
    EnumChildWindows(window, &AddIfVisible, reinterpret_cast<LPARAM>(&visible));
    std::wstring letters;
    for (const HWND control : visible) {
        const auto style = static_cast<DWORD>(GetWindowLongPtrW(control, GWL_STYLE));
        const bool isPlain = ClassOf(control) == L"Static" && (style & SS_NOPREFIX) != 0;
        if (isPlain || ClassOf(control) == L"Edit")
            continue;
        const std::wstring text = TextOf(control);
        for (std::size_t at = 0; (at = text.find(L'&', at)) != std::wstring::npos; at += 2) {
            if (at + 1 < text.size() && text[at + 1] != L'&')
                letters += static_cast<wchar_t>(std::towupper(text[at + 1]));
        }
    }
    return letters;
}

TEST_F(WindowNamesTest, WhateverIsVisibleAtOnceEachLetterPressesOneControl) {
    Show();
    for (const bool params : {false, true}) {
        if (params)
            Click(form.cmdParams);
        for (int option = 0; option < 6; ++option) {
            for (int param = 0; param < 4; ++param) {
                form.SelectTab(form.tabstripOptions, option);
                form.SelectTab(form.tabstripParams, param);
                EXPECT_EQ(LettersOf(window->handle()), L"PDSCX") << option << ' ' << param;
            }
        }
    }
}

HWND TooltipsOf(HWND window) {
    HWND tooltips = nullptr;
    do {
        tooltips = FindWindowExW(nullptr, tooltips, TOOLTIPS_CLASSW, nullptr);
    } while (tooltips && GetWindow(tooltips, GW_OWNER) != window);
    return tooltips;
}

// The tips of the window's tooltip control, by the control over which they appear.
Names TipsOf(HWND window) {
    Names tips;
    const HWND tooltips = TooltipsOf(window);
    const auto count = static_cast<WPARAM>(SendMessageW(tooltips, TTM_GETTOOLCOUNT, 0, 0));
    for (WPARAM number = 0; number < count; ++number) {
        constexpr WPARAM longest = 1000;
        wchar_t text[longest] = {};
        TTTOOLINFOW tool{};
        tool.cbSize = sizeof(tool);
        EXPECT_TRUE(
            SendMessageW(tooltips, TTM_ENUMTOOLSW, number, reinterpret_cast<LPARAM>(&tool)));
        EXPECT_TRUE(tool.uFlags & TTF_IDISHWND);
        EXPECT_TRUE(tool.uFlags & TTF_SUBCLASS) << "so that it comes by itself";
        tool.lpszText = text;
        SendMessageW(tooltips, TTM_GETTEXTW, longest, reinterpret_cast<LPARAM>(&tool));
        tips[reinterpret_cast<HWND>(tool.uId)] = text;
    }
    return tips;
}

TEST_F(MainWindowTest, EveryControlWithATipHasItAsANativeOne) {
    Show();
    const Names tips = TipsOf(window->handle());
    int withTip = 0;
    for (const Control* control : form.controls()) {
        const auto tip = tips.find(Native(*control));
        EXPECT_EQ(tip == tips.end() ? std::wstring() : tip->second, control->spec().tip)
            << testing::PrintToString(std::wstring(control->name()));
        withTip += tip != tips.end();
    }
    EXPECT_EQ(withTip, 40 + 10 + 8) << "options, buttons and parameters";
}

TEST_F(MainWindowTest, TipsSayWhatTheOptionsAreFor) {
    Show();
    const Names tips = TipsOf(window->handle());
    EXPECT_EQ(tips.at(Native(form.chkGlobalEnable)),
              L"Uncheck this \"master switch\" to stop Corvane from processing future calls. Check "
              L"it to re-enable call processing.");
    EXPECT_EQ(tips.at(Native(form.optPhone123)),
              L"Search GoldMine's Phone1, Phone2 and Phone3 fields for CallerID");
    EXPECT_EQ(
        tips.at(Native(form.chkCallerIDIgnoreLeading1)),
        L"If 3CX passes a leading \"1\" for Country Code = US, but numbers in GoldMine do not "
        L"include the leading \"1\", check this box to triim the leading \"1\" before "
        L"searching in GoldMine.");
    EXPECT_EQ(tips.at(Native(form.txtLinkedItemPath)),
              L"Specify a folder name e.g. \\\\Server\\Share\\Folder or X:\\Folder");
    EXPECT_EQ(tips.at(Native(form.chkAlwaysShowForm)),
              L"Show this form every time Corvane to 3CX runs. For troubleshooting.");
    EXPECT_EQ(tips.at(Native(form.cmdSaveSettings)),
              L"Save the settings you made on this form and use them on all future calls");
    EXPECT_EQ(tips.at(Native(form.txtNotifType)), L"S/C/E = Started / Connected / Ended");
}

TEST_F(MainWindowTest, TipsStandForHalfAMinute) {
    Show();
    EXPECT_EQ(SendMessageW(TooltipsOf(window->handle()), TTM_GETDELAYTIME, TTDT_AUTOPOP, 0), 30000);
}

// Tells a window that the mouse moved over a control that lies in it and is given no mouse.
void MouseOverDisabled(HWND control, HWND beneath) {
    RECT place{};
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, beneath, reinterpret_cast<POINT*>(&place), 2);
    SendMessageW(beneath, WM_MOUSEMOVE, 0,
                 MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2));
}

// The message that the tooltips heard of last.
MSG relayed{};

LRESULT CALLBACK KeepRelayed(HWND tooltips, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                             DWORD_PTR) {
    if (message == TTM_RELAYEVENT)
        relayed = *reinterpret_cast<const MSG*>(lParam);
    return DefSubclassProc(tooltips, message, wParam, lParam);
}

// The text of the tip that then stands ready at the control's place, and hears of the mouse.
std::wstring TipOverDisabled(HWND control, HWND beneath) {
    const HWND tooltips = TooltipsOf(GetAncestor(beneath, GA_ROOT));
    relayed = {};
    SetWindowSubclass(tooltips, &KeepRelayed, 1, 0);
    MouseOverDisabled(control, beneath);
    RemoveWindowSubclass(tooltips, &KeepRelayed, 1);
    EXPECT_EQ(relayed.hwnd, beneath);
    EXPECT_EQ(relayed.message, UINT{WM_MOUSEMOVE});
    constexpr WPARAM longest = 1000;
    wchar_t text[longest] = {};
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof(tool);
    tool.hwnd = beneath;
    if (!SendMessageW(tooltips, TTM_GETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&tool)))
        return L"none";
    RECT place{};
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, beneath, reinterpret_cast<POINT*>(&place), 2);
    EXPECT_TRUE(EqualRect(&tool.rect, &place));
    tool.lpszText = text;
    SendMessageW(tooltips, TTM_GETTEXTW, longest, reinterpret_cast<LPARAM>(&tool));
    return text;
}

TEST_F(MainWindowTest, DisabledOptionsHaveTheirTipsToo) {
    form.SelectTab(form.tabstripOptions, OptionsTab::history);
    Show();
    form.txtLinkedItemPath.setEnabled(false);
    form.chkDelayAddingLink.setEnabled(false);
    const HWND page = Native(form.frameOptions(OptionsTab::history));
    EXPECT_EQ(TipOverDisabled(Native(form.txtLinkedItemPath), page),
              form.txtLinkedItemPath.spec().tip);
    EXPECT_EQ(TipOverDisabled(Native(form.chkDelayAddingLink), page),
              form.chkDelayAddingLink.spec().tip);

    const HWND tooltips = TooltipsOf(window->handle());
    const auto count = SendMessageW(tooltips, TTM_GETTOOLCOUNT, 0, 0);
    MouseOverDisabled(Native(form.lblDelayAddingLinkSeconds), page);
    EXPECT_EQ(SendMessageW(tooltips, TTM_GETTOOLCOUNT, 0, 0), count - 1) << "it has no tip";

    // The mouse goes through disabled frames to what lies beneath them.
    form.control(L"subframeHistorySequence").setEnabled(false);
    form.optOpenHistoryAfterSaving.setEnabled(false);
    EXPECT_EQ(TipOverDisabled(Native(form.optOpenHistoryAfterSaving), page),
              form.optOpenHistoryAfterSaving.spec().tip);
    form.frameOptions(OptionsTab::history).setEnabled(false);
    EXPECT_EQ(TipOverDisabled(Native(form.txtLinkedItemPath), window->handle()),
              form.txtLinkedItemPath.spec().tip);
}

TEST_F(MainWindowTest, ATipThatChangesIsShownAsItIsNow) {
    const std::wstring longPath = L"C:\\" + std::wstring(240, L'p');
    form.txtAppPath.setTooltip(L"C:\\before.exe");
    Show();
    EXPECT_EQ(TipsOf(window->handle()).at(Native(form.txtAppPath)), L"C:\\before.exe");
    form.txtAppPath.setTooltip(longPath);
    EXPECT_EQ(TipsOf(window->handle()).at(Native(form.txtAppPath)), longPath);
}

}  // namespace
}  // namespace corvane::test
