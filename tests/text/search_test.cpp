#include "text/models.h"

#include <gtest/gtest.h>
#include <orvix/gsl/string_utilities.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <string>

using namespace orvix::test;

namespace {

// The position that a search gave, or npos.
std::size_t position(const std::string& hay, const char* found) {
    return found != nullptr ? static_cast<std::size_t>(found - hay.c_str()) : std::string::npos;
}

std::size_t find_caseless(const std::string& hay, const std::string& needle) {
    return position(hay, gsl_strcasestr(hay.c_str(), needle.c_str()));
}

std::size_t find_last(const std::string& hay, const std::string& needle) {
    return position(hay, strrstr(hay.c_str(), needle.c_str()));
}

// Fibonacci words repeat themselves as much as a text can without being periodic.
std::string fibonacci_word(std::size_t least) {
    std::string before = "b";
    std::string word = "a";
    while (word.size() < least) {
        std::string next = word + before;
        before = std::move(word);
        word = std::move(next);
    }
    return word;
}

}  // namespace

TEST(GslStrcasestr, FindsTheFirstOccurrenceWhateverTheLetterCase) {
    EXPECT_EQ(find_caseless("xxAbCabc", "aBc"), 2U);
    EXPECT_EQ(find_caseless("abc", "C"), 2U);
}

TEST(GslStrcasestr, GivesNullWhenThereIsNone) {
    EXPECT_EQ(gsl_strcasestr("abc", "abd"), nullptr);
    EXPECT_EQ(gsl_strcasestr("ab", "abc"), nullptr);
}

TEST(GslStrcasestr, NullOrEmptyHayGivesNullWhateverTheNeedle) {
    EXPECT_EQ(gsl_strcasestr(nullptr, "a"), nullptr);
    EXPECT_EQ(gsl_strcasestr("", "a"), nullptr);
    EXPECT_EQ(gsl_strcasestr("", ""), nullptr);
    EXPECT_EQ(gsl_strcasestr(nullptr, nullptr), nullptr);
}

TEST(GslStrcasestr, NullOrEmptyNeedleGivesTheHay) {
    const char* hay = "abc";
    EXPECT_EQ(gsl_strcasestr(hay, ""), hay);
    EXPECT_EQ(gsl_strcasestr(hay, nullptr), hay);
}

TEST(GslStrcasestr, BytesAboveAsciiHaveNoCase) {
    EXPECT_EQ(gsl_strcasestr("\xc4", "\xe4"), nullptr);
    EXPECT_EQ(find_caseless("a\xc4", "\xc4"), 1U);
}

TEST(GslStrcasestr, NeighboursOfTheLettersHaveNoCase) {
    EXPECT_EQ(gsl_strcasestr("@[", "`"), nullptr);
    EXPECT_EQ(gsl_strcasestr("@[", "{"), nullptr);
}

TEST(GslStrcasestr, FindsNeedlesOfAllSizesAtAllPlacesOfLongTexts) {
    for (const std::size_t before : {0U, 1U, 1023U, 1500U, 2046U, 2047U, 2048U, 4094U, 9000U}) {
        for (const std::size_t length : {1U, 2U, 1023U, 1024U, 1025U, 2046U, 2047U, 2048U, 2049U, 5000U}) {
            SCOPED_TRACE(testing::Message() << before << " bytes before a needle of " << length);
            std::string needle(length, 'n');
            needle.back() = 'E';
            Buffer hay(std::string(before, 'N') + needle);
            Buffer folded(model::lower(needle));
            const char* found = gsl_strcasestr(hay, folded);
            EXPECT_EQ(found, hay.get() + before);
        }
    }
}

TEST(GslStrcasestr, FindsShortNeedlesAtEveryPlaceOfALongText) {
    for (std::size_t before = 0; before < 5000; ++before) {
        const std::string hay = std::string(before, 'n') + "Needle";
        ASSERT_EQ(find_caseless(hay, "nE"), before);
        ASSERT_EQ(find_caseless(hay, "NEEDLE"), before);
    }
}

TEST(GslStrcasestr, LongNeedleThatIsNotThereGivesNull) {
    EXPECT_EQ(find_caseless(std::string(10000, 'A'), std::string(3000, 'a') + 'b'), std::string::npos);
    EXPECT_EQ(find_caseless(std::string(2000, 'A'), std::string(3000, 'a')), std::string::npos);
    EXPECT_EQ(find_caseless(std::string(3000, 'A'), std::string(2000, 'a') + 'b'), std::string::npos);
}

TEST(Strrstr, FindsTheLastOccurrence) {
    EXPECT_EQ(find_last("abcabc", "bc"), 4U);
    EXPECT_EQ(find_last("abcabc", "abc"), 3U);
    EXPECT_EQ(find_last("aaa", "aa"), 1U);
}

TEST(Strrstr, FindsTheWholeText) { EXPECT_EQ(find_last("abc", "abc"), 0U); }

TEST(Strrstr, FindsTheTextBeforeAnyNumberOfNearMatches) {
    for (std::size_t half = 0; half < 20; ++half) {
        for (std::size_t near_matches = 0; near_matches < 100; ++near_matches) {
            const std::string needle = std::string(half, 'a') + 'b' + std::string(half, 'a');
            ASSERT_EQ(find_last("ab" + needle + std::string(near_matches, 'a'), needle), 2U);
        }
    }
}

