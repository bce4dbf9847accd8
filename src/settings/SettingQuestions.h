#pragma once

namespace corvane {

class Form;
class MessageBoxes;
class Settings;

// The two check boxes that ask the user before a click counts. Only a user's click asks; loading
// and restoring defaults set the boxes without these procedures.
class SettingQuestions {
public:
    SettingQuestions(Form& form, Settings& settings, MessageBoxes& boxes);

    // The user clicked chkGlobalEnable. Checking it again can end the program.
    void ClickGlobalEnable();

    // The user clicked chkSearchInAddlContacts.
    void ClickSearchInAddlContacts();

private:
    Form& form_;
    Settings& settings_;
    MessageBoxes& boxes_;
};

}  // namespace corvane
