#pragma once

#include <string_view>

#include "check/Output.h"

namespace corvane {

// The process's own output: UTF-16 to a console, UTF-8 with CR LF to a file or a pipe.
class ConsoleOutput final : public Output {
public:
    void Write(std::wstring_view text) override;
    void WriteError(std::wstring_view text) override;
};

}  // namespace corvane
