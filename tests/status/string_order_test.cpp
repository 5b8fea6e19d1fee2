#include <orvix/gsl/status.h>

#include <gtest/gtest.h>

namespace {

TEST(GslStrcmp, NullCountsAsEmpty) {
    EXPECT_EQ(gsl_strcmp(nullptr, nullptr), 0);
    EXPECT_EQ(gsl_strcmp(nullptr, ""), 0);
    EXPECT_EQ(gsl_strcmp("", nullptr), 0);
    EXPECT_EQ(gsl_strcmp(nullptr, "a"), -1);
    EXPECT_EQ(gsl_strcmp("a", nullptr), 1);
}

TEST(GslStrcmp, ResultIsExactlyMinusOneZeroOrOne) {
    EXPECT_EQ(gsl_strcmp("a", "z"), -1);
    EXPECT_EQ(gsl_strcmp("z", "a"), 1);
    EXPECT_EQ(gsl_strcmp("same", "same"), 0);
}

TEST(GslStrcmp, ShorterTextComesFirst) {
    EXPECT_EQ(gsl_strcmp("ab", "abc"), -1);
    EXPECT_EQ(gsl_strcmp("abc", "ab"), 1);
    EXPECT_EQ(gsl_strcmp("", "a"), -1);
}

TEST(GslStrcmp, BytesCompareAsUnsigned) {
    EXPECT_EQ(gsl_strcmp("\x7f", "\x80"), -1);
    EXPECT_EQ(gsl_strcmp("\xff", "a"), 1);
}

TEST(GslStrcmp, LetterCaseCounts) { EXPECT_EQ(gsl_strcmp("A", "a"), -1); }

}  // namespace
