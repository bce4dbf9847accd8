#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace practice {

// The whole file as bytes, or nothing when it cannot be read.
std::optional<std::string> ReadWholeFile(const std::wstring& file);
// Writes the file anew; false when that fails.
bool WriteWholeFile(const std::wstring& file, std::string_view content);
bool FileExists(const std::wstring& file);

}  // namespace practice
