#include "support/line_reader_model.h"
#include "support/temporary_directory.h"

#include <orvix/core/descriptors.h>
#include <orvix/core/streams.h>
#include <orvix/gsl/processes.h>
#include <orvix/gsl/streams.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;
using orvix::test::LineReaderModel;
using orvix::test::TemporaryDirectory;
using testing::ElementsAre;
using testing::IsEmpty;

struct Close {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using Stream = std::unique_ptr<std::FILE, Close>;

// A stream of the given bytes, read from its start.
Stream stream_of(const std::string& bytes) {
    Stream stream(std::tmpfile());
    if (stream == nullptr) throw std::runtime_error("no temporary file to be had");
    std::fwrite(bytes.data(), 1, bytes.size(), stream.get());
    std::rewind(stream.get());
    return stream;
}

std::string rest_of(std::FILE* stream) {
    std::string rest;
    for (int byte; (byte = std::fgetc(stream)) != EOF;) rest += static_cast<char>(byte);
    return rest;
}

std::vector<std::string> lines_of(const std::string& bytes) {
    const Stream stream = stream_of(bytes);
    std::vector<std::string> lines;
    char buffer[1024];
    while (gfile_getline(stream.get(), buffer)) lines.emplace_back(buffer);
    return lines;
}

std::vector<std::string> limited_lines_of(const std::string& bytes, std::size_t limit) {
    const Stream stream = stream_of(bytes);
    std::vector<std::string> lines;
    std::string buffer(limit, '?');
    while (gfile_getline_limited(stream.get(), buffer.data(), limit)) lines.emplace_back(buffer.c_str());
    return lines;
}

std::vector<std::string> whole_lines_of(const std::string& bytes) {
    const Stream stream = stream_of(bytes);
    std::vector<std::string> lines;
    std::string line = "before";
    while (gfile_getline_std_string(stream.get(), &line)) lines.push_back(line);
    EXPECT_EQ(line, "");
    return lines;
}

TEST(GfileGetline, LastLineNeedsNoLineFeed) {
    EXPECT_THAT(lines_of("one\ntwo"), ElementsAre("one", "two"));
    EXPECT_THAT(lines_of("one\ntwo\n"), ElementsAre("one", "two"));
}

TEST(GfileGetline, EmptyFileHasNoLine) { EXPECT_THAT(lines_of(""), IsEmpty()); }

TEST(GfileGetline, BlankLineIsALine) { EXPECT_THAT(lines_of("\n\nx\n"), ElementsAre("", "", "x")); }

TEST(GfileGetline, CarriageReturnAndLineFeedAreBothCut) {
    EXPECT_THAT(lines_of("one\r\ntwo\r\n"), ElementsAre("one", "two"));
}

TEST(GfileGetline, CarriageReturnAloneEndsTheTextOfItsLine) {
    EXPECT_THAT(lines_of("one\rdropped\ntwo\n"), ElementsAre("one", "two"));
}

TEST(GfileGetline, EndOfFileMarkAtTheStartOfALineEndsTheFile) {
    EXPECT_THAT(lines_of("one\n\x1atext\ntwo\n"), ElementsAre("one"));
}

TEST(GfileGetline, LineThatBeginsWithTheMarkIsLeftAsRead) {
    const Stream stream = stream_of("\x1atext\nmore\n");
    char buffer[1024];
    EXPECT_FALSE(gfile_getline(stream.get(), buffer));
    EXPECT_STREQ(buffer, "\x1atext\n");
}

TEST(GfileGetline, EndOfFileMarkInTheMiddleCutsItsLine) {
    EXPECT_THAT(lines_of("one\x1a gone\ntwo\n"), ElementsAre("one", "two"));
}

TEST(GfileGetline, KeepsTheFirst1023BytesOfALine) {
    const std::string kept(1023, 'x');
    EXPECT_THAT(lines_of(kept + "yyy\nnext\n"), ElementsAre(kept, "next"));
    EXPECT_THAT(lines_of(kept + "\nnext\n"), ElementsAre(kept, "next"));
    EXPECT_THAT(lines_of(kept + std::string(5000, 'y') + "\nnext\n"), ElementsAre(kept, "next"));
    EXPECT_THAT(lines_of(kept + "yyy"), ElementsAre(kept));
}

TEST(GfileGetline, ZeroByteEndsTheTextAndNotTheLine) {
    EXPECT_THAT(lines_of("one\0gone\ntwo\n"s), ElementsAre("one", "two"));
    EXPECT_THAT(lines_of("\0gone\ntwo\n"s), ElementsAre("", "two"));
}

TEST(GfileGetline, ReadErrorGivesFalse) {
    const TemporaryDirectory directory;
    std::FILE* stream = gsl_fopen(directory.name("out").c_str(), "w");
    ASSERT_NE(stream, nullptr);
    char buffer[1024] = "before";
    EXPECT_FALSE(gfile_getline(stream, buffer));
    EXPECT_STREQ(buffer, "before");
    gsl_fclose(stream);
}

TEST(GfileGetlineLimited, RestOfALongLineIsThrownAway) {
    EXPECT_THAT(limited_lines_of("abcdefghij\nklm\n", 5), ElementsAre("abcd", "klm"));
}

TEST(GfileGetlineLimited, LineOfLimitMinusOneLosesItsLineFeedAlone) {
    EXPECT_THAT(limited_lines_of("abcd\nefgh\n", 5), ElementsAre("abcd", "efgh"));
}

TEST(GfileGetlineLimited, LineThatFillsTheBufferWithItsLineFeedIsWhole) {
    EXPECT_THAT(limited_lines_of("abc\ndef\n", 5), ElementsAre("abc", "def"));
}

TEST(GfileGetlineLimited, RestThatHoldsAZeroByteAtAChunksHeadEndsThere) {
    // The rest is skipped in chunks of 1023 bytes; one that begins with a zero byte passes for the end of the line.
    const std::string rest = std::string(1023, 'x') + "\0yy\n"s;
    EXPECT_THAT(limited_lines_of("abcd" + rest + "next\n", 5), ElementsAre("abcd", "next"));
}

TEST(GfileGetlineLimited, RestWithAZeroByteBeforeItsLineFeedTakesTheNextLineAlong) {
    EXPECT_THAT(limited_lines_of("abcdef\0g\ngone\nnext\n"s, 5), ElementsAre("abcd", "next"));
}

TEST(GfileGetlineLimited, LimitOfOneGivesAnEmptyTextForEachLine) {
    EXPECT_THAT(limited_lines_of("abc\n\n\x1a\nd", 1), ElementsAre("", "", "", ""));
    EXPECT_THAT(limited_lines_of("", 1), IsEmpty());
}

TEST(GfileGetlineLimited, LimitOfZeroReadsNothing) {
    const Stream stream = stream_of("abc\n");
    char buffer[] = "before";
    EXPECT_FALSE(gfile_getline_limited(stream.get(), buffer, 0));
    EXPECT_STREQ(buffer, "before");
    EXPECT_EQ(rest_of(stream.get()), "abc\n");
}

TEST(GfileGetlineLimited, LimitBeyondTheRuntimesIsTakenForUnlimited) {
    for (const std::size_t limit : {std::size_t{INT_MAX}, std::size_t{INT_MAX} + 1, SIZE_MAX}) {
        const Stream stream = stream_of("abc\ndef\n");
        char buffer[16];
        EXPECT_TRUE(gfile_getline_limited(stream.get(), buffer, limit));
        EXPECT_STREQ(buffer, "abc");
    }
}

TEST(GfileGetlineStdString, LongLineIsKeptWhole) {
    const std::string text(3000, 'x');
    EXPECT_THAT(whole_lines_of(text + "\nnext\n"), ElementsAre(text, "next"));
    EXPECT_THAT(whole_lines_of(text), ElementsAre(text));
}

TEST(GfileGetlineStdString, EndOfFileGivesFalseAndEmptiesTheString) {
    const Stream stream = stream_of("");
    std::string line = "before";
    EXPECT_FALSE(gfile_getline_std_string(stream.get(), &line));
    EXPECT_EQ(line, "");
}

TEST(GfileGetlineStdString, LinesEndAsInTheLimitedForm) {
    EXPECT_THAT(whole_lines_of("a\r\nb\rgone\n\nc\x1agone\nd"), ElementsAre("a", "b", "", "c", "d"));
}

TEST(GfileGetlineStdString, EndOfFileMarkAtTheStartOfALineEndsTheFile) {
    EXPECT_THAT(whole_lines_of("one\n\x1atext\n"), ElementsAre("one"));
}

TEST(GfileGetlineStdString, LineOfExactly1023BytesIsOneLine) {
    const std::string text(1023, 'x');
    EXPECT_THAT(whole_lines_of(text), ElementsAre(text));
    EXPECT_THAT(whole_lines_of(text + "\nnext"), ElementsAre(text, "next"));
}

TEST(GfileGetlineStdString, EndOfFileMarkAtTheHeadOfALaterChunkCuts) {
    const std::string text(1023, 'x');
    EXPECT_THAT(whole_lines_of(text + "\x1agone\nnext\n"), ElementsAre(text, "next"));
}

TEST(GfileGetlineStdString, CutChunkDoesNotTakeTheNextOneAlong) {
    // The text ends in the first chunk; what the second holds of the same line comes as a line of its own.
    const std::string line = "ab\r" + std::string(1020, 'x') + "rest\n";
    EXPECT_THAT(whole_lines_of(line + "next\n"), ElementsAre("ab", "rest", "next"));
}

TEST(GfileGetlineStdString, ZeroByteEndsTheText) {
    EXPECT_THAT(whole_lines_of("one\0gone\n\0gone\ntwo\n"s), ElementsAre("one", "", "two"));
}

TEST(LineReaders, AgreeWithTheModelOnRandomBytes) {
    std::mt19937 random(20240917);
    const std::string alphabet = "ab \t\n\n\r\x1a\0"s;
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE("seed 20240917, round " + std::to_string(round));
        std::string bytes;
        for (int parts = static_cast<int>(random() % 6); parts >= 0; --parts) {
            bytes.append(random() % 3 == 0 ? random() % 2500 : 0, 'x');
            for (auto n = random() % 12; n > 0; --n) bytes += alphabet[random() % alphabet.size()];
        }
        const std::size_t limits[] = {2, 3, 8, 1023, 1024, 1025};
        const std::size_t limit = limits[random() % 6];

        const Stream limited = stream_of(bytes);
        LineReaderModel limited_model(bytes);
        std::string buffer(limit, '?');
        while (const auto expected = limited_model.limited_line(limit)) {
            ASSERT_TRUE(gfile_getline_limited(limited.get(), buffer.data(), limit));
            ASSERT_EQ(buffer.c_str(), *expected);
        }
        ASSERT_FALSE(gfile_getline_limited(limited.get(), buffer.data(), limit));

        const Stream whole = stream_of(bytes);
        LineReaderModel whole_model(bytes);
        std::string line;
        while (const auto expected = whole_model.whole_line()) {
            ASSERT_TRUE(gfile_getline_std_string(whole.get(), &line));
            ASSERT_EQ(line, *expected);
        }
        ASSERT_FALSE(gfile_getline_std_string(whole.get(), &line));
    }
}

