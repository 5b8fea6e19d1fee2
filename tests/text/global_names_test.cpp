#include "text/global_names.h"

#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <cmath>

// Null is what tells the library's functions from the host's.
TEST(GlobalNames, StandForTheFunctionsOfTheLibrary) {
    EXPECT_EQ(orvix::test::strcasecmp_at_global_scope(nullptr, "x"), -'x');
    EXPECT_EQ(orvix::test::strncasecmp_at_global_scope(nullptr, "x", 0), -'x');
    EXPECT_EQ(orvix::test::entries_at_global_scope("x*"), -1);
    EXPECT_TRUE(orvix::test::is_nan_at_global_scope(std::nan("")));
    EXPECT_EQ(orvix::test::finite_at_global_scope(1.5), 1.0);
    const orvix::test::TemporaryDirectory empty;
    EXPECT_EQ(orvix::test::entries_at_global_scope(empty.name().c_str()), 2);
}
