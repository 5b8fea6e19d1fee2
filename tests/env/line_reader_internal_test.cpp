#include "env/line_reader.h"

#include "env/fgets_model.h"
#include "support/random_text.h"
#include "support/temporary_directory.h"

#include <orvix/core/file.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using orvix::gsl::env::LineReader;
using orvix::test::lines_by_fgets;
using orvix::test::RandomText;
using orvix::test::TemporaryDirectory;
using orvix::test::write_file;

namespace {

using Lines = std::vector<std::string>;

Lines lines_of(std::string_view bytes, std::size_t first_bytes = 2048, std::size_t growth_bytes = 2048) {
    const TemporaryDirectory directory;
    write_file(directory.path() / "lines", bytes);
    orvix::core::File file = orvix::core::File::open_to_read(directory.name("lines"));
    Lines lines;
    LineReader reader(file, first_bytes, growth_bytes);
    std::string_view line;
    while (reader.next(&line)) lines.emplace_back(line);
    EXPECT_FALSE(reader.failed());
    EXPECT_EQ(reader.bytes_read(), bytes.size());
    EXPECT_FALSE(reader.next(&line));
    return lines;
}

std::string with_nul(const char* before, const char* after) { return before + std::string(1, '\0') + after; }

// Lines of all lengths up to `longest`, with a NUL here and there.
std::string random_file(RandomText& random, std::size_t bytes, std::size_t longest) {
    std::string file;
    while (file.size() < bytes) {
        file += std::string(random.number(longest), 'x');
        if (random.number(7) == 0) file += '\0';
        if (random.number(5) == 0) file += std::string(random.number(longest), 'y');
        file += '\n';
    }
    if (random.coin()) file.resize(bytes);
    return file;
}

}  // namespace

TEST(LineReaderLines, EmptyFileHasNone) { EXPECT_EQ(lines_of(""), Lines{}); }

TEST(LineReaderLines, KeepTheirNewline) { EXPECT_EQ(lines_of("a\n\nbc\n"), (Lines{"a\n", "\n", "bc\n"})); }

TEST(LineReaderLines, LastLineNeedsNoNewline) { EXPECT_EQ(lines_of("a\nb"), (Lines{"a\n", "b"})); }

TEST(LineReaderLines, LongLineComesWhole) {
    const std::string line(10'000, 'x');
    EXPECT_EQ(lines_of(line + "\nnext\n"), (Lines{line + "\n", "next\n"}));
}

TEST(LineReaderLines, WithoutGrowthALongLineComesInPieces) {
    EXPECT_EQ(lines_of("abcdefgh\nij\n", 4, 0), (Lines{"abc", "def", "gh\n", "ij\n"}));
}

TEST(LineReaderLines, TextEndsAtItsFirstNul) { EXPECT_EQ(lines_of(with_nul("ab", "cd\nef\n")), (Lines{"ab", "ef\n"})); }

TEST(LineReaderLines, WhatDidNotFitBehindANulIsTheNextLine) {
    EXPECT_EQ(lines_of(with_nul("ab", "cdefghi\nj\n"), 8, 8), (Lines{"ab", "ghi\n", "j\n"}));
}

TEST(LineReaderLines, NulInTheGrownPartEndsTheText) {
    // 7 bytes fit, then 8 more: the NUL is the tenth byte, and the buffer ends behind "89abc".
    EXPECT_EQ(lines_of(with_nul("012345678", "9abcdefgh\n"), 8, 8), (Lines{"012345678", "efgh\n"}));
}

TEST(LineReaderLines, BufferStaysGrownForLaterLines) {
    // The second line would be cut behind 7 bytes by a fresh buffer; the grown one holds 15.
    EXPECT_EQ(lines_of("0123456789\n" + with_nul("ab", "cdefghijkl\nm\n"), 8, 8), (Lines{"0123456789\n", "ab", "m\n"}));
}

TEST(LineReaderLines, FileOfNulsIsRowOfEmptyLines) {
    EXPECT_EQ(lines_of(std::string(20, '\0'), 8, 8), (Lines{"", "", ""}));
}

TEST(LineReaderModelTest, SmallBuffersReadRandomFilesAsFgetsDoes) {
    for (unsigned seed = 1; seed <= 400; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string file = random_file(random, 200, 40);
        const std::size_t first = 2 + random.number(20);
        const std::size_t growth = random.number(20);
        ASSERT_EQ(lines_of(file, first, growth), lines_by_fgets(file, first, growth));
    }
}

TEST(LineReaderModelTest, UsualBuffersReadRandomFilesAsFgetsDoes) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string file = random_file(random, 150'000, 10 + seed * 200);
        ASSERT_EQ(lines_of(file), lines_by_fgets(file, 2048, 2048));
        ASSERT_EQ(lines_of(file, 12'000, 0), lines_by_fgets(file, 12'000, 0));
    }
}

TEST(LineReaderModelTest, EveryByteAtEveryPlaceOfAChunkBoundary) {
    for (const std::size_t boundary : {4096u, 36'864u}) {
        for (std::size_t before = boundary - 3; before <= boundary + 3; ++before) {
            for (const char odd : {'\n', '\0', 'x'}) {
                std::string file = std::string(before, 'a') + odd + "tail\nlast";
                SCOPED_TRACE(before);
                ASSERT_EQ(lines_of(file), lines_by_fgets(file, 2048, 2048));
            }
        }
    }
}

TEST(LineReaderFailure, AFailedReadEndsTheLinesAndIsTold) {
    // A file that is not open refuses to be read.
    orvix::core::File file;
    LineReader reader(file, 2048, 2048);
    std::string_view line;
    EXPECT_FALSE(reader.next(&line));
    EXPECT_TRUE(reader.failed());
}
