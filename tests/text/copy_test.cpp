#include "text/models.h"

#include <gtest/gtest.h>
#include <orvix/gsl/string_utilities.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <string>

using namespace orvix::test;

TEST(GparseCpystr, CopiesTheTextAndItsEnd) {
    Buffer dst = room_for(4);
    gparse_cpystr("abc", dst);
    EXPECT_EQ(dst.bytes(), std::string("abc\0", 4));
}

TEST(GparseCpystr, MovesATextWithinItsBuffer) {
    Buffer buffer("..abc");
    gparse_cpystr(buffer.get() + 2, buffer.get());
    EXPECT_EQ(buffer.text(), "abc");
}

TEST(GparseCpystrl, CopiesAllOfATextThatIsShortEnough) {
    Buffer dst = room_for(4);
    gparse_cpystrl("abc", dst, 3);
    EXPECT_EQ(dst.text(), "abc");
}

TEST(GparseCpystrl, CutsALongerText) {
    Buffer dst = room_for(4);
    gparse_cpystrl("abcd", dst, 3);
    EXPECT_EQ(dst.text(), "abc");
}

TEST(GparseCpystrl, LimitOfZeroEmptiesTheDestination) {
    Buffer dst("old");
    gparse_cpystrl("abc", dst, 0);
    EXPECT_EQ(dst.text(), "");
}

TEST(GparseCpystrl, CutsInPlaceAndLeavesTheBytesBehind) {
    Buffer text("abcdef");
    gparse_cpystrl(text, text, 2);
    EXPECT_EQ(text.bytes(), std::string("ab\0def\0", 7));
}

TEST(GparseCpystrl, ShortTextInPlaceStaysAsItIs) {
    Buffer text("abc", 6);
    gparse_cpystrl(text, text, 5);
    EXPECT_EQ(text.bytes(), std::string("abc\0##", 6));
}

TEST(GparseCpystrl, LimitMayBeAsLargeAsTheTypeAllows) {
    Buffer dst = room_for(4);
    gparse_cpystrl("abc", dst, SIZE_MAX);
    EXPECT_EQ(dst.text(), "abc");
}

TEST(GparseStrncpy, LimitOfZeroLeavesTheDestinationAlone) {
    Buffer dst("old");
    gparse_strncpy("abc", 0, dst);
    EXPECT_EQ(dst.text(), "old");
}

TEST(GparseStrncpy, CutsAndEndsALongerText) {
    Buffer dst = room_for(3);
    gparse_strncpy("abc", 2, dst);
    EXPECT_EQ(dst.text(), "ab");
}

TEST(GparseStrncpy, ShortTextIsNotPadded) {
    Buffer dst = room_for(6);
    gparse_strncpy("abc", 5, dst);
    EXPECT_EQ(dst.bytes(), std::string("abc\0##", 6));
}

TEST(GparseCpystrn, TextOfExactlyTheWidthIsUnchanged) {
    Buffer dst = room_for(4);
    gparse_cpystrn(Buffer("abc"), 3, dst);
    EXPECT_EQ(dst.text(), "abc");
}

TEST(GparseCpystrn, EmptyTextInNoWidthIsEmpty) {
    Buffer dst = room_for(1);
    gparse_cpystrn(Buffer(""), 0, dst);
    EXPECT_EQ(dst.text(), "");
}

TEST(GparseCpystrn, ShortTextIsFilledWithBlanks) {
    Buffer dst = room_for(6);
    gparse_cpystrn(Buffer("abc"), 5, dst);
    EXPECT_EQ(dst.text(), "abc  ");
}

TEST(GparseCpystrn, LongTextIsCutAndTheSourceIsWholeAfterwards) {
    Buffer src("abcde");
    Buffer dst = room_for(4);
    gparse_cpystrn(src, 3, dst);
    EXPECT_EQ(dst.text(), "abc");
    EXPECT_EQ(src.text(), "abcde");
}

TEST(GparseCpystrn, CutsInPlace) {
    Buffer text("abcde");
    gparse_cpystrn(text, 3, text);
    EXPECT_EQ(text.bytes(), std::string("abc\0e\0", 6));
}

TEST(GparseCpystrn, FillsInPlace) {
    Buffer text("ab", 5);
    gparse_cpystrn(text, 4, text);
    EXPECT_EQ(text.text(), "ab  ");
}

TEST(GparseSzstrlj, LeadingBlanksGoAndTheEndIsFilled) {
    Buffer dst = room_for(4);
    gparse_szstrlj(Buffer("  ab"), 3, dst);
    EXPECT_EQ(dst.text(), "ab ");
}

