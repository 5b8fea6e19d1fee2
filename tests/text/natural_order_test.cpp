#include "text/models.h"

#include <gtest/gtest.h>
#include <orvix/gsl/string_utilities.h>
#include <support/random_text.h>

#include <string>

using namespace orvix::test;

TEST(GparseAlphaNumericStrcasecmp, NumbersDecideByValueWhereTheRestIsEqual) {
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("a2", "a10"), -1);
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("net10", "net2"), 1);
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("a9x", "a10x"), -1);
}

TEST(GparseAlphaNumericStrcasecmp, NumbersAreDisregardedWhereTheRestDiffers) {
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("a10x", "a9y"), -1);
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("a10y", "a9x"), -1);
}

TEST(GparseAlphaNumericStrcasecmp, LetterCaseOfTheRestKeepsNumbersFromDeciding) {
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("a10x", "a9X"), -1);
}

TEST(GparseAlphaNumericStrcasecmp, LetterCaseDoesNotMatterOtherwise) {
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("A", "a"), 0);
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("NET2", "net10"), -1);
}

TEST(GparseAlphaNumericStrcasecmp, DigitOutweighsALetter) {
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("a1", "ab"), 1);
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("a~", "a0"), -1);
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("a\xff", "a0"), -1);
}

TEST(GparseAlphaNumericStrcasecmp, LongerTextOfEqualNumbersComesLast) {
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("a007", "a7"), 1);
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("a7", "a007"), -1);
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("a0", "a00"), -1);
}

TEST(GparseAlphaNumericStrcasecmp, LongerTextComesLastWhereOneEnds) {
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("", ""), 0);
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("", "a"), -1);
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("net1", "net"), 1);
}

TEST(GparseAlphaNumericStrcasecmp, NumbersOfAnyLengthCompareByValue) {
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("a99999999999999999999", "a100000000000000000000"), -1);
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp("a4294967297", "a2"), 1);
}

TEST(GparseAlphaNumericStrcasecmp, AgreesWithTheModelOnRandomNames) {
    for (unsigned seed = 0; seed < 20000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string start = random.text("aA01", 4);
        const std::string end = random.text("xX01_", 4);
        const std::string a = start + random.text("0129", 3) + end;
        const std::string b = start + random.text("0129", 3) + (random.coin() ? end : random.text("xX01_", 4));
        EXPECT_EQ(gparse_alpha_numeric_strcasecmp(a.c_str(), b.c_str()), model::natural_order(a, b)) << a << ' ' << b;
    }
}

// A comparison that looks through the rest at every number would not come back.
TEST(GparseAlphaNumericStrcasecmp, NamesOfAMillionNumbersAreCompared) {
    std::string a;
    for (int i = 0; i < 1000000; ++i) a += "1.";
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp((a + 'x').c_str(), (a + 'y').c_str()), -1);
}

TEST(GparseAlphaNumericStrcasecmp, NumberOfAMillionDigitsIsCompared) {
    const std::string a(1000000, '1');
    EXPECT_EQ(gparse_alpha_numeric_strcasecmp((a + 'x').c_str(), (a + 'y').c_str()), -1);
}
