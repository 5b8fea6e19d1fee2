#include <orvix/gsl/projects.h>

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(QdsVersionStr, EmptyPrefixGivesTheTextWithoutAMark) { EXPECT_STREQ(qds_version_str(""), "591.zelta Apr  2 2025"); }

TEST(QdsVersionStr, PrefixStandsInFrontWithAMark) {
    EXPECT_STREQ(qds_version_str("abc"), "abc (*) 591.zelta Apr  2 2025");
}

TEST(QdsVersionStr, BlankIsAPrefix) { EXPECT_STREQ(qds_version_str(" "), "  (*) 591.zelta Apr  2 2025"); }

TEST(QdsVersionStr, NullCountsAsEmpty) { EXPECT_STREQ(qds_version_str(nullptr), "591.zelta Apr  2 2025"); }

TEST(QdsVersionStr, NextCallReplacesTheText) {
    EXPECT_STREQ(qds_version_str("first"), "first (*) 591.zelta Apr  2 2025");
    EXPECT_STREQ(qds_version_str(""), "591.zelta Apr  2 2025");
}

TEST(QdsVersionStr, PrefixMayBeTheTextOfAnEarlierCall) {
    EXPECT_STREQ(qds_version_str(qds_version_str("abc")), "abc (*) 591.zelta Apr  2 2025 (*) 591.zelta Apr  2 2025");
}

TEST(QdsVersionStr, PrefixMayBeOfAnyLength) {
    const std::string prefix(100'000, 'x');
    EXPECT_EQ(qds_version_str(prefix.c_str()), prefix + " (*) 591.zelta Apr  2 2025");
}

TEST(QdsVersionStr, TextMayBeWrittenTo) {
    char* const text = qds_version_str("abc");
    text[0] = 'x';
    EXPECT_STREQ(text, "xbc (*) 591.zelta Apr  2 2025");
}

TEST(QdsVersionStrWithDate, EmptyPrefixGivesTheTextWithoutAMark) {
    EXPECT_EQ(qds_version_str_with_date("", "today"), "591.zelta today");
}

TEST(QdsVersionStrWithDate, PrefixStandsInFrontWithAMark) {
    EXPECT_EQ(qds_version_str_with_date("abc", "today"), "abc (*) 591.zelta today");
}

TEST(QdsVersionStrWithDate, EmptyDateLeavesTheBlank) { EXPECT_EQ(qds_version_str_with_date("", ""), "591.zelta "); }

TEST(QdsVersionStrWithDate, LeavesTheTextOfQdsVersionStr) {
    const char* const text = qds_version_str("abc");
    EXPECT_EQ(qds_version_str_with_date("x", "today"), "x (*) 591.zelta today");
    EXPECT_STREQ(text, "abc (*) 591.zelta Apr  2 2025");
}

}  // namespace
