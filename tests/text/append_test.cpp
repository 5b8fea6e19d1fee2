#include "text/models.h"

#include <gtest/gtest.h>
#include <orvix/gsl/string_utilities.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <string>

using namespace orvix::test;

TEST(GparseAddstr, JoinsTwoTexts) {
    Buffer dst = room_for(6);
    gparse_addstr("ab", "cde", dst);
    EXPECT_EQ(dst.text(), "abcde");
}

TEST(GparseAddstr, SecondTextMayBeTheDestination) {
    Buffer dst("cde", 6);
    gparse_addstr("ab", dst, dst);
    EXPECT_EQ(dst.text(), "abcde");
}

TEST(GparseAddstr, FirstTextMayBeTheDestination) {
    Buffer dst("ab", 6);
    gparse_addstr(dst, "cde", dst);
    EXPECT_EQ(dst.text(), "abcde");
}

TEST(GparseAddstr, BothTextsMayBeTheDestination) {
    Buffer dst("ab", 5);
    gparse_addstr(dst, dst, dst);
    EXPECT_EQ(dst.text(), "abab");
}

TEST(GparseAddstr, JoinsLongTextsThatOverlap) {
    const std::string text(5000, 'x');
    Buffer dst(text, 10001);
    gparse_addstr(dst, dst, dst);
    EXPECT_EQ(dst.text(), text + text);
}

TEST(GparseAddstrn, FillsTheColumnWithBlanks) {
    Buffer dst = room_for(7);
    gparse_addstrn(Buffer("ab"), Buffer("cd"), 6, dst);
    EXPECT_EQ(dst.text(), "abcd  ");
}

TEST(GparseAddstrn, CutsTheSecondText) {
    Buffer dst = room_for(4);
    gparse_addstrn(Buffer("ab"), Buffer("cd"), 3, dst);
    EXPECT_EQ(dst.text(), "abc");
}

TEST(GparseAddstrn, SecondTextIsIgnoredWhenTheFirstFillsTheColumn) {
    Buffer dst = room_for(3);
    gparse_addstrn(Buffer("abc"), Buffer("xy"), 2, dst);
    EXPECT_EQ(dst.text(), "ab");
}

TEST(GparseAddstrn, SecondTextMayBeTheDestination) {
    Buffer dst("cd", 7);
    gparse_addstrn(Buffer("ab"), dst, 6, dst);
    EXPECT_EQ(dst.text(), "abcd  ");
}

TEST(GparseStrncat, AppendsWhatFits) {
    Buffer dst("ab", 5);
    gparse_strncat("cdef", 4, dst);
    EXPECT_EQ(dst.text(), "abcd");
}

TEST(GparseStrncat, AppendsAllWhenThereIsRoom) {
    Buffer dst("ab", 5);
    gparse_strncat("cd", 99, dst);
    EXPECT_EQ(dst.text(), "abcd");
}

TEST(GparseStrncat, DestinationAtTheLimitStays) {
    Buffer dst("abc");
    gparse_strncat("d", 3, dst);
    EXPECT_EQ(dst.text(), "abc");
}

TEST(GparseStrncat, DestinationBeyondTheLimitStaysThoughItIsLonger) {
    Buffer dst("abcdef");
    gparse_strncat("x", 3, dst);
    EXPECT_EQ(dst.text(), "abcdef");
}

TEST(GparseStrncat, SourceMayBeTheDestination) {
    Buffer dst("ab", 5);
    gparse_strncat(dst, 9, dst);
    EXPECT_EQ(dst.text(), "abab");
}

TEST(Appends, AgreeWithTheModelOnRandomTextsWithinOneBuffer) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string text = random.text("abc", 300);
        const std::size_t first = random.number(text.size());
        const std::size_t second = random.number(text.size());
        const std::size_t width = random.number(700);
        const std::string joined = text.substr(first) + text.substr(second);

        Buffer sum(text, joined.size() + 1);
        gparse_addstr(sum.get() + first, sum.get() + second, sum);
        EXPECT_EQ(sum.text(), joined);

        Buffer column(text, width + 1);
        gparse_addstrn(column.get() + first, column.get() + second, width, column);
        EXPECT_EQ(column.text(), model::column(joined, width));

        const std::string appended = text.size() >= width ? text : (text + text.substr(second)).substr(0, width);
        Buffer catenated(text, appended.size() + 1);
        gparse_strncat(catenated.get() + second, width, catenated);
        EXPECT_EQ(catenated.text(), appended);
    }
}