TEST(GfilePutline, WritesTheTextAndALineFeedIfAsked) {
    const Stream stream = stream_of("");
    EXPECT_TRUE(gfile_putline(stream.get(), true, "one"));
    EXPECT_TRUE(gfile_putline(stream.get(), false, "two"));
    EXPECT_TRUE(gfile_putline(stream.get(), true, ""));
    std::rewind(stream.get());
    EXPECT_EQ(rest_of(stream.get()), "one\ntwo\n");
}

TEST(GfilePutline, StreamThatTakesNothingGivesFalse) {
    const TemporaryDirectory directory;
    directory.write("in", "text");
    std::FILE* stream = gsl_fopen(directory.name("in").c_str(), "r");
    EXPECT_FALSE(gfile_putline(stream, false, "text"));
    EXPECT_FALSE(gfile_putline(stream, true, nullptr));
    gsl_fclose(stream);
}

TEST(GfileGetfilbuf, ReadsElementsAndTakesAShortCountForSuccess) {
    const Stream stream = stream_of("abcdef");
    char buffer[16] = {};
    EXPECT_TRUE(gfile_getfilbuf(stream.get(), 2, 2, buffer));
    EXPECT_STREQ(buffer, "abcd");
    EXPECT_TRUE(gfile_getfilbuf(stream.get(), 1, 8, buffer));
    EXPECT_STREQ(buffer, "efcd");
    EXPECT_TRUE(gfile_getfilbuf(stream.get(), 1, 8, buffer));
}

