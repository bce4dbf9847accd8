#include "check/platform/WindowsLogFiles.h"

#include <gtest/gtest.h>

#include <string>

#include "check/calls/LogReader.h"
#include "platform/kit/AnsiText.h"
#include "platform/kit/Handles.h"
#include "platform/modFile.h"
#include "support/windows/Files.h"
#include "support/windows/TemporaryFolder.h"
#include "util/RuntimeError.h"

namespace corvane {
namespace {

using test_support::HoldFileAlone;
using test_support::ReadFileText;
using test_support::TemporaryFolder;

class WindowsLogFilesTest : public testing::Test {
protected:
    std::string ReadAll(const std::wstring& path) { return ReadAll(*logs.Open(path)); }
    std::string ReadAll(LogSource& source, std::size_t most = 1000) {
        std::string all;
        char buffer[5];
        while (const std::size_t count = all.size() < most ? source.Read(buffer) : 0)
            all.append(buffer, count);
        return all;
    }
    std::wstring WhyNotOpened(const std::wstring& path) {
        try {
            static_cast<void>(logs.Open(path));
        } catch (const RuntimeError& error) {
            return error.description;
        }
        return L"opened";
    }

    TemporaryFolder folder;
    WindowsLogFiles logs;
};

TEST_F(WindowsLogFilesTest, ReadsFromTheFirstByteToTheLast) {
    std::string bytes = "17\tx\r\n";
    bytes += std::string("\0\x1a\xff", 3);
    EXPECT_EQ(ReadAll(folder.Write(L"a.log", bytes)), bytes);
    EXPECT_EQ(ReadAll(folder.Write(L"empty.log", "")), "");
}

TEST_F(WindowsLogFilesTest, RunsGoOnWritingWhatIsRead) {
    const std::wstring path = folder.file(L"a.log");
    modFile program;
    program.AppendToFile(path, L"one\r\n");
    const auto source = logs.Open(path);
    LogReader reader(*source);
    EXPECT_EQ(reader.Next(), "one");
    program.AppendToFile(path, L"two\r\n");
    EXPECT_EQ(reader.Next(), "two");
    EXPECT_TRUE(DeleteFileW(path.c_str())) << "nor is anybody kept from deleting it";
}

TEST_F(WindowsLogFilesTest, TheEndOfALogIsReadWhileItIsWritten) {
    const std::wstring path = folder.file(L"a.log");
    modFile program;
    program.AppendToFile(path, L"one\r\ntwo\r\n");
    const LogEnd all = logs.OpenEnd(path, 10);
    EXPECT_TRUE(all.whole);
    EXPECT_EQ(ReadAll(*all.source), "one\r\ntwo\r\n");
    const LogEnd end = logs.OpenEnd(path, 7);
    EXPECT_FALSE(end.whole);
    program.AppendToFile(path, L"three\r\n");
    EXPECT_EQ(ReadAll(*end.source), "\r\ntwo\r\nthree\r\n");
    EXPECT_THROW(static_cast<void>(logs.OpenEnd(folder.file(L"none.log"), 10)), RuntimeError);
}

// As long as a log of years; its bytes are on no disk.
TEST_F(WindowsLogFilesTest, TheEndOfAVeryLongLogIsReadAtOnce) {
    const std::wstring path = folder.Write(L"long.log", "");
    {
        const UniqueHandle file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                            FILE_ATTRIBUTE_NORMAL, nullptr));
        LARGE_INTEGER size{};
        size.QuadPart = 5LL << 30;
        ASSERT_TRUE(SetFilePointerEx(file.get(), size, nullptr, FILE_BEGIN));
        DWORD written = 0;
        ASSERT_TRUE(WriteFile(file.get(), "\r\nlast", 6, &written, nullptr));
    }
    const LogEnd end = logs.OpenEnd(path, 100);
    EXPECT_EQ(ReadAll(*end.source), std::string(94, '\0') + "\r\nlast");
}

TEST_F(WindowsLogFilesTest, SaysWhyALogCannotBeRead) {
    const std::wstring missing = folder.file(L"none.log");
    EXPECT_TRUE(WhyNotOpened(missing).starts_with(L"Could not open " + missing + L": "));
    const std::wstring held = folder.Write(L"held.log", "x");
    const auto alone = HoldFileAlone(held);
    EXPECT_TRUE(WhyNotOpened(held).starts_with(L"Could not open " + held + L": "));
    EXPECT_NE(WhyNotOpened(missing), WhyNotOpened(held));
    EXPECT_NE(WhyNotOpened(folder.path()), L"opened");
}

TEST_F(WindowsLogFilesTest, TextsComeBackAsTheProgramWroteThem) {
    const std::wstring text = L"Ann (555)123-4567";
    EXPECT_EQ(logs.TextFromLog(AnsiFromText(text)), text);
    const std::wstring umlauts = TextFromAnsi(AnsiFromText(L"Gr\xfc\xdf\x65"));
    EXPECT_EQ(logs.TextFromLog(AnsiFromText(umlauts)), umlauts);
    EXPECT_EQ(logs.TextFromLog(""), L"");
}

TEST_F(WindowsLogFilesTest, APageReplacesTheOneBefore) {
    const std::wstring path = folder.Write(L"page.html", "what stood there was longer");
    logs.Write(path, "<p>new</p>");
    EXPECT_EQ(ReadFileText(path), "<p>new</p>");
    EXPECT_THROW(logs.Write(folder.path() + L"\\none\\page.html", "x"), RuntimeError);
}

}  // namespace
}  // namespace corvane
