#pragma once

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/kit/Windows.h"

#include <oaidl.h>
#include <ocidl.h>
#include <wrl/client.h>

namespace corvane::test {

// The type libraries in this program's resources; the numbers are those of AutomationServer.rc.
enum class LibraryFlavour {
    Complete = 1,
    WithoutClass = 2,
    WithoutEvents = 3,
    OlderVersion = 4,
    DispatchOnly = 5,
};

// The ids of AutomationServer.idl.
inline constexpr CLSID askedClass = {
    0xB7C1F0A6, 0x5E1D, 0x4B7A, {0x8C, 0x55, 0x0A, 0x1D, 0x6E, 0x2F, 0x40, 0x01}};
inline constexpr IID askEvents = {
    0xB7C1F0A4, 0x5E1D, 0x4B7A, {0x8C, 0x55, 0x0A, 0x1D, 0x6E, 0x2F, 0x40, 0x01}};
inline constexpr DISPID askMember = 77;
inline constexpr DISPID closingEvent = 40;
inline constexpr DISPID windowUpDownEvent = 41;

// Where and how a library is registered. Version 2.10, in hexadecimal digits, is what it says
// itself.
struct RegisteredAs {
    std::wstring version = L"2.a";
    std::wstring language = L"0";
    std::optional<std::wstring> statedVersion = L"2.a";  // with the interface
    bool withProxy = true;                               // for the interface
    std::wstring view = {};  // in front of the keys; the ordinary one when empty
};

// Registers one of the libraries for GoldMine's interface for its life; what stood there before
// comes back.
class LibraryRegistration {
public:
    explicit LibraryRegistration(LibraryFlavour flavour, const RegisteredAs& as = {});
    ~LibraryRegistration();
    LibraryRegistration(const LibraryRegistration&) = delete;
    LibraryRegistration& operator=(const LibraryRegistration&) = delete;

    // One version and language more; a library that is not there when it has no flavour.
    void Add(std::optional<LibraryFlavour> flavour, const std::wstring& version,
             const std::wstring& language);
    // The same with whatever stands in the place of the library's path.
    void AddPath(const std::wstring& path, const std::wstring& version,
                 const std::wstring& language);

private:
    struct Before {
        std::wstring key;
        std::wstring value;
        std::optional<std::wstring> text;
    };
    void Set(const std::wstring& key, const std::wstring& value, const std::wstring& text);
    void Remove(const std::wstring& key, const std::wstring& value);

    std::wstring libraryKey_, interfaceKey_, eventsKey_;
    std::vector<Before> before_;
};

// An automation server on a single-threaded apartment of its own, reached through COM's proxies
// like a server in another process. Commands that no test expects are failures.
// Wine lets one process register some sixty class objects in its life: a run of the tests is far
// from that, three repeats in one process are not.
class AutomationServer {
public:
    struct Answer {
        HRESULT result = S_OK;
        std::wstring reply = {};
        // With DISP_E_EXCEPTION.
        WORD code = 0;
        HRESULT scode = S_OK;
        std::wstring source = {};
        std::wstring description = {};
    };
    // Runs on the server's thread.
    using Handler = std::function<Answer(const std::wstring& command)>;

    explicit AutomationServer(Handler handler);
    ~AutomationServer();
    AutomationServer(const AutomationServer&) = delete;
    AutomationServer& operator=(const AutomationServer&) = delete;

    // Raises events: from inside a handler at once, from elsewhere by way of the server's thread.
    void Raise(DISPID member, const std::wstring& windowName, bool up, long handle);
    void RaiseWhenIdle(DISPID member, const std::wstring& windowName, bool up, long handle);

    // From now on it keeps its sinks, and says that Unadvise failed.
    void RefuseUnadvise() { refusesUnadvise_ = true; }

    [[nodiscard]] std::vector<std::wstring> commands() const;
    [[nodiscard]] int sinks() const { return sinks_; }
    [[nodiscard]] int objects() const { return objects_; }
    // What the sinks answered to the last event.
    [[nodiscard]] HRESULT lastEventResult() const { return lastEventResult_; }

private:
    friend class AskedObject;
    void Serve();

    Handler handler_;
    mutable std::mutex lock_;
    std::vector<std::wstring> commands_;
    // Of the server's thread alone.
    std::map<DWORD, Microsoft::WRL::ComPtr<IDispatch>> connections_;
    DWORD lastCookie_ = 0;

    std::atomic<bool> refusesUnadvise_ = false;
    std::atomic<int> sinks_ = 0;
    std::atomic<int> objects_ = 0;
    std::atomic<HRESULT> lastEventResult_ = S_OK;
    std::atomic<HRESULT> started_ = E_PENDING;
    std::atomic<bool> ended_ = false;
    DWORD threadId_ = 0;
    std::thread thread_;
};

}  // namespace corvane::test