TEST(GfileGetfilbuf, ReadErrorGivesFalse) {
    const TemporaryDirectory directory;
    directory.write("in", "text");
    std::FILE* stream = gsl_fopen(directory.name("in").c_str(), "r");
    orvix::core::close_descriptor(orvix::core::descriptor_of(stream));
    char buffer[4];
    EXPECT_FALSE(gfile_getfilbuf(stream, 1, 4, buffer));
    gsl_fclose(stream);
}

TEST(GfilePutfilbuf, WritesElements) {
    const Stream stream = stream_of("");
    char bytes[] = "a\0bcdef";
    EXPECT_TRUE(gfile_putfilbuf(stream.get(), 3, 2, bytes));
    std::rewind(stream.get());
    EXPECT_EQ(rest_of(stream.get()), "a\0bcde"s);
}

TEST(GfilePutfilbuf, StreamThatTakesNothingGivesFalse) {
    const TemporaryDirectory directory;
    directory.write("in", "text");
    std::FILE* stream = gsl_fopen(directory.name("in").c_str(), "r");
    char bytes[] = "ab";
    EXPECT_FALSE(gfile_putfilbuf(stream, 1, 2, bytes));
    gsl_fclose(stream);
}

TEST(GfileGetfilchr, GivesOneByteAfterTheOther) {
    const Stream stream = stream_of("a\xfe");
    char byte = 0;
    EXPECT_TRUE(gfile_getfilchr(stream.get(), &byte));
    EXPECT_EQ(byte, 'a');
    EXPECT_TRUE(gfile_getfilchr(stream.get(), &byte));
    EXPECT_EQ(byte, '\xfe');
}

