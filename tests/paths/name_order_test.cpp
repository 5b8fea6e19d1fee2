#include "text/models.h"

#include <gtest/gtest.h>
#include <orvix/gsl/file_names.h>
#include <support/random_text.h>

#include <climits>
#include <string>

using namespace orvix::test;

TEST(GfileFileNameStrcmp, NullReadsAsTheEmptyName) {
    EXPECT_EQ(gfile_file_name_strcmp(nullptr, ""), 0);
    EXPECT_EQ(gfile_file_name_strcmp("", nullptr), 0);
    EXPECT_EQ(gfile_file_name_strcmp(nullptr, nullptr), 0);
    EXPECT_EQ(gfile_file_name_strcmp(nullptr, "A"), -'a');
}

TEST(GfileFileNameStrcmp, LetterCaseDoesNotMatter) {
    EXPECT_EQ(gfile_file_name_strcmp("C:\\ABC", "c:\\abc"), 0);
    EXPECT_LT(gfile_file_name_strcmp("ABC", "abd"), 0);
}

TEST(GfileFileNameStrcmp, GivesTheDifferenceOfTheLoweredBytes) {
    EXPECT_EQ(gfile_file_name_strcmp("aX", "ab"), 'x' - 'b');
    EXPECT_EQ(gfile_file_name_strcmp("ab", "a"), 'b');
}

TEST(GfileFileNameStrcmp, SeparatorsAreDifferentBytes) { EXPECT_EQ(gfile_file_name_strcmp("a/b", "a\\b"), '/' - '\\'); }

TEST(GfileFileNameStrcmp, BytesAboveAsciiAreUnsignedAndHaveNoCase) {
    EXPECT_EQ(gfile_file_name_strcmp("\xe4", "z"), 0xe4 - 'z');
    EXPECT_EQ(gfile_file_name_strcmp("\xc4", "\xe4"), -32);
}

TEST(GfileFileNameStrncmp, LooksAtNoMoreThanTheCount) {
    EXPECT_EQ(gfile_file_name_strncmp("abX", "aby", 2), 0);
    EXPECT_EQ(gfile_file_name_strncmp("abX", "aby", 3), -1);
    EXPECT_EQ(gfile_file_name_strncmp("ab", "AB", 9), 0);
}

TEST(GfileFileNameStrncmp, CountOfZeroGivesZero) {
    EXPECT_EQ(gfile_file_name_strncmp("a", "b", 0), 0);
    EXPECT_EQ(gfile_file_name_strncmp(nullptr, "b", 0), 0);
}

TEST(GfileFileNameStrncmp, NegativeCountComparesTheFirstBytes) {
    EXPECT_EQ(gfile_file_name_strncmp("A", "c", -1), 'a' - 'c');
    EXPECT_EQ(gfile_file_name_strncmp("Ax", "ay", INT_MIN), 0);
    EXPECT_EQ(gfile_file_name_strncmp("", "", -1), 0);
    EXPECT_EQ(gfile_file_name_strncmp(nullptr, "B", -1), -'b');
}

TEST(NameOrder, AgreesWithTheModelOnRandomNames) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string start = random.text("aAzZ/\\\xe4", 40);
        const std::string a = start + random.text("abAB", 2);
        const std::string b = (random.coin() ? model::lower(start) : start) + random.text("abAB", 2);
        EXPECT_EQ(gfile_file_name_strcmp(a.c_str(), b.c_str()), model::caseless_difference(a, b));
        const std::size_t count = 1 + random.number(45);
        EXPECT_EQ(gfile_file_name_strncmp(a.c_str(), b.c_str(), static_cast<int>(count)),
                  model::caseless_difference(a.substr(0, count), b.substr(0, count)));
    }
}
