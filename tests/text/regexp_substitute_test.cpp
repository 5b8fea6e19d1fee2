#include <gtest/gtest.h>
#include <orvix/gsl/regular_expressions.h>
#include <support/buffer.h>
#include <support/regexp_record.h>

#include <string>

using namespace orvix::test;
using namespace orvix::test::regexp;

namespace {

std::string expand(const char* pattern, const char* subject, const char* source) {
    const Record record(pattern);
    if (gsl_regexec(record.get(), subject) == 0) return "none";
    Buffer dest = room_for(100);
    gsl_regsub(record.get(), source, dest);
    return dest.text();
}

}  // namespace

TEST(Gsl_regsub, AnAmpersandIsTheWholeMatch) {
    EXPECT_EQ(expand("X", "aXb", "ab&cd"), "abXcd");
    EXPECT_EQ(expand("b+", "abbc", "&&"), "bbbb");
}

TEST(Gsl_regsub, ABackslashAndADigitIsAGroup) {
    EXPECT_EQ(expand("(a)(b)", "ab", "\\2\\1"), "ba");
    EXPECT_EQ(expand("(a)b", "ab", "<\\0>"), "<ab>");
    EXPECT_EQ(expand("(a)(b)(c)(d)(e)(f)(g)(h)(i)", "abcdefghi", "\\9\\8"), "ih");
    EXPECT_EQ(expand("(a)", "a", "\\11"), "a1");
}

TEST(Gsl_regsub, AGroupThatTookNoPartAddsNothing) {
    EXPECT_EQ(expand("(a)|b", "b", "<\\1>"), "<>");
    EXPECT_EQ(expand("b", "b", "<\\5>"), "<>");
}

TEST(Gsl_regsub, AnEmptyGroupAddsNothing) { EXPECT_EQ(expand("(a*)b", "b", "<\\1>"), "<>"); }

TEST(Gsl_regsub, EscapedAmpersandsAndBackslashesAreThemselves) {
    EXPECT_EQ(expand("x", "x", "\\&"), "&");
    EXPECT_EQ(expand("x", "x", "\\\\"), "\\");
    EXPECT_EQ(expand("x", "x", "\\\\&"), "\\x");
}

TEST(Gsl_regsub, ABackslashBeforeAnyOtherByteIsItself) {
    EXPECT_EQ(expand("b", "b", "\\x"), "\\x");
    EXPECT_EQ(expand("b", "b", "\\n\\"), "\\n\\");
}

TEST(Gsl_regsub, AnEmptyTemplateGivesTheEmptyString) { EXPECT_EQ(expand("b", "b", ""), ""); }

TEST(Gsl_regsub, WritesNoFurtherThanTheZeroByte) {
    const Record record("b+");
    ASSERT_EQ(gsl_regexec(record.get(), "abbc"), 1);
    Buffer dest("", 6);
    gsl_regsub(record.get(), "<&>", dest);
    EXPECT_EQ(dest.bytes().substr(0, 5), std::string("<bb>\0", 5));
}

TEST(Gsl_regsub, AfterAFailedSearchGroupsAddNothing) {
    const Record record("(b)");
    ASSERT_EQ(gsl_regexec(record.get(), "a"), 0);
    Buffer dest = room_for(10);
    gsl_regsub(record.get(), "<&\\1>", dest);
    EXPECT_EQ(dest.text(), "<>");
}