TEST(GfileGetfilchr, EndOfFileGivesTrueAndStores255) {
    const Stream stream = stream_of("");
    char byte = 0;
    EXPECT_TRUE(gfile_getfilchr(stream.get(), &byte));
    EXPECT_EQ(static_cast<unsigned char>(byte), 255);
    EXPECT_NE(std::feof(stream.get()), 0);
}

TEST(GfileGetfilchr, ErrorWithoutTheEndOfTheFileGivesTrue) {
    const TemporaryDirectory directory;
    directory.write("in", "text");
    std::FILE* stream = gsl_fopen(directory.name("in").c_str(), "r");
    orvix::core::close_descriptor(orvix::core::descriptor_of(stream));
    char byte = 0;
    EXPECT_TRUE(gfile_getfilchr(stream, &byte));
    EXPECT_NE(std::ferror(stream), 0);
    gsl_fclose(stream);
}

TEST(GfileGetfilchr, ErrorAndEndOfFileTogetherGiveFalse) {
    const TemporaryDirectory directory;
    directory.write("in", "");
    std::FILE* stream = gsl_fopen(directory.name("in").c_str(), "r");
    std::fputc('x', stream);  // sets the error mark: the stream is for reading
    char byte = 0;
    EXPECT_FALSE(gfile_getfilchr(stream, &byte));
    gsl_fclose(stream);
}

