#include "PracticeGoldMineTest.h"

#include <tlhelp32.h>

#include <algorithm>
#include <sstream>

namespace standin_tests {

using Microsoft::WRL::ComPtr;

const Flavour ordinary = {L"gmw.exe",
                          L"PracticeGoldMine.UserInterface",
                          L"{5D0C6E10-3F0B-4B0E-9A53-6C1B7F3E9A01}",
                          L"e.1",
                          L"ExecuteCommand",
                          1,
                          L"{5D0C6E12-3F0B-4B0E-9A53-6C1B7F3E9A01}",
                          1};
const Flavour other = {L"other\\gmw.exe",
                       L"OtherPracticeGoldMine.Workplace",
                       L"{A7F4D2B0-91C6-4E2D-8B67-20D5E8C4F511}",
                       L"1b.5",
                       L"Perform",
                       731,
                       L"{A7F4D2B4-91C6-4E2D-8B67-20D5E8C4F511}",
                       4711};

namespace {

constexpr DWORD processMilliseconds = 30'000;

std::wstring OwnFolder() {
    wchar_t path[MAX_PATH];
    const std::wstring text(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
    return text.substr(0, text.rfind(L'\\') + 1);
}

std::wstring ReplaceAll(std::wstring text, const std::wstring& what, const std::wstring& by) {
    for (size_t at = 0; (at = text.find(what, at)) != std::wstring::npos; at += by.size()) {
        text.replace(at, what.size(), by);
    }
    return text;
}

std::wstring Unescaped(std::wstring text) {
    text = ReplaceAll(text, L"&quot;", L"\"");
    text = ReplaceAll(text, L"&apos;", L"'");
    text = ReplaceAll(text, L"&lt;", L"<");
    text = ReplaceAll(text, L"&gt;", L">");
    text = ReplaceAll(text, L"&#13;", L"\r");
    return ReplaceAll(text, L"&amp;", L"&");
}

struct WindowSearch {
    DWORD process;
    std::wstring titleStart;
    bool mainOnly;
    HWND found;
};

BOOL CALLBACK CheckWindow(HWND window, LPARAM parameter) {
    auto* search = reinterpret_cast<WindowSearch*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    wchar_t title[256];
    const int length = GetWindowTextW(window, title, 256);
    const std::wstring text(title, static_cast<size_t>(length));
    if (process != search->process ||
        text.compare(0, search->titleStart.size(), search->titleStart) != 0) {
        return TRUE;
    }
    if (search->mainOnly && GetMenu(window) == nullptr) {
        return TRUE;
    }
    search->found = window;
    return FALSE;
}

HWND FindWindowOf(DWORD process, const std::wstring& titleStart, bool mainOnly) {
    WindowSearch search{process, titleStart, mainOnly, nullptr};
    EnumWindows(CheckWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

void DeleteFolder(const std::wstring& folder) {
    WIN32_FIND_DATAW data;
    const HANDLE find = FindFirstFileW((folder + L"*").c_str(), &data);
    if (find != INVALID_HANDLE_VALUE) {
        do {
            if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
                DeleteFileW((folder + data.cFileName).c_str());
            }
        } while (FindNextFileW(find, &data));
        FindClose(find);
    }
    RemoveDirectoryW(folder.c_str());
}

// COM for the whole test program.
class Apartment : public testing::Environment {
public:
    void SetUp() override {
        ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)));
    }
    void TearDown() override { CoUninitialize(); }
};
const testing::Environment* const apartment =
    testing::AddGlobalTestEnvironment(std::make_unique<Apartment>().release());

}  // namespace

std::wstring StandinFile(const std::wstring& name) {
    const std::wstring path = OwnFolder() + STANDIN_FOLDER + L"/" + name;
    wchar_t full[MAX_PATH];
    return std::wstring(full, GetFullPathNameW(path.c_str(), MAX_PATH, full, nullptr));
}

std::string Utf8(const std::wstring& text) {
    const int size = static_cast<int>(text.size());
    std::string result(static_cast<size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), size,
                                                               nullptr, 0, nullptr, nullptr)),
                       '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), size, result.data(),
                        static_cast<int>(result.size()), nullptr, nullptr);
    return result;
}

