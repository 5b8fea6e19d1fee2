// What one load may do for included files.

#include "env/loading.h"

#include <gtest/gtest.h>

using orvix::gsl::env::Load;

TEST(LoadBounds, EachIsReachedByItself) {
    eeEnv env{};
    EXPECT_TRUE(Load(&env).may_include());
    Load deep(&env);
    deep.depth = 200;
    EXPECT_FALSE(deep.may_include());
    Load many(&env);
    many.files = 10'000;
    EXPECT_FALSE(many.may_include());
    Load large(&env);
    large.bytes = 1'073'741'824;
    EXPECT_FALSE(large.may_include());
}

TEST(LoadBounds, JustBelowThemIncludesAreRead) {
    eeEnv env{};
    Load load(&env);
    load.depth = 199;
    load.files = 9'999;
    load.bytes = 1'073'741'823;
    EXPECT_TRUE(load.may_include());
}
