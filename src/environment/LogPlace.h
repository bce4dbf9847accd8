#pragma once

#include <string>

namespace corvane {

class FileSystem;
class Shell;

// The log file of the program of this name. The folders around it are made; empty when that fails,
// or when the system does not know its folder of common application data.
[[nodiscard]] std::wstring LogPath(const Shell& shell, FileSystem& files,
                                   const std::wstring& executableName);

}  // namespace corvane
