#include "text/models.h"

#include <gtest/gtest.h>
#include <orvix/gsl/string_utilities.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <climits>
#include <cstdint>
#include <string>

using namespace orvix::test;

TEST(GparseEqlstr, NullEqualsTheEmptyText) {
    EXPECT_TRUE(gparse_eqlstr(nullptr, ""));
    EXPECT_TRUE(gparse_eqlstr(nullptr, nullptr));
    EXPECT_FALSE(gparse_eqlstr(nullptr, "a"));
}

TEST(GparseEqlstr, LetterCaseAndLengthCount) {
    EXPECT_TRUE(gparse_eqlstr("abc", "abc"));
    EXPECT_FALSE(gparse_eqlstr("abc", "abC"));
    EXPECT_FALSE(gparse_eqlstr("abc", "ab"));
}

TEST(GparseIntcmp, GivesTheSignOfTheDifferenceWithoutOverflow) {
    EXPECT_EQ(gparse_intcmp(2, 1), 1);
    EXPECT_EQ(gparse_intcmp(1, 2), -1);
    EXPECT_EQ(gparse_intcmp(7, 7), 0);
    EXPECT_EQ(gparse_intcmp(INT_MAX, INT_MIN), 1);
    EXPECT_EQ(gparse_intcmp(INT_MIN, INT_MAX), -1);
}

TEST(GparseStricmp, LetterCaseDoesNotMatter) { EXPECT_EQ(gparse_stricmp("aBc", "AbC"), 0); }

TEST(GparseStricmp, GivesTheDifferenceOfTheUpperCaseBytes) {
    EXPECT_EQ(gparse_stricmp("xa", "xC"), 'A' - 'C');
    EXPECT_EQ(gparse_stricmp("x_", "xa"), '_' - 'A');
    EXPECT_EQ(gparse_stricmp("ab", "a"), 'B');
    EXPECT_EQ(gparse_stricmp("a", "ab"), -'B');
}

TEST(GparseStricmp, BytesAboveAsciiAreNegative) {
    EXPECT_EQ(gparse_stricmp("\x80", "a"), -128 - 'A');
    EXPECT_EQ(gparse_stricmp("a", "\xff"), 'A' + 1);
    EXPECT_EQ(gparse_stricmp("\xe4", "\xc4"), 32);
}

TEST(Strcasecmp, NullCountsAsTheEmptyText) {
    EXPECT_EQ(orvix::gsl::strcasecmp(nullptr, nullptr), 0);
    EXPECT_EQ(orvix::gsl::strcasecmp(nullptr, ""), 0);
    EXPECT_EQ(orvix::gsl::strcasecmp(nullptr, "x"), -'x');
    EXPECT_EQ(orvix::gsl::strcasecmp("X", nullptr), 'x');
}

TEST(Strcasecmp, GivesTheDifferenceOfTheLowerCaseBytes) {
    EXPECT_EQ(orvix::gsl::strcasecmp("ABC", "abd"), 'c' - 'd');
    EXPECT_EQ(orvix::gsl::strcasecmp("_", "a"), '_' - 'a');
    EXPECT_EQ(orvix::gsl::strcasecmp("_", "A"), '_' - 'a');
}

TEST(Strcasecmp, GivesTheFirstUnmatchedByteWhenOneTextEnds) {
    EXPECT_EQ(orvix::gsl::strcasecmp("abC", "ab"), 'c');
    EXPECT_EQ(orvix::gsl::strcasecmp("ab", "abC"), -'c');
}

TEST(Strcasecmp, BytesAboveAsciiAreUnsignedAndHaveNoCase) {
    EXPECT_EQ(orvix::gsl::strcasecmp("\xff", "a"), 255 - 'a');
    EXPECT_EQ(orvix::gsl::strcasecmp("\xc4", "\xe4"), -32);
}

TEST(Strncasecmp, LooksAtNoMoreThanTheCount) {
    EXPECT_EQ(orvix::gsl::strncasecmp("ABx", "aby", 2), 0);
    EXPECT_EQ(orvix::gsl::strncasecmp("ABx", "aby", 3), -1);
    EXPECT_EQ(orvix::gsl::strncasecmp("ab", "AB", 99), 0);
}

TEST(Strncasecmp, CountOfZeroOrLessGivesZero) {
    EXPECT_EQ(orvix::gsl::strncasecmp("a", "b", 0), 0);
    EXPECT_EQ(orvix::gsl::strncasecmp("a", "b", -1), 0);
    EXPECT_EQ(orvix::gsl::strncasecmp("a", "b", INT_MIN), 0);
}

TEST(Strncasecmp, CountIsNotLookedAtWhenAPointerIsNull) {
    EXPECT_EQ(orvix::gsl::strncasecmp(nullptr, "x", 0), -'x');
    EXPECT_EQ(orvix::gsl::strncasecmp("x", nullptr, 0), 'x');
    EXPECT_EQ(orvix::gsl::strncasecmp(nullptr, "Xy", 2), -'x');
    EXPECT_EQ(orvix::gsl::strncasecmp(nullptr, nullptr, 5), 0);
}

