#include "events/EventRaiser.h"

#include <utility>

namespace practice {
namespace {

constexpr const wchar_t* eventWindowClass = L"PracticeGoldMineEvents";
// Long enough that no client gets the event before the reply, by whatever thread each comes to it.
constexpr UINT replyMilliseconds = 200;
constexpr UINT signalPollMilliseconds = 20;

}  // namespace

EventRaiser::EventRaiser() {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = eventWindowClass;
    RegisterClassW(&windowClass);
    window_.reset(CreateWindowExW(0, eventWindowClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                  windowClass.hInstance, nullptr));
    SetWindowLongPtrW(window_.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

void EventRaiser::Attach(EventTarget* target) {
    targets_.push_back(target);
}

void EventRaiser::Detach(EventTarget* target) {
    std::erase(targets_, target);
}

void EventRaiser::Raise(const std::wstring& windowName, bool up, HWND window,
                        const EventTiming& timing) {
    const RaisedEvent event{windowName, up, HandleToLong(window)};
    switch (timing.moment) {
        case EventTiming::Moment::Never:
            return;
        case EventTiming::Moment::BeforeReply:
            RaiseNow(event, false);
            return;
        case EventTiming::Moment::OnSignal:
            RaiseLater(event, signalPollMilliseconds,
                       KernelHandle(CreateEventW(nullptr, TRUE, FALSE, timing.signal.c_str())));
            return;
        case EventTiming::Moment::Twice:
            RaiseLater(event, replyMilliseconds, {});
            [[fallthrough]];
        case EventTiming::Moment::AfterReply:
            RaiseLater(event, replyMilliseconds, {});
            return;
    }
}

// A client may come, go, or send commands while it handles the event.
void EventRaiser::RaiseNow(const RaisedEvent& event, bool toAll) {
    const std::vector<EventTarget*> targets = targets_;
    for (EventTarget* target : targets)
        target->Hold();
    for (EventTarget* target : targets) {
        if (toAll || target->Watches(event.windowName))
            target->Deliver(event.windowName, event.up, event.windowHandle);
        target->LetGo();
    }
}

void EventRaiser::RaiseLater(const RaisedEvent& event, UINT milliseconds, KernelHandle signal) {
    pending_[++lastKey_] = {event, std::move(signal)};
    SetTimer(window_.get(), lastKey_, milliseconds, nullptr);
}

void EventRaiser::RaisePending(UINT_PTR key) {
    const auto found = pending_.find(key);
    if (found == pending_.end())
        return;
    const PendingEvent& pending = found->second;
    if (pending.signal && WaitForSingleObject(pending.signal.get(), 0) != WAIT_OBJECT_0)
        return;
    KillTimer(window_.get(), key);
    const RaisedEvent event = pending.event;
    pending_.erase(found);
    RaiseNow(event, false);
}

LRESULT CALLBACK EventRaiser::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_TIMER) {
        reinterpret_cast<EventRaiser*>(GetWindowLongPtrW(window, GWLP_USERDATA))
            ->RaisePending(wParam);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace practice
