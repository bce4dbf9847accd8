#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ui/form/ControlCatalogue.h"

namespace corvane {

class Control;
class Form;
class FormActions;

enum class ControlAspect { Text, Appended, Value, Enabled, Caption, Tooltip, Visible };

// What shows the form: told of every change, asked for what only a shown window can do.
class FormView {
public:
    virtual ~FormView() = default;
    // The view is there before the form and outlives it: from here to Detach it shows this form
    // and tells these actions what the user does.
    virtual void Attach(Form& form, FormActions& actions) = 0;
    virtual void Detach() = 0;
    virtual void OnControlChanged(const Control& control, ControlAspect aspect) = 0;
    virtual void OnWindowChanged() = 0;  // caption, width, visibility or tab selection
    virtual void OnFocusRequested(const Control& control) = 0;
    // Checks the box that the user is in, as leaving it does; false keeps the focus there.
    [[nodiscard]] virtual bool FinishEntry() = 0;
    // Asks to close, as the close box does.
    virtual void Close() = 0;
};

// The part that every control has. A control is the single home of its value.
class Control {
public:
    Control(Form& form, std::size_t row);
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    [[nodiscard]] const ControlSpec& spec() const { return SpecOf(row_); }
    [[nodiscard]] std::size_t row() const { return row_; }
    [[nodiscard]] std::wstring name() const { return std::wstring(spec().name); }
    [[nodiscard]] std::wstring tag() const { return std::wstring(spec().tag); }

    [[nodiscard]] bool enabled() const { return enabled_; }
    void setEnabled(bool enabled);
    [[nodiscard]] bool visible() const { return visible_; }
    void setVisible(bool visible);
    [[nodiscard]] const std::wstring& caption() const { return caption_; }
    void setCaption(std::wstring_view caption);
    [[nodiscard]] const std::wstring& tooltip() const { return tooltip_; }
    void setTooltip(std::wstring_view tooltip);

protected:
    void Changed(ControlAspect aspect);  // the value changed: the view is told, rules run
    void Show(ControlAspect aspect);     // only the view is told
    Form& form_;

private:
    std::size_t row_;
    bool enabled_ = true;
    bool visible_ = true;
    std::wstring caption_;
    std::wstring tooltip_;
};

class TextBox : public Control {
public:
    using Control::Control;
    static constexpr ControlKind kind = ControlKind::TextBox;
    [[nodiscard]] const std::wstring& text() const { return text_; }
    void setText(std::wstring_view text);
    // Appends in time that does not depend on what the box already holds.
    void Append(std::wstring_view text);

private:
    std::wstring text_;
};

class CheckBox : public Control {
public:
    using Control::Control;
    static constexpr ControlKind kind = ControlKind::CheckBox;
    enum State : int { unchecked = 0, isChecked = 1, greyed = 2 };
    [[nodiscard]] int value() const { return value_; }
    [[nodiscard]] bool checked() const { return value_ == isChecked; }
    // Raises error 380 for a state that a check box does not have.
    void setValue(int value);
    void setChecked(bool checked) { setValue(checked ? isChecked : unchecked); }

private:
    int value_ = unchecked;
};

class OptionButton : public Control {
public:
    using Control::Control;
    static constexpr ControlKind kind = ControlKind::OptionButton;
    [[nodiscard]] bool selected() const { return selected_; }
    // Selecting one member of a group clears the others.
    void setSelected(bool selected);

private:
    bool selected_ = false;
};

class Label : public Control {
public:
    using Control::Control;
    static constexpr ControlKind kind = ControlKind::Label;
};

class CommandButton : public Control {
public:
    using Control::Control;
    static constexpr ControlKind kind = ControlKind::CommandButton;
    // Set when those who act are there: they need the form to be there.
    std::function<void()> onClick;
};

class Frame : public Control {
public:
    using Control::Control;
    static constexpr ControlKind kind = ControlKind::Frame;
};

class TabStrip : public Control {
public:
    using Control::Control;
    static constexpr ControlKind kind = ControlKind::TabStrip;
    [[nodiscard]] int selectedTab() const { return selectedTab_; }

private:
    friend class Form;
    int selectedTab_ = 0;
};

// A control's row, looked up while compiling: a misspelt name or a wrong kind does not compile.
template <ControlKind kind>
struct RowOf {
    std::size_t row;
    // NOLINTNEXTLINE(google-explicit-constructor): the form's members say the name alone.
    consteval RowOf(const wchar_t* name) : row(FindControl(name)) {
        if (row == noControl)
            throw "no such control in the catalogue";
        if (controlCatalogue[row].kind != kind)
            throw "the control is of another kind";
    }
};

// frmCorvaneTo3CX as a model: all controls with their state, and the state that the program keeps
// beside them. Needs no window; MainWindow shows it when there is one to show.
class Form {
public:
    // Without a view nobody sees it.
    explicit Form(FormView* view = nullptr);
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

private:
    // Named members below register here while they are constructed, so these come first.
    std::vector<Control*> controls_ = std::vector<Control*>(controlCount, nullptr);
    std::vector<std::unique_ptr<Control>> others_;
    FormView* view_ = nullptr;

