#include "text/models.h"

#include <gtest/gtest.h>
#include <orvix/gsl/string_utilities.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <algorithm>
#include <string>

using namespace orvix::test;

namespace {

std::string every_byte() {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
    return bytes;
}

}  // namespace

TEST(GparseStrpbl, StripsBlanksAtBothEnds) {
    Buffer dst = room_for(4);
    gparse_strpbl("  a b   ", dst);
    EXPECT_EQ(dst.text(), "a b");
}

TEST(GparseStrpbl, TabsAreKept) {
    Buffer dst = room_for(5);
    gparse_strpbl(" \ta\t ", dst);
    EXPECT_EQ(dst.text(), "\ta\t");
}

TEST(GparseStrpbl, AllBlankTextBecomesEmpty) {
    Buffer dst = room_for(1);
    gparse_strpbl("   ", dst);
    EXPECT_EQ(dst.text(), "");
}

TEST(GparseStrpbl, WorksInPlace) {
    Buffer text("  ab ");
    gparse_strpbl(text, text);
    EXPECT_EQ(text.text(), "ab");
}

TEST(GparseStrpbl, NullLeavesTheDestinationAlone) {
    Buffer dst("old");
    gparse_strpbl(nullptr, dst);
    EXPECT_EQ(dst.text(), "old");
}

TEST(GparseStrpbl, AgreesWithTheModelOnRandomTexts) {
    for (unsigned seed = 0; seed < 1000; ++seed) {
        SCOPED_TRACE(seed);
        const std::string text = RandomText(seed).text("   a\t", 9);
        Buffer dst = room_for(model::stripped(text).size() + 1);
        gparse_strpbl(text.c_str(), dst);
        EXPECT_EQ(dst.text(), model::stripped(text));
    }
}

TEST(GparseStrptab, EachTabBecomesOneBlank) {
    Buffer text("\ta\t\tb \n");
    gparse_strptab(text);
    EXPECT_EQ(text.text(), " a  b \n");
}

TEST(GparseStrlength, CountsBytes) {
    EXPECT_EQ(gparse_strlength(""), 0U);
    EXPECT_EQ(gparse_strlength("a\xc3\xa4"), 3U);
}

TEST(GparseSetstrlength, EndsTheText) {
    Buffer text("abc");
    gparse_setstrlength(text, 1);
    EXPECT_EQ(text.text(), "a");
}

TEST(GparseSetstrlength, PresentLengthPlaysNoPart) {
    Buffer text("a", 6);
    gparse_setstrlength(text, 4);
    EXPECT_EQ(text.bytes(), std::string("a\0##\0#", 6));
}

TEST(GparseLowtoup, ChangesTheLettersAToZAlone) {
    const std::string bytes = every_byte();
    std::string expected = bytes;
    for (char c = 'a'; c <= 'z'; ++c) std::replace(expected.begin(), expected.end(), c, static_cast<char>(c - 32));
    Buffer text(bytes);
    gparse_lowtoup(text);
    EXPECT_EQ(text.text(), expected);
}

TEST(GparseUptolow, ChangesTheLettersAToZAlone) {
    Buffer text(every_byte());
    gparse_uptolow(text);
    EXPECT_EQ(text.text(), model::lower(every_byte()));
}

TEST(CaseChanges, AgreeWithTheModelAtEveryLength) {
    for (std::size_t length = 0; length < 70; ++length) {
        SCOPED_TRACE(length);
        std::string mixed;
        for (std::size_t i = 0; i < length; ++i) mixed += "aBzZ@[`{\xe4"[i % 9];
        Buffer text(mixed);
        gparse_lowtoup(text);
        gparse_uptolow(text);
        EXPECT_EQ(text.text(), model::lower(mixed));
    }
}
