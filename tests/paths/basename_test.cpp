#include "paths/models.h"

#include <gtest/gtest.h>
#include <orvix/gsl/file_names.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <string>

using namespace orvix::test;

TEST(HxGetBasenameFromFile, StandsBehindTheLastSeparatorOfEitherKind) {
    EXPECT_STREQ(HX_get_basename_from_file(Buffer("a\\b/c")), "c");
    EXPECT_STREQ(HX_get_basename_from_file(Buffer("a/b\\c")), "c");
}

TEST(HxGetBasenameFromFile, NameThatEndsInASeparatorGivesItsEnd) {
    Buffer name("a\\");
    EXPECT_EQ(HX_get_basename_from_file(name), name.get() + 2);
}

TEST(HxGetBasenameFromFile, NameWithoutSeparatorGivesItself) {
    Buffer name("c:ab");
    EXPECT_EQ(HX_get_basename_from_file(name), name.get());
}

TEST(HxGetBasenameFromFile, EmptyNameGivesItself) {
    Buffer name("");
    EXPECT_EQ(HX_get_basename_from_file(name), name.get());
}

TEST(HxGetBasenameFromFile, NullGivesNull) { EXPECT_EQ(HX_get_basename_from_file(nullptr), nullptr); }

TEST(HxGetBasenameFromFileNew, FollowsTheSameRule) {
    EXPECT_EQ(HX_get_basename_from_file_new("a\\b/c"), "c");
    EXPECT_EQ(HX_get_basename_from_file_new("a\\"), "");
    EXPECT_EQ(HX_get_basename_from_file_new("ab"), "ab");
    EXPECT_EQ(HX_get_basename_from_file_new(""), "");
}

TEST(BaseNames, AgreeWithTheModelOnRandomNames) {
    for (unsigned seed = 0; seed < 1000; ++seed) {
        SCOPED_TRACE(seed);
        const std::string name = RandomText(seed).text("ab:/\\", 8);
        EXPECT_EQ(HX_get_basename_from_file_new(name), model::basename(name));
        EXPECT_EQ(HX_get_basename_from_file(Buffer(name)), model::basename(name));
    }
}
