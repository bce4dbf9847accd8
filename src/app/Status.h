#pragma once

#include <cstdint>
#include <string>

#include "seams/StatusWriter.h"

namespace corvane {

class Clock;
class CrashLine;
class FileSystem;
class Form;
class Registry;
class Shell;
struct ProgramInfo;

// The status box and the log file. Instances run side by side, so each log line carries the run
// number and the call identifier.
class Status final : public StatusWriter {
public:
    Status(Form& form, const ProgramInfo& program, Registry& registry, FileSystem& files,
           const Shell& shell, Clock& clock, CrashLine& crashLine);

    // Before the other settings are loaded: log path, chkWriteLog, run number, separator line.
    // Raises when chkWriteLog's stored text does not convert or the registry refuses.
    void SetUpLog();

    using StatusWriter::WriteStatus;
    void WriteStatus(std::wstring_view message, LogMode mode) override;

    // Stores "0" as the run number.
    void ResetRunNumber();

    // What stands between brackets on every log line: empty until the /I switch was read.
    void setCallIdentifier(std::wstring_view identifier);

private:
    void PrepareLog();
    void LoadWriteLog();
    void TakeRunNumber();
    void Show(std::wstring_view message);
    [[nodiscard]] std::wstring BeforeTime() const;
    [[nodiscard]] std::wstring BeforeMessage() const;
    void PrepareCrashLine();
    // A line that cannot be written is lost; the run goes on.
    void WriteLogLine(std::wstring_view message) noexcept;
    void AppendToLog(std::wstring_view message);

    Form& form_;
    const ProgramInfo& program_;
    Registry& registry_;
    FileSystem& files_;
    const Shell& shell_;
    Clock& clock_;
    CrashLine& crashLine_;
    std::int32_t runNumber_ = 0;
    std::wstring callIdentifier_;
    bool failureShown_ = false;  // that the log cannot be written
};

}  // namespace corvane
