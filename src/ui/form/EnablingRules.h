#pragma once

namespace corvane {

class Control;
class Form;

// Which controls can be used in which state of the others. A rule that looks at a box requires
// that box to be enabled itself, so that disabling a parent disables the whole chain.
class EnablingRules {
public:
    explicit EnablingRules(Form& form) : form_(form) {}

    // The rule of the control that was changed or clicked; controls without a rule do nothing.
    void Run(const Control& changed) const;

    // When the window becomes active.
    void RunOnActivation() const;

    // Every rule, parents first: after GoldMine's version became known.
    void RunAll() const;

private:
    void GlobalEnable() const;
    void TrimOutboundPrefix() const;
    void IgnoreShortCallerID() const;
    void PopOnInboundCall() const;
    void CreateHistory() const;
    void CreateLink() const;
    void DelayAddingLink() const;
    void ConfirmRecentRecordingFile() const;
    void AutoOpenHistory() const;
    void OpenHistoryBeforeSaving() const;
    void AlwaysShowForm() const;
    void SearchPhone123() const;

    Form& form_;
};

}  // namespace corvane