TEST(Strrstr, GivesNullWhenThereIsNone) {
    EXPECT_EQ(strrstr("abc", "B"), nullptr);
    EXPECT_EQ(strrstr("abc", "abcd"), nullptr);
    EXPECT_EQ(strrstr("", "a"), nullptr);
}

TEST(Strrstr, EmptyNeedleGivesTheNeedleItself) {
    const char needle[] = "";
    EXPECT_EQ(strrstr("abc", needle), needle);
    EXPECT_EQ(strrstr("", needle), needle);
}

TEST(AstrStrMatchesAtTail, TestsTheEndOfTheText) {
    EXPECT_TRUE(astr_str_matches_at_tail("a.cfg", ".cfg"));
    EXPECT_TRUE(astr_str_matches_at_tail(".cfg", ".cfg"));
    EXPECT_FALSE(astr_str_matches_at_tail("a.cfgs", ".cfg"));
    EXPECT_FALSE(astr_str_matches_at_tail("cfg", ".cfg"));
}

TEST(AstrStrMatchesAtTail, EarlierOccurrencesDoNotHinder) {
    EXPECT_TRUE(astr_str_matches_at_tail("aaa", "aa"));
    EXPECT_TRUE(astr_str_matches_at_tail("abcxabc", "abc"));
}

TEST(AstrStrMatchesAtTail, LetterCaseCounts) { EXPECT_FALSE(astr_str_matches_at_tail("a.CFG", ".cfg")); }

TEST(AstrStrMatchesAtTail, EmptyTailMatchesAnyText) {
    EXPECT_TRUE(astr_str_matches_at_tail("abc", ""));
    EXPECT_TRUE(astr_str_matches_at_tail("", ""));
}

TEST(AstrStrMatchesAtTail, NullMatchesNothing) {
    EXPECT_FALSE(astr_str_matches_at_tail(nullptr, "a"));
    EXPECT_FALSE(astr_str_matches_at_tail("a", nullptr));
    EXPECT_FALSE(astr_str_matches_at_tail(nullptr, nullptr));
}

TEST(Searches, AgreeWithTheModelOnAllShortTexts) {
    const auto nth_text = [](unsigned n) {  // over two letters; the bits below the highest one
        std::string text;
        for (; n > 1; n /= 2) text += "aB"[n % 2];
        return text;
    };
    for (unsigned h = 2; h < 1U << 11; ++h) {
        for (unsigned n = 2; n < 1U << 7; ++n) {
            const std::string hay = nth_text(h);
            const std::string needle = nth_text(n);
            ASSERT_EQ(find_last(hay, needle), hay.rfind(needle)) << hay << ' ' << needle;
            ASSERT_EQ(find_caseless(hay, needle), model::find_caseless(hay, needle)) << hay << ' ' << needle;
        }
    }
}

TEST(Searches, AgreeWithTheModelOnRandomPeriodicTexts) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        std::string hay;
        const std::string period = random.text("abA", 6) + 'a';
        while (hay.size() < 100) hay += random.number(9) == 0 ? random.text("ab", 3) : period;
        const std::string needle = random.coin() ? hay.substr(random.number(60), 1 + random.number(30))
                                                 : period + period + random.text("ab", 2);
        EXPECT_EQ(find_last(hay, needle), hay.rfind(needle));
        EXPECT_EQ(find_caseless(hay, needle), model::find_caseless(hay, needle));
        EXPECT_EQ(astr_str_matches_at_tail(hay.c_str(), needle.c_str()), hay.ends_with(needle));
    }
}

TEST(Searches, AgreeWithTheModelOnLongNeedlesInLongTexts) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        std::string hay;
        const std::string period = random.text("abA", 900) + 'a';
        while (hay.size() < 8000) hay += random.number(9) == 0 ? random.text("ab", 3) : period;
        std::string needle = hay.substr(random.number(4000), 1025 + random.number(2500));
        if (random.coin()) needle[random.number(needle.size() - 1)] ^= 1;
        EXPECT_EQ(find_last(hay, needle), hay.rfind(needle));
        EXPECT_EQ(find_caseless(hay, needle), model::find_caseless(hay, needle));
    }
}

// A search that compares every start afresh would not come back.
TEST(Searches, TextsThatNearlyMatchEverywhereAreSearchedInLinearTime) {
    const std::string hay(2000000, 'a');
    const std::string needle(500000, 'a');
    EXPECT_EQ(find_last(hay, 'b' + needle), std::string::npos);
    EXPECT_EQ(find_last(hay, needle + 'b' + needle), std::string::npos);
    EXPECT_EQ(find_caseless(hay, needle + 'b'), std::string::npos);
    EXPECT_FALSE(astr_str_matches_at_tail(hay.c_str(), (needle + 'b').c_str()));
    EXPECT_TRUE(astr_str_matches_at_tail(hay.c_str(), needle.c_str()));
}

TEST(Searches, SelfSimilarTextsAreSearchedInLinearTime) {
    const std::string hay = fibonacci_word(2000000);
    const std::string needle = fibonacci_word(300000);
    const std::string absent = needle + "bb" + needle;
    EXPECT_EQ(find_last(hay, absent), std::string::npos);
    EXPECT_EQ(find_caseless(hay, absent), std::string::npos);
    EXPECT_EQ(find_caseless(hay, needle), 0U);
}
