#pragma once

#include <windows.h>

#include <oaidl.h>
#include <ocidl.h>
#include <wrl/client.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace standin_tests {

// Paths and files -----------------------------------------------------------------------------

// A file in the folder of the practice programs.
std::wstring StandinFile(const std::wstring& name);
std::string Utf8(const std::wstring& text);
std::wstring Wide(const std::string& text);
std::string ReadFileText(const std::wstring& path);  // "" when there is none
void WriteFileText(const std::wstring& path, const std::string& text);

std::vector<std::string> Lines(const std::string& text);

// An empty folder of its own, deleted with what is in it.
class TemporaryFolder {
public:
    // The name may hold blanks, as folders do; another one for what cannot deal with them.
    explicit TemporaryFolder(const std::wstring& name = L"standin tests");
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::wstring& path() const { return path_; }  // with trailing backslash

private:
    std::wstring path_;
};

// Processes -------------------------------------------------------------------------------------

// A started program; a test that ends first ends it too.
class Process {
public:
    Process() = default;
    explicit Process(HANDLE handle, DWORD id) : handle_(handle), id_(id) {}
    // What it writes goes into the output file when one is given.
    Process(const std::wstring& program, const std::wstring& arguments,
            const std::wstring& outputFile = {});
    Process(Process&& source) noexcept { *this = std::move(source); }
    Process& operator=(Process&& source) noexcept;
    ~Process();

    bool started() const { return handle_ != nullptr; }
    DWORD id() const { return id_; }
    HANDLE handle() const { return handle_; }
    // False when it is still running after 30 seconds.
    bool WaitForEnd();
    DWORD exitCode() const;

private:
    HANDLE handle_ = nullptr;
    DWORD id_ = 0;
};

// The process of this program that one process started, be that one still running or not; to be
// ended with it. Not started when there is none.
Process ChildOf(DWORD parent, const std::wstring& program);

// Runs a practice program to its end and answers its exit code.
DWORD RunToEnd(const std::wstring& program, const std::wstring& arguments);

// Serves window messages and COM calls until the condition holds; false after the time-out.
bool PumpUntil(const std::function<bool()>& condition, DWORD milliseconds = 20'000);

// Automation ------------------------------------------------------------------------------------

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
    const wchar_t* program;
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

private:
    Microsoft::WRL::ComPtr<IDispatch> object_;
    Microsoft::WRL::ComPtr<IConnectionPoint> point_;
    Microsoft::WRL::ComPtr<EventRecorder> recorder_;
    DISPID member_ = 0;
    DWORD cookie_ = 0;
};

// <GMAPI call="X"><status code="digit">text</status></GMAPI>
std::wstring StatusReply(const std::wstring& call, wchar_t digit, const std::wstring& text);
// The first text between two marks, unescaped twice: by the XML reader and by the client.
std::wstring Between(const std::wstring& text, const std::wstring& start, const std::wstring& end);
std::wstring Escaped(const std::wstring& text);

// Fixture ---------------------------------------------------------------------------------------

// A registered practice GoldMine and a fresh data folder; Start runs it.
class PracticeGoldMineTest : public testing::Test {
protected:
    static void SetUpTestSuite();
    static void TearDownTestSuite();
    void TearDown() override;

    // Starts it with /Fresh and /Hidden and waits until clients can connect.
    void Start(const std::wstring& arguments = {}, const Flavour& flavour = ordinary);
    // Closes the main window and waits for the end.
    void Close();
    HWND MainWindow() const;
    // The one window with this title's beginning, or nullptr.
    HWND WindowTitled(const std::wstring& start) const;

    std::wstring DataFile(const std::wstring& name) const { return data_.path() + name; }
    void WriteFaults(const std::string& text) { WriteFileText(DataFile(L"faults.txt"), text); }
    std::vector<std::string> Journal() const;
    // The rows of a statement, run by the program's own /Sql.
    std::string Sql(const std::wstring& statement) const;

    TemporaryFolder data_;
    Process process_;
};

}  // namespace standin_tests
