#include "platform/CrashHandler.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string_view>

#include "platform/kit/AnsiText.h"
#include "platform/kit/AppendBytes.h"

#include <psapi.h>

namespace corvane {

namespace {

// What a line may take; the rest of a longer one is cut off.
class Line {
public:
    void Add(std::string_view text) { length_ += text.copy(text_.data() + length_, room()); }
    // Base 10 or 16, the latter in capital letters; at least so many digits.
    void AddNumber(std::uint64_t number, int base, std::size_t digits) {
        std::array<char, std::numeric_limits<std::uint64_t>::digits> text{};
        const char* end = std::to_chars(text.data(), text.data() + text.size(), number, base).ptr;
        for (char* each = text.data(); each != end; ++each)
            *each = *each >= 'a' ? static_cast<char>(*each - 'a' + 'A') : *each;
        const std::string_view written(text.data(), static_cast<std::size_t>(end - text.data()));
        for (std::size_t length = written.size(); length < digits; ++length)
            Add("0");
        Add(written);
    }
    void Clear() { length_ = 0; }
    [[nodiscard]] std::string_view text() const { return {text_.data(), length_}; }

private:
    [[nodiscard]] std::size_t room() const { return text_.size() - length_; }

    std::array<char, 4096> text_{};
    std::size_t length_ = 0;
};

// Windows calls the filter without a word about whose it is, and what a crash has left of the
// heap is anybody's guess: so this stands by itself.
struct Prepared {
    LPTOP_LEVEL_EXCEPTION_FILTER formerFilter = nullptr;
    std::array<wchar_t, 1024> logPath{};
    Line beforeTime, beforeMessage;
    Line line;  // the stack may be used up
    LONG written = FALSE;
};
constinit Prepared prepared;

void AddTime(Line& line) {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    line.AddNumber(now.wYear, 10, 4);
    line.AddNumber(now.wMonth, 10, 2);
    line.AddNumber(now.wDay, 10, 2);
    line.Add(".");
    line.AddNumber(now.wHour, 10, 2);
    line.AddNumber(now.wMinute, 10, 2);
    line.AddNumber(now.wSecond, 10, 2);
    line.Add(".");
    line.AddNumber(now.wMilliseconds, 10, 3);
}

// The module by the file that is mapped there: to be asked for it, the loader may have to wait for
// the very thread that has crashed.
void AddPlace(Line& line, const void* address) {
    MEMORY_BASIC_INFORMATION memory{};
    std::array<wchar_t, MAX_PATH> file{};
    VirtualQuery(address, &memory, sizeof memory);
    const DWORD length = GetMappedFileNameW(GetCurrentProcess(), memory.AllocationBase, file.data(),
                                            static_cast<DWORD>(file.size()));
    const auto number = reinterpret_cast<std::uintptr_t>(address);
    if (length == 0) {
        line.Add(" at address 0x");
        line.AddNumber(number, 16, 8);
        return;
    }
    const std::wstring_view path(file.data(), length);
    const std::wstring_view name = path.substr(path.find_last_of(L'\\') + 1);
    std::array<char, MAX_PATH> ansi{};
    const int size =
        WideCharToMultiByte(CP_ACP, 0, name.data(), static_cast<int>(name.size()), ansi.data(),
                            static_cast<int>(ansi.size()), nullptr, nullptr);
    line.Add(" in ");
    line.Add({ansi.data(), static_cast<std::size_t>(size)});
    line.Add(" at offset 0x");
    line.AddNumber(number - reinterpret_cast<std::uintptr_t>(memory.AllocationBase), 16, 8);
}

// Nothing is written before the log's path is known, and nothing of a crash in the course of this.
void WriteCrash(DWORD code, const void* address) {
    if (InterlockedExchange(&prepared.written, TRUE) || !prepared.logPath[0])
        return;
    Line& line = prepared.line;
    line.Add(prepared.beforeTime.text());
    AddTime(line);
    line.Add(prepared.beforeMessage.text());
    line.Add("Program crashed: exception 0x");
    line.AddNumber(code, 16, 8);
    AddPlace(line, address);
    line.Add(".\r\n");
    UniqueHandle mutex;
    static_cast<void>(AppendBytes(prepared.logPath.data(), line.text(), CheckPlace::Yes, mutex));
}

LONG WINAPI OnUnhandledException(EXCEPTION_POINTERS* exception) {
    // The former filter is the C++ library's: what it wants continued is no crash.
    const LONG answer =
        prepared.formerFilter ? prepared.formerFilter(exception) : LONG{EXCEPTION_CONTINUE_SEARCH};
    if (answer != EXCEPTION_CONTINUE_EXECUTION) {
        WriteCrash(exception->ExceptionRecord->ExceptionCode,
                   exception->ExceptionRecord->ExceptionAddress);
    }
    return answer;
}

// An error that nobody may throw there: Windows hears of it as of any other crash, where the C++
// library would show a box of its own.
[[noreturn]] void OnTerminate() {
    constexpr auto fatalAppExit = static_cast<DWORD>(STATUS_FATAL_APP_EXIT);
    WriteCrash(fatalAppExit, __builtin_return_address(0));
    RaiseException(fatalAppExit, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    std::abort();
}

}  // namespace

CrashHandler::CrashHandler() noexcept : formerTerminate_(std::set_terminate(&OnTerminate)) {
    prepared.formerFilter = SetUnhandledExceptionFilter(&OnUnhandledException);
    // Left for the line when the stack is used up.
    ULONG stackBytes = 64 * 1024;
    SetThreadStackGuarantee(&stackBytes);
}

CrashHandler::~CrashHandler() {
    SetUnhandledExceptionFilter(prepared.formerFilter);
    std::set_terminate(formerTerminate_);
    prepared.logPath[0] = L'\0';
}

void CrashHandler::Prepare(const std::wstring& logPath, const std::wstring& beforeTime,
                           const std::wstring& beforeMessage) {
    prepared.logPath[0] = L'\0';
    prepared.beforeTime.Clear();
    prepared.beforeTime.Add(AnsiFromText(beforeTime));
    prepared.beforeMessage.Clear();
    // An identifier of any length leaves room for the rest of the line.
    prepared.beforeMessage.Add(AnsiFromText(beforeMessage.substr(0, 1000)));
    if (logPath.size() < prepared.logPath.size())
        prepared.logPath[logPath.copy(prepared.logPath.data(), logPath.size())] = L'\0';
}

}  // namespace corvane
