#pragma once

#include <string>

#include "check/Output.h"

namespace corvane::test {

// Keeps what was written.
class FakeOutput final : public Output {
public:
    void Write(std::wstring_view text) override { written += text; }
    void WriteError(std::wstring_view text) override { errors += text; }

    std::wstring written;
    std::wstring errors;
};

}  // namespace corvane::test