    template <class Kind>
    class Member : public Kind {
    public:
        Member(Form& form, RowOf<Kind::kind> where) : Kind(form, where.row) {}
    };

public:
    // General
    Member<CheckBox> chkGlobalEnable{*this, L"chkGlobalEnable"};
    Member<CheckBox> chkTrimOutboundPrefix{*this, L"chkTrimOutboundPrefix"};
    Member<TextBox> txtOutboundMaxLength{*this, L"txtOutboundMaxLength"};

    // CallerID Handling
    Member<OptionButton> optPhone1Only{*this, L"optPhone1Only"};
    Member<OptionButton> optPhone123{*this, L"optPhone123"};
    Member<CheckBox> chkSearchInAddlContacts{*this, L"chkSearchInAddlContacts"};
    Member<CheckBox> chkIgnoreShortCallerID{*this, L"chkIgnoreShortCallerID"};
    Member<TextBox> txtCallerIDMinLength{*this, L"txtCallerIDMinLength"};
    Member<CheckBox> chkFormatCallerID{*this, L"chkFormatCallerID"};
    Member<TextBox> txtCallerIDFormat{*this, L"txtCallerIDFormat"};
    Member<CheckBox> chkCallerIDIgnoreLeading1{*this, L"chkCallerIDIgnoreLeading1"};
    Member<CheckBox> chkCallerIDRemoveSpaces{*this, L"chkCallerIDRemoveSpaces"};
    Member<CheckBox> chkPopOnInboundCall{*this, L"chkPopOnInboundCall"};
    Member<OptionButton> optPopOnInboundCallStart{*this, L"optPopOnInboundCallStart"};
    Member<OptionButton> optPopOnInboundCallConnect{*this, L"optPopOnInboundCallConnect"};
    Member<OptionButton> optPopCurrentWindow{*this, L"optPopCurrentWindow"};
    Member<OptionButton> optPopNewWindow{*this, L"optPopNewWindow"};