std::wstring Wide(const std::string& text) {
    const int size = static_cast<int>(text.size());
    std::wstring result(
        static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, result.data(),
                        static_cast<int>(result.size()));
    return result;
}

std::string ReadFileText(const std::wstring& path) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    std::string text;
    if (file != INVALID_HANDLE_VALUE) {
        char buffer[4096];
        DWORD read = 0;
        while (ReadFile(file, buffer, sizeof buffer, &read, nullptr) && read > 0) {
            text.append(buffer, read);
        }
        CloseHandle(file);
    }
    return text;
}

void WriteFileText(const std::wstring& path, const std::string& text) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    DWORD written = 0;
    WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    CloseHandle(file);
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

TemporaryFolder::TemporaryFolder(const std::wstring& name) {
    static int count = 0;
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    path_ = std::wstring(temp) + name + L"-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
            std::to_wstring(++count) + L"\\";
    CreateDirectoryW(path_.c_str(), nullptr);
}

TemporaryFolder::~TemporaryFolder() {
    DeleteFolder(path_);
}

Process::Process(const std::wstring& program, const std::wstring& arguments,
                 const std::wstring& outputFile) {
    std::wstring line = L"\"" + program + L"\" " + arguments;
    STARTUPINFOW startUp{};
    startUp.cb = sizeof startUp;
    HANDLE output = INVALID_HANDLE_VALUE;
    if (!outputFile.empty()) {
        SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
        output = CreateFileW(outputFile.c_str(), FILE_APPEND_DATA,
                             FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &inheritable,
                             CREATE_ALWAYS, 0, nullptr);
        startUp.dwFlags = STARTF_USESTDHANDLES;
        startUp.hStdOutput = output;
        startUp.hStdError = output;
    }
    PROCESS_INFORMATION information{};
    const auto start = [&] {
        return CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, !outputFile.empty(),
                              0, nullptr, nullptr, &startUp, &information) != FALSE;
    };
    // Under load, once in some thousand starts, Wine loses a process before it has begun.
    const bool started = start() || (GetLastError() == ERROR_INTERNAL_ERROR && start());
    if (output != INVALID_HANDLE_VALUE) {
        CloseHandle(output);
    }
    if (started) {
        CloseHandle(information.hThread);
        handle_ = information.hProcess;
        id_ = information.dwProcessId;
    }
}

Process& Process::operator=(Process&& source) noexcept {
    std::swap(handle_, source.handle_);
    std::swap(id_, source.id_);
    return *this;
}

Process::~Process() {
    if (handle_ != nullptr) {
        TerminateProcess(handle_, 99);
        WaitForSingleObject(handle_, processMilliseconds);
        CloseHandle(handle_);
    }
}

bool Process::WaitForEnd() {
    return WaitForSingleObject(handle_, processMilliseconds) == WAIT_OBJECT_0;
}

DWORD Process::exitCode() const {
    DWORD code = STILL_ACTIVE;
    GetExitCodeProcess(handle_, &code);
    return code;
}

Process ChildOf(DWORD parent, const std::wstring& program) {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    Process child;
    for (BOOL more = Process32FirstW(snapshot, &entry); more;
         more = Process32NextW(snapshot, &entry)) {
        // The id of a parent that ended long ago may be another's by now.
        if (entry.th32ParentProcessID != parent || program != entry.szExeFile) {
            continue;
        }
        const DWORD rights = PROCESS_QUERY_INFORMATION | PROCESS_TERMINATE | SYNCHRONIZE;
        child = Process(OpenProcess(rights, FALSE, entry.th32ProcessID), entry.th32ProcessID);
        break;
    }
    CloseHandle(snapshot);
    return child;
}

DWORD RunToEnd(const std::wstring& program, const std::wstring& arguments) {
    Process process(StandinFile(program), arguments);
    EXPECT_TRUE(process.started()) << Utf8(StandinFile(program));
    EXPECT_TRUE(process.WaitForEnd()) << Utf8(program + L" " + arguments);
    return process.exitCode();
}