TEST(GfilePutfilchr, WritesAByte) {
    const Stream stream = stream_of("");
    EXPECT_TRUE(gfile_putfilchr(stream.get(), 'x'));
    EXPECT_TRUE(gfile_putfilchr(stream.get(), '\0'));
    EXPECT_TRUE(gfile_putfilchr(stream.get(), '\xff'));
    std::rewind(stream.get());
    EXPECT_EQ(rest_of(stream.get()), "x\0\xff"s);
}

TEST(GfilePutfilchr, StreamThatTakesNothingGivesFalse) {
    const TemporaryDirectory directory;
    directory.write("in", "text");
    std::FILE* stream = gsl_fopen(directory.name("in").c_str(), "r");
    EXPECT_FALSE(gfile_putfilchr(stream, 'x'));
    gsl_fclose(stream);
}

TEST(StreamPosition, IsToldSetAndReset) {
    const Stream stream = stream_of("abcdef");
    std::int32_t position = -7;
    EXPECT_TRUE(gfile_putfilptr(stream.get(), 4));
    EXPECT_TRUE(gfile_getfilptr(stream.get(), &position));
    EXPECT_EQ(position, 4);
    EXPECT_EQ(rest_of(stream.get()), "ef");
    EXPECT_TRUE(gfile_resetfilptr(stream.get()));
    EXPECT_EQ(rest_of(stream.get()), "abcdef");
}

TEST(StreamPosition, BeforeTheStartGivesFalse) {
    const Stream stream = stream_of("abc");
    EXPECT_FALSE(gfile_putfilptr(stream.get(), -1));
}

