#include "text/models.h"

#include <gtest/gtest.h>
#include <orvix/gsl/string_utilities.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <climits>
#include <string>

using namespace orvix::test;

TEST(AstrExtractLineFromMultilines, EmptyTextGivesNullAndAnEmptyLine) {
    Buffer text("");
    Buffer line("old");
    EXPECT_EQ(astr_extract_line_from_multilines(text, line, 3), nullptr);
    EXPECT_EQ(line.text(), "");
}

TEST(AstrExtractLineFromMultilines, TakesTheTextBeforeALineFeedAndPointsBehindIt) {
    Buffer text("ab\ncd");
    Buffer line = room_for(6);
    EXPECT_EQ(astr_extract_line_from_multilines(text, line, 5), text.get() + 3);
    EXPECT_EQ(line.text(), "ab");
}

TEST(AstrExtractLineFromMultilines, LastLineWithoutLineFeedIsStoredAndGivesNull) {
    Buffer text("ab");
    Buffer line = room_for(6);
    EXPECT_EQ(astr_extract_line_from_multilines(text, line, 5), nullptr);
    EXPECT_EQ(line.text(), "ab");
}

TEST(AstrExtractLineFromMultilines, TextThatEndsInALineFeedNeedsOneMoreCall) {
    Buffer text("ab\n");
    Buffer line = room_for(6);
    char* rest = astr_extract_line_from_multilines(text, line, 5);
    EXPECT_EQ(rest, text.get() + 3);
    EXPECT_EQ(astr_extract_line_from_multilines(rest, line, 5), nullptr);
    EXPECT_EQ(line.text(), "");
}

TEST(AstrExtractLineFromMultilines, CarriageReturnStaysInTheLine) {
    Buffer text("ab\r\ncd");
    Buffer line = room_for(6);
    astr_extract_line_from_multilines(text, line, 5);
    EXPECT_EQ(line.text(), "ab\r");
}

TEST(AstrExtractLineFromMultilines, LineOfTheLimitIsWhole) {
    Buffer text("abc\nd");
    Buffer line = room_for(4);
    EXPECT_EQ(astr_extract_line_from_multilines(text, line, 3), text.get() + 4);
    EXPECT_EQ(line.text(), "abc");
}

TEST(AstrExtractLineFromMultilines, LongerLineLosesTheByteAtTheSeam) {
    Buffer text("abcdefg");
    Buffer line = room_for(4);
    char* rest = astr_extract_line_from_multilines(text, line, 3);
    EXPECT_EQ(line.text(), "abc");
    EXPECT_STREQ(rest, "efg");
}

TEST(AstrExtractLineFromMultilines, LineOneByteTooLongLosesItAndLeavesTheLineFeed) {
    Buffer text("abcd\nx");
    Buffer line = room_for(4);
    char* rest = astr_extract_line_from_multilines(text, line, 3);
    EXPECT_EQ(line.text(), "abc");
    EXPECT_STREQ(rest, "\nx");
}

TEST(AstrExtractLineFromMultilines, NegativeLimitCountsAsZero) {
    Buffer text("abc");
    Buffer line = room_for(1);
    EXPECT_EQ(astr_extract_line_from_multilines(text, line, INT_MIN), text.get() + 1);
    EXPECT_EQ(line.text(), "");
}

namespace {

void expect_lines_of_the_model(std::string left, std::size_t most) {
    Buffer text(left);
    Buffer line = room_for(most + 1);
    char* rest = text;
    while (rest != nullptr) {
        const model::Line expected = model::first_line(left, most);
        char* next = astr_extract_line_from_multilines(rest, line, static_cast<int>(most));
        ASSERT_EQ(line.text(), expected.line);
        ASSERT_EQ(next, expected.rest == std::string::npos ? nullptr : rest + expected.rest);
        if (next != nullptr) left.erase(0, expected.rest);
        rest = next;
    }
}

}  // namespace

TEST(AstrExtractLineFromMultilines, AgreesWithTheModelOnRandomTexts) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string text = random.text("ab\r\n", 30);
        expect_lines_of_the_model(text, random.number(6));
    }
}

TEST(AstrExtractLineFromMultilines, AgreesWithTheModelOnLinesOfEveryLength) {
    for (std::size_t length = 0; length < 400; ++length) {
        SCOPED_TRACE(length);
        const std::string line(length, 'x');
        for (const std::size_t most : {length, length / 2, length + 1, std::size_t{127}, std::size_t{128}}) {
            expect_lines_of_the_model(line, most);
            expect_lines_of_the_model(line + '\n', most);
            expect_lines_of_the_model(line + "\ny", most);
        }
    }
}