bool PumpUntil(const std::function<bool()>& condition, DWORD milliseconds) {
    const ULONGLONG deadline = GetTickCount64() + milliseconds;
    while (!condition()) {
        if (GetTickCount64() > deadline) {
            return false;
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    return true;
}

HRESULT EventRecorder::QueryInterface(REFIID id, void** object) {
    if (id != IID_IUnknown && id != IID_IDispatch && id != eventsId_) {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    *object = this;
    AddRef();
    return S_OK;
}

ULONG EventRecorder::Release() {
    const ULONG left = --references_;
    if (left == 0) {
        delete this;
    }
    return left;
}

HRESULT EventRecorder::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

HRESULT EventRecorder::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    *info = nullptr;
    return E_NOTIMPL;
}

HRESULT EventRecorder::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
    return E_NOTIMPL;
}

HRESULT EventRecorder::Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                              EXCEPINFO*, UINT*) {
    if (member != member_) {
        ++others;
        return S_OK;
    }
    if (parameters->cArgs != 3 || parameters->rgvarg[2].vt != VT_BSTR ||
        parameters->rgvarg[1].vt != VT_BOOL || parameters->rgvarg[0].vt != VT_I4) {
        return DISP_E_BADVARTYPE;
    }
    const Event event{parameters->rgvarg[2].bstrVal, parameters->rgvarg[1].boolVal != VARIANT_FALSE,
                      parameters->rgvarg[0].lVal};
    events.push_back(event);
    if (onEvent) {
        onEvent(event);
    }
    return S_OK;
}

Client::Client(const Flavour& flavour) {
    CLSID classId{};
    EXPECT_EQ(CLSIDFromProgID(flavour.programId, &classId), S_OK);
    EXPECT_EQ(CoCreateInstance(classId, nullptr, CLSCTX_LOCAL_SERVER, IID_PPV_ARGS(&object_)),
              S_OK);
    if (object_ == nullptr) {
        return;
    }
    std::wstring method = flavour.method;
    LPOLESTR name = method.data();
    EXPECT_EQ(object_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &member_), S_OK);
    EXPECT_EQ(member_, flavour.methodMember);

    IID eventsId{};
    EXPECT_EQ(IIDFromString(flavour.eventsId, &eventsId), S_OK);
    recorder_ = new EventRecorder(eventsId, flavour.eventMember);
    ComPtr<IConnectionPointContainer> container;
    EXPECT_EQ(object_.As(&container), S_OK);
    if (container != nullptr) {
        EXPECT_EQ(container->FindConnectionPoint(eventsId, &point_), S_OK);
    }
    if (point_ != nullptr) {
        EXPECT_EQ(point_->Advise(recorder_.Get(), &cookie_), S_OK);
    }
}

Client::~Client() {
    if (point_ != nullptr && cookie_ != 0) {
        point_->Unadvise(cookie_);
    }
}

Reply Client::TrySend(const std::wstring& command) {
    Reply reply;
    if (object_ == nullptr) {
        return reply;
    }
    VARIANT argument;
    VariantInit(&argument);
    argument.vt = VT_BSTR;
    argument.bstrVal = SysAllocStringLen(command.data(), static_cast<UINT>(command.size()));
    DISPPARAMS parameters{&argument, nullptr, 1, 0};
    VARIANT result;
    VariantInit(&result);
    reply.result = object_->Invoke(member_, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                   &parameters, &result, &reply.exception, nullptr);
    if (result.vt == VT_BSTR && result.bstrVal != nullptr) {
        reply.text.assign(result.bstrVal, SysStringLen(result.bstrVal));
    }
    const auto take = [](BSTR& text) {
        const std::wstring taken = text == nullptr ? L"" : text;
        SysFreeString(text);
        text = nullptr;
        return taken;
    };
    reply.source = take(reply.exception.bstrSource);
    reply.description = take(reply.exception.bstrDescription);
    take(reply.exception.bstrHelpFile);
    VariantClear(&argument);
    VariantClear(&result);
    return reply;
}

std::wstring Client::Send(const std::wstring& command) {
    const Reply reply = TrySend(command);
    EXPECT_EQ(reply.result, S_OK) << Utf8(command.substr(0, 200));
    return reply.text;
}

std::wstring Client::Ask(const std::wstring& call, const Arguments& arguments) {
    std::wstring command = L"<GMAPI call=\"" + call + L"\">";
    for (const auto& [name, value] : arguments) {
        command += L"<data name=\"" + name + L"\">" + Escaped(value) + L"</data>";
    }
    return Send(command + L"</GMAPI>");
}