TEST(GparseSzstrlj, BlanksBehindTheTextCountAsText) {
    Buffer dst = room_for(4);
    gparse_szstrlj(Buffer(" a  b"), 3, dst);
    EXPECT_EQ(dst.text(), "a  ");
}

TEST(GparseSzstrlj, AllBlankTextGivesAColumnOfBlanks) {
    Buffer dst = room_for(4);
    gparse_szstrlj(Buffer("     "), 3, dst);
    EXPECT_EQ(dst.text(), "   ");
}

TEST(GparseSzstrlj, TabIsNoBlank) {
    Buffer dst = room_for(4);
    gparse_szstrlj(Buffer("\ta"), 3, dst);
    EXPECT_EQ(dst.text(), "\ta ");
}

TEST(GparseSzstrlj, JustifiesInPlace) {
    Buffer text("  abcdef");
    gparse_szstrlj(text, 3, text);
    EXPECT_EQ(text.bytes(), std::string("abc\0cdef\0", 9));
}

TEST(GparseSzstrrj, ShortTextIsMovedToTheRight) {
    Buffer dst = room_for(5);
    gparse_szstrrj(Buffer("ab"), 4, dst);
    EXPECT_EQ(dst.text(), "  ab");
}

TEST(GparseSzstrrj, LongTextLosesItsRightEnd) {
    Buffer dst = room_for(4);
    gparse_szstrrj(Buffer("abcde"), 3, dst);
    EXPECT_EQ(dst.text(), "abc");
}

TEST(GparseSzstrrj, NothingIsStripped) {
    Buffer dst = room_for(6);
    gparse_szstrrj(Buffer(" a "), 5, dst);
    EXPECT_EQ(dst.text(), "   a ");
}

TEST(GparseSzstrrj, NoWidthGivesTheEmptyText) {
    Buffer dst = room_for(1);
    gparse_szstrrj(Buffer("abc"), 0, dst);
    EXPECT_EQ(dst.text(), "");
}

TEST(GparseSzstrrj, LongTextIsCutInPlace) {
    Buffer text("abcde");
    gparse_szstrrj(text, 3, text);
    EXPECT_EQ(text.text(), "abc");
}

TEST(GparseStrtostr, BothPositionsAreIncluded) {
    Buffer dst = room_for(4);
    gparse_strtostr("abcdef", 1, 3, dst);
    EXPECT_EQ(dst.text(), "bcd");
}

TEST(GparseStrtostr, LastBelowFirstGivesTheEmptyText) {
    Buffer dst("old");
    gparse_strtostr("abcdef", 3, 2, dst);
    EXPECT_EQ(dst.text(), "");
}

TEST(GparseStrtostr, ZeroByteAmongThemIsCopied) {
    Buffer dst = room_for(6);
    gparse_strtostr("ab\0cd", 0, 4, dst);
    EXPECT_EQ(dst.bytes(), std::string("ab\0cd\0", 6));
}

TEST(GparseStrtostr, WorksInPlace) {
    Buffer text("abcdef");
    gparse_strtostr(text, 2, 4, text);
    EXPECT_EQ(text.text(), "cde");
}

TEST(CopiesToColumns, AgreeWithTheModelOnRandomTexts) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string text = random.text("  ab\t", 12);
        const std::size_t width = random.number(12);
        Buffer src(text);
        Buffer dst = room_for(width + 1);
        gparse_cpystrn(src, width, dst);
        EXPECT_EQ(dst.text(), model::column(text, width));
        gparse_szstrlj(src, width, dst);
        EXPECT_EQ(dst.text(), model::left_justified(text, width));
        gparse_szstrrj(src, width, dst);
        EXPECT_EQ(dst.text(), model::right_justified(text, width));
        gparse_cpystrl(src, dst, width);
        EXPECT_EQ(dst.text(), text.substr(0, width));
        EXPECT_EQ(src.text(), text);
    }
}

TEST(CopiesToColumns, AgreeWithTheModelInPlace) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string text = random.text("  ab", 12);
        const std::size_t width = random.number(12);
        Buffer column(text, width + 1);
        gparse_cpystrn(column, width, column);
        EXPECT_EQ(column.text(), model::column(text, width));
        Buffer justified(text, width + 1);
        gparse_szstrlj(justified, width, justified);
        EXPECT_EQ(justified.text(), model::left_justified(text, width));
    }
}
