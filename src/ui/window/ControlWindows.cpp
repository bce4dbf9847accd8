#include "ui/window/ControlWindows.h"

#include <algorithm>
#include <utility>

#include "platform/kit/SystemLibraries.h"
#include "ui/form/AccessibleName.h"
#include "ui/window/Dpi.h"
#include "ui/window/PasteLimit.h"

#include <commctrl.h>
#include <oleacc.h>
#include <wrl/client.h>

namespace corvane {

namespace {

constexpr wchar_t frameClass[] = L"CorvaneFrame";

struct NativeKind {
    const wchar_t* className;
    DWORD style;
    DWORD extendedStyle;
};

NativeKind KindOf(const ControlSpec& spec) {
    const bool multiLine = spec.has(ControlTrait::multiLine);
    switch (spec.kind) {
        case ControlKind::Label:
            return {WC_STATICW, SS_LEFT | SS_NOPREFIX, 0};
        case ControlKind::TextBox: {
            DWORD style = WS_TABSTOP;
            style |= multiLine ? DWORD{ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL}
                               : DWORD{ES_AUTOHSCROLL};
            if (spec.has(ControlTrait::readOnly))
                style |= ES_READONLY;
            return {WC_EDITW, style, WS_EX_CLIENTEDGE};
        }
        case ControlKind::CheckBox:
            return {WC_BUTTONW, WS_TABSTOP | BS_3STATE, 0};
        case ControlKind::OptionButton: {
            const DWORD wrap = multiLine ? DWORD{BS_MULTILINE | BS_TOP} : 0;
            return {WC_BUTTONW, BS_RADIOBUTTON | wrap, 0};
        }
        case ControlKind::CommandButton: {
            const DWORD push = spec.has(ControlTrait::byDefault) ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
            return {WC_BUTTONW, WS_TABSTOP | push, 0};
        }
        case ControlKind::TabStrip:
            return {WC_TABCONTROLW, WS_TABSTOP | WS_CLIPSIBLINGS, 0};
        case ControlKind::Frame:
            break;
    }
    // A group box paints no inside: the frame beneath it must.
    return {frameClass, spec.has(ControlTrait::plain) ? DWORD{WS_CLIPCHILDREN} : 0,
            WS_EX_CONTROLPARENT};
}

bool HasBorder(const ControlSpec& spec) {
    return spec.kind == ControlKind::Frame && !spec.has(ControlTrait::plain);
}

// Not linked in: unlike the other DLLs this one would be looked for beside the program first.
bool IsThemed() {
    using Function = BOOL(WINAPI*)();
    static const auto isAppThemed = SystemFunction<Function>(L"uxtheme.dll", "IsAppThemed");
    return isAppThemed && isAppThemed();
}

// The page of a themed tab strip is drawn in the window colour.
HBRUSH PageBrush() {
    return GetSysColorBrush(IsThemed() ? COLOR_WINDOW : COLOR_BTNFACE);
}

// What the system writes upon it, which is no black in every theme.
COLORREF PageTextColour() {
    return GetSysColor(IsThemed() ? COLOR_WINDOWTEXT : COLOR_BTNTEXT);
}

bool IsTextBox(HWND control) {
    const auto row = static_cast<std::size_t>(GetDlgCtrlID(control) - firstControlId);
    return row < controlCount && SpecOf(row).kind == ControlKind::TextBox;
}

// Whether an option button begins a new group in the order of the table.
bool BeginsGroup(std::size_t row) {
    const ControlSpec& spec = SpecOf(row);
    if (spec.kind != ControlKind::OptionButton)
        return true;
    return row == 0 || SpecOf(row - 1).group != spec.group;
}

// Tells while an option button is just getting the focus.
class OptionFocus final : public WindowSubclass {
public:
    OptionFocus(HWND option, bool& arrives) : WindowSubclass(option), arrives_(arrives) {}

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        const bool before = std::exchange(arrives_, message == WM_SETFOCUS);
        const LRESULT result = PassOn(message, wParam, lParam);
        arrives_ = before;
        return result;
    }

    bool& arrives_;
};

}  // namespace

ControlWindows::ControlWindows(const Form& form, HINSTANCE instance)
    : form_(form),
      instance_(instance),
      windows_(controlCount, nullptr),
      borders_(controlCount, nullptr) {}

void ControlWindows::Create(HWND window, UINT dpi) {
    window_ = window;
    dpi_ = dpi;
    showing_ = true;
    paramsShown_ = form_.width() == windowWideWidth;
    WNDCLASSEXW frame{};
    frame.cbSize = sizeof(frame);
    frame.lpfnWndProc = &ControlWindows::FrameProcedure;
    frame.hInstance = instance_;
    frame.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    frame.lpszClassName = frameClass;
    RegisterClassExW(&frame);

    tips_.Create(window);
    TakeFont();
    for (const Control* control : form_.controls())
        CreateControl(*control);
    CutOutPages();
    NameForScreenReaders();
    showing_ = false;
}

