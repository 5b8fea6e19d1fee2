#include "messages/text_lines.h"
#include "support/broken_stream.h"
#include "support/line_reader_model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using orvix::gsl::TextLines;
using orvix::test::LineReaderModel;

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

Stream stream_of(const std::string& bytes) {
    Stream stream(std::tmpfile(), std::fclose);
    std::fwrite(bytes.data(), 1, bytes.size(), stream.get());
    std::rewind(stream.get());
    return stream;
}

std::vector<std::string> lines_of(const std::string& bytes) {
    const Stream stream = stream_of(bytes);
    TextLines lines(stream.get());
    std::vector<std::string> all;
    for (std::span<char> line; lines.next(&line);) all.emplace_back(line.begin(), line.end());
    return all;
}

std::vector<std::string> model_lines_of(const std::string& bytes) {
    LineReaderModel model(bytes);
    std::vector<std::string> all;
    while (auto line = model.limited_line(1024)) {
        std::ranges::replace(*line, '\t', ' ');
        all.push_back(*line);
    }
    return all;
}

TEST(TextLines, GiveTheLinesOfTheLineReaderForRandomBytes) {
    std::mt19937 random(3);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE("seed 3, round " + std::to_string(round));
        const char odd[] = {'\n', '\n', '\r', '\t', '\x1a', '\0'};
        const bool plain = random() % 3 == 0;
        std::string bytes;
        for (auto parts = random() % 60; parts > 0; --parts) {
            bytes.append(random() % 4 == 0 ? random() % 2500 : random() % 40, 'x');
            bytes += plain ? '\n' : odd[random() % sizeof odd];
        }
        // A line rarely begins with the end-of-file mark, or most rounds would end early.
        for (std::size_t at; (at = bytes.find("\n\x1a")) != std::string::npos && random() % 8 != 0;)
            bytes[at + 1] = 'y';
        ASSERT_EQ(lines_of(bytes), model_lines_of(bytes));
    }
}

TEST(TextLines, GiveTheSameWhereverABlockEnds) {
    for (const std::size_t before : {16384U - 1024, 16384U - 1023, 16384U - 2, 16384U - 1, 16384U, 16384U + 1}) {
        SCOPED_TRACE(before);
        std::string bytes;
        while (bytes.size() + 64 < before) bytes += std::string(63, 'x') + '\n';
        bytes += std::string(before - bytes.size() - 1, 'y') + '\n';
        for (const char* end : {"", "\r\n", "z", "\tz\n", "\x1a"}) {
            const std::string text = bytes + std::string(1500, 'z') + "\nlast" + end;
            ASSERT_EQ(lines_of(text), model_lines_of(text));
        }
    }
}

TEST(TextLines, DropTheLineThatAReadErrorBreaksOff) {
    const orvix::test::BrokenStream stream("one\ntwo\nthr");
    TextLines lines(stream.get());
    std::span<char> line;
    ASSERT_TRUE(lines.next(&line));
    ASSERT_TRUE(lines.next(&line));
    EXPECT_EQ(std::string(line.begin(), line.end()), "two");
    EXPECT_FALSE(lines.next(&line));
}

}  // namespace
