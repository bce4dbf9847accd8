#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace corvane {

class GMUI;
class StatusWriter;

// GoldMine's name for its Complete Call dialog.
inline constexpr std::wstring_view completeCallWindow = L"DIALOGSCHEDULECOMPLETE";

enum class ContactDisplay { NewWindow, CurrentWindow };

// Makes GoldMine find and show a number, show messages, position its record object, report its
// windows, and read or set the controls of an open one.
class WindowCommands {
public:
    WindowCommands(GMUI& gmui, StatusWriter& status) : gmui_(gmui), status_(status) {}

    // Whether GoldMine found the number and brought its contact up.
    [[nodiscard]] bool CallerID(std::wstring_view phone, ContactDisplay display, bool allPhones);

    // The status code digit of the reply; the unit of the delay is GoldMine's.
    std::wstring StatusMsg(std::wstring_view message, std::wstring_view delay);
    std::wstring StatusMsg(std::wstring_view message, int delay);
    [[nodiscard]] std::wstring RecordObj(std::wstring_view command, std::wstring_view argument);

    // Turns the report about a window on or off, and the call-dialog watch flag with it.
    [[nodiscard]] bool RegisterWindowUpDown(std::wstring_view window, bool monitor);

    // Whether the Complete Call dialog is still to come up, or is being filled in.
    [[nodiscard]] bool WatchingCallDialog() const { return watchingCallDialog_; }
    void StopWatchingCallDialog() { watchingCallDialog_ = false; }
    // Whether a report about the Complete Call dialog was asked for and not withdrawn since.
    [[nodiscard]] bool CallDialogRegistered() const { return callDialogRegistered_; }

    // GoldMine's event: the awaited dialog is handed to the handler once, anything else ignored.
    void moGMUI_WindowUpDown(const std::wstring& windowName, bool up, std::int32_t windowHandle);
    void setCallDialogHandler(std::function<void(std::int32_t windowHandle)> handler) {
        onCallDialog_ = std::move(handler);
    }

    // A control's text in an open GoldMine window; empty when the window or the control is not
    // listed. Errors are raised with "GMUI_GetControlText: " before their source.
    [[nodiscard]] std::wstring GetControlText(std::wstring_view windowHandle,
                                              std::wstring_view controlId);
    // The text goes into the command as it is: the caller has escaped what needs it.
    [[nodiscard]] bool SetControlText(std::wstring_view windowHandle, std::wstring_view controlId,
                                      std::wstring_view text);

private:
    GMUI& gmui_;
    StatusWriter& status_;
    bool watchingCallDialog_ = false;
    bool callDialogRegistered_ = false;
    bool handlingCallDialog_ = false;
    std::function<void(std::int32_t)> onCallDialog_;
};

}  // namespace corvane
