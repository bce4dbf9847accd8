#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

#include "shared/Handles.h"

namespace practice {

// When the event about a window that a command opened is raised.
struct EventTiming {
    enum class Moment { AfterReply, BeforeReply, Never, Twice, OnSignal };

    Moment moment = Moment::AfterReply;
    std::wstring signal;  // OnSignal: the name of the Windows event that is waited for
};

struct RaisedEvent {
    std::wstring windowName;
    bool up = false;
    long windowHandle = 0;
};

// A connected client, as the raiser of events sees it.
class EventTarget {
public:
    [[nodiscard]] virtual bool Watches(const std::wstring& windowName) const = 0;
    virtual void Deliver(const std::wstring& windowName, bool up, long windowHandle) = 0;
    // Keeps the target alive while an event is on its way.
    virtual void Hold() = 0;
    virtual void LetGo() = 0;

protected:
    ~EventTarget() = default;
};

// Raises WindowUpDown to the clients, at the moment that is asked for.
class EventRaiser {
public:
    EventRaiser();
    EventRaiser(const EventRaiser&) = delete;
    EventRaiser& operator=(const EventRaiser&) = delete;

    void Attach(EventTarget* target);
    void Detach(EventTarget* target);

    // To the clients that watch windows of this name.
    void Raise(const std::wstring& windowName, bool up, HWND window, const EventTiming& timing);
    // To every client, now.
    void RaiseToAll(const RaisedEvent& event) { RaiseNow(event, true); }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    struct PendingEvent {
        RaisedEvent event;
        KernelHandle signal;  // waited for, when there is one
    };

    void RaiseNow(const RaisedEvent& event, bool toAll);
    void RaiseLater(const RaisedEvent& event, UINT milliseconds, KernelHandle signal);
    void RaisePending(UINT_PTR key);

    Owned<HWND> window_;  // has the timers of the pending events
    std::vector<EventTarget*> targets_;
    std::map<UINT_PTR, PendingEvent> pending_;  // by the number of its timer
    UINT_PTR lastKey_ = 0;
};

}  // namespace practice
