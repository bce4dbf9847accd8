#pragma once

#include <string>

namespace corvane::installer {

// The set-up's exit codes that a place on the disk leads to; docs/installation.md lists all.
enum class Verdict {
    Good = 0,
    Unsuitable = 4,  // GoldMine or 3CX could not start a program there
    NotTrusted = 5,  // somebody else made it, may change it, or it leads to another place
    Failed = 7,      // Windows refused
};

// The path as it stands on the disk: whole, with the letters of what is there already.
[[nodiscard]] std::wstring PathOnDisk(const std::wstring& path);

// Whether the program may stand in a folder of this path, whatever is there now.
[[nodiscard]] Verdict CheckPath(const std::wstring& path);

// Makes the folder, with the ones above it that are missing. One that is there is kept only when
// the set-up made it and nobody else may write to it; an empty one is made anew.
[[nodiscard]] Verdict MakeProgramFolder(const std::wstring& path, bool madeBySetup);

// Makes the folders of the log and the log itself below a folder that is there. What somebody else
// made there is moved aside; its new path is the last one then.
[[nodiscard]] Verdict MakeLog(const std::wstring& commonFolder, std::wstring& movedTo);

}  // namespace corvane::installer
