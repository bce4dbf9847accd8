#include "check/platform/ConsoleOutput.h"

#include <gtest/gtest.h>

#include "platform/kit/Handles.h"
#include "support/windows/Files.h"
#include "support/windows/TemporaryFolder.h"

namespace corvane::test {
namespace {

using namespace test_support;

// Sends one of the process's outputs to a file for its life.
class Redirected {
public:
    Redirected(DWORD which, const std::wstring& file)
        : which_(which),
          former_(GetStdHandle(which)),
          file_(CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr)) {
        SetStdHandle(which_, file_.get());
    }
    ~Redirected() { SetStdHandle(which_, former_); }
    Redirected(const Redirected&) = delete;
    Redirected& operator=(const Redirected&) = delete;

private:
    DWORD which_;
    HANDLE former_;
    UniqueHandle file_;
};

TEST(ConsoleOutput, AFileGetsUtf8WithCrLf) {
    const TemporaryFolder folder;
    const std::wstring result = folder.file(L"result");
    const std::wstring errors = folder.file(L"errors");
    {
        const Redirected output(STD_OUTPUT_HANDLE, result);
        const Redirected error(STD_ERROR_HANDLE, errors);
        ConsoleOutput console;
        console.Write(L"\x4e2d \xe4\n");
        console.Line(L"next");
        console.WriteError(L"why\n");
    }
    EXPECT_EQ(ReadFileText(result), "\xe4\xb8\xad \xc3\xa4\r\nnext\r\n");
    EXPECT_EQ(ReadFileText(errors), "why\r\n");
}

TEST(ConsoleOutput, AnOutputThatIsGoneIsNoFailure) {
    const Redirected nowhere(STD_OUTPUT_HANDLE, L"Q:\\none");
    ConsoleOutput().Write(L"lost");
}

}  // namespace
}  // namespace corvane::test
