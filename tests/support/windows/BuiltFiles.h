#pragma once

#include <filesystem>
#include <string>

namespace test_support {

// Where the build put things, with their full paths.
std::wstring OwnProgram();                                    // this test program
std::wstring BuiltFile(const std::filesystem::path& name);    // of the build's folder
std::wstring StandinFile(const std::filesystem::path& name);  // of the practice programs

}  // namespace test_support
