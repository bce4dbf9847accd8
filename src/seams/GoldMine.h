#pragma once

#include <cstdint>
#include <string>

namespace corvane {

// Hears of GoldMine's event: a window that it was asked to watch came up or went away. The event
// arrives on the program's thread, between commands or inside one.
class WindowUpDownListener {
public:
    virtual ~WindowUpDownListener() = default;
    virtual void moGMUI_WindowUpDown(const std::wstring& windowName, bool up,
                                     std::int32_t windowHandle) noexcept = 0;
};

// GoldMine's user-interface automation object. GoldMineAutomation is the real one.
class GoldMine {
public:
    virtual ~GoldMine() = default;
    [[nodiscard]] virtual bool connected() const = 0;
    // Creates the object and listens to its event. Raises: 429 when it is not registered or does
    // not start, else what the system says.
    virtual void Connect() = 0;
    // Hands GoldMine one command and waits for its reply. Raises: 70 not logged in; 462,
    // 0x800706BE, 0x80010108 and 0x800401FD connection lost; else what GoldMine or the system says.
    [[nodiscard]] virtual std::wstring Send(const std::wstring& command) = 0;
    virtual void Release() noexcept = 0;
    // Set once the listener is there, which itself needs GoldMine to be there; nullptr: nobody.
    virtual void setListener(WindowUpDownListener* listener) = 0;
};

}  // namespace corvane
