#include "check/calls/LogReader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/FakeLogFiles.h"

namespace corvane {
namespace {

using Lines = std::vector<std::string>;

Lines Read(const std::string& bytes, std::size_t bufferSize = 16, std::size_t pieceSize = 7) {
    FakeLogSource source(bytes, pieceSize);
    LogReader reader(source, bufferSize);
    Lines lines;
    while (const auto line = reader.Next())
        lines.emplace_back(*line);
    return lines;
}

TEST(LogReader, ALineEndsInCrLfOrLfOrWithTheFile) {
    EXPECT_EQ(Read("one\r\ntwo\n\r\nthree"), (Lines{"one", "two", "", "three"}));
    EXPECT_EQ(Read("one\r\n"), Lines{"one"});
    EXPECT_EQ(Read("one\r"), Lines{"one"});
    EXPECT_EQ(Read(""), Lines{});
}

TEST(LogReader, LinesComeWholeWhereverThePiecesEnd) {
    const Lines lines = {"a", "fifteen letters", "", "0123456789", "last"};
    std::string bytes;
    for (const std::string& line : lines)
        bytes += line + "\n";
    for (std::size_t piece = 1; piece <= bytes.size(); ++piece)
        EXPECT_EQ(Read(bytes, 16, piece), lines) << piece;
}

TEST(LogReader, OfALineLongerThanTheBufferTheBeginningIsRead) {
    EXPECT_EQ(Read("one\n" + std::string(100, 'x') + "\ntwo\n"),
              (Lines{"one", std::string(16, 'x'), "two"}));
    EXPECT_EQ(Read(std::string(100, 'x')), Lines{std::string(16, 'x')});
}

}  // namespace
}  // namespace corvane
