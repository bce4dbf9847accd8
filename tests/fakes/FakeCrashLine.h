#pragma once

#include <string>

#include "seams/CrashLine.h"

namespace corvane::test {

class FakeCrashLine final : public CrashLine {
public:
    void Prepare(const std::wstring& logPath, const std::wstring& beforeTime,
                 const std::wstring& beforeMessage) override {
        path = logPath;
        line = beforeTime + L"<time>" + beforeMessage + L"<message>";
    }

    std::wstring path;
    std::wstring line;
};

}  // namespace corvane::test
