#pragma once

#include <windows.h>

#include <oaidl.h>
#include <ocidl.h>
#include <wrl/client.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "support/Gmapi.h"

namespace standin_tests {

using gmapi = test_support::Gmapi<wchar_t>;

struct Event {
    std::wstring windowName;
    bool up = false;
    long windowHandle = 0;
};

// COM interfaces have no virtual destructors; an object ends itself in Release, as the final class.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Records the WindowUpDown events of one event interface.
class EventRecorder final : public IDispatch {
public:
    EventRecorder(const IID& eventsId, DISPID member) : eventsId_(eventsId), member_(member) {}

    std::vector<Event> events;
    int others = 0;                             // events of other members
    std::function<void(const Event&)> onEvent;  // called inside the event

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                     VARIANT*, EXCEPINFO*, UINT*) override;

private:
    ~EventRecorder() = default;

    IID eventsId_;
    DISPID member_;
    ULONG references_ = 0;
};

// The user-interface object by its layout alone: one method after the dispatch methods.
struct ByLayout : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE First(BSTR command, BSTR* reply) = 0;

protected:
    ~ByLayout() = default;
};

#pragma GCC diagnostic pop

struct Reply {
    HRESULT result = E_FAIL;
    std::wstring text;
    EXCEPINFO exception{};  // without its strings
    std::wstring source;
    std::wstring description;
};

// One flavour's ids, written here by hand so that a slip in its type library shows.
struct Flavour {
    const char* program;
    const wchar_t* programId;
    const wchar_t* libraryId;
    const wchar_t* libraryVersion;  // as the registry writes it: hexadecimal
    const wchar_t* method;
    DISPID methodMember;
    const wchar_t* eventsId;
    DISPID eventMember;
};
extern const Flavour ordinary;
extern const Flavour other;

inline constexpr IID userInterfaceId = {
    0x75B14699, 0xB5F4, 0x47F6, {0x98, 0xDC, 0x2E, 0x7B, 0x98, 0xF7, 0xE4, 0x6D}};

// A client of the running practice GoldMine.
class Client {
public:
    explicit Client(const Flavour& flavour = ordinary);
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;
    ~Client();

    bool connected() const { return object_ != nullptr; }
    IDispatch* object() const { return object_.Get(); }
    EventRecorder& recorder() { return *recorder_.Get(); }
    const std::vector<Event>& events() const { return recorder_->events; }

    // Through Invoke, with all that comes back.
    Reply TrySend(const std::wstring& command);
    // Through Invoke; a failure of the call fails the test.
    std::wstring Send(const std::wstring& command);
    // Sends a call with these arguments, escaped.
    using Arguments = std::vector<std::pair<std::wstring, std::wstring>>;
    std::wstring Ask(const std::wstring& call, const Arguments& arguments = {});
    // The status text of a reply with code 1, unescaped as clients do it; fails the test otherwise.
    std::wstring Value(const std::wstring& call, const Arguments& arguments);
    std::wstring Macro(const std::wstring& name) { return Value(L"Macro", {{L"Macro", name}}); }
    void Watch(bool on);
    // Asks for the events once more.
    HRESULT ListenAgain();

private:
    Microsoft::WRL::ComPtr<IDispatch> object_;
    Microsoft::WRL::ComPtr<IConnectionPoint> point_;
    Microsoft::WRL::ComPtr<EventRecorder> recorder_;
    DISPID member_ = 0;
    DWORD cookie_ = 0;
};

// The first text between two marks, unescaped twice: by the XML reader and by the client.
std::wstring Between(const std::wstring& text, const std::wstring& start, const std::wstring& end);

}  // namespace standin_tests
