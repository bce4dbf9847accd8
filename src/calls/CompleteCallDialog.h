#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "calls/CallInProgress.h"
#include "calls/RecordingLinkState.h"
#include "seams/GoldMine.h"

namespace corvane {

class Clock;
class ErrorReport;
class Form;
class GMUI;
class HtmlNotes;
class StatusWriter;
class WindowCommands;

// GoldMine's Complete Call dialog, in which the user finishes a call's history item. GoldMine opens
// it by a menu command and reports by its event when it is there, inside that command or any time
// later; then Reference and Notes are filled in, once.
//
// Two facts are kept apart: whether the dialog is still awaited (shutdown waits for that), and
// whether GoldMine was asked for the report (shutdown withdraws that whenever it was, else GoldMine
// would call into a program that is gone). A dialog counts as handled even when filling it in
// failed: the error was shown, and a wait at the end would be for nothing.
class CompleteCallDialog final : public WindowUpDownListener {
public:
    struct Parts {
        Form& form;
        GMUI& gmui;
        WindowCommands& windows;
        HtmlNotes& notes;
        CallInProgress& call;
        StatusWriter& status;
        ErrorReport& errors;
        Clock& clock;
    };

    explicit CompleteCallDialog(const Parts& parts) : parts_(parts) {}

    // Has GoldMine open the dialog. Reference and link are the next dialog's from here on: until
    // now the dialog of the call before may still have come.
    void OpenCompleteCallDialog(const std::wstring& refText, const RecordingLinkState& link);

    // GoldMine's event: fills in the awaited dialog; anything else is ignored, and so are events
    // that the commands of filling in let in.
    void moGMUI_WindowUpDown(const std::wstring& windowName, bool up,
                             std::int32_t windowHandle) noexcept override;

    // Puts Reference and link into the dialog's fields, in front of what stands there. Raises with
    // "AddRefAndNotesToOpenCallDialog: " before the description.
    void AddRefAndNotesToOpenCallDialog(std::int32_t windowHandle);

    // At the end of the program: waits ten seconds at most for a dialog that is still to be filled
    // in. False when GoldMine was not asked for a report; otherwise Withdraw follows.
    [[nodiscard]] bool WaitUntilFilledIn();
    void Withdraw();

private:
    [[nodiscard]] bool Register(bool monitor);
    [[nodiscard]] std::wstring_view CompleteCallCommand() const;
    [[nodiscard]] std::wstring NotesWithAddition(const std::wstring& notes,
                                                 const std::wstring& addition);

    Parts parts_;
    std::wstring refText_;
    RecordingLinkState link_;
    bool awaited_ = false;
    bool registered_ = false;
    bool beingFilledIn_ = false;
};

}  // namespace corvane
