// Crashes as it is told, with the line of that prepared for run 17 and call 00042:
// CrashingProgram <way> <log>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <thread>

#include "platform/CrashHandler.h"

namespace {

using corvane::CrashHandler;

std::filesystem::path logPath;

// Known to nobody but the run, so that no compiler sees what will happen.
volatile int* volatile nothing = nullptr;

void WriteToNowhere() {
    *nothing = 1;
}

void Throw() {
    throw std::runtime_error("nobody catches this");
}

void ThrowWhereNobodyMay() noexcept {
    Throw();
}

LONG WINAPI FormerFilter(EXCEPTION_POINTERS*) {
    std::ofstream(logPath.concat(L".former")) << "asked";
    return EXCEPTION_EXECUTE_HANDLER;
}

const std::map<std::wstring, std::function<void()>> ways = {
    {L"no address", [] { WriteToNowhere(); }},
    {L"terminate", [] { ThrowWhereNobodyMay(); }},
    {L"uncaught", &Throw},
    {L"thread", [] { std::thread(&WriteToNowhere).join(); }},
    {L"own code", [] { RaiseException(0xE0000042, 0, 0, nullptr); }},
    {L"caught",
     [] {
         try {
             Throw();
         } catch (const std::runtime_error&) {
             ExitProcess(0);
         }
     }},
};

void Crash(const std::wstring& way, bool prepared) {
    CrashHandler handler;
    if (prepared)
        handler.Prepare(logPath, L"17\t", L"\t[00042]:\t");
    ways.at(way)();
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 3)
        return 1;
    const std::wstring way = arguments[1];
    logPath = arguments[2];
    if (way == L"handler gone") {
        { CrashHandler().Prepare(logPath, L"17\t", L"\t[00042]:\t"); }
        WriteToNowhere();
    }
    if (way == L"former filter") {
        SetUnhandledExceptionFilter(&FormerFilter);
        Crash(L"own code", true);
    }
    Crash(way == L"too early" ? L"own code" : way, way != L"too early");
    return 2;
}