    // GoldMine History
    Member<CheckBox> chkCreateHistory{*this, L"chkCreateHistory"};
    Member<OptionButton> optProcessStart{*this, L"optProcessStart"};
    Member<OptionButton> optProcessConnect{*this, L"optProcessConnect"};
    Member<OptionButton> optProcessEnd{*this, L"optProcessEnd"};
    Member<CheckBox> chkFillInRef{*this, L"chkFillInRef"};
    Member<CheckBox> chkAutoOpenHistory{*this, L"chkAutoOpenHistory"};
    Member<OptionButton> optOpenHistoryBeforeSaving{*this, L"optOpenHistoryBeforeSaving"};
    Member<OptionButton> optOpenHistoryAfterSaving{*this, L"optOpenHistoryAfterSaving"};
    Member<OptionButton> optCompleteCallByType{*this, L"optCompleteCallByType"};
    Member<OptionButton> optCompleteScheduledCall{*this, L"optCompleteScheduledCall"};
    Member<OptionButton> optCompleteUnscheduledCall{*this, L"optCompleteUnscheduledCall"};
    Member<CheckBox> chkCreateLink{*this, L"chkCreateLink"};
    Member<TextBox> txtLinkedItemPath{*this, L"txtLinkedItemPath"};
    Member<CheckBox> chkDelayAddingLink{*this, L"chkDelayAddingLink"};
    Member<TextBox> txtDelayAddingLinkSeconds{*this, L"txtDelayAddingLinkSeconds"};
    Member<Label> lblDelayAddingLinkSeconds{*this, L"lblDelayAddingLinkSeconds"};
    Member<CheckBox> chkConfirmRecentRecordingFile{*this, L"chkConfirmRecentRecordingFile"};
    Member<TextBox> txtRecordingFileMaxAgeSeconds{*this, L"txtRecordingFileMaxAgeSeconds"};
    Member<Label> lblRecordingFileMaxAgeSeconds{*this, L"lblRecordingFileMaxAgeSeconds"};
    Member<CheckBox> chkConfirmLinkCallIdentifier{*this, L"chkConfirmLinkCallIdentifier"};

    // Advanced, Status, About
    Member<CheckBox> chkAlwaysShowForm{*this, L"chkAlwaysShowForm"};
    Member<CheckBox> chkAutoProcess{*this, L"chkAutoProcess"};
    Member<CheckBox> chkWriteLog{*this, L"chkWriteLog"};
    Member<CheckBox> chkLogCOMCalls{*this, L"chkLogCOMCalls"};
    Member<TextBox> txtCOMDurationSeconds{*this, L"txtCOMDurationSeconds"};
    Member<TextBox> txtStatus{*this, L"txtStatus"};
    Member<TextBox> txtAbout{*this, L"txtAbout"};

    // Strips, frames and buttons
    Member<TabStrip> tabstripOptions{*this, L"tabstripOptions"};
    Member<TabStrip> tabstripParams{*this, L"tabstripParams"};
    Member<Frame> frameGlobal{*this, L"frameGlobal"};
    Member<CommandButton> cmdParams{*this, L"cmdParams"};
    Member<CommandButton> cmdDefaults{*this, L"cmdDefaults"};
    Member<CommandButton> cmdSaveSettings{*this, L"cmdSaveSettings"};
    Member<CommandButton> cmdProcessCall{*this, L"cmdProcessCall"};
    Member<CommandButton> cmdExit{*this, L"cmdExit"};

    // Parameters of the current call
    Member<TextBox> txtOutboundPhone{*this, L"txtOutboundPhone"};
    Member<TextBox> txtOutboundPhoneAsDialed{*this, L"txtOutboundPhoneAsDialed"};
    Member<TextBox> txtNotifType{*this, L"txtNotifType"};
    Member<TextBox> txtCallerID{*this, L"txtCallerID"};
    Member<TextBox> txtCallType{*this, L"txtCallType"};
    Member<TextBox> txtCallIdentifier{*this, L"txtCallIdentifier"};
    Member<TextBox> txtCallerIDDigits{*this, L"txtCallerIDDigits"};
    Member<TextBox> txtCallerIDFormatted{*this, L"txtCallerIDFormatted"};

