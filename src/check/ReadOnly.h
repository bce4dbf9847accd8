#pragma once

#include <optional>
#include <string>
#include <vector>

#include "seams/CrashLine.h"
#include "seams/FileSystem.h"
#include "seams/IniFiles.h"
#include "seams/Processes.h"
#include "seams/Shell.h"

// The program's own logic runs on these: it reads through them, and what it would change stays as
// it is.
namespace corvane {

class ReadOnlyFiles final : public FileSystem {
public:
    explicit ReadOnlyFiles(const FileSystem& files) : files_(files) {}

    [[nodiscard]] bool FileExists(const std::wstring& path) const override {
        return files_.FileExists(path);
    }
    [[nodiscard]] bool FolderExists(const std::wstring& path) const override {
        return files_.FolderExists(path);
    }
    [[nodiscard]] NewestFile GetNewestFileInFolder(const std::wstring& folder,
                                                   const std::wstring& pattern,
                                                   std::uint32_t attributeMask) const override {
        return files_.GetNewestFileInFolder(folder, pattern, attributeMask);
    }
    // As if it were there: what comes behind is asked for, too.
    bool MakeFolder(const std::wstring&) override { return true; }
    bool CopyToNew(const std::wstring&, const std::wstring&) override { return false; }
    void AppendToFile(const std::wstring&, const std::wstring&) override {}

private:
    const FileSystem& files_;
};

class NoCrashLine final : public CrashLine {
public:
    void Prepare(const std::wstring&, const std::wstring&, const std::wstring&) override {}
};

class ReadOnlyIniFiles final : public IniFiles {
public:
    explicit ReadOnlyIniFiles(const IniFiles& files) : files_(files) {}

    [[nodiscard]] std::wstring ReadIniValue(const std::wstring& section, const std::wstring& key,
                                            const std::wstring& path) const override {
        return files_.ReadIniValue(section, key, path);
    }
    bool WriteIniValue(const std::wstring&, const std::wstring&, const std::wstring&,
                       const std::wstring&) override {
        return false;
    }

private:
    const IniFiles& files_;
};

// Notes what would be started.
class ReadOnlyProcesses final : public Processes {
public:
    explicit ReadOnlyProcesses(Processes& processes) : processes_(processes) {}

    [[nodiscard]] ProcessId OwnProcessId() const override { return processes_.OwnProcessId(); }
    [[nodiscard]] SystemResult<std::uint32_t> SessionOf(ProcessId id) const override {
        return processes_.SessionOf(id);
    }
    [[nodiscard]] std::vector<ProcessEntry> Snapshot() const override {
        return processes_.Snapshot();
    }
    [[nodiscard]] SystemResult<ProcessHandle> OpenForQuery(ProcessId id) override {
        return processes_.OpenForQuery(id);
    }
    [[nodiscard]] std::optional<std::wstring> ImagePath(ProcessHandle handle) const override {
        return processes_.ImagePath(handle);
    }
    [[nodiscard]] bool StartHidden(const std::wstring&, const std::wstring& commandLine) override {
        notStarted = commandLine;
        return true;
    }

    std::wstring notStarted;  // the last command line

private:
    Processes& processes_;
};

class ReadOnlyShell final : public Shell {
public:
    explicit ReadOnlyShell(const Shell& shell) : shell_(shell) {}

    [[nodiscard]] std::wstring FolderPath(SpecialFolder folder) const override {
        return shell_.FolderPath(folder);
    }
    int OpenFile(const std::wstring&) override { return 0; }

private:
    const Shell& shell_;
};

}  // namespace corvane
