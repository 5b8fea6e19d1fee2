#include "support/temporary_directory.h"

#include <orvix/gsl/status.h>

#include <gtest/gtest.h>

namespace {

using orvix::test::ScopedVariable;

TEST(IsDebugModeActiveFor, UnsetVariableIsFalse) {
    const ScopedVariable variable("ORVIX_TEST_MODE", nullptr);
    EXPECT_FALSE(is_debug_mode_active_for("ORVIX_TEST_MODE", "a", nullptr));
    EXPECT_FALSE(is_debug_mode_active_for("ORVIX_TEST_MODE", "", nullptr));
}

TEST(IsDebugModeActiveFor, WholeTextMustMatch) {
    const ScopedVariable variable("ORVIX_TEST_MODE", "ab");
    EXPECT_TRUE(is_debug_mode_active_for("ORVIX_TEST_MODE", "ab", nullptr));
    EXPECT_FALSE(is_debug_mode_active_for("ORVIX_TEST_MODE", "a", nullptr));
    EXPECT_FALSE(is_debug_mode_active_for("ORVIX_TEST_MODE", "abc", nullptr));
}

TEST(IsDebugModeActiveFor, LetterCaseMatters) {
    const ScopedVariable variable("ORVIX_TEST_MODE", "All");
    EXPECT_FALSE(is_debug_mode_active_for("ORVIX_TEST_MODE", "all", nullptr));
}

TEST(IsDebugModeActiveFor, AnyValueOfTheListWillDo) {
    const ScopedVariable variable("ORVIX_TEST_MODE", "c");
    EXPECT_TRUE(is_debug_mode_active_for("ORVIX_TEST_MODE", "a", "b", "c", nullptr));
}

TEST(IsDebugModeActiveFor, CommaListMatchesNothing) {
    const ScopedVariable variable("ORVIX_TEST_MODE", "a,b");
    EXPECT_FALSE(is_debug_mode_active_for("ORVIX_TEST_MODE", "a", "b", nullptr));
}

TEST(IsDebugModeActiveFor, EmptyTextMatchesAnEmptyValueAlone) {
    const ScopedVariable variable("ORVIX_TEST_MODE", "");
    EXPECT_FALSE(is_debug_mode_active_for("ORVIX_TEST_MODE", "a", nullptr));
    EXPECT_TRUE(is_debug_mode_active_for("ORVIX_TEST_MODE", "a", "", nullptr));
}

TEST(IsDebugModeActiveFor, EmptyListIsFalse) {
    const ScopedVariable variable("ORVIX_TEST_MODE", "a");
    EXPECT_FALSE(is_debug_mode_active_for("ORVIX_TEST_MODE", nullptr));
}

}  // namespace