    // Paths and registry
    Member<TextBox> txtAppPath{*this, L"txtAppPath"};
    Member<TextBox> txtGMInstallDir{*this, L"txtGMInstallDir"};
    Member<TextBox> txtGoldMineUserIniPath{*this, L"txtGoldMineUserIniPath"};
    Member<CommandButton> cmdOpenUserINI{*this, L"cmdOpenUserINI"};
    Member<TextBox> txtGoldMineGMIniPath{*this, L"txtGoldMineGMIniPath"};
    Member<CommandButton> cmdOpenGMINI{*this, L"cmdOpenGMINI"};
    Member<TextBox> txtLogPath{*this, L"txtLogPath"};
    Member<CommandButton> cmdOpenLog{*this, L"cmdOpenLog"};
    Member<TextBox> txtCommandLineAPILogLevel{*this, L"txtCommandLineAPILogLevel"};
    Member<CommandButton> cmdChangeLogLevel{*this, L"cmdChangeLogLevel"};
    Member<TextBox> txtCommandLineAPILogPath{*this, L"txtCommandLineAPILogPath"};
    Member<CommandButton> cmdOpenPluginLog{*this, L"cmdOpenPluginLog"};
    Member<Label> lbl3CXInfo{*this, L"lbl3CXInfo"};
    Member<TextBox> txt3CXCRMCallNotifierPath{*this, L"txt3CXCRMCallNotifierPath"};
    Member<TextBox> txt3CXOutboundCallNotifierPath{*this, L"txt3CXOutboundCallNotifierPath"};
    Member<TextBox> txtCommandLineAPIPluginDLLPath{*this, L"txtCommandLineAPIPluginDLLPath"};

    // State kept beside the controls for the whole run.
    bool SettingsDirty = false;      // an option changed since the last save
    bool GoldMineRunning = false;    // as last looked for; each step that needs it looks anew
    bool GoldMineVersionOK = false;  // GoldMine 6.7 or later
    bool NotesAreHTML = false;       // GM.INI was found and does not say plain text
    std::wstring GoldMineExePath;
    std::wstring GoldMineUserName;  // read once, with the INI set-up

    // All controls in the order of the catalogue.
    [[nodiscard]] const std::vector<Control*>& controls() const { return controls_; }
    [[nodiscard]] Control& control(std::wstring_view name, int index = 0) const;
    [[nodiscard]] Control& lblParam(int index) const { return control(L"lblParam", index); }
    [[nodiscard]] Control& frameOptions(int index) const { return control(L"frameOptions", index); }
    [[nodiscard]] Control& frameParams(int index) const { return control(L"frameParams", index); }

    // The options that exclude each other, this one among them, in the order of the catalogue.
    [[nodiscard]] std::vector<OptionButton*> GroupOf(const OptionButton& option) const;

    // The name of the frames that a strip switches between.
    [[nodiscard]] static std::wstring_view FramesOf(const TabStrip& strip);

    // Shows the frame of the tab instead of the one shown before.
    void SelectTab(TabStrip& strip, int tab);

    // Opens or closes the parameter panel: caption of cmdParams and window width.
    void ToggleParams();

    [[nodiscard]] const std::wstring& caption() const { return caption_; }
    void setCaption(std::wstring_view caption);
    [[nodiscard]] int width() const { return width_; }  // twips
    [[nodiscard]] bool visible() const { return visible_; }
    void setVisible(bool visible);

    // The control that was given the keyboard focus last, for those who see no window.
    [[nodiscard]] const Control* focused() const { return focused_; }
    // A control on a page that is not shown brings its page up.
    void SetFocus(const Control& control);
    // Before what was typed is used without the box being left; false when its check fails.
    [[nodiscard]] bool FinishEntry() { return !view_ || view_->FinishEntry(); }
    // Asks to close the window that shows it.
    void Close();

    // Whether the wait pointer is shown; WaitPointer sets it.
    [[nodiscard]] bool waiting() const { return waiting_; }
    void setWaiting(bool waiting);

private:
    friend class Control;
    friend class OptionButton;
    std::wstring caption_;
    int width_ = windowStartWidth;
    bool visible_ = false;
    bool waiting_ = false;
    const Control* focused_ = nullptr;
};

// Shows the wait (hourglass) pointer for the time of its life.
class WaitPointer {
public:
    explicit WaitPointer(Form& form) : form_(form) { form_.setWaiting(true); }
    ~WaitPointer() { form_.setWaiting(false); }
    WaitPointer(const WaitPointer&) = delete;
    WaitPointer& operator=(const WaitPointer&) = delete;

private:
    Form& form_;
};

}  // namespace corvane