void ControlWindows::CreateControl(const Control& control) {
    const ControlSpec& spec = control.spec();
    const NativeKind kind = KindOf(spec);
    const HWND parent =
        spec.parent.empty() ? window_ : windows_[RowOfControl(spec.parent, spec.parentIndex)];
    const auto id = reinterpret_cast<HMENU>(static_cast<INT_PTR>(ControlId(control.row())));
    const RECT place = PlaceOf(control);
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;
    DWORD style = WS_CHILD | kind.style;
    style |= BeginsGroup(control.row()) ? DWORD{WS_GROUP} : 0;
    style |= control.enabled() ? 0 : DWORD{WS_DISABLED};
    style |= IsShown(control) ? DWORD{WS_VISIBLE} : 0;
    const HWND native =
        CreateWindowExW(kind.extendedStyle, kind.className, control.caption().c_str(), style,
                        place.left, place.top, width, height, parent, id, instance_, nullptr);
    windows_[control.row()] = native;
    const auto font = reinterpret_cast<WPARAM>(font_.get());
    SendMessageW(native, WM_SETFONT, font, FALSE);
    if (HasBorder(spec)) {
        const DWORD borderStyle =
            WS_CHILD | WS_VISIBLE | BS_GROUPBOX | (control.enabled() ? 0 : DWORD{WS_DISABLED});
        const HWND border =
            CreateWindowExW(0, WC_BUTTONW, control.caption().c_str(), borderStyle, 0, 0, width,
                            height, native, nullptr, instance_, nullptr);
        SendMessageW(border, WM_SETFONT, font, FALSE);
        borders_[control.row()] = border;
    }
    if (spec.kind == ControlKind::TabStrip)
        AddTabs(static_cast<const TabStrip&>(control));
    if (spec.kind == ControlKind::TextBox) {
        // Longer lines than any path are no input, and more than the system can draw.
        constexpr WPARAM longestLine = 32767;
        const WPARAM limit = spec.has(ControlTrait::multiLine) ? 0 : longestLine;
        SendMessageW(native, EM_SETLIMITTEXT, limit, 0);
        if (limit != 0 && !spec.has(ControlTrait::readOnly))
            subclasses_.push_back(std::make_unique<PasteLimit>(native));
    }
    if (spec.kind == ControlKind::OptionButton)
        subclasses_.push_back(std::make_unique<OptionFocus>(native, focusArrives_));
    if (&control == &form_.txtStatus)
        status_.emplace(form_.txtStatus, native);
    if (spec.kind == ControlKind::TextBox)
        ShowText(control);  // the others came with their captions
    ShowValue(control);
    if (spec.kind == ControlKind::OptionButton)
        MarkTabStop(static_cast<const OptionButton&>(control));
    if (!control.tooltip().empty())
        tips_.Set(native, control.tooltip());
}

void ControlWindows::NameForScreenReaders() const {
    Microsoft::WRL::ComPtr<IAccPropServices> service;
    if (FAILED(CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER,
                                IID_IAccPropServices, &service))) {
        return;  // not every system has it; the window works without
    }
    for (const Control* control : form_.controls()) {
        const std::wstring name = AccessibleName(control->row());
        if (!name.empty()) {
            service->SetHwndPropStr(of(*control), static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF,
                                    PROPID_ACC_NAME, name.c_str());
        }
    }
}

void ControlWindows::AddTabs(const TabStrip& strip) {
    const std::wstring_view frames = Form::FramesOf(strip);
    for (int tab = 0; RowOfControl(frames, tab) != noControl; ++tab) {
        std::wstring caption = form_.control(frames, tab).caption();
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = caption.data();
        SendMessageW(of(strip), TCM_INSERTITEMW, static_cast<WPARAM>(tab),
                     reinterpret_cast<LPARAM>(&item));
    }
}

void ControlWindows::ShowTipFor(const MSG& received) {
    POINT mouse{static_cast<short>(LOWORD(received.lParam)),
                static_cast<short>(HIWORD(received.lParam))};
    ClientToScreen(received.hwnd, &mouse);
    const auto isThere = [&](const Control* control) {
        RECT place{};
        return !control->tooltip().empty() && IsWindowVisible(of(*control)) &&
               GetWindowRect(of(*control), &place) && PtInRect(&place, mouse);
    };
    const auto& controls = form_.controls();
    const auto found = std::find_if(controls.begin(), controls.end(), isThere);
    if (found == controls.end())
        tips_.ShowOver(nullptr, {}, received);
    else
        tips_.ShowOver(of(**found), (*found)->tooltip(), received);
}

