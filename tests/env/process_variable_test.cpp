#include "support/temporary_directory.h"

#include <orvix/gsl/environment.h>
#include <orvix/gsl/getenv.h>

#include <gtest/gtest.h>

#include <string>

using orvix::test::ScopedVariable;

TEST(GslGetenv, GivesTheValueOfAProcessVariable) {
    const ScopedVariable variable("ORVIX_TEST_VARIABLE", "a value");
    EXPECT_STREQ(gsl_getenv("ORVIX_TEST_VARIABLE"), "a value");
}

TEST(GslGetenv, EmptyIsNotMissing) {
    const ScopedVariable empty("ORVIX_TEST_VARIABLE", "");
    EXPECT_STREQ(gsl_getenv("ORVIX_TEST_VARIABLE"), "");
    const ScopedVariable missing("ORVIX_TEST_VARIABLE", nullptr);
    EXPECT_EQ(gsl_getenv("ORVIX_TEST_VARIABLE"), nullptr);
}

TEST(GslGetenv, NullAndEmptyNamesAreNeverFound) {
    EXPECT_EQ(gsl_getenv(nullptr), nullptr);
    EXPECT_EQ(gsl_getenv(""), nullptr);
}

TEST(GslGetenv, EarlierResultOutlivesAMiss) {
    const ScopedVariable variable("ORVIX_TEST_VARIABLE", "kept");
    const char* result = gsl_getenv("ORVIX_TEST_VARIABLE");
    EXPECT_EQ(gsl_getenv("ORVIX_TEST_MISSING"), nullptr);
    EXPECT_STREQ(result, "kept");
}

TEST(GslGetenv, ResultIsACopy) {
    const char* result = nullptr;
    {
        const ScopedVariable variable("ORVIX_TEST_VARIABLE", "set for a while");
        result = gsl_getenv("ORVIX_TEST_VARIABLE");
    }
    EXPECT_STREQ(result, "set for a while");
}

TEST(GslGetenv, NameMayBeItsOwnEarlierResult) {
    const ScopedVariable name("ORVIX_TEST_NAME", "ORVIX_TEST_VARIABLE");
    const ScopedVariable variable("ORVIX_TEST_VARIABLE", "found");
    EXPECT_STREQ(gsl_getenv(gsl_getenv("ORVIX_TEST_NAME")), "found");
}

TEST(GslGetenv, LongValuesComeWhole) {
    const std::string value(5000, 'v');
    const ScopedVariable variable("ORVIX_TEST_VARIABLE", value.c_str());
    EXPECT_EQ(gsl_getenv("ORVIX_TEST_VARIABLE"), value);
}

TEST(GuiEnvGetSys, IsTheSameReader) {
    const ScopedVariable variable("ORVIX_TEST_VARIABLE", "a value");
    EXPECT_STREQ(gui_env_get_sys("ORVIX_TEST_VARIABLE"), "a value");
    EXPECT_EQ(gui_env_get_sys("ORVIX_TEST_MISSING"), nullptr);
}
