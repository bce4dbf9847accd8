#include "app/Status.h"

#include <exception>
#include <utility>

#include "environment/LogPlace.h"
#include "seams/Clock.h"
#include "seams/Conversions.h"
#include "seams/CrashLine.h"
#include "seams/FileSystem.h"
#include "seams/Shell.h"
#include "settings/cSimuIniFile.h"
#include "settings/Settings.h"
#include "ui/form/Form.h"
#include "util/ProgramInfo.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

constexpr const wchar_t* runNumberValue = L"PreviousStatus";
constexpr const wchar_t* lastVersionValue = L"LastVersionRun";
constexpr std::int32_t greatestRunNumber = 1000000;

// yyyymmdd.HhNnSs and milliseconds.
std::wstring TimeStamp(const LocalTimeMs& time) {
    return Join(ZeroPadded(time.year, 4), ZeroPadded(time.month, 2), ZeroPadded(time.day, 2), L".",
                ZeroPadded(time.hour, 2), ZeroPadded(time.minute, 2), ZeroPadded(time.second, 2),
                L".", ZeroPadded(time.millisecond, 3));
}

}  // namespace

Status::Status(Form& form, const ProgramInfo& program, Registry& registry, FileSystem& files,
               const Shell& shell, Clock& clock, CrashLine& crashLine)
    : form_(form),
      program_(program),
      registry_(registry),
      files_(files),
      shell_(shell),
      clock_(clock),
      crashLine_(crashLine) {}

void Status::SetUpLog() {
    NamedProcedure(L"SetUpLog", [this] { PrepareLog(); });
}

void Status::PrepareLog() {
    const std::wstring path = LogPath(shell_, files_, program_.executableName);
    form_.txtLogPath.setText(path);
    form_.txtLogPath.setTooltip(path);
    form_.chkWriteLog.setTooltip(Join(L"Write Status messages to log file ", Quoted(path)));
    PrepareCrashLine();
    LoadWriteLog();
    TakeRunNumber();
    PrepareCrashLine();
    if (form_.chkWriteLog.checked())
        WriteLogLine(Join(std::wstring(68, L'-'), L" ", GeneralDateText(clock_.Now())));
}

void Status::LoadWriteLog() {
    cSimuIniFile store = OwnSettingsStore(registry_);
    LoadOption(form_.chkWriteLog, store);
}

void Status::TakeRunNumber() {
    cSimuIniFile store = OwnSettingsStore(registry_);
    const std::wstring version = program_.VersionText();
    if (TrimBlanks(store.ReadProfileString(lastVersionValue, L"")) != version) {
        ResetRunNumber();
        store.WriteProfileString(lastVersionValue, version);
        return;
    }
    try {
        runNumber_ = LongFromText(TrimBlanks(store.ReadProfileString(runNumberValue, L"0")));
    } catch (const RuntimeError& error) {
        if (error.number == registryErrorNumber)
            throw;
        runNumber_ = 0;  // no number is stored
    }
    if (runNumber_ > greatestRunNumber)
        runNumber_ = 0;
    store.WriteProfileString(runNumberValue, std::to_wstring(runNumber_ + 1));
}

void Status::ResetRunNumber() {
    OwnSettingsStore(registry_).WriteProfileString(runNumberValue, L"0");
}

void Status::setCallIdentifier(std::wstring_view identifier) {
    callIdentifier_ = identifier;
    PrepareCrashLine();
}

std::wstring Status::BeforeTime() const {
    return Join(std::to_wstring(runNumber_), L"\t");
}

std::wstring Status::BeforeMessage() const {
    return Join(L"\t[", callIdentifier_, L"]:\t");
}

void Status::PrepareCrashLine() {
    crashLine_.Prepare(form_.txtLogPath.text(), BeforeTime(), BeforeMessage());
}

void Status::WriteStatus(std::wstring_view message, LogMode mode) {
    const std::wstring line = ReplaceAll(message, std::wstring_view(L"\0", 1), L" ");
    Show(line);
    if (form_.chkWriteLog.checked() || mode == LogMode::Forced)
        WriteLogLine(line);
}

void Status::Show(std::wstring_view message) {
    if (form_.txtStatus.text().empty())
        form_.txtStatus.setText(message);
    else
        form_.txtStatus.Append(Join(lineBreak, message));
}

void Status::WriteLogLine(std::wstring_view message) noexcept {
    try {
        AppendToLog(message);
    } catch (const std::exception&) {
        // Nor does want of memory for a line stop the program.
    }
}

void Status::AppendToLog(std::wstring_view message) {
    try {
        files_.AppendToFile(form_.txtLogPath.text(),
                            Join(BeforeTime(), TimeStamp(clock_.GetLocalTimeMs()), BeforeMessage(),
                                 message, lineBreak));
    } catch (const RuntimeError& error) {
        // Logging never stops the program; who looks at the window is told once.
        if (form_.visible() && !std::exchange(failureShown_, true)) {
            Show(Join(L"Could not write to log file ", Quoted(form_.txtLogPath.text()), L": ",
                      error.description));
        }
    }
}

}  // namespace corvane