TEST(StreamPosition, BeyondThirtyOneBitsCannotBeTold) {
    const Stream stream = stream_of("");
    ASSERT_EQ(std::fseek(stream.get(), 2'147'483'647, SEEK_SET), 0);
    std::int32_t position = 0;
    EXPECT_TRUE(gfile_getfilptr(stream.get(), &position));
    EXPECT_EQ(position, 2'147'483'647);
    ASSERT_EQ(std::fseek(stream.get(), 1, SEEK_CUR), 0);
    EXPECT_FALSE(gfile_getfilptr(stream.get(), &position));
    EXPECT_EQ(position, -1);
}

TEST(StreamPosition, PipeCannotTell) {
    std::FILE* pipe = gsl_popen("echo", "r");
    ASSERT_NE(pipe, nullptr);
    std::int32_t position = 0;
    EXPECT_FALSE(gfile_getfilptr(pipe, &position));
    EXPECT_EQ(position, -1);
    EXPECT_FALSE(gfile_putfilptr(pipe, 0));
    EXPECT_FALSE(gfile_resetfilptr(pipe));
    gsl_pclose(pipe);
}

TEST(GfileFopenStatus, PrintsTheLowestFreeDescriptor) {
    int lowest = -1;
    {
        const Stream probe(std::tmpfile());
        lowest = gsl_fileno(probe.get());
    }
    // The capture itself holds descriptors, so the number is at least the one before it.
    testing::internal::CaptureStderr();
    gfile_fopen_status();
    const std::string printed = testing::internal::GetCapturedStderr();
    int number = -1;
    EXPECT_EQ(std::sscanf(printed.c_str(), "gfile: current number of files open = %d\n", &number), 1) << printed;
    EXPECT_GE(number, lowest);
    EXPECT_EQ(printed.back(), '\n');
}

TEST(GslFopen, OpensNamesInTheLibrarysForm) {
    const TemporaryDirectory directory;
    std::FILE* stream = gsl_fopen(directory.name("file").c_str(), "w");
    ASSERT_NE(stream, nullptr);
    EXPECT_TRUE(gfile_putline(stream, true, "text"));
    EXPECT_EQ(gsl_fclose(stream), 0);
    EXPECT_EQ(directory.read("file"), "text\n");
}

TEST(GslFopen, WhatIsMissingOrNoFileGivesNull) {
    const TemporaryDirectory directory;
    EXPECT_EQ(gsl_fopen(directory.name("missing").c_str(), "r"), nullptr);
    EXPECT_EQ(gsl_fopen(directory.name().c_str(), "r"), nullptr);
    EXPECT_EQ(gsl_fopen("", "r"), nullptr);
    EXPECT_EQ(gsl_fopen(nullptr, "r"), nullptr);
    EXPECT_EQ(gsl_fopen(directory.name("file").c_str(), nullptr), nullptr);
}

TEST(GslFclose, NullIsHarmless) { EXPECT_EQ(gsl_fclose(nullptr), 0); }

TEST(GslFgets, KeepsTheLineFeed) {
    const Stream stream = stream_of("abc\ndef");
    char buffer[16];
    EXPECT_EQ(gsl_fgets(buffer, sizeof buffer, stream.get()), buffer);
    EXPECT_STREQ(buffer, "abc\n");
    EXPECT_EQ(gsl_fgets(buffer, 3, stream.get()), buffer);
    EXPECT_STREQ(buffer, "de");
}

TEST(GslFgets, EndOfFileGivesNull) {
    const Stream stream = stream_of("");
    char buffer[16];
    EXPECT_EQ(gsl_fgets(buffer, sizeof buffer, stream.get()), nullptr);
}

TEST(GslFileno, GivesTheStandardStreamsTheirNumbers) {
    EXPECT_EQ(gsl_fileno(stdin), 0);
    EXPECT_EQ(gsl_fileno(stderr), 2);
}

TEST(GslPutw, RoundTripsThroughGetw) {
    const Stream stream = stream_of("");
    for (const int value : {0, 1, -1, INT_MAX, INT_MIN, 0x01020304}) EXPECT_EQ(gsl_putw(value, stream.get()), value);
    EXPECT_EQ(std::ftell(stream.get()), 24);
    std::rewind(stream.get());
    for (const int value : {0, 1, -1, INT_MAX, INT_MIN, 0x01020304}) EXPECT_EQ(gsl_getw(stream.get()), value);
}

TEST(GslGetw, ShortReadGivesMinusOne) {
    const Stream stream = stream_of("abc");
    EXPECT_EQ(gsl_getw(stream.get()), -1);
    EXPECT_NE(std::feof(stream.get()), 0);
}

TEST(BigEndianRecords, MostSignificantByteComesFirst) {
    TwoBytes two{};
    agsl_int16_to_bin(258, &two);
    EXPECT_THAT(two.bytes, ElementsAre(1, 2));
    agsl_int16_to_bin(-2, &two);
    EXPECT_THAT(two.bytes, ElementsAre(0xff, 0xfe));

    FourBytes four{};
    agsl_int32_to_bin(1, &four);
    EXPECT_THAT(four.bytes, ElementsAre(0, 0, 0, 1));
    agsl_int32_to_bin(-0x01020305, &four);
    EXPECT_THAT(four.bytes, ElementsAre(0xfe, 0xfd, 0xfc, 0xfb));
}

TEST(BigEndianRecords, RecordsAreReadBack) {
    short small = 0;
    agsl_bin_to_int16({{1, 2}}, &small);
    EXPECT_EQ(small, 258);
    agsl_bin_to_int16({{0x80, 0}}, &small);
    EXPECT_EQ(small, -32768);

    int large = 0;
    agsl_bin_to_int32({{0, 0, 0, 1}}, &large);
    EXPECT_EQ(large, 1);
    agsl_bin_to_int32({{0x80, 0, 0, 0}}, &large);
    EXPECT_EQ(large, INT_MIN);
    agsl_bin_to_int32({{0x01, 0x02, 0x03, 0x04}}, &large);
    EXPECT_EQ(large, 0x01020304);
}

}  // namespace
