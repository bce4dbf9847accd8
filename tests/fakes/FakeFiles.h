#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "fakes/Said.h"
#include "seams/FileSystem.h"
#include "seams/IniFiles.h"
#include "seams/Shell.h"
#include "util/RuntimeError.h"

namespace corvane::test {

class FakeFileSystem final : public FileSystem {
public:
    [[nodiscard]] bool FileExists(const std::wstring& path) const override {
        return files.contains(path);
    }
    [[nodiscard]] bool FolderExists(const std::wstring& path) const override {
        return folders.contains(path);
    }
    bool MakeFolder(const std::wstring& path) override {
        if (forbiddenFolders.contains(path))
            return false;
        folders.insert(path);
        return true;
    }
    bool CopyToNew(const std::wstring& from, const std::wstring& to) override {
        return !copyFails && (files.contains(to) || files.emplace(to, files.at(from)).second);
    }
    void AppendToFile(const std::wstring& path, const std::wstring& text) override {
        if (appendError)
            throw *appendError;
        files[path] += text;
        WriteDown("line", std::wstring_view(text).substr(text.rfind(L'\t') + 1));
    }
    [[nodiscard]] NewestFile GetNewestFileInFolder(const std::wstring& folder,
                                                   const std::wstring& pattern,
                                                   std::uint32_t attributeMask) const override {
        searches.push_back({folder, pattern, attributeMask});
        if (onSearch)
            onSearch();
        if (searchError)
            throw *searchError;
        return newest;
    }

    struct Search {
        std::wstring folder;
        std::wstring pattern;
        std::uint32_t attributeMask = 0;
        bool operator==(const Search&) const = default;
    };

    std::map<std::wstring, std::wstring> files;
    std::set<std::wstring> folders;
    std::set<std::wstring> forbiddenFolders;
    bool copyFails = false;
    NewestFile newest;
    std::optional<RuntimeError> appendError;
    std::optional<RuntimeError> searchError;
    std::function<void()> onSearch;  // what happens while a folder is searched
    mutable std::vector<Search> searches;
};

class FakeShell final : public Shell {
public:
    int OpenFile(const std::wstring& path) override {
        opened.push_back(path);
        return openResult;
    }
    [[nodiscard]] std::wstring FolderPath(SpecialFolder folder) const override {
        switch (folder) {
            case SpecialFolder::Desktop:
                return desktop;
            case SpecialFolder::CommonAppData:
                return commonAppData;
            default:
                return roamingAppData;
        }
    }

    std::wstring desktop = L"C:\\Users\\ann\\Desktop";
    std::wstring commonAppData = L"C:\\ProgramData";
    std::wstring roamingAppData = L"C:\\Users\\ann\\AppData\\Roaming";
    int openResult = 33;
    std::vector<std::wstring> opened;
};

class FakeIniFiles final : public IniFiles {
public:
    using Place = std::pair<std::wstring, std::wstring>;  // section and key

    bool WriteIniValue(const std::wstring& section, const std::wstring& key,
                       const std::wstring& value, const std::wstring& path) override {
        if (failingKeys.contains(key))
            return false;
        files[path][{section, key}] = value;
        writes.push_back(key + L"=" + value);
        return true;
    }
    [[nodiscard]] std::wstring ReadIniValue(const std::wstring& section, const std::wstring& key,
                                            const std::wstring& path) const override {
        const auto file = files.find(path);
        if (file == files.end())
            return {};
        const auto value = file->second.find({section, key});
        return value == file->second.end() ? std::wstring() : value->second;
    }

    std::map<std::wstring, std::map<Place, std::wstring>> files;
    std::set<std::wstring> failingKeys;
    std::vector<std::wstring> writes;
};

}  // namespace corvane::test
