// Wildcards.

#include "files/wildcard_model.h"
#include "gfile_wildcard.h"
#include "support/random_text.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

using orvix::gsl::gfile_match_wildcard;

TEST(MatchWildcard, TellsWhatAPatternStandsFor) {
    struct Case {
        std::string_view text;
        std::string_view pattern;
        bool matches;
    };
    const Case cases[] = {
        {"abc", "a*c", true},       {"abc", "a?c", true},       {"abc", "*", true},
        {"abc", "a*", true},        {"abc", "b*", false},       {"abc", "abcd", false},
        {"abc", "ABC", false},      {"abc", "abc", true},       {"abc", "ab", false},
        {"abc", "", false},         {"abc", "*c", true},        {"abc", "*b", false},
        {"abc", "*b*", true},       {"abc", "???", true},       {"abc", "??", false},
        {"abc", "????", false},     {"abc", "abc*", true},      {"abcabd", "*abd", true},
        {"abcabd", "a*b?", true},   {"aab", "*ab", true},       {"a.b.c", "*.c", true},
        {"a.b.c", "*.b", false},    {"aXbXc", "*X*c", true},    {"mississippi", "m*iss*ip*", true},
        {"a\xc3\xa9", "a?", false}, {"a\xc3\xa9", "a??", true},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(std::string(one.text) + " against " + std::string(one.pattern));
        EXPECT_EQ(gfile_match_wildcard(one.text, one.pattern), one.matches);
    }
}

TEST(MatchWildcard, EmptyTextIsMatchedByNothingAndByOneStarAlone) {
    EXPECT_TRUE(gfile_match_wildcard("", ""));
    EXPECT_TRUE(gfile_match_wildcard("", "*"));
    EXPECT_FALSE(gfile_match_wildcard("", "**"));
    EXPECT_FALSE(gfile_match_wildcard("", "?"));
}

TEST(MatchWildcard, CharacterBehindAStarStandsForItself) {
    EXPECT_FALSE(gfile_match_wildcard("abx", "*?x"));
    EXPECT_TRUE(gfile_match_wildcard("ab?x", "*?x"));
    EXPECT_TRUE(gfile_match_wildcard("abx", "?*x"));
    EXPECT_FALSE(gfile_match_wildcard("abc", "**"));
    EXPECT_TRUE(gfile_match_wildcard("abc*", "**"));
    EXPECT_TRUE(gfile_match_wildcard("a*bc", "**bc"));
}

TEST(MatchWildcard, AgreesWithThePlainForm) {
    for (unsigned seed = 0; seed < 20000; ++seed) {
        SCOPED_TRACE(seed);
        orvix::test::RandomText random(seed);
        const std::string text = random.text("aab?*", 12);
        const std::string pattern = random.text("aab?**", 8);
        ASSERT_EQ(gfile_match_wildcard(text, pattern), orvix::test::matches(text, pattern)) << text << ' ' << pattern;
    }
}

TEST(MatchWildcard, ManyStarsAndALongTextTakeNoLongTime) {
    std::string pattern;
    for (int i = 0; i < 500; ++i) pattern += "*a";
    const std::string text(100000, 'a');
    EXPECT_TRUE(gfile_match_wildcard(text, pattern));
    EXPECT_FALSE(gfile_match_wildcard(text, pattern + "b"));
    EXPECT_FALSE(gfile_match_wildcard(text, "*" + std::string(500, 'a') + "b"));
}
