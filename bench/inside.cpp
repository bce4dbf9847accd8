// Times what the program does within a run, beside the least that does the same:
//   inside newest <folder>   the newest recording, beside one pass over the folder
//   inside once <folder>     the newest recording, once and with nothing beside it
//   inside log <lines>       status lines in the log, beside opening, appending, closing for each
//   inside status <lines>    the same lines without a log
//   inside window            the window, beside one with as many plain controls
// Prints the milliseconds of the program's and of the other, or 0: medians of several times.
#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "app/Status.h"
#include "fakes/FakeCrashLine.h"
#include "platform/cRegistry.h"
#include "platform/kit/Handles.h"
#include "platform/modFile.h"
#include "platform/RunningProgram.h"
#include "platform/SystemClock.h"
#include "platform/WindowsShell.h"
#include "util/ProgramInfo.h"
#include "windows/ShownWindows.h"

namespace {

using namespace corvane;
using test::Milliseconds;

constexpr int rounds = 15;

struct Medians {
    double program;
    double other;
};

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// Both take turns; the first time does not count.
Medians SideBySide(const std::function<double()>& program, const std::function<double()>& other) {
    std::vector<double> ours;
    std::vector<double> others;
    for (int round = 0; round <= rounds; ++round) {
        const double our = program();
        const double their = other();
        if (round > 0) {
            ours.push_back(our);
            others.push_back(their);
        }
    }
    return {Median(ours), Median(others)};
}

// What must be read to know the newest: each entry's time.
FILETIME BarePass(const std::wstring& pattern) {
    FILETIME newest{};
    WIN32_FIND_DATAW entry;
    const UniqueFind search(FindFirstFileW(pattern.c_str(), &entry));
    for (bool more(search); more; more = FindNextFileW(search.get(), &entry)) {
        if (CompareFileTime(&entry.ftLastWriteTime, &newest) > 0)
            newest = entry.ftLastWriteTime;
    }
    return newest;
}

Medians Newest(const std::wstring& folder) {
    const modFile files;
    return SideBySide(
        [&] {
            return Milliseconds(
                [&] { static_cast<void>(files.GetNewestFileInFolder(folder, L"*.*", 0)); });
        },
        [&] { return Milliseconds([&] { static_cast<void>(BarePass(folder + L"\\*.*")); }); });
}

Medians NewestOnce(const std::wstring& folder) {
    const modFile files;
    return {
        Milliseconds([&] { static_cast<void>(files.GetNewestFileInFolder(folder, L"*.*", 0)); }),
        0};
}

class Lines {
public:
    Lines(int count, bool log) : count_(count), log_(log) {
        status_.SetUpLog();
        form_.chkWriteLog.setChecked(log);
    }

    [[nodiscard]] Medians Time() {
        return SideBySide([this] { return Milliseconds([this] { Write(); }); },
                          [this] { return log_ ? Milliseconds([this] { AppendBare(); }) : 0; });
    }

private:
    void Write() {
        form_.txtStatus.setText(L"");
        for (int line = 0; line < count_; ++line)
            status_.WriteStatus(text);
    }
    void AppendBare() const {
        static constexpr char line[] =
            "0\t20261122.120000.000\t[]:\tFound (555)123-4567 in a primary contact record.\r\n";
        const std::wstring path = form_.txtLogPath.text() + L".bare";
        for (int appended = 0; appended < count_; ++appended) {
            const UniqueHandle file(CreateFileW(path.c_str(), FILE_APPEND_DATA,
                                                FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                                OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
            DWORD written = 0;
            WriteFile(file.get(), line, sizeof(line) - 1, &written, nullptr);
        }
    }

    static constexpr const wchar_t* text = L"Found (555)123-4567 in a primary contact record.";

    int count_;
    bool log_;
    Form form_{nullptr};
    ProgramInfo info_ = RunningProgramInfo(1, 0, 0);
    cRegistry registry_;
    modFile files_;
    WindowsShell shell_;
    SystemClock clock_{nullptr};
    test::FakeCrashLine crashLine_;
    Status status_{form_, info_, registry_, files_, shell_, clock_, crashLine_};
};

Medians Window() {
    return SideBySide(
        [] {
            std::unique_ptr<test::ShownWindow> shown;
            return Milliseconds([&] { shown = std::make_unique<test::ShownWindow>(); });
        },
        [] {
            std::unique_ptr<test::BareWindow> bare;
            return Milliseconds([&] { bare = std::make_unique<test::BareWindow>(); });
        });
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    const std::wstring what = count > 1 ? arguments[1] : L"";
    const std::wstring of = count > 2 ? arguments[2] : L"";
    Medians medians{};
    if (what == L"newest" && !of.empty())
        medians = Newest(of);
    else if (what == L"once" && !of.empty())
        medians = NewestOnce(of);
    else if (what == L"log" && !of.empty())
        medians = Lines(std::stoi(of), true).Time();
    else if (what == L"status" && !of.empty())
        medians = Lines(std::stoi(of), false).Time();
    else if (what == L"window")
        medians = Window();
    else
        return 2;
    std::printf("%.3f\t%.3f\n", medians.program, medians.other);
    return 0;
}