TEST(GparseSimstr, OuterBlanksAndLetterCaseDoNotMatter) { EXPECT_TRUE(gparse_simstr("  Abc ", "aBC")); }

TEST(GparseSimstr, InnerBlanksCount) { EXPECT_FALSE(gparse_simstr("a b", "ab")); }

TEST(GparseSimstr, AllBlankTextIsSimilarToTheEmptyOne) {
    EXPECT_TRUE(gparse_simstr("   ", ""));
    EXPECT_TRUE(gparse_simstr("", " "));
}

TEST(GparseSimstr, TabsAreNoBlanks) { EXPECT_FALSE(gparse_simstr("\ta", "a")); }

TEST(GparseSimstr2, NothingIsStripped) {
    EXPECT_TRUE(gparse_simstr2("Abc", "aBC"));
    EXPECT_FALSE(gparse_simstr2(" abc", "abc"));
}

TEST(GparseSimstr2, AllBlankTextIsNotSimilarToTheEmptyOne) {
    EXPECT_FALSE(gparse_simstr2("   ", ""));
    EXPECT_TRUE(gparse_simstr2("", ""));
}

TEST(GparseAllDigits, TestsTheRangeWithoutItsEnd) {
    EXPECT_TRUE(gparse_all_digits("a09z", 1, 3));
    EXPECT_FALSE(gparse_all_digits("a09z", 1, 4));
    EXPECT_FALSE(gparse_all_digits("a09z", 0, 3));
}

TEST(GparseAllDigits, EmptyRangeIsTrue) {
    EXPECT_TRUE(gparse_all_digits("abc", 1, 1));
    EXPECT_TRUE(gparse_all_digits("abc", 2, 1));
}

TEST(GparseAllDigits, NeighboursOfTheDigitsAreNone) {
    EXPECT_FALSE(gparse_all_digits("/", 0, 1));
    EXPECT_FALSE(gparse_all_digits(":", 0, 1));
    EXPECT_FALSE(gparse_all_digits("\xb2", 0, 1));
}

TEST(GparseAllDigits, LooksNoFurtherThanTheFirstOtherByte) { EXPECT_FALSE(gparse_all_digits("12x", 0, SIZE_MAX)); }

TEST(GparseAllDigits, EndOfTheTextIsNoDigit) { EXPECT_FALSE(gparse_all_digits("12", 0, 3)); }

TEST(AstrStringsEqual, LetterCaseDoesNotMatter) {
    EXPECT_TRUE(astr_strings_equal("aBc", "AbC"));
    EXPECT_FALSE(astr_strings_equal("abc", "ab"));
    EXPECT_FALSE(astr_strings_equal("\xc4", "\xe4"));
}

TEST(AstrStringsEqual, NullEqualsNothing) {
    EXPECT_FALSE(astr_strings_equal(nullptr, nullptr));
    EXPECT_FALSE(astr_strings_equal(nullptr, ""));
    EXPECT_FALSE(astr_strings_equal("", nullptr));
}

TEST(CaselessComparisons, AgreeWithTheModelOnRandomTexts) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        // Equal beginnings of all lengths, so that differences fall on every place.
        const std::string start = random.text("aAzZ[@\xe4", 40);
        const std::string a = start + random.text("abAB", 2);
        const std::string b = (random.coin() ? model::lower(start) : start) + random.text("abAB", 2);
        const int difference = model::caseless_difference(a, b);
        EXPECT_EQ(orvix::gsl::strcasecmp(a.c_str(), b.c_str()), difference);
        EXPECT_EQ(gparse_simstr2(a.c_str(), b.c_str()), difference == 0);
        EXPECT_EQ(astr_strings_equal(a.c_str(), b.c_str()), difference == 0);
        EXPECT_EQ(gparse_stricmp(a.c_str(), b.c_str()) == 0, difference == 0);
        EXPECT_EQ(gparse_simstr(("  " + a).c_str(), (b + " ").c_str()), difference == 0);
        const std::size_t count = random.number(45);
        EXPECT_EQ(orvix::gsl::strncasecmp(a.c_str(), b.c_str(), static_cast<int>(count)),
                  model::caseless_difference(a.substr(0, count), b.substr(0, count)));
    }
}

TEST(CaselessComparisons, ReadNothingBehindEitherText) {
    for (std::size_t length = 0; length < 70; ++length) {
        Buffer shorter(std::string(length, 'a'));
        Buffer longer(std::string(length + 1, 'A'));
        EXPECT_EQ(orvix::gsl::strcasecmp(shorter, longer), -'a');
        EXPECT_EQ(orvix::gsl::strcasecmp(longer, shorter), 'a');
    }
}