std::wstring Client::Value(const std::wstring& call, const Arguments& arguments) {
    const std::wstring reply = Ask(call, arguments);
    const std::wstring start = L"<GMAPI call=\"" + call + L"\"><status code=\"1\">";
    EXPECT_EQ(reply.substr(0, start.size()), start) << Utf8(reply);
    return Between(reply, start, L"</status>");
}

void Client::Watch(bool on) {
    EXPECT_EQ(Ask(L"RegisterWindowUpDown",
                  {{L"Window", L"DIALOGSCHEDULECOMPLETE"}, {L"Monitor", on ? L"1" : L"0"}}),
              L"<GMAPI call=\"RegisterWindowUpDown\"><status code=\"1\">Success</status></GMAPI>");
}

std::wstring StatusReply(const std::wstring& call, wchar_t digit, const std::wstring& text) {
    return L"<GMAPI call=\"" + call + L"\"><status code=\"" + digit + L"\">" + text +
           L"</status></GMAPI>";
}

std::wstring Between(const std::wstring& text, const std::wstring& start, const std::wstring& end) {
    const size_t from = text.find(start);
    const size_t to = from == std::wstring::npos ? from : text.find(end, from + start.size());
    if (to == std::wstring::npos) {
        return L"<not there>";
    }
    return Unescaped(Unescaped(text.substr(from + start.size(), to - from - start.size())));
}

std::wstring Escaped(const std::wstring& text) {
    std::wstring result = ReplaceAll(text, L"&", L"&amp;");
    result = ReplaceAll(result, L"\"", L"&quot;");
    result = ReplaceAll(result, L"'", L"&apos;");
    result = ReplaceAll(result, L"<", L"&lt;");
    return ReplaceAll(result, L">", L"&gt;");
}

void PracticeGoldMineTest::SetUpTestSuite() {
    ASSERT_EQ(RunToEnd(ordinary.program, L"/RegServer"), 0u);
}

void PracticeGoldMineTest::TearDownTestSuite() {
    ASSERT_EQ(RunToEnd(ordinary.program, L"/UnregServer"), 0u);
}

void PracticeGoldMineTest::TearDown() {
    if (process_.started()) {
        Close();
    }
}

void PracticeGoldMineTest::Start(const std::wstring& arguments, const Flavour& flavour) {
    static int count = 0;
    const std::wstring name = L"standin tests ready " + std::to_wstring(GetCurrentProcessId()) +
                              L"-" + std::to_wstring(++count);
    const HANDLE ready = CreateEventW(nullptr, TRUE, FALSE, name.c_str());
    process_ = Process(StandinFile(flavour.program), L"/Fresh /Hidden /Data:\"" + data_.path() +
                                                         L"\\\" \"/ReadyEvent:" + name + L"\" " +
                                                         arguments);
    ASSERT_TRUE(process_.started());
    const HANDLE either[] = {ready, process_.handle()};
    EXPECT_EQ(WaitForMultipleObjects(2, either, FALSE, processMilliseconds), WAIT_OBJECT_0)
        << ReadFileText(DataFile(L"journal.txt"));
    CloseHandle(ready);
}

void PracticeGoldMineTest::Close() {
    PostMessageW(MainWindow(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(
        PumpUntil([&] { return WaitForSingleObject(process_.handle(), 0) == WAIT_OBJECT_0; }));
    EXPECT_EQ(process_.exitCode(), 0u);
    process_ = Process();
}

HWND PracticeGoldMineTest::MainWindow() const {
    return FindWindowOf(process_.id(), L"", true);
}

HWND PracticeGoldMineTest::WindowTitled(const std::wstring& start) const {
    return FindWindowOf(process_.id(), start, false);
}

std::vector<std::string> PracticeGoldMineTest::Journal() const {
    return Lines(ReadFileText(DataFile(L"journal.txt")));
}

std::string PracticeGoldMineTest::Sql(const std::wstring& statement) const {
    const std::wstring out = DataFile(L"sql.txt");
    EXPECT_EQ(RunToEnd(ordinary.program, L"/Data:\"" + data_.path() + L"\\\" \"/Sql:" + statement +
                                             L"\" /Out:\"" + out + L"\""),
              0u)
        << ReadFileText(out);
    return ReadFileText(out);
}

}  // namespace standin_tests
