#pragma once

namespace corvane {

class Form;
class MessageBoxes;
class Processes;
class StatusWriter;

// Has 3CX dial the number that GoldMine asked for.
class Dialer {
public:
    Dialer(Form& form, Processes& processes, StatusWriter& status, MessageBoxes& boxes);

    // False when nothing was started; the user has been told why.
    [[nodiscard]] bool Dial();

private:
    Form& form_;
    Processes& processes_;
    StatusWriter& status_;
    MessageBoxes& boxes_;
};

}  // namespace corvane