int ControlWindows::Pixels(int twips) const {
    return PixelsFromTwips(twips, dpi_);
}

// Edges, and not sizes, are rounded: what touches in twips must not overlap in pixels.
RECT ControlWindows::Pixels(const Place& place) const {
    return {Pixels(place.left), Pixels(place.top), Pixels(place.left + place.width),
            Pixels(place.top + place.height)};
}

// A caption stands close to the box to which it belongs, however many lines it takes.
RECT ControlWindows::PlaceOf(const Control& control) const {
    RECT place = Pixels(control.spec().place);
    if (control.spec().has(ControlTrait::atBottom)) {
        const int height = HeightOf(control.caption(), place.right - place.left);
        place.top = std::max(place.top, place.bottom - height);
    }
    return place;
}

int ControlWindows::HeightOf(const std::wstring& text, int width) const {
    const UniqueScreen screen(GetDC(nullptr));
    const HGDIOBJ former = SelectObject(screen.get(), font_.get());
    RECT needed{0, 0, width, 0};
    DrawTextW(screen.get(), text.c_str(), -1, &needed, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    SelectObject(screen.get(), former);
    return needed.bottom;
}

void ControlWindows::TakeFont() {
    font_ = CreateMessageFont(dpi_);
    constexpr int tipWidth = 5400;
    tips_.SetMaximumWidth(Pixels(tipWidth));
}

void ControlWindows::Layout(UINT dpi) {
    dpi_ = dpi;
    const UniqueFont previous = std::move(font_);  // in use until every control has the new one
    TakeFont();
    for (const Control* control : form_.controls())
        PlaceControl(*control);
    CutOutPages();
}

void ControlWindows::CutOutPages() {
    CutOutPage(form_.tabstripOptions, form_.frameOptions(0));
    CutOutPage(form_.tabstripParams, form_.frameParams(0));
}

void ControlWindows::PlaceControl(const Control& control) {
    const RECT place = PlaceOf(control);
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;
    const auto font = reinterpret_cast<WPARAM>(font_.get());
    SendMessageW(of(control), WM_SETFONT, font, FALSE);
    SetWindowPos(of(control), nullptr, place.left, place.top, width, height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    if (const HWND border = borders_[control.row()]) {
        SendMessageW(border, WM_SETFONT, font, FALSE);
        SetWindowPos(border, HWND_BOTTOM, 0, 0, width, height, SWP_NOACTIVATE);
    }
}

// A strip stands before its pages in the tab order and so above them; without this hole it would
// cover them.
void ControlWindows::CutOutPage(const Control& strip, const Control& page) {
    const RECT around = Pixels(strip.spec().place);
    RECT inside = Pixels(page.spec().place);
    OffsetRect(&inside, -around.left, -around.top);
    UniqueRegion region(
        CreateRectRgn(0, 0, around.right - around.left, around.bottom - around.top));
    const UniqueRegion hole(CreateRectRgnIndirect(&inside));
    CombineRgn(region.get(), region.get(), hole.get(), RGN_DIFF);
    if (SetWindowRgn(of(strip), region.get(), TRUE))
        static_cast<void>(region.release());  // the window owns it now
}

bool ControlWindows::IsInParamsArea(const Control& control) const {
    return &control == &form_.tabstripParams || control.spec().name == L"frameParams";
}

bool ControlWindows::IsShown(const Control& control) const {
    return control.visible() && (paramsShown_ || !IsInParamsArea(control));
}

void ControlWindows::ShowParams(bool shown) {
    if (paramsShown_ == shown)
        return;
    paramsShown_ = shown;
    for (const Control* control : form_.controls()) {
        if (IsInParamsArea(*control))
            Show(*control, ControlAspect::Visible);
    }
}

void ControlWindows::Show(const Control& control, ControlAspect aspect) {
    const bool wasShowing = std::exchange(showing_, true);
    ShowAspect(control, aspect);
    showing_ = wasShowing;
}

void ControlWindows::ShowAspect(const Control& control, ControlAspect aspect) {
    switch (aspect) {
        case ControlAspect::Text:
        case ControlAspect::Caption:
            ShowText(control);
            break;
        case ControlAspect::Appended:
            status_->ShowAppended();
            break;
        case ControlAspect::Value:
            ShowValue(control);
            MarkTabStops(control);
            break;
        case ControlAspect::Enabled:
            EnableWindow(of(control), control.enabled());
            if (const HWND border = borders_[control.row()])
                EnableWindow(border, control.enabled());
            MarkTabStops(control);
            break;
        case ControlAspect::Tooltip:
            tips_.Set(of(control), control.tooltip());
            break;
        case ControlAspect::Visible:
            ShowWindow(of(control), IsShown(control) ? SW_SHOWNA : SW_HIDE);
            break;
    }
}

void ControlWindows::ShowText(const Control& control) {
    if (&control == &form_.txtStatus) {
        status_->ShowText();
        return;
    }
    const bool isBox = control.spec().kind == ControlKind::TextBox;
    const std::wstring& text =
        isBox ? static_cast<const TextBox&>(control).text() : control.caption();
    if (!text.empty() || GetWindowTextLengthW(of(control)) > 0)
        SetWindowTextW(of(control), text.c_str());
    if (control.spec().has(ControlTrait::atBottom))
        PlaceControl(control);
}

void ControlWindows::ShowValue(const Control& control) const {
    const HWND native = of(control);
    switch (control.spec().kind) {
        case ControlKind::CheckBox: {
            const auto& box = static_cast<const CheckBox&>(control);
            SendMessageW(native, BM_SETCHECK, static_cast<WPARAM>(box.value()), 0);
            break;
        }
        case ControlKind::OptionButton: {
            const bool selected = static_cast<const OptionButton&>(control).selected();
            SendMessageW(native, BM_SETCHECK, selected ? BST_CHECKED : BST_UNCHECKED, 0);
            break;
        }
        case ControlKind::TabStrip: {
            const auto tab = static_cast<const TabStrip&>(control).selectedTab();
            SendMessageW(native, TCM_SETCURSEL, static_cast<WPARAM>(tab), 0);
            break;
        }
        default:
            break;
    }
}

// Tab goes to the selected option of a group, or to the first usable one where that cannot be.
// Windows marks the selected one by itself.
void ControlWindows::MarkTabStop(const OptionButton& option) const {
    const OptionButton* stop = nullptr;
    for (const OptionButton* member : form_.GroupOf(option)) {
        if (member->enabled() && (!stop || member->selected()))
            stop = member;
    }
    const LONG_PTR style = GetWindowLongPtrW(of(option), GWL_STYLE);
    const LONG_PTR wanted = &option == stop ? style | WS_TABSTOP : style & ~LONG_PTR{WS_TABSTOP};
    if (wanted != style)
        SetWindowLongPtrW(of(option), GWL_STYLE, wanted);
}

void ControlWindows::MarkTabStops(const Control& changed) const {
    if (changed.spec().kind != ControlKind::OptionButton)
        return;
    for (const OptionButton* member : form_.GroupOf(static_cast<const OptionButton&>(changed)))
        MarkTabStop(*member);
}

Control* ControlWindows::FindById(int controlId) const {
    const auto row = static_cast<std::size_t>(controlId - firstControlId);
    if (controlId < firstControlId || row >= form_.controls().size())
        return nullptr;
    return form_.controls()[row];
}

TextBox* ControlWindows::TextBoxOf(HWND native) const {
    Control* control = ControlOf(native);
    const bool isBox = control && control->spec().kind == ControlKind::TextBox;
    return isBox ? static_cast<TextBox*>(control) : nullptr;
}

std::wstring ControlWindows::TextOf(HWND window) {
    const int length = GetWindowTextLengthW(window);
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    const int copied = GetWindowTextW(window, text.data(), length + 1);
    text.resize(static_cast<std::size_t>(copied));
    return text;
}

LRESULT CALLBACK ControlWindows::FrameProcedure(HWND frame, UINT message, WPARAM wParam,
                                                LPARAM lParam) {
    if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) {
        const MSG received{frame, message, wParam, lParam, 0, {}};
        SendMessageW(GetAncestor(frame, GA_ROOT), mouseOverFrame, 0,
                     reinterpret_cast<LPARAM>(&received));
    }
    switch (message) {
        case WM_COMMAND:
        case WM_NOTIFY:
            return SendMessageW(GetAncestor(frame, GA_ROOT), message, wParam, lParam);
        case WM_CLOSE:
            // A box of many lines sends this to its parent on Esc.
            return SendMessageW(GetAncestor(frame, GA_ROOT), WM_COMMAND, IDCANCEL, 0);
        case WM_ERASEBKGND:
        case WM_PRINTCLIENT: {
            RECT area;
            GetClientRect(frame, &area);
            FillRect(reinterpret_cast<HDC>(wParam), &area, PageBrush());
            return TRUE;
        }
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            // A read-only box keeps the colour that tells it from one to type in.
            if (IsTextBox(reinterpret_cast<HWND>(lParam)))
                break;
            SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
            SetTextColor(reinterpret_cast<HDC>(wParam), PageTextColour());
            return reinterpret_cast<LRESULT>(PageBrush());
        default:
            break;
    }
    return DefWindowProcW(frame, message, wParam, lParam);
}

}  // namespace corvane
