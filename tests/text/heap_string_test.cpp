#include <gtest/gtest.h>
#include <orvix/gsl/status.h>
#include <orvix/gsl/string_utilities.h>

TEST(AstrNewString, GivesACopy) {
    const char* text = "abc";
    char* copy = astr_new_string(text);
    EXPECT_NE(copy, text);
    EXPECT_STREQ(copy, "abc");
    astr_free_string(copy);
}

TEST(AstrNewString, NullGivesNull) { EXPECT_EQ(astr_new_string(nullptr), nullptr); }

TEST(AstrFreeString, NullIsHarmless) { astr_free_string(nullptr); }

TEST(AstrFreeString, FreesABlockOfTheMemoryFamily) { astr_free_string(gmem_ee_malloc(1, 4)); }
